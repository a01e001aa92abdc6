#include "cheques/ui/chq_get_slct_form.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>
#include <QVBoxLayout>

#include "common/db/database_error.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

TChqGetSlctFrm* chqGetSlctFrm = nullptr;

namespace {

const QList<QPair<QString, QString>>& columns() {
    static const QList<QPair<QString, QString>> list = {
        {QStringLiteral("Slct"), QStringLiteral("انتخاب")},       {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},
        {QStringLiteral("Joz"), QStringLiteral("سري")},           {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
        {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")}, {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")},
        {QStringLiteral("AcountNam"), QStringLiteral("بانك")},    {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
        {QStringLiteral("Tazmin"), QStringLiteral("تضميني")},     {QStringLiteral("SanadNo"), QStringLiteral("سند")},
        {QStringLiteral("SanadDate"), QStringLiteral("تاريخ")},   {QStringLiteral("Des"), QStringLiteral("شرح")}};
    return list;
}

}  // namespace

TChqGetSlctFrm::TChqGetSlctFrm(const tr::Services& services, QWidget* parent)
    : QDialog(parent), picker_(services) {
    setObjectName(QStringLiteral("ChqGetSlctFrm"));
    setWindowTitle(SpendPicker::kTitle);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));
    model_ = new tr::ui::DatasetModel(&picker_.rows(), this);
    model_->setFieldFormat(QStringLiteral("ChqValue"), [](const QVariant& v) {
        return v.isNull() ? QString() : tr::persian::formatAmount(v.toDouble());
    });
    for (const auto& [field, title] : columns()) model_->setFieldReadOnly(field);
    grid_ = new QTableView(this);
    grid_->setModel(model_);
    grid_->setLayoutDirection(Qt::RightToLeft);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->verticalHeader()->setDefaultSectionSize(24);
    grid_->installEventFilter(this);
    connect(grid_, &QTableView::doubleClicked, this, [this] { toggle(); });
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        for (int c = 0; c < model_->columnCount(); ++c) grid_->setColumnHidden(c, true);
        for (int i = 0; i < columns().size(); ++i) {
            const int c = model_->fieldColumn(columns()[i].first);
            if (c < 0) continue;
            model_->setTitle(columns()[i].first, columns()[i].second);
            grid_->setColumnHidden(c, false);
            grid_->horizontalHeader()->moveSection(grid_->horizontalHeader()->visualIndex(c), i);
        }
        grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    });
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("تاييد"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("انصراف"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &TChqGetSlctFrm::confirm);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_);
    layout->addWidget(buttons);
    resize(900, 420);
}

void TChqGetSlctFrm::load(const QStringList& onThePayment) {
    result_.reset();
    picker_.fill(onThePayment);
    model_->refresh();
}

std::optional<QList<QPair<QString, QString>>> TChqGetSlctFrm::ask(const QStringList& onThePayment) {
    load(onThePayment);
    tr::sdk::ModalRunner::current().exec(*this);
    return result_;
}

void TChqGetSlctFrm::toggle() {
    const QModelIndex at = grid_->currentIndex();
    if (!at.isValid()) return;
    model_->setCurrentRow(at.row());
    picker_.toggle();
    model_->refresh();
    grid_->setCurrentIndex(model_->index(at.row(), at.column()));
}

void TChqGetSlctFrm::confirm() {
    result_ = picker_.confirm();
    if (result_) accept();
}

bool TChqGetSlctFrm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        toggle();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace tr::cheques
