#include "cheques/ui/chq_action1_form.h"

#include "common/ui/dataset_model.h"

#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "cheques/ui/return_split_dialog.h"
#include "host/sdk/modal_runner.h"
#include "host/sdk/persian_font.h"

namespace tr::cheques {

const QString TChqAction1Form::kCaption = QStringLiteral("عمليات چك");

TChqAction1Form::TChqAction1Form(const tr::Services& services, QWidget* parent)
    : QWidget(parent),
      services_(services),
      received_(std::make_unique<ReceivedChequeActions>(services)),
      issued_(std::make_unique<IssuedChequeActions>(services)) {
    setObjectName(QStringLiteral("ChqAction1Form"));
    setWindowTitle(kCaption);
    setLayoutDirection(Qt::RightToLeft);
    setFont(tr::sdk::persianFont(12));

    tabs_ = new QTabWidget(this);
    receivedTab_ = new ChequeActionTab(
        *received_, services,
        {.gridName = QStringLiteral("dbgGet"),
         .reportItem = QStringLiteral("چاپ ..."),
         .filtersBankAccount = false,
         .afterAction = [this] { askReturnSplit(); },
         .chooseBankAccount = [this](qint64 id) { received_->setBankAccount(id); }},
        tabs_);
    tabs_->addTab(receivedTab_, QStringLiteral("چكهاي دريافتي"));
    issuedTab_ = new ChequeActionTab(*issued_, services,
                                     {.gridName = QStringLiteral("dbgPay"),
                                      .reportItem = QStringLiteral("نمايش گزارش چکهاي پرداختي"),
                                      .filtersBankAccount = true,
                                      .afterAction = {},
                                      .chooseBankAccount = {}},
                                     tabs_);
    tabs_->addTab(issuedTab_, QStringLiteral("چكهاي پرداختي"));

    auto* caption = new QLabel(kCaption, this);
    caption->setAlignment(Qt::AlignCenter);
    caption->setAutoFillBackground(true);
    caption->setForegroundRole(QPalette::HighlightedText);
    caption->setBackgroundRole(QPalette::Highlight);
    caption->setMinimumHeight(26);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(caption);
    layout->addWidget(tabs_, 1);
}

TChqAction1Form::~TChqAction1Form() {
    tr::ui::DatasetModel::releaseQueries(this);
}

void TChqAction1Form::setServices(const tr::Services& services) {
    services_ = services;
    received_->setServices(services);
    issued_->setServices(services);
    receivedTab_->setServices(services);
    issuedTab_->setServices(services);
}

void TChqAction1Form::askReturnSplit() {
    if (!received_->returnNeedsSplit()) return;
    ReturnSplitDialog dialog(*received_, this);
    receivedTab_->guarded([&] {
        tr::sdk::ModalRunner::current().exec(dialog);
        return true;
    });
}

}  // namespace tr::cheques
