#include "cheques/ui/chq_get_form.h"

#include <QAction>
#include <QApplication>
#include <QRadioButton>
#include <QGridLayout>
#include <QHash>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include "cheques/received_cheque_document.h"
#include "cheques/ui/chq_get_menus.h"
#include "cheques/ui/chq_first_state_form.h"
#include "cheques/ui/chq_in_factor_form.h"
#include "cheques/ui/search/cheque_search_form.h"
#include "cheques/ui/returned_cheques_form.h"
#include "cheques/prepared_cheques.h"
#include "cheques/ui/received_cheque_printing.h"
#include "currency/ui/taraf_hesab_arz_form.h"
#include "vouchers/account_checks.h"
#include "vouchers/account_lookup.h"
#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/persian/amount.h"
#include "common/db/column_lengths.h"
#include "common/persian/amount_cells.h"
#include "common/ui/dataset_model.h"
#include "common/ui/entry_grid.h"
#include "instruments/cheque_work_tables.h"
#include "common/ui/masked_date_delegate.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

namespace {

// The fields each grid shows, in order, with their captions.
const QList<QPair<QString, QString>>& receivedColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},    {QStringLiteral("Joz"), QStringLiteral("سري")},
        {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},     {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")},
        {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")}, {QStringLiteral("Koll"), QStringLiteral("كل")},
        {QStringLiteral("Moein"), QStringLiteral("معين")},        {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")},
        {QStringLiteral("BankCod"), QStringLiteral("بانك")},      {QStringLiteral("ShobehCod"), QStringLiteral("شعبه")},
        {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")}, {QStringLiteral("Tazmin"), QStringLiteral("تضميني")},
        {QStringLiteral("Havaleh"), QStringLiteral("بحوالهکرد")}, {QStringLiteral("ArzNam"), QStringLiteral("ارز")},
        {QStringLiteral("ArzCount"), QStringLiteral("مقدار ارز")}, {QStringLiteral("Nerkh"), QStringLiteral("نرخ")},
        {QStringLiteral("Des"), QStringLiteral("شرح")}};
    return columns;
}

const QList<QPair<QString, QString>>& counterpartyColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")}, {QStringLiteral("Joz"), QStringLiteral("سري")},
        {QStringLiteral("Koll"), QStringLiteral("كل")},        {QStringLiteral("Moein"), QStringLiteral("معين")},
        {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")}, {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
        {QStringLiteral("ArzNam"), QStringLiteral("ارز")},     {QStringLiteral("ArzCount"), QStringLiteral("مقدار ارز")},
        {QStringLiteral("ArzNam2"), QStringLiteral("ارز 2")},  {QStringLiteral("ArzCount2"), QStringLiteral("مقدار ارز 2")},
        {QStringLiteral("ManabehCod"), QStringLiteral("منابع")}, {QStringLiteral("Des"), QStringLiteral("شرح")}};
    return columns;
}

// Widths that fit what the fields hold; the description takes what is left.
int columnWidth(const QString& field) {
    static const QHash<QString, int> widths = {
        {QStringLiteral("ChqNo"), 80},     {QStringLiteral("Joz"), 50},       {QStringLiteral("ChqValue"), 110},
        {QStringLiteral("SarResidDate"), 85}, {QStringLiteral("ChqGetter"), 110}, {QStringLiteral("Koll"), 45},
        {QStringLiteral("Moein"), 50},     {QStringLiteral("Tafsily"), 60},   {QStringLiteral("BankCod"), 50},
        {QStringLiteral("ShobehCod"), 50}, {QStringLiteral("AcountCod"), 100}, {QStringLiteral("Tazmin"), 50},
        {QStringLiteral("Havaleh"), 65},   {QStringLiteral("ArzNam"), 90},    {QStringLiteral("ArzCount"), 70},
        {QStringLiteral("Nerkh"), 80},     {QStringLiteral("ArzNam2"), 80},   {QStringLiteral("ArzCount2"), 70},
        {QStringLiteral("ManabehCod"), 50}};
    return widths.value(field, 100);
}

// Shows `columns` in their order with their captions; every other field hidden.
void arrange(QTableView* view, tr::ui::DatasetModel* model, const QList<QPair<QString, QString>>& columns) {
    for (int c = 0; c < model->columnCount(); ++c) view->setColumnHidden(c, true);
    for (int i = 0; i < columns.size(); ++i) {
        const int c = model->fieldColumn(columns[i].first);
        if (c < 0) continue;
        model->setTitle(columns[i].first, columns[i].second);
        view->setColumnHidden(c, false);
        view->setColumnWidth(c, columnWidth(columns[i].first));
        view->horizontalHeader()->moveSection(view->horizontalHeader()->visualIndex(c), i);
    }
}

QTableView* makeGrid(QWidget* parent, tr::ui::DatasetModel* model, const QString& name) {
    auto* view = new tr::ui::EntryGrid(parent);
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
    : TChqGetForm(services, std::make_unique<ReceivedChequeDocument>(services), receivedColumns(), parent) {
    setObjectName(QStringLiteral("ChqGetForm"));
}

TChqGetForm::TChqGetForm(const tr::Services& services, std::unique_ptr<ChequeDocument> document,
                         QList<QPair<QString, QString>> chequeColumns, QWidget* parent)
    : QWidget(parent), services_(services), document_(std::move(document)), chequeColumns_(std::move(chequeColumns)) {
    setWindowTitle(document_->side().kind.title);
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
    voucher_->setMinimumWidth(60);
    user_->setMinimumWidth(90);
    // Beside their captions, whatever the digits make of the text's direction.
    for (QLabel* value : {voucher_, user_}) value->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
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
    for (QLineEdit* part : {day_, month_, year_}) {
        connect(part, &QLineEdit::editingFinished, this, [this] {
            takeHeader();
            // Checked once the user leaves the three boxes, not between them.
            QWidget* next = QApplication::focusWidget();
            if (next == day_ || next == month_ || next == year_) return;
            if (!guarded([this] { return document_->checkDate(); })) year_->setFocus();
        });
    }

    auto* header = headerRow_ = new QHBoxLayout;
    header->addWidget(new QLabel(QStringLiteral("سريال"), this));
    header->addWidget(serial_);
    header->addWidget(new QLabel(QStringLiteral("تاريخ صدور"), this));
    header->addWidget(year_);
    header->addWidget(new QLabel(QStringLiteral("/"), this));
    header->addWidget(month_);
    header->addWidget(new QLabel(QStringLiteral("/"), this));
    header->addWidget(day_);
    voucherCaption_ = new QLabel(QStringLiteral("سند"), this);
    header->addWidget(voucherCaption_);
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
        // An amount as typed (text, until its row posts) shows as typed.
        model->setFieldFormat(QStringLiteral("ChqValue"), tr::persian::amountCellText);
    }
    // Typing is held to the work tables' widths.
    chequeModel_->setFieldLengths(tr::db::textColumnLengths(document_->side().chequeColumns));
    counterpartyModel_->setFieldLengths(tr::db::textColumnLengths(tr::instruments::counterpartyWorkTableColumns()));
    cheques_ = makeGrid(this, chequeModel_, QStringLiteral("dbgChq"));
    counterparties_ = makeGrid(this, counterpartyModel_, QStringLiteral("dbgTaraf"));
    cheques_->installEventFilter(this);
    counterparties_->installEventFilter(this);
    // A click into the empty cheque grid starts the first cheque, as typing would.
    cheques_->viewport()->installEventFilter(this);
    // "(Alt+1)" on the grids' captions: to the cheques, and from them to the counterparty lines.
    auto* toGrids = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_1), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(toGrids, &QShortcut::activated, this, [this] { switchGrids(); });
    // The due date is typed as its digits into "0000/00/00".
    auto* dueDate = new tr::ui::MaskedDateDelegate(this);
    const auto dueDateColumn = [this, dueDate] {
        const int column = chequeModel_->fieldColumn(QStringLiteral("SarResidDate"));
        if (column >= 0) cheques_->setItemDelegateForColumn(column, dueDate);
    };
    dueDateColumn();
    connect(chequeModel_, &QAbstractItemModel::modelReset, this, [this, dueDateColumn] {
        arrange(cheques_, chequeModel_, chequeColumns_);
        keepCurrentRow(cheques_, chequeModel_);
        dueDateColumn();
    });
    connect(counterpartyModel_, &QAbstractItemModel::modelReset, this, [this] {
        arrange(counterparties_, counterpartyModel_, counterpartyColumns());
        keepCurrentRow(counterparties_, counterpartyModel_);
    });
    connect(cheques_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
        if (!current.isValid()) return;
        guarded([&] {
            chequeModel_->setCurrentRow(current.row());
            return true;
        });
        // A row its checks refused keeps the cursor, so that the user puts it right there.
        if (chequeModel_->currentRow() != current.row()) keepCurrentRow(cheques_, chequeModel_);
        chequeRowShown();
        showValues();
    });
    menus_ = new ChqGetMenus(*this, [this] { showValues(); });
    menus_->hooks.search = [this] { openChequeSearch(ChequeSide::Received, services_, this); };
    menus_->hooks.openingStates = [this] { openOpeningStates(); };
    if (auto* received = dynamic_cast<ReceivedChequeDocument*>(document_.get())) {
        menus_->hooks.assignToInvoices = [this, received] {
            guarded([&] { return ui::assignChequeToInvoices(received->settlement(), this); });
            showValues();
        };
    }
    menus_->hooks.returnedCheques = [this](const tr::vouchers::LineAccount& account) {
        guarded([&] { return showReturnedCheques(services_, account, this) != nullptr; });
    };
    menus_->hooks.designPrint = [this] {
        guarded([this] { return ui::designReceivedChequePrint(services_, document_->header().serial, this); });
    };
    // "چاپ …" (Ctrl+P) prints the voucher, as on the cash screens; opening cheques have none, and
    // print their document instead.
    menus_->hooks.printDocument = [this] {
        if (document_->mode() != DocumentMode::Edit) return;
        guarded([this] {
            return ui::printReceivedChequeVoucher(services_, document_->header().serial, ui::PrintTarget::preview(),
                                                  this) ||
                   (printDocument(), true);
        });
    };

    auto* lower = new QHBoxLayout;
    lower->addWidget(new QLabel(QStringLiteral("سرفصل طرف حساب"), this));
    // The voucher lines' widths: a longer code could never be an account or a project.
    const char* names[] = {"EKoll", "EMoein", "ETafsily", "ETafsily2", "EProject"};
    const int widths[] = {3, 4, 5, 5, 10};
    const char* tips[] = {"كل", "معين", "تفصيلي", "تفصيلي ۲", "پروژه"};
    for (int i = 0; i < 5; ++i) {
        lower_[i] = box(this, QString::fromLatin1(names[i]), 80);
        lower_[i]->setMaxLength(widths[i]);
        lower_[i]->setToolTip(QString::fromUtf8(tips[i]));
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
    savePrint_ = new QPushButton(QStringLiteral("تاييد و چاپ"), this);
    newLayout_ = new QRadioButton(QStringLiteral("جديد"), this);
    oldLayout_ = new QRadioButton(QStringLiteral("قديم"), this);
    newLayout_->setChecked(true);
    delete_ = new QPushButton(QStringLiteral("حذف"), this);
    cancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    connect(save_, &QPushButton::clicked, this, [this] { saveDocument(); });
    connect(savePrint_, &QPushButton::clicked, this, [this] {
        takeHeader();
        if (guarded([this] { return document_->postCheque(); }) && guarded([this] { return document_->save(); }))
            printDocument();
        showValues();
    });
    connect(opening_, &QPushButton::clicked, this, [this] {
        takeHeader();
        // The opening cheques' states are set next, on their own screen.
        if (guarded([this] { return document_->postCheque(); }) && guarded([this] { return document_->save(true); }))
            openOpeningStates();
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
    auto* buttons = buttonRow_ = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(newLayout_);
    buttons->addWidget(oldLayout_);
    for (QPushButton* b : {savePrint_, save_, opening_, delete_, cancel_}) buttons->addWidget(b);
    // "انتخاب چک": a cheque prepared beforehand becomes a new row of a receipt.
    if (!document_->side().payment) {
        auto* prepared = new QPushButton(kPreparedChequesTitle, this);
        prepared->setObjectName(QStringLiteral("btnPreparedCheques"));
        connect(prepared, &QPushButton::clicked, this, [this] {
            guarded([this] { return pickPreparedCheque(services_, *document_); });
            chequeModel_->refresh();
            showValues();
        });
        buttons->insertWidget(1, prepared);
    }

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

TChqGetForm::~TChqGetForm() {
    tr::ui::DatasetModel::releaseQueries(this);
}

void TChqGetForm::setServices(const tr::Services& services) {
    services_ = services;
}

void TChqGetForm::setInvoiceNumber(const QString& number) {
    invoiceNumber_ = number.trimmed();
    // Before the first show the window's own start does it.
    if (started_) {
        guarded([this] {
            document_->setInvoiceNumber(invoiceNumber_);
            return true;
        });
        showValues();
    }
}

bool TChqGetForm::saveDocument() {
    takeHeader();
    const bool saved =
        guarded([this] { return document_->postCheque(); }) && guarded([this] { return document_->save(); });
    showValues();
    return saved;
}

bool TChqGetForm::newLayoutChosen() const {
    return newLayout_->isChecked();
}

void TChqGetForm::printDocument() {
    const QString serial = document_->header().serial;
    if (document_->mode() != DocumentMode::Edit) return;
    guarded([&] {
        return ui::printReceivedChequeDocument(services_, serial,
                                               newLayout_->isChecked() ? ui::PrintLayout::New : ui::PrintLayout::Old,
                                               ui::PrintTarget::preview(), this);
    });
}

void TChqGetForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (started_) return;
    started_ = true;
    guarded([this] {
        if (invoiceNumber_.isEmpty())
            document_->newDocument();
        else
            document_->setInvoiceNumber(invoiceNumber_);
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
    caption_->setText(document_->side().kind.title + QStringLiteral(" - ") + document_->caption());
    serial_->setText(h.serial);
    year_->setText(h.date.mid(0, 4));
    month_->setText(h.date.mid(5, 2));
    day_->setText(h.date.mid(8, 2));
    voucher_->setText(h.voucherNo);
    user_->setText(h.userName);
    // The invoice the screen was opened for, or the one (or several) the loaded serial pays.
    const QString note = document_->invoiceNote();
    const QString invoice = !invoiceNumber_.isEmpty() ? invoiceNumber_ : note;
    invoice_->setText(invoice == ChequeDocument::kMultiInvoiceNote ? invoice
                                                                          : QStringLiteral("شماره فاکتور ") + invoice);
    invoice_->setVisible(!invoice.isEmpty());
    save_->setEnabled(document_->canSave());
    savePrint_->setEnabled(document_->canSave());
    opening_->setEnabled(document_->canSave(true));
    delete_->setEnabled(document_->canDelete());
    const LowerAccount& a = document_->lowerAccount();
    const QString levels[] = {a.koll, a.moein, a.tafsily, a.tafsily2, a.projectCod};
    for (int i = 0; i < 5; ++i) lower_[i]->setText(levels[i]);
    totals_->setText(QStringLiteral("جمع بدهکار ") + tr::persian::formatAmount(document_->debitTotal()) +
                     QStringLiteral("   جمع بستانکار ") + tr::persian::formatAmount(document_->creditTotal()));
    showSideValues();
}

void TChqGetForm::takeHeader() {
    document_->header().date = year_->text().trimmed() + QLatin1Char('/') + month_->text().trimmed().rightJustified(2, '0') +
                               QLatin1Char('/') + day_->text().trimmed().rightJustified(2, '0');
}

// A grid read anew loses the view's current cell, and a focused view then takes the first row,
// which would post (and refuse) the row the user is typing: the view follows the logic instead.
void TChqGetForm::keepCurrentRow(QTableView* grid, tr::ui::DatasetModel* model) {
    const int row = model->currentRow();
    if (row < 0) return;
    int column = grid->currentIndex().column();
    if (column < 0 || grid->isColumnHidden(column)) column = model->fieldColumn(QStringLiteral("ChqNo"));
    grid->selectionModel()->setCurrentIndex(model->index(row, column), QItemSelectionModel::NoUpdate);
}

void TChqGetForm::postOrAppend() {
    // The cell being typed (its editor open after a Tab) is committed and closed first: a
    // focused editor hidden by the grid's reset would hand the focus on and move the grid to
    // its first row, posting the new row on the way.
    cheques_->setFocus();
    // A new cheque starts at its number.
    const int column = chequeModel_->fieldColumn(QStringLiteral("ChqNo"));
    if (!guarded([this] {
            document_->appendCheque();
            // The payee "حامل" is a default: the row left untouched is dropped.
            document_->cheques().markUnmodified();
            return document_->cheques().state() != tr::db::Query::State::Browse;
        }))
        return;
    cheques_->setCurrentIndex(chequeModel_->index(chequeModel_->currentRow(), column));
    showValues();
}

bool TChqGetForm::pickList(QTableView* grid) {
    const QModelIndex at = grid->currentIndex();
    auto* model = static_cast<tr::ui::DatasetModel*>(grid->model());
    if (!at.isValid()) return false;
    const QString field = model->fieldName(at.column());
    const bool chequeGrid = grid == cheques_;
    bool picked = false;
    guarded([&] {
        tr::db::Query& rows = chequeGrid ? document_->cheques() : document_->counterparties();
        if (field.startsWith(QLatin1String("Arz")) || field.startsWith(QLatin1String("Nerkh"))) {
            if (chequeGrid) {
                picked = document_->chooseChequeCurrency();
            } else {
                tr::currency::ui::TarafHesabArzPrompt prompt(services_, this);
                picked = document_->askCounterpartyCurrencies(prompt);
            }
        } else if (const auto level = tr::vouchers::accountLevelOfField(field); level != tr::vouchers::AccountLevel::None) {
            if (rows.state() == tr::db::Query::State::Browse && !rows.IsEmpty()) rows.Edit();
            picked = tr::vouchers::AccountLookup(services_).pickInto(level, rows);
        }
        return picked;
    });
    (chequeGrid ? chequeModel_ : counterpartyModel_)->refresh();
    showValues();
    return picked;
}

void TChqGetForm::openOpeningStates() {
    const auto side = document_->side().payment ? tr::instruments::Side::Issued : tr::instruments::Side::Received;
    guarded([&] { return showOpeningChequeStates(services_, side, this) != nullptr; });
}

void TChqGetForm::switchGrids() {
    if (chequeModel_->rowCount() == 0) {
        postOrAppend();
        return;
    }
    if (cheques_->hasFocus() || cheques_->isAncestorOf(QApplication::focusWidget()))
        counterparties_->setFocus();
    else
        cheques_->setFocus();
}

bool TChqGetForm::eventFilter(QObject* watched, QEvent* event) {
    // The grids take Alt+1 as typing; it is the form's.
    if ((watched == cheques_ || watched == counterparties_) && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_1 && key->modifiers() == Qt::AltModifier) {
            switchGrids();
            return true;
        }
    }
    if (watched == cheques_->viewport() && event->type() == QEvent::MouseButtonPress && chequeModel_->rowCount() == 0) {
        postOrAppend();
        return true;
    }
    if ((watched == cheques_ || watched == counterparties_) && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (chequeKey(static_cast<QTableView*>(watched), key)) return true;
        if ((key->key() == Qt::Key_F2 || key->key() == Qt::Key_F3) && key->modifiers() == Qt::NoModifier) {
            pickList(static_cast<QTableView*>(watched));
            return true;
        }
    }
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
