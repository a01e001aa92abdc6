#include "cheques/ui/chq_mojavez_form.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "cheques/ui/chq_get_menus.h"
#include "cheques/ui/permit_components_form.h"
#include "common/persian/amount.h"
#include "common/ui/dataset_model.h"
#include "host/sdk/modal_runner.h"

namespace tr::cheques {

namespace {

const QList<QPair<QString, QString>>& permitColumns() {
    static const QList<QPair<QString, QString>> columns = {
        {QStringLiteral("ChqStateNam"), QStringLiteral("وضعيت")},   {QStringLiteral("AcountCod"), QStringLiteral("شماره حساب")},
        {QStringLiteral("AcountNam"), QStringLiteral("بانك")},      {QStringLiteral("ChqNo"), QStringLiteral("شماره چك")},
        {QStringLiteral("Joz"), QStringLiteral("سري")},             {QStringLiteral("ChqValue"), QStringLiteral("مبلغ")},
        {QStringLiteral("FactValue"), QStringLiteral("مبلغ عوامل")}, {QStringLiteral("SarResidDate"), QStringLiteral("سررسيد")},
        {QStringLiteral("ChqGetter"), QStringLiteral("در وجه")},    {QStringLiteral("Des"), QStringLiteral("شرح")},
        {QStringLiteral("Koll"), QStringLiteral("كل")},             {QStringLiteral("Moein"), QStringLiteral("معين")},
        {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي")},      {QStringLiteral("Havaleh"), QStringLiteral("بحوالهکرد")},
        {QStringLiteral("Tazmin"), QStringLiteral("تضميني")}};
    return columns;
}

}  // namespace

TChqMojavezForm::TChqMojavezForm(const tr::Services& services, QWidget* parent)
    : TChqPayForm(services, std::make_unique<PermitDocument>(services), permitColumns(), parent) {
    setObjectName(QStringLiteral("ChqMojavezForm"));
    // What a permit does not do.
    for (QWidget* w : std::initializer_list<QWidget*>{permitBox(), permitLabel(), withdrawButton(), openingButton(), savePrintButton()})
        w->hide();
    for (QRadioButton* layout : findChildren<QRadioButton*>()) layout->hide();
    // No voucher either.
    voucherLabel()->hide();
    voucherCaption()->hide();
    for (auto* hook : {&menus()->hooks.printDocument, &menus()->hooks.printPaper, &menus()->hooks.designPrint,
                       &menus()->hooks.printLeaves, &menus()->hooks.designLeaves, &menus()->hooks.search})
        *hook = [] {};
    chequeModel()->setFieldReadOnly(QStringLiteral("FactValue"));
    chequeModel()->setFieldFormat(QStringLiteral("FactValue"), [](const QVariant& v) {
        return v.isNull() ? QString() : tr::persian::formatAmount(v.toDouble());
    });
    // The managers' approval, right after the serial.
    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("lblTaed"));
    note_->setMinimumWidth(note_->fontMetrics().horizontalAdvance(QStringLiteral("(سند توسط مديرمالي تاييد شده است)")) + 12);
    headerRow()->insertWidget(headerRow()->indexOf(serialBox()) + 1, note_);
    components_ = new QPushButton(QStringLiteral("عوامل مجوز"), this);
    components_->setObjectName(QStringLiteral("btnMojavezFact"));
    buttonRow()->insertWidget(1, components_);
    connect(components_, &QPushButton::clicked, this, [this] { showComponents(); });
}

void TChqMojavezForm::showComponents() {
    if (!guarded([this] { return document().postCheque(); })) return;
    PermitComponentsForm form(services(), permit(), this);
    tr::sdk::ModalRunner::current().exec(form);
    chequeModel()->refresh();
    showValues();
}

void TChqMojavezForm::showPaymentValues() {
    note_->setText(permit().approvalNote());
}

}  // namespace tr::cheques
