#include "cheques/ui/chq_get_form.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

namespace {

// The fields each grid shows, in order, with their captions.
const QList<QPair<QString, QString>>& chequeColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},    {QStringLiteral("Joz"), QStringLiteral("سري")},
        {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},     {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")},
        {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")}, {QStringLiteral("Koll"), QStringLiteral("كل")},
        {QStringLiteral("Moein"), QStringLiteral("معين")},        {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")},
        {QStringLiteral("BankCod"), QStringLiteral("بانك")},      {QStringLiteral("ShobehCod"), QStringLiteral("شعبه")},
        {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")}, {QStringLiteral("Tazmin"), QStringLiteral("تضميني")},
        {QStringLiteral("Des"), QStringLiteral("شرح")}};
    return columns;
}

const QList<QPair<QString, QString>>& counterpartyColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")}, {QStringLiteral("Joz"), QStringLiteral("سري")},
        {QStringLiteral("Koll"), QStringLiteral("كل")},        {QStringLiteral("Moein"), QStringLiteral("معين")},
        {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")}, {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
        {QStringLiteral("Des"), QStringLiteral("شرح")}};
    return columns;
}

// Shows `columns` in their order with their captions; every other field hidden.
void arrange(QTableView* view, tr::ui::DatasetModel* model, const QList<QPair<QString, QString>>& columns) {
    for (int c = 0; c < model->columnCount(); ++c) view->setColumnHidden(c, true);
    for (int i = 0; i < columns.size(); ++i) {
        const int c = model->fieldColumn(columns[i].first);
        if (c < 0) continue;
        model->setTitle(columns[i].first, columns[i].second);
        view->setColumnHidden(c, false);
        view->horizontalHeader()->moveSection(view->horizontalHeader()->visualIndex(c), i);
    }
}

QTableView* makeGrid(QWidget* parent, tr::ui::DatasetModel* model, const QString& name) {
    auto* view = new QTableView(parent);
    view->setObjectName(name);
    view->setModel(model);
    view->setLayoutDirection(Qt::RightToLeft);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::DoubleClicked);
    view->verticalHeader()->setDefaultSectionSize(24);
    return view;
}

QLineEdit* box(QWidget* parent, const QString& name, int width) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setMaximumWidth(width);
    return edit;
}

}  // namespace

TChqGetForm::TChqGetForm(const tr::Services& services, QWidget* parent)
    : QWidget(parent), services_(services), document_(std::make_unique<ReceivedChequeDocument>(services)) {
    setObjectName(QStringLiteral("ChqGetForm"));
    setWindowTitle(ReceivedChequeDocument::kTitle);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));

    caption_ = new QLabel(this);
    caption_->setAlignment(Qt::AlignCenter);
    caption_->setAutoFillBackground(true);
    caption_->setForegroundRole(QPalette::HighlightedText);
    caption_->setBackgroundRole(QPalette::Highlight);
    caption_->setMinimumHeight(26);

    serial_ = box(this, QStringLiteral("SerialNo"), 90);
    day_ = box(this, QStringLiteral("mDay"), 32);
    month_ = box(this, QStringLiteral("mMonth"), 32);
    year_ = box(this, QStringLiteral("mYear"), 48);
    voucher_ = new QLabel(this);
    voucher_->setObjectName(QStringLiteral("HesabSanadNo"));
    user_ = new QLabel(this);
    user_->setObjectName(QStringLiteral("EUserName"));
    invoice_ = new QLabel(this);
    invoice_->setObjectName(QStringLiteral("txtSanadNoForosh"));
    invoice_->hide();
    totals_ = new QLabel(this);
    totals_->setObjectName(QStringLiteral("txtSumBed"));
    connect(serial_, &QLineEdit::editingFinished, this, [this] {
        const QString typed = serial_->text().trimmed();
        if (typed.isEmpty() || typed == document_->header().serial) return;
        guarded([&] { return document_->open(typed); });
        showValues();
    });
    for (QLineEdit* part : {day_, month_, year_}) connect(part, &QLineEdit::editingFinished, this, &TChqGetForm::takeHeader);

    auto* header = new QHBoxLayout;
    header->addWidget(new QLabel(QStringLiteral("سريال"), this));
    header->addWidget(serial_);
    header->addWidget(new QLabel(QStringLiteral("تاريخ صدور"), this));
    header->addWidget(year_);
    header->addWidget(new QLabel(QStringLiteral("/"), this));
    header->addWidget(month_);
    header->addWidget(new QLabel(QStringLiteral("/"), this));
    header->addWidget(day_);
    header->addWidget(new QLabel(QStringLiteral("سند"), this));
    header->addWidget(voucher_);
    header->addWidget(new QLabel(QStringLiteral("كاربر"), this));
    header->addWidget(user_);
    header->addWidget(invoice_);
    header->addStretch(1);

    chequeModel_ = new tr::ui::DatasetModel(&document_->cheques(), this);
    chequeModel_->setAutoPost(false);  // a cheque is checked as a whole when the user leaves it
    counterpartyModel_ = new tr::ui::DatasetModel(&document_->counterparties(), this);
    for (auto* model : {chequeModel_, counterpartyModel_}) {
        model->setErrorHandler([this](const tr::db::DatabaseError& e) {
            tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        });
        model->setFieldFormat(QStringLiteral("ChqValue"), [](const QVariant& v) {
            return v.isNull() ? QString() : tr::persian::formatAmount(v.toDouble());
        });
    }
    cheques_ = makeGrid(this, chequeModel_, QStringLiteral("dbgChq"));
    counterparties_ = makeGrid(this, counterpartyModel_, QStringLiteral("dbgTaraf"));
    cheques_->installEventFilter(this);
    connect(chequeModel_, &QAbstractItemModel::modelReset, this, [this] { arrange(cheques_, chequeModel_, chequeColumns()); });
    connect(counterpartyModel_, &QAbstractItemModel::modelReset, this,
            [this] { arrange(counterparties_, counterpartyModel_, counterpartyColumns()); });
    connect(cheques_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
        if (!current.isValid()) return;
        guarded([&] {
            chequeModel_->setCurrentRow(current.row());
            return true;
        });
        showValues();
    });
    auto* weighted = new QAction(QStringLiteral("راس چك"), cheques_);
    connect(weighted, &QAction::triggered, this, [this] {
        guarded([this] {
            document_->showWeightedDueDate();
            return true;
        });
    });
    cheques_->addAction(weighted);
    cheques_->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto* lower = new QHBoxLayout;
    lower->addWidget(new QLabel(QStringLiteral("سرفصل طرف حساب"), this));
    const char* names[] = {"EKoll", "EMoein", "ETafsily", "ETafsily2", "EProject"};
    for (int i = 0; i < 5; ++i) {
        lower_[i] = box(this, QString::fromLatin1(names[i]), 80);
        lower->addWidget(lower_[i]);
        connect(lower_[i], &QLineEdit::editingFinished, this, [this] {
            LowerAccount& a = document_->lowerAccount();
            a = {lower_[0]->text(), lower_[1]->text(), lower_[2]->text(), lower_[3]->text(), lower_[4]->text()};
        });
    }
    lower->addStretch(1);
    totals_->setMinimumWidth(320);
    lower->addWidget(totals_);

    save_ = new QPushButton(QStringLiteral("تاييد"), this);
    opening_ = new QPushButton(QStringLiteral("چکاولدوره"), this);
    delete_ = new QPushButton(QStringLiteral("حذف"), this);
    cancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    connect(save_, &QPushButton::clicked, this, [this] {
        takeHeader();
        if (guarded([this] { return document_->postCheque(); })) guarded([this] { return document_->save(); });
        showValues();
    });
    connect(opening_, &QPushButton::clicked, this, [this] {
        takeHeader();
        if (guarded([this] { return document_->postCheque(); })) guarded([this] { return document_->save(true); });
        showValues();
    });
    connect(delete_, &QPushButton::clicked, this, [this] {
        guarded([this] { return document_->remove(); });
        showValues();
    });
    connect(cancel_, &QPushButton::clicked, this, [this] {
        guarded([this] {
            document_->cancelEdits();
            return true;
        });
        showValues();
    });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* b : {save_, opening_, delete_, cancel_}) buttons->addWidget(b);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(caption_);
    layout->addLayout(header);
    layout->addWidget(new QLabel(QStringLiteral("چكها(Alt+1)"), this));
    layout->addWidget(cheques_, 3);
    layout->addLayout(lower);
    layout->addWidget(new QLabel(QStringLiteral("طرف حساب/بابت(Alt+1)"), this));
    layout->addWidget(counterparties_, 2);
    layout->addLayout(buttons);
}

TChqGetForm::~TChqGetForm() = default;

void TChqGetForm::setServices(const tr::Services& services) {
    services_ = services;
}

void TChqGetForm::setInvoiceNumber(const QString& number) {
    invoice_->setText(QStringLiteral("شماره فاکتور ") + number);
    invoice_->setVisible(!number.trimmed().isEmpty());
}

void TChqGetForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (started_) return;
    started_ = true;
    guarded([this] {
        document_->newDocument();
        return true;
    });
    showValues();
}

bool TChqGetForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void TChqGetForm::showValues() {
    const ChequeDocumentHeader& h = document_->header();
    caption_->setText(ReceivedChequeDocument::kTitle + QStringLiteral(" - ") + document_->caption());
    serial_->setText(h.serial);
    year_->setText(h.date.mid(0, 4));
    month_->setText(h.date.mid(5, 2));
    day_->setText(h.date.mid(8, 2));
    voucher_->setText(h.voucherNo);
    user_->setText(h.userName);
    const LowerAccount& a = document_->lowerAccount();
    const QString levels[] = {a.koll, a.moein, a.tafsily, a.tafsily2, a.projectCod};
    for (int i = 0; i < 5; ++i) lower_[i]->setText(levels[i]);
    totals_->setText(QStringLiteral("جمع بدهکار ") + tr::persian::formatAmount(document_->debitTotal()) +
                     QStringLiteral("   جمع بستانکار ") + tr::persian::formatAmount(document_->creditTotal()));
}

void TChqGetForm::takeHeader() {
    document_->header().date = year_->text().trimmed() + QLatin1Char('/') + month_->text().trimmed().rightJustified(2, '0') +
                               QLatin1Char('/') + day_->text().trimmed().rightJustified(2, '0');
}

void TChqGetForm::postOrAppend() {
    // A new row starts at its number, or stays in the column the user is in.
    int column = cheques_->currentIndex().column();
    if (column < 0 || cheques_->isColumnHidden(column)) column = chequeModel_->fieldColumn(QStringLiteral("ChqNo"));
    if (!guarded([this] {
            document_->appendCheque();
            return document_->cheques().state() != tr::db::Query::State::Browse;
        }))
        return;
    cheques_->setCurrentIndex(chequeModel_->index(chequeModel_->currentRow(), column));
    showValues();
}

bool TChqGetForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == cheques_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const bool lastRow = cheques_->currentIndex().row() >= chequeModel_->rowCount() - 1;
        if ((key->key() == Qt::Key_Insert && key->modifiers() == Qt::NoModifier) ||
            (key->key() == Qt::Key_Down && lastRow)) {
            postOrAppend();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tr::cheques
