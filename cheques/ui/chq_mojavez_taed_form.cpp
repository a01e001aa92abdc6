#include "cheques/ui/chq_mojavez_taed_form.h"

#include <QComboBox>
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

const QList<QPair<QString, QString>>& approvalColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("sSelect"), QStringLiteral("تاييد")},
        {QStringLiteral("Abtal"), QStringLiteral("ابطال")},
        {QStringLiteral("Serial"), QStringLiteral("سريال")},
        {QStringLiteral("SanadDate"), QStringLiteral("تاريخ")},
        {QStringLiteral("AbtalDate"), QStringLiteral("تاريخ ابطال")},
        {QStringLiteral("ModirMale"), QStringLiteral("تاييد مدير مالي")},
        {QStringLiteral("ModirMaleDate"), QStringLiteral("تاريخ تاييد مدير مالي")},
        {QStringLiteral("ModirAmel"), QStringLiteral("تاييد مدير عامل")},
        {QStringLiteral("ModirAmelDate"), QStringLiteral("تاريخ تاييد مدير عامل")},
        {QStringLiteral("IsChqSodor"), QStringLiteral("صدور مجوز")},
        {QStringLiteral("ChqSerial"), QStringLiteral("سريال پرداخت چك ")},
        {QStringLiteral("ChqDate"), QStringLiteral("تاريخ صدور چك")},
        {QStringLiteral("sValue"), QStringLiteral("جمع مبلغ")}};
    return columns;
}

QLineEdit* box(QWidget* parent, const char* name, int width) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setMaximumWidth(width);
    return edit;
}

}  // namespace

TChqMojavezTaedForm::TChqMojavezTaedForm(const tr::Services& services, QWidget* parent)
    : QWidget(parent), services_(services), approval_(std::make_unique<PermitApproval>(services)) {
    setObjectName(QStringLiteral("ChqMojavezTaedForm"));
    setWindowTitle(QStringLiteral("تاييد صدور مجوز پرداخت چك"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));

    auto* caption = new QLabel(windowTitle(), this);
    caption->setAlignment(Qt::AlignCenter);
    caption->setAutoFillBackground(true);
    caption->setForegroundRole(QPalette::HighlightedText);
    caption->setBackgroundRole(QPalette::Highlight);
    caption->setMinimumHeight(26);

    approver_ = new QComboBox(this);
    approver_->setObjectName(QStringLiteral("cmbTaedKonandeh"));
    for (const Approver role : approval_->roles()) approver_->addItem(PermitApproval::roleName(role), int(role));
    // A choice only for a user who holds both roles.
    approver_->setEnabled(approver_->count() > 1);
    connect(approver_, &QComboBox::activated, this, [this](int index) {
        approval_->setApprover(Approver(approver_->itemData(index).toInt()));
        refill();
    });
    fromSerial_ = box(this, "txtFrSerial", 70);
    toSerial_ = box(this, "txtToSerial", 70);
    fromDate_ = box(this, "txtFrDate", 95);
    toDate_ = box(this, "txtToDate", 95);
    for (QLineEdit* filter : {fromSerial_, toSerial_, fromDate_, toDate_})
        connect(filter, &QLineEdit::editingFinished, this, [this] { refill(); });
    auto* filters = new QHBoxLayout;
    filters->addWidget(new QLabel(QStringLiteral("تاييد كننده"), this));
    filters->addWidget(approver_);
    filters->addSpacing(12);
    filters->addWidget(new QLabel(QStringLiteral("از سريال"), this));
    filters->addWidget(fromSerial_);
    filters->addWidget(new QLabel(QStringLiteral("تا"), this));
    filters->addWidget(toSerial_);
    filters->addSpacing(12);
    filters->addWidget(new QLabel(QStringLiteral("از تاريخ"), this));
    filters->addWidget(fromDate_);
    filters->addWidget(new QLabel(QStringLiteral("تا"), this));
    filters->addWidget(toDate_);
    filters->addStretch(1);

    model_ = new tr::ui::DatasetModel(&approval_->rows(), this);
    model_->setReadOnly(true);  // the ticks turn by key or double click
    model_->setErrorHandler([this](const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
    });
    model_->setFieldFormat(QStringLiteral("sValue"), [](const QVariant& v) {
        return v.isNull() ? QString() : tr::persian::formatAmount(v.toDouble());
    });
    model_->setFieldFormat(QStringLiteral("ChqSerial"), [](const QVariant& v) {
        return v.isNull() || v.toLongLong() == 0 ? QString() : v.toString();
    });
    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbgTaed"));
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->installEventFilter(this);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] { arrange(); });
    connect(grid_, &QTableView::doubleClicked, this, [this] { toggleCurrent(); });

    date_ = box(this, "txtTaedDate", 95);
    date_->setText(approval_->actionDate());
    confirm_ = new QPushButton(QStringLiteral("تاييد"), this);
    confirm_->setObjectName(QStringLiteral("cmdOk"));
    confirm_->setEnabled(approval_->mayApprove());
    auto* cancel = new QPushButton(QStringLiteral("انصراف"), this);
    connect(confirm_, &QPushButton::clicked, this, [this] {
        approval_->actionDate() = date_->text();
        guarded([this] { return approval_->apply(); });
        model_->refresh();
    });
    connect(cancel, &QPushButton::clicked, this, [this] { refill(); });
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(QStringLiteral("تاريخ تاييد/ابطال"), this));
    bottom->addWidget(date_);
    bottom->addStretch(1);
    bottom->addWidget(confirm_);
    bottom->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(caption);
    layout->addLayout(filters);
    layout->addWidget(grid_, 1);
    layout->addLayout(bottom);
}

TChqMojavezTaedForm::~TChqMojavezTaedForm() {
    tr::ui::DatasetModel::releaseQueries(this);
}

void TChqMojavezTaedForm::setServices(const tr::Services& services) {
    services_ = services;
}

void TChqMojavezTaedForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (started_) return;
    started_ = true;
    refill();
}

void TChqMojavezTaedForm::refill() {
    PermitApproval::Filter& f = approval_->filter();
    f = {fromSerial_->text(), toSerial_->text(), fromDate_->text(), toDate_->text()};
    guarded([this] {
        approval_->fill();
        return true;
    });
    model_->refresh();
}

void TChqMojavezTaedForm::arrange() {
    const QList<QPair<QString, QString>>& columns = approvalColumns();
    for (int c = 0; c < model_->columnCount(); ++c) grid_->setColumnHidden(c, true);
    for (int i = 0; i < columns.size(); ++i) {
        const int c = model_->fieldColumn(columns[i].first);
        if (c < 0) continue;
        model_->setTitle(columns[i].first, columns[i].second);
        grid_->setColumnHidden(c, false);
        grid_->setColumnWidth(c, columns[i].first.endsWith(QLatin1String("Date")) ? 95 : i < 2 ? 45 : 80);
        grid_->horizontalHeader()->moveSection(grid_->horizontalHeader()->visualIndex(c), i);
    }
}

void TChqMojavezTaedForm::toggleCurrent() {
    const QModelIndex at = grid_->currentIndex();
    if (!at.isValid()) return;
    const QString field = model_->fieldName(at.column());
    guarded([&] {
        model_->setCurrentRow(at.row());
        return approval_->toggle(field);
    });
    model_->refresh();
    grid_->setCurrentIndex(model_->index(at.row(), at.column()));
}

bool TChqMojavezTaedForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        toggleCurrent();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

bool TChqMojavezTaedForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

}  // namespace tr::cheques
