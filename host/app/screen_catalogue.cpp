#include "host/app/screen_catalogue.h"

#include "common/text/tsql_collation.h"

namespace tr::host {
namespace {

const QString kCashBank = QStringLiteral("نقد و بانک");
const QString kCheques = QStringLiteral("چک");
const QString kNotes = QStringLiteral("سفته");
const QString kCurrency = QStringLiteral("ارز");
const QString kGeneral = QStringLiteral("عمومي");

}  // namespace

QStringList screenGroups() {
    return {kCashBank, kCheques, kNotes, kCurrency, kGeneral};
}

const QList<ScreenInfo>& screenCatalogue() {
    static const QList<ScreenInfo> screens = {
        {"CashGet_Naghd", QStringLiteral("دريافت صندوق"), kCashBank, EntryKind::Invoice},
        {"CashPay_Naghd", QStringLiteral("پرداخت صندوق"), kCashBank},
        {"Tankah_Naghd", QStringLiteral("تنخواه گردان"), kCashBank},
        {"VarizBank_Naghd", QStringLiteral("واريز به بانك"), kCashBank, EntryKind::Invoice},
        {"BardashtBank_Naghd", QStringLiteral("برداشت بانك"), kCashBank},
        {"Havaleh_Naghd", QStringLiteral("حواله بانكي"), kCashBank},
        {"Search_Naghd", QStringLiteral("جستجوي اسناد نقدينگي"), kCashBank},
        {"ChqGet_Naghd", QStringLiteral("دريافت چک"), kCheques, EntryKind::Invoice},
        {"ChqPay_Naghd", QStringLiteral("پرداخت چك"), kCheques},
        {"Chq_Action_Naghd", QStringLiteral("عمليات چك"), kCheques},
        {"ChqToBank_Naghd", QStringLiteral("ارسال چک به بانک"), kCheques},
        {"ChqMojavez_Naghd", QStringLiteral("صدور مجوز پرداخت چك"), kCheques},
        {"ChqMojavezTaed_Naghd", QStringLiteral("تاييد صدور مجوز پرداخت چك"), kCheques},
        {"EbtalBargeCheck_Naghd", QStringLiteral("ابطال برگه چك"), kCheques, EntryKind::VoidMode,
         1},
        {"EbtalBargeCheck_Naghd", QStringLiteral("برگشت ابطال برگه چك"), kCheques,
         EntryKind::VoidMode, 0},
        {"SoftehGet_Naghd", QStringLiteral("دريافت سفته"), kNotes},
        {"SoftehPay_Naghd", QStringLiteral("پرداخت سفته"), kNotes},
        {"Softeh_Action_Naghd", QStringLiteral("عمليات سفته"), kNotes},
        {"TasirArz_Naghd", QStringLiteral("تسعير ارز"), kCurrency},
        {"FixDes_Naghd", QStringLiteral("ثبت شرح ثابت اسناد"), kGeneral},
    };
    return screens;
}

const ScreenInfo* findScreen(const QString& title) {
    for (const ScreenInfo& screen : screenCatalogue())
        if (tr::text::tsqlCompare(screen.title, title) == 0) return &screen;
    return nullptr;
}

}  // namespace tr::host
