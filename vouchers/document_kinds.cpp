#include "vouchers/document_kinds.h"

namespace tr::vouchers {

namespace {

QString serialMissing(const QString& title) {
    return QStringLiteral("سريال ") + title + QStringLiteral(" وارد نشده است.");
}

std::vector<TreasuryDocumentKind> makeKinds() {
    const QString lineDescription = QStringLiteral("شرح سند وارد نشده است");
    const QString withdrawalNumber = QStringLiteral("شماره برداشت وارد نشده است.");
    std::vector<TreasuryDocumentKind> kinds;

    TreasuryDocumentKind k;
    k.code = QStringLiteral("10");
    k.title = QStringLiteral("دريافت صندوق");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_CashGet");
    k.treasurySide = Side::Bed;
    k.treasuryObject = TreasuryObject::CashBox;
    k.formKey = QStringLiteral("N_A_CASHGET_");
    k.serialMissingMessage = QStringLiteral("سريال دريافت صندوق وارد نشده است.");
    k.numberMissingMessage = QStringLiteral("شماره دريافت صندوق وارد نشده است.");
    k.lineDescriptionMissingMessage = lineDescription;
    kinds.push_back(k);

    k = {};
    k.code = QStringLiteral("20");
    k.title = QStringLiteral("پرداخت صندوق");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_CashPay");
    k.treasurySide = Side::Bes;
    k.treasuryObject = TreasuryObject::CashBox;
    k.formKey = QStringLiteral("N_A_CASHPAY_");
    k.serialMissingMessage = QStringLiteral("سريال پرداخت صندوق وارد نشده است.");
    k.numberMissingMessage = QStringLiteral("شماره پرداخت صندوق وارد نشده است.");
    k.lineDescriptionMissingMessage = lineDescription;
    kinds.push_back(k);

    k = {};
    k.code = QStringLiteral("40");
    k.title = QStringLiteral("تنخواه گردان");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_Tankhah");
    k.hasCurrencyTwin = false;
    k.treasurySide = Side::Bes;
    k.treasuryObject = TreasuryObject::PettyCashHolder;
    k.formKey = QStringLiteral("N_A_TANKHAH_");
    k.serialMissingMessage = serialMissing(k.title);
    k.numberMissingMessage = QStringLiteral("شماره تنخواه وارد نشده است.");
    k.lineDescriptionMissingMessage = lineDescription;
    kinds.push_back(k);

    k = {};
    k.code = QStringLiteral("50");
    k.title = QStringLiteral("واريز به بانك");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_VarizBank");
    k.treasurySide = Side::Bed;
    k.treasuryObject = TreasuryObject::BankAccount;
    k.formKey = QStringLiteral("N_A_VARIZBANK_");
    k.serialMissingMessage = serialMissing(k.title);
    // The deposit has always used the withdrawal's wording for its missing number.
    k.numberMissingMessage = withdrawalNumber;
    k.lineDescriptionMissingMessage = lineDescription;
    kinds.push_back(k);

    k = {};
    k.code = QStringLiteral("60");
    k.title = QStringLiteral("حواله بانكي");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_HavalehBank");
    k.treasurySide = Side::Bed;
    k.treasuryObject = TreasuryObject::BankAccount;
    k.formKey = QStringLiteral("N_A_HAVALEH_");
    k.serialMissingMessage = serialMissing(k.title);
    k.numberMissingMessage = QStringLiteral("شماره حواله وارد نشده است.");
    k.lineDescriptionMissingMessage = lineDescription;
    kinds.push_back(k);

    k = {};
    k.code = QStringLiteral("90");
    k.title = QStringLiteral("برداشت بانك");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_BardashtBank");
    k.treasurySide = Side::Bes;
    k.treasuryObject = TreasuryObject::BankAccount;
    k.formKey = QStringLiteral("N_A_BARDASHTBANK_");
    k.serialMissingMessage = serialMissing(k.title);
    k.numberMissingMessage = withdrawalNumber;
    // Only the withdrawal ends this message with a full stop.
    k.lineDescriptionMissingMessage = QStringLiteral("شرح سند وارد نشده است.");
    kinds.push_back(k);

    return kinds;
}

std::vector<TreasuryDocumentKind> makeChequeKinds() {
    std::vector<TreasuryDocumentKind> kinds;
    TreasuryDocumentKind k;
    k.code = QStringLiteral("71");
    k.title = QStringLiteral("دريافت چک");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_ChqGet");
    k.treasurySide = Side::Bed;
    k.formKey = QStringLiteral("N_A_CHQGET_");
    kinds.push_back(k);
    k = {};
    k.code = QStringLiteral("81");
    k.title = QStringLiteral("پرداخت چك");
    k.procedure = QStringLiteral("sp_N_Asnad_Trans_ChqPay");
    k.treasurySide = Side::Bes;
    k.treasuryObject = TreasuryObject::BankAccount;
    k.formKey = QStringLiteral("N_A_CHQPAY_");
    kinds.push_back(k);
    return kinds;
}

}  // namespace

const std::vector<TreasuryDocumentKind>& chequeDocumentKinds() {
    static const std::vector<TreasuryDocumentKind> kinds = makeChequeKinds();
    return kinds;
}

const TreasuryDocumentKind& receivedChequeKind() {
    return chequeDocumentKinds()[0];
}

const TreasuryDocumentKind& issuedChequeKind() {
    return chequeDocumentKinds()[1];
}

QString sideColumn(Side side) {
    return side == Side::Bed ? QStringLiteral("Bed") : QStringLiteral("Bes");
}

const std::vector<TreasuryDocumentKind>& treasuryDocumentKinds() {
    static const std::vector<TreasuryDocumentKind> kinds = makeKinds();
    return kinds;
}

const TreasuryDocumentKind* findTreasuryDocumentKind(const QString& code) {
    for (const TreasuryDocumentKind& kind : treasuryDocumentKinds())
        if (kind.code == code.trimmed()) return &kind;
    return nullptr;
}

}  // namespace tr::vouchers
