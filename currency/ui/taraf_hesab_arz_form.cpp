#include "currency/ui/taraf_hesab_arz_form.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "common/ui/dataset_model.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::currency::ui {

TTarafHesabArzForm::TTarafHesabArzForm(const tr::Services& services, const QString& base,
                                       QWidget* parent)
    : QDialog(parent),
      logic_(services, base),
      model_(std::make_unique<tr::ui::DatasetModel>(&logic_.query())) {
    setObjectName(QStringLiteral("TarafHesabArzForm"));
    setWindowTitle(CounterCurrencyGrid::title());
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    resize(460, 260);

    model_->setTitle(QStringLiteral("ArzNam"), QStringLiteral("ارز"));
    model_->setTitle(QStringLiteral("ArzMaxCount"), QStringLiteral("حداكثر مقدار"));
    model_->setTitle(QStringLiteral("ArzCount"), QStringLiteral("مقدار"));
    model_->setTitle(QStringLiteral("ArzNerkh"), QStringLiteral("نرخ"));
    model_->setFieldReadOnly(QStringLiteral("ArzCod"));
    model_->setFieldReadOnly(QStringLiteral("ArzNam"));
    model_->setFieldReadOnly(QStringLiteral("ArzMaxCount"));

    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("dbg"));
    grid_->setModel(model_.get());
    grid_->setSelectionBehavior(QAbstractItemView::SelectItems);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setAlternatingRowColors(true);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->horizontalHeader()->setMinimumSectionSize(60);
    connect(model_.get(), &QAbstractItemModel::modelReset, this, [this] { layoutColumns(); });

    cmdOk_ = new QPushButton(QStringLiteral("تاييد"), this);
    cmdOk_->setObjectName(QStringLiteral("cmdOk"));
    cmdCancel_ = new QPushButton(QStringLiteral("انصراف"), this);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOk_, &QPushButton::clicked, this, [this] { cmdOkClick(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdCancel_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
}

// The model goes before the logic's dataset it watches.
TTarafHesabArzForm::~TTarafHesabArzForm() {
    model_.reset();
}

void TTarafHesabArzForm::load() {
    logic_.open();
    layoutColumns();
}

// The view forgets hidden columns and widths whenever the model resets, which it does each time
// a posted row makes the dataset read the table again.
void TTarafHesabArzForm::layoutColumns() {
    const int code = model_->fieldColumn(QStringLiteral("ArzCod"));
    if (code >= 0) grid_->setColumnHidden(code, true);
    const int name = model_->fieldColumn(QStringLiteral("ArzNam"));
    if (name >= 0) grid_->setColumnWidth(name, 130);
    for (const char* field : {"ArzMaxCount", "ArzCount"}) {
        const int column = model_->fieldColumn(QLatin1String(field));
        if (column >= 0) grid_->setColumnWidth(column, 100);
    }
}

void TTarafHesabArzForm::cmdOkClick() {
    result_ = logic_.cmdOkClick();
    if (result_) accept();
}

std::optional<QList<CounterCurrency>> TTarafHesabArzForm::ask() {
    result_.reset();
    load();
    if (tr::sdk::ModalRunner::current().exec(*this) != QDialog::Accepted) return std::nullopt;
    return result_;
}

std::optional<QList<CounterCurrency>> TarafHesabArzPrompt::askCounterCurrencies(
    const QString& base, const QString& chequeTable) {
    TTarafHesabArzForm form(services_, base, parent_);
    form.logic().fill(chequeTable);
    return form.ask();
}

}  // namespace tr::currency::ui
