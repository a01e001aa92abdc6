#include "settlement/ui/in_factor_window.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <QAction>
#include <QSignalBlocker>
#include <functional>

#include "common/persian/amount_cells.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "common/ui/settings_libraries.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::settlement::ui {

// Typing an allocation goes through the dialog's rules instead of straight into the row (the
// cell is edited as text, as every amount is).
class AllocationModel : public tr::ui::DatasetModel {
  public:
    AllocationModel(InFactorDialog& logic, QObject* parent)
        : DatasetModel(&logic.list(), parent), logic_(logic) {}

    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::EditRole || !isAllocation(index)) return DatasetModel::setData(index, value, role);
        setCurrentRow(index.row());
        const bool accepted = value.typeId() == QMetaType::QString ? logic_.setAllocationText(value.toString())
                                                                   : logic_.setAllocation(value.toDouble());
        if (accepted && onChanged) onChanged();
        return accepted;
    }

    std::function<void()> onChanged;

  private:
    bool isAllocation(const QModelIndex& index) const {
        return fieldName(index.column()).compare(QLatin1String("NaghdValue"), Qt::CaseInsensitive) == 0;
    }

    InFactorDialog& logic_;
};

InFactorWindow::~InFactorWindow() {
    tr::ui::DatasetModel::releaseQueries(this);
}

InFactorWindow::InFactorWindow(InvoicePayer& payer, const QString& objectName, QWidget* parent)
    : QDialog(parent), logic_(payer) {
    setObjectName(objectName);
    setWindowTitle(QStringLiteral(" ثبت چک در صورتحساب"));
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(11));
    resize(900, 520);

    lblTitle_ = new QLabel(logic_.kind().titleBar, this);
    lblTitle_->setObjectName(QStringLiteral("lblTitle"));
    lblTitle_->setAutoFillBackground(true);
    lblTitle_->setStyleSheet(QStringLiteral(
        "QLabel { background: #1f4e79; color: white; font-weight: bold; padding: 6px; }"));
    lblTitle_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    const auto valueLabel = [this](const char* name) {
        auto* label = new QLabel(this);
        label->setObjectName(QLatin1String(name));
        label->setFrameShape(QFrame::StyledPanel);
        label->setMinimumWidth(150);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setLayoutDirection(Qt::LeftToRight);
        return label;
    };
    lblNumber_ = valueLabel("lblSerial");
    lblNumber_->setText(logic_.serial());
    lblAmount_ = valueLabel("lblAmount");
    lblRemaining_ = valueLabel("lblRemaining");
    chkFilter_ = new QCheckBox(logic_.kind().filterCaption, this);
    chkFilter_->setObjectName(QStringLiteral("chkFilter"));
    chkFilter_->setChecked(logic_.customerFilter());

    auto* top = new QGridLayout;
    top->setHorizontalSpacing(8);
    top->addWidget(new QLabel(logic_.kind().numberCaption, this), 0, 0);
    top->addWidget(lblNumber_, 0, 1);
    top->addWidget(new QLabel(logic_.kind().amountCaption, this), 0, 2);
    top->addWidget(lblAmount_, 0, 3);
    top->addWidget(chkFilter_, 0, 4);
    top->addWidget(new QLabel(logic_.kind().remainingCaption, this), 1, 2);
    top->addWidget(lblRemaining_, 1, 3);
    top->setColumnStretch(5, 1);

    model_ = new AllocationModel(logic_, this);
    const std::vector<InFactorDialog::Column> columns = InFactorDialog::columns(logic_.kind());
    for (const InFactorDialog::Column& column : columns) {
        if (!column.title.isEmpty()) model_->setTitle(column.field, column.title);
        if (!column.editable) model_->setFieldReadOnly(column.field);
    }
    for (const char* field : {"FactorValue", "GetValue", "NaghdValue", "ChqValue"})
        model_->setFieldFormat(QLatin1String(field), [](const QVariant& v) {
            return tr::persian::amountCellText(v);
        });
    model_->onChanged = [this] { showAmounts(); };

    dbg_ = new QTableView(this);
    dbg_->setObjectName(QStringLiteral("dbg"));
    dbg_->setModel(model_);
    dbg_->setSelectionBehavior(QAbstractItemView::SelectRows);
    dbg_->setSelectionMode(QAbstractItemView::SingleSelection);
    dbg_->verticalHeader()->setDefaultSectionSize(24);
    dbg_->horizontalHeader()->setStretchLastSection(true);
    dbg_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    for (int i = 0; i < int(columns.size()); ++i) {
        const int section = model_->fieldColumn(columns[i].field);
        if (section < 0) continue;
        dbg_->setColumnHidden(section, !columns[i].visible);
    }
    dbg_->setColumnWidth(model_->fieldColumn(QStringLiteral("sSelect")), 30);
    dbg_->setColumnWidth(model_->fieldColumn(QStringLiteral("DorehMali")), 70);
    for (const char* field : {"SanadNoForosh", "FactorDate"})
        dbg_->setColumnWidth(model_->fieldColumn(QLatin1String(field)), 105);
    for (const char* field : {"FactorValue", "GetValue", "NaghdValue"})
        dbg_->setColumnWidth(model_->fieldColumn(QLatin1String(field)), 120);
    dbg_->installEventFilter(this);
    connect(dbg_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { syncCurrentRow(); });
    connect(dbg_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (model_->fieldName(index.column())
                .compare(QLatin1String("sSelect"), Qt::CaseInsensitive) != 0)
            return;
        syncCurrentRow();
        if (logic_.toggleSelect()) showAmounts();
    });
    connect(chkFilter_, &QCheckBox::toggled, this, [this](bool on) {
        if (!logic_.setCustomerFilter(on)) {
            const QSignalBlocker quiet(chkFilter_);
            chkFilter_->setChecked(false);
        }
        showAmounts();
    });

    cmdOk_ = new QPushButton(QStringLiteral("تاييد"), this);
    cmdOk_->setObjectName(QStringLiteral("cmdOk"));
    auto* cmdPayments = new QPushButton(QStringLiteral("وجوه پرداختي"), this);
    cmdPayments->setObjectName(QStringLiteral("cmdPayments"));
    auto* cmdCancel = new QPushButton(QStringLiteral("انصراف"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOk_, &QPushButton::clicked, this, [this] { cmdOkClick(); });
    connect(cmdPayments, &QPushButton::clicked, this, [this] {
        syncCurrentRow();
        logic_.showPayments();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdPayments);
    buttons->addStretch(1);
    buttons->addWidget(cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 8);
    layout->addWidget(lblTitle_);
    auto* body = new QVBoxLayout;
    body->setContentsMargins(10, 4, 10, 0);
    body->addLayout(top);
    body->addWidget(dbg_, 1);
    body->addLayout(buttons);
    layout->addLayout(body, 1);

    if (!logic_.kind().reportKey.isEmpty()) addReportMenu();
    showAmounts();
}

void InFactorWindow::addReportMenu() {
    report_.setObjectName(logic_.kind().reportKey);
    auto* properties = new QAction(logic_.kind().reportProperties, dbg_);
    connect(properties, &QAction::triggered, this, [this] {
        tr::ui::openReportSettings(logic_.payerServices().global->hostFolder, &report_, logic_.kind().reportProperties);
    });
    dbg_->addAction(properties);
    auto* print = new QAction(QStringLiteral("چاپ"), dbg_);
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(print, &QAction::triggered, this, [this] { printList(); });
    dbg_->addAction(print);
    dbg_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

bool InFactorWindow::printList(const QString& pdfFile) {
    const QString title = logic_.kind().reportTitle;
    return tr::ui::printReport(report_, title, tr::ui::gridReportHtml(title, *dbg_), this, pdfFile,
                               tr::ui::PageTurn::Landscape);
}

void InFactorWindow::showAmounts() {
    lblAmount_->setText(InFactorDialog::amountText(logic_.amount()));
    lblRemaining_->setText(InFactorDialog::amountText(logic_.remaining()));
}

void InFactorWindow::syncCurrentRow() {
    const QModelIndex current = dbg_->currentIndex();
    if (current.isValid()) model_->setCurrentRow(current.row());
}

bool InFactorWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == dbg_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        syncCurrentRow();
        if (logic_.toggleSelect()) showAmounts();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void InFactorWindow::cmdOkClick() {
    if (logic_.cmdOkClick()) accept();
}

bool InFactorWindow::ask() {
    return tr::sdk::ModalRunner::current().exec(*this) == QDialog::Accepted;
}

}  // namespace tr::settlement::ui
