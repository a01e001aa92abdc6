#include "cashbank/documents/cash_bank_screens.h"

#include <stdexcept>

namespace tr::cashbank {

namespace {

using tr::currency::Screen;
using tr::vouchers::sideColumn;

TreasuryList cashBoxes() {
    return {QStringLiteral("انتخاب صندوق"),
            QStringLiteral("Select CashCod As Code, CashCod As Display, CashNam As Nam From N_Cash "
                           "Order By CashCod"),
            QStringLiteral("كد صندوق"), QStringLiteral("نام صندوق")};
}

TreasuryList pettyCashHolders() {
    return {QStringLiteral("انتخاب تنخواه گردان"),
            QStringLiteral("Select T.PersonCod As Code, T.PersonCod As Display, "
                           "P.[Name]+' '+P.Family As Nam From N_Tankhah As T Inner Join Person "
                           "As P On (P.Code = T.PersonCod) Order By T.PersonCod"),
            QStringLiteral("كد شخص"), QStringLiteral("نام تنخواه گردان")};
}

// The document keeps the account's identity; the user sees its number and bank and branch.
TreasuryList bankAccounts() {
    return {QStringLiteral("انتخاب حساب بانکي"),
            QStringLiteral("Select Cast(BH.AcountID As Varchar(20)) As Code, BH.AcountCod As "
                           "Display, B.BankNam+'-'+S.ShobehNam As Nam From N_BankHesab As BH "
                           "Left Join N_Bank As B On (B.BankCod = BH.BankCod) Left Join N_Shoab "
                           "As S On (S.BankCod = BH.BankCod And S.ShobehCod = BH.ShobehCod) "
                           "Order By BH.AcountCod"),
            QStringLiteral("شماره حساب"), QStringLiteral("بانک - شعبه")};
}

QList<MenuItem> menu(const QString& settlement, const QString& copyRow, bool pettyCash,
                     const QString& designPrint, const QString& print) {
    const auto ctrl = [](Qt::Key key) { return QKeyCombination(Qt::ControlModifier, key); };
    QList<MenuItem> items;
    items << MenuItem{MenuCommand::Help, QStringLiteral("راهنما"), QKeyCombination(Qt::Key_F1)};
    if (!settlement.isEmpty()) items << MenuItem{MenuCommand::Settlement, settlement};
    items << MenuItem{MenuCommand::NewDocument, QStringLiteral("سند جديد ..."), ctrl(Qt::Key_N)}
          << MenuItem{MenuCommand::Search, QStringLiteral("جستجو ..."), ctrl(Qt::Key_F)}
          << MenuItem{MenuCommand::SaveColumns, QStringLiteral("ثبت وضعيت ستونها"),
                      ctrl(Qt::Key_G)};
    // The petty-cash screen has never offered to restore the designed columns.
    if (!pettyCash)
        items << MenuItem{MenuCommand::RestoreColumns,
                          QStringLiteral("بازگشت به وضعيت اوليه ستونها"),
                          QKeyCombination(Qt::AltModifier, Qt::Key_G)};
    items << MenuItem{MenuCommand::CopyRowAbove, copyRow, QKeyCombination(Qt::Key_F8)}
          << MenuItem{MenuCommand::ClipboardExport,
                      QStringLiteral("ارسال به Clipboard ( محيط ديگر ...)")}
          << MenuItem{MenuCommand::RememberRow, QStringLiteral("کپي رديف به حافظه"),
                      ctrl(Qt::Key_Insert)}
          << MenuItem{MenuCommand::RestoreRow, QStringLiteral("بازيابي رديف به حافظه"),
                      QKeyCombination(Qt::ShiftModifier, Qt::Key_Insert)}
          << MenuItem{MenuCommand::RememberCell, QStringLiteral("کپي خانه به حافظه"),
                      ctrl(Qt::Key_C)}
          << MenuItem{MenuCommand::RestoreCell, QStringLiteral("بازيابي خانه از حافظه"),
                      ctrl(Qt::Key_V)}
          << MenuItem{MenuCommand::FixedDescription, captions::kFixedDescription, ctrl(Qt::Key_F8)}
          << MenuItem{MenuCommand::DeleteLine, QStringLiteral("حذف رديف"), ctrl(Qt::Key_Delete)};
    if (pettyCash)
        items << MenuItem{MenuCommand::ExcelImport, QStringLiteral("دريافت اطلاعات از فايل Excel")};
    items << MenuItem{MenuCommand::ReportProperties, QStringLiteral("مشخصات گزارش ...")}
          << MenuItem{MenuCommand::DesignPrint, designPrint}
          << MenuItem{MenuCommand::PrintDocument, print}
          << MenuItem{MenuCommand::PrintVoucher, QStringLiteral("چاپ ..."), ctrl(Qt::Key_P)};
    return items;
}

const QString kCopyRowAbove = QStringLiteral("کپي رديف بالا");
const QString kSources = QStringLiteral("منابع");

std::vector<CashBankScreen> makeScreens() {
    std::vector<CashBankScreen> screens;

    CashBankScreen s;
    s.id = ScreenId::CashGet;
    s.formClass = QStringLiteral("TCashGetForm");
    s.caption = QStringLiteral("ثبت دريافت صندوق");
    s.kindCode = QStringLiteral("10");
    s.serialHint = QStringLiteral("انتخاب دريافت صندوق");
    s.treasuryLabel = QStringLiteral("صندوق");
    s.treasuryList = cashBoxes();
    s.numberLabel = QStringLiteral("شماره");
    s.hasInvoice = true;
    s.fundsTitle = kSources;
    s.fundsType = QStringLiteral("MANABEH");
    s.rateScreen = Screen::CashReceipt;
    s.menu =
        menu(QStringLiteral("ثبت دريافت صندوق در صورتحساب"), kCopyRowAbove, false,
             QStringLiteral("طراحي فرم چاپ دريافت صندوق …"), QStringLiteral("چاپ دريافت صندوق …"));
    s.printItemName = QStringLiteral("دريافت صندوق");
    screens.push_back(s);

    s = {};
    s.id = ScreenId::CashPay;
    s.formClass = QStringLiteral("TCashPayForm");
    s.caption = QStringLiteral("ثبت پرداخت صندوق");
    s.kindCode = QStringLiteral("20");
    s.serialHint = QStringLiteral("انتخاب پرداخت صندوق");
    s.treasuryLabel = QStringLiteral("صندوق");
    s.treasuryList = cashBoxes();
    s.numberLabel = QStringLiteral("شماره");
    s.fundsTitle = kSources;
    s.fundsType = QStringLiteral("MASAREF");
    s.rateScreen = Screen::CashPayment;
    s.menu =
        menu({}, QStringLiteral("کپي از رديف بالا"), false,
             QStringLiteral("طراحي فرم چاپ پرداخت صندوق …"), QStringLiteral("چاپ پرداخت صندوق …"));
    s.printItemName = QStringLiteral("پرداخت صندوق");
    screens.push_back(s);

    s = {};
    s.id = ScreenId::Tankhah;
    s.formClass = QStringLiteral("TTankhahPayForm");
    s.caption = QStringLiteral("ثبت تنخواه گردان");
    s.kindCode = QStringLiteral("40");
    s.serialHint = QStringLiteral("انتخاب تنخواه گردان");
    s.treasuryLabel = QStringLiteral("تنخواه گردان");
    s.treasuryList = pettyCashHolders();
    s.numberLabel = QStringLiteral("شماره");
    s.fundsTitle = kSources;
    s.fundsType = QStringLiteral("MASAREF");
    s.menu = menu({}, kCopyRowAbove, true, QStringLiteral("طراحي فرم چاپ تنخواه گردان …"),
                  QStringLiteral("چاپ تنخواه گردان …"));
    s.printItemName = QStringLiteral("تنخواه گردان");
    screens.push_back(s);

    s = {};
    s.id = ScreenId::VarizBank;
    s.formClass = QStringLiteral("TVarizBankForm");
    s.caption = QStringLiteral("واريز نقدي به بانک");
    s.kindCode = QStringLiteral("50");
    s.serialHint = QStringLiteral("انتخاب واريز بانک");
    s.treasuryLabel = QStringLiteral("حساب بانکي");
    s.treasuryList = bankAccounts();
    s.numberLabel = QStringLiteral("شماره واريز");
    s.hasJoz = true;
    s.hasDepositor = true;
    s.hasInvoice = true;
    s.secondCurrencyColumns = true;
    s.fundsTitle = kSources;
    s.fundsType = QStringLiteral("MANABEH");
    s.rateScreen = Screen::BankDeposit;
    s.menu =
        menu(QStringLiteral("ثبت واريز بانک در صورتحساب"), kCopyRowAbove, false,
             QStringLiteral("طراحي فرم چاپ واريز بانک ..."), QStringLiteral("چاپ واريز بانک ..."));
    s.printItemName = QStringLiteral("واريز بانک");
    screens.push_back(s);

    s = {};
    s.id = ScreenId::BardashtBank;
    s.formClass = QStringLiteral("TBardashtBankForm");
    s.caption = QStringLiteral("ثبت برداشت بانک");
    s.kindCode = QStringLiteral("90");
    s.serialHint = QStringLiteral("انتخاب برداشت بانک");
    s.treasuryLabel = QStringLiteral("حساب بانکي");
    s.treasuryList = bankAccounts();
    s.numberLabel = QStringLiteral("شماره برداشت");
    s.hasJoz = true;
    s.showsCounterPartyName = true;
    s.fundsTitle = QStringLiteral("مصارف");
    s.fundsType = QStringLiteral("MASAREF");
    s.rateScreen = Screen::BankWithdrawal;
    s.menu = menu({}, kCopyRowAbove, false, QStringLiteral("طراحي فرم چاپ برداشت بانک ..."),
                  QStringLiteral("چاپ  فرم برداشت بانک..."));
    s.printItemName = QStringLiteral("برداشت بانک");
    screens.push_back(s);

    s = {};
    s.id = ScreenId::Havaleh;
    s.formClass = QStringLiteral("THavalehForm");
    s.caption = QStringLiteral("حواله هاي بانكي");
    s.kindCode = QStringLiteral("60");
    s.serialHint = QStringLiteral("انتخاب حواله بانکي");
    s.treasuryLabel = QStringLiteral("حساب بانکي");
    s.treasuryList = bankAccounts();
    s.numberLabel = QStringLiteral("شماره حواله");
    s.hasJoz = true;
    s.hasRemitter = true;
    s.secondCurrencyColumns = true;
    s.fundsTitle = kSources;
    s.fundsType = QStringLiteral("MANABEH");
    s.rateScreen = Screen::Transfer;
    s.menu = menu({}, kCopyRowAbove, false, QStringLiteral("طراحي چاپ فرم حواله هاي بانکي"),
                  QStringLiteral("چاپ حواله هاي بانکي"));
    s.printItemName = QStringLiteral("حواله هاي بانکي");
    screens.push_back(s);

    return screens;
}

}  // namespace

const tr::vouchers::TreasuryDocumentKind& CashBankScreen::kind() const {
    return *tr::vouchers::findTreasuryDocumentKind(kindCode);
}

tr::grid::GridKey CashBankScreen::gridKey() const {
    return {QStringLiteral("N"), kind().formKey, formClass, QStringLiteral("dbg")};
}

QList<GridColumn> CashBankScreen::gridColumns(const QString& projectTitle) const {
    QList<GridColumn> columns{
        {QStringLiteral("NamWhatDoc2"), captions::kCounterParty, 150, true},
        {QStringLiteral("Koll"), QStringLiteral("کل"), 45},
        {QStringLiteral("Moein"), QStringLiteral("معين"), 50},
        {QStringLiteral("Tafsily"), QStringLiteral("تفصيلي"), 60},
        {QStringLiteral("Tafsily2"), QStringLiteral("تفصيلي2"), 60},
        {QStringLiteral("ProjectCod"),
         projectTitle.isEmpty() ? QStringLiteral("ProjectCod") : projectTitle, 70},
        {QStringLiteral("Des"), captions::kDescription, 260},
        {sideColumn(kind().gridSide()), captions::kAmount, 110},
        {QStringLiteral("ManabehCod"), fundsTitle, 55},
        {QStringLiteral("ArzCod"), QStringLiteral("کد ارز"), 45, true},
        {QStringLiteral("ArzNam"), QStringLiteral("نام ارز"), 80, true},
        {QStringLiteral("ArzTotalPrice"), QStringLiteral("مبلغ کل ريال"), 110, true},
    };
    if (secondCurrencyColumns)
        columns << GridColumn{QStringLiteral("ArzCount2"), QStringLiteral("مقدار ارز فرعي"), 90,
                              true}
                << GridColumn{QStringLiteral("ArzNam2"), QStringLiteral("نام ارز فرعي"), 80, true};
    return columns;
}

const MenuItem* CashBankScreen::menuItem(MenuCommand command) const {
    for (const MenuItem& item : menu)
        if (item.command == command) return &item;
    return nullptr;
}

const std::vector<CashBankScreen>& cashBankScreens() {
    static const std::vector<CashBankScreen> screens = makeScreens();
    return screens;
}

const CashBankScreen& cashBankScreen(ScreenId id) {
    for (const CashBankScreen& s : cashBankScreens())
        if (s.id == id) return s;
    throw std::out_of_range("unknown cash and bank screen");
}

}  // namespace tr::cashbank
