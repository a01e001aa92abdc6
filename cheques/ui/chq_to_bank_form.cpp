#include "cheques/ui/chq_to_bank_form.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTextDocument>
#include <QVBoxLayout>

#include "cheques/ui/bank_slip_printing.h"
#include "cheques/ui/cheque_condition_dialog.h"
#include "cheques/ui/chq_to_bank_print_form.h"
#include "common/db/database_error.h"
#include "common/dialog/message_dialog.h"
#include "common/ui/dataset_model.h"
#include "common/ui/grid_report.h"
#include "common/ui/settings_libraries.h"
#include "host/sdk/modal_runner.h"
#include "printing/ui/print_design_handoff.h"
#include "printing/ui/print_design_library.h"
#include "common/ui/date_boxes.h"

namespace tr::cheques {

const QString TChqToBankForm::kCaption = QStringLiteral("ارسال چک به بانک");

namespace {

const QString kProperties = QStringLiteral("مشخصات گزارش [ارسال چک به بانک]");

}  // namespace

TChqToBankForm::TChqToBankForm(const tr::Services& services, QWidget* parent)
    : QWidget(parent),
      services_(services),
      list_(std::make_unique<ChequesToBank>(services)),
      slips_(std::make_unique<BankSlips>(services)),
      report_(std::make_unique<QTextDocument>()) {
    setObjectName(QStringLiteral("ChqToBankForm"));
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);

    month_ = new QLineEdit(this);
    month_->setObjectName(QStringLiteral("EMonth"));
    month_->setInputMask(QStringLiteral("0000/00;_"));
    fromDate_ = tr::ui::maskedDateBox(this, QStringLiteral("EFromDate"));
    toDate_ = tr::ui::maskedDateBox(this, QStringLiteral("EToDate"));
    // A month stands for its first and last day.
    connect(month_, &QLineEdit::editingFinished, this, [this] {
        if (month_->text().trimmed().size() < 7) return;
        const auto range = ChequesToBank::monthRange(month_->text());
        fromDate_->setText(range.first);
        toDate_->setText(range.second);
    });
    account_ = new QComboBox(this);
    account_->setObjectName(QStringLiteral("ACOUNTCOD"));
    fromBank_ = new QLineEdit(this);
    fromBank_->setObjectName(QStringLiteral("FRBANKCODGET"));
    toBank_ = new QLineEdit(this);
    toBank_->setObjectName(QStringLiteral("TOBANKCODGET"));
    conditions_ = new QPushButton(QStringLiteral("شرايط ..."), this);
    show_ = new QPushButton(QStringLiteral("نمايش"), this);
    connect(conditions_, &QPushButton::clicked, this, &TChqToBankForm::askConditions);
    connect(show_, &QPushButton::clicked, this, &TChqToBankForm::showList);

    auto* dates = new QHBoxLayout;
    dates->addWidget(new QLabel(QStringLiteral("تاريخ ارسال"), this));
    dates->addWidget(new QLabel(QStringLiteral("ماه"), this));
    dates->addWidget(month_);
    dates->addWidget(new QLabel(QStringLiteral("از"), this));
    dates->addWidget(fromDate_);
    dates->addWidget(new QLabel(QStringLiteral("تا"), this));
    dates->addWidget(toDate_);
    dates->addWidget(conditions_);
    dates->addStretch(1);
    auto* banks = new QHBoxLayout;
    banks->addWidget(new QLabel(QStringLiteral("واگذار به بانك :"), this));
    banks->addWidget(account_, 1);
    banks->addWidget(new QLabel(QStringLiteral("بانک چک از"), this));
    banks->addWidget(fromBank_);
    banks->addWidget(new QLabel(QStringLiteral("تا"), this));
    banks->addWidget(toBank_);
    banks->addWidget(show_);

    model_ = new tr::ui::DatasetModel(&list_->rows(), this);
    model_->setReadOnly(true);
    model_->setErrorHandler([this](const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
    });
    model_->setFieldFormat(QStringLiteral("ChqValue"), [](const QVariant& v) {
        return v.isNull() ? QString() : QString::number(v.toDouble(), 'f', 0);
    });
    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->installEventFilter(this);
    connect(grid_, &QTableView::clicked, this, [this](const QModelIndex& i) { model_->setCurrentRow(i.row()); });
    connect(grid_, &QTableView::doubleClicked, this, [this](const QModelIndex& i) {
        if (model_->fieldName(i.column()).compare(QLatin1String("sSelect"), Qt::CaseInsensitive) == 0)
            toggleRow(i.row());
    });
    connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        guarded([&] {
            list_->sortBy(model_->fieldName(column));
            model_->refresh();
            return true;
        });
    });
    connect(model_, &QAbstractItemModel::modelReset, this, &TChqToBankForm::arrangeColumns);

    // The list's menu: the report's settings, the report, and the slips.
    auto addItem = [this](const QString& text, const std::function<void()>& run) {
        auto* action = new QAction(text, grid_);
        connect(action, &QAction::triggered, this, run);
        grid_->addAction(action);
        return action;
    };
    addItem(kProperties, [this] { tr::ui::openReportSettings(services_.global->hostFolder, report_.get(), kProperties); });
    addItem(QStringLiteral("گزارش ارسال چک به بانک"), [this] { printList(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    addItem(TChqToBankPrintForm::kCaption, [this] { openPrintForm(); });
    addItem(QStringLiteral("طراحي چاپ"), [this] { designPrint(true); });
    addItem(QStringLiteral("چاپ جديد"), [this] { designPrint(false); });
    grid_->setContextMenuPolicy(Qt::ActionsContextMenu);

    count_ = new QLabel(this);
    count_->setObjectName(QStringLiteral("LCount"));
    print_ = new QPushButton(QStringLiteral("چاپ"), this);
    close_ = new QPushButton(QStringLiteral("انصراف"), this);
    connect(print_, &QPushButton::clicked, this, &TChqToBankForm::openPrintForm);
    connect(close_, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(count_);
    buttons->addStretch(1);
    buttons->addWidget(print_);
    buttons->addWidget(close_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(dates);
    layout->addLayout(banks);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);

    account_->addItem(QString(), QString());
    guarded([this] {
        for (const auto& [code, name] : list_->bankAccounts()) account_->addItem(name, code);
        return true;
    });
    showCount(0);
}

TChqToBankForm::~TChqToBankForm() {
    tr::ui::DatasetModel::releaseQueries(this);
}

void TChqToBankForm::setServices(const tr::Services& services) {
    services_ = services;
    list_->setServices(services);
}

bool TChqToBankForm::guarded(const std::function<bool()>& action) {
    try {
        return action();
    } catch (const tr::db::DatabaseError& e) {
        tr::dialog::Messages(services_.dialog).show(e.message(), QStringLiteral("1ER"));
        return false;
    }
}

void TChqToBankForm::arrangeColumns() {
    const auto columns = ChequesToBank::columns();
    for (int c = 0; c < model_->columnCount(); ++c) {
        const QString field = model_->fieldName(c);
        bool shown = false;
        for (const auto& [name, caption] : columns) {
            if (name.compare(field, Qt::CaseInsensitive) != 0) continue;
            model_->setTitle(field, caption);
            shown = true;
        }
        grid_->setColumnHidden(c, !shown);
    }
    for (int i = 0; i < columns.size(); ++i) {
        const int c = model_->fieldColumn(columns[i].first);
        if (c >= 0) grid_->horizontalHeader()->moveSection(grid_->horizontalHeader()->visualIndex(c), i);
    }
}

void TChqToBankForm::showCount(int count) {
    count_->setText(QStringLiteral("تعداد چکهاي انتخاب شده : ") + QString::number(count));
}

void TChqToBankForm::showList() {
    ToBankFilters& f = list_->filters();
    f.fromDate = tr::ui::maskedDate(fromDate_);
    f.toDate = tr::ui::maskedDate(toDate_);
    f.account = account_->currentData().toString();
    f.fromBank = fromBank_->text().trimmed();
    f.toBank = toBank_->text().trimmed();
    guarded([this] {
        list_->fill();
        return true;
    });
    showCount(0);
    if (model_->rowCount() > 0) grid_->setCurrentIndex(model_->index(0, model_->fieldColumn(QStringLiteral("sSelect"))));
}

void TChqToBankForm::toggleRow(int row) {
    if (row < 0 || row >= model_->rowCount()) return;
    model_->setCurrentRow(row);
    guarded([&] {
        showCount(list_->toggleTick());
        return true;
    });
    model_->refresh();
    grid_->setCurrentIndex(model_->index(row, model_->fieldColumn(QStringLiteral("sSelect"))));
}

void TChqToBankForm::askConditions() {
    TChequeConditionDialog dialog(tr::ui::maskedDate(fromDate_), tr::ui::maskedDate(toDate_), this);
    if (tr::sdk::ModalRunner::current().exec(dialog) != QDialog::Accepted) return;
    fromDate_->setText(dialog.fromDate());
    toDate_->setText(dialog.toDate());
}

QString TChqToBankForm::reportTitle() const {
    QString title = QStringLiteral("گزارش ارسال چک به بانک دوره مالي [") + services_.global->sYear.trimmed() +
                    QLatin1Char(']');
    const ToBankFilters& f = list_->filters();
    if (!f.fromBank.isEmpty()) title += QStringLiteral(" از حساب ") + f.fromBank;
    if (!f.toBank.isEmpty()) title += QStringLiteral(" تا حساب ") + f.toBank;
    return title;
}

bool TChqToBankForm::printList(const QString& pdfFile) {
    return tr::ui::printReport(*report_, reportTitle(), tr::ui::gridReportHtml(reportTitle(), *grid_), this, pdfFile,
                               tr::ui::PageTurn::Landscape);
}

void TChqToBankForm::openPrintForm() {
    TChqToBankPrintForm form(*list_, *slips_, this);
    tr::sdk::ModalRunner::current().exec(form);
}

void TChqToBankForm::designPrint(bool design) {
    guarded([&] {
        // The designer may open on an empty list; a stored layout needs the slips built first.
        if (!tr::printing::ui::printDesignInstalled(services_))
            return ui::handBankSlipsToPrintDesign(services_, *slips_, tr::printing::ui::kDesignMode, this);
        if (!design && !slips_->build(*list_, {})) return false;
        return ui::handBankSlipsToPrintDesign(
            services_, *slips_, design ? tr::printing::ui::kDesignMode : tr::printing::ui::kPreviewMode, this);
    });
}

bool TChqToBankForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex at = grid_->currentIndex();
        const bool onTick =
            at.isValid() && model_->fieldName(at.column()).compare(QLatin1String("sSelect"), Qt::CaseInsensitive) == 0;
        // The tick column takes "ض" (or the space bar) as the sign to turn the tick over.
        if (onTick && (key->text() == ChequesToBank::kTicked || key->key() == Qt::Key_Space)) {
            toggleRow(at.row());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tr::cheques
