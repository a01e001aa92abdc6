#include "cashbank/search/search_launcher.h"

namespace tr::cashbank {

const std::vector<LauncherButton>& launcherButtons() {
    static const std::vector<LauncherButton> buttons = {
        {QStringLiteral("btnSoftehGet"), QStringLiteral("دريافت سفته"), {}, std::nullopt},
        {QStringLiteral("btnSoftehPay"), QStringLiteral("پرداخت سفته"), {}, std::nullopt},
        {QStringLiteral("btnChqGet"), QStringLiteral("دريافت چک"),
         QStringLiteral("N_A_SEARCH_CHQGET(Y)"), std::nullopt, ChequeSearchSide::Received},
        {QStringLiteral("btnChqPay"), QStringLiteral("پرداخت چک"),
         QStringLiteral("N_A_SEARCH_CHQPAY(Y)"), std::nullopt, ChequeSearchSide::Issued},
        {QStringLiteral("btnVariz"), QStringLiteral("واريز بانک"),
         QStringLiteral("N_A_SEARCH_VARIZ(Y)"), SearchFamily::Deposit},
        {QStringLiteral("btnBardasht"), QStringLiteral("برداشت بانک"),
         QStringLiteral("N_A_SEARCH_BARDASHTBANK(Y)"), SearchFamily::Withdrawal},
        {QStringLiteral("btnHavaleh"), QStringLiteral("حواله بانكي"),
         QStringLiteral("N_A_SEARCH_HAVALEH(Y)"), SearchFamily::Transfer},
        {QStringLiteral("btnTankhah"), QStringLiteral("تنخواه گردان"),
         QStringLiteral("N_A_SEARCH_TANKHAH(Y)"), SearchFamily::PettyCash},
        {QStringLiteral("btnCash"), QStringLiteral("صندوق"), QStringLiteral("N_A_SEARCH_CASH(Y)"),
         SearchFamily::Cash},
    };
    return buttons;
}

bool buttonVisible(const LauncherButton& button, const QString& rights) {
    return button.marker.isEmpty() || rights.contains(button.marker);
}

}  // namespace tr::cashbank
