#pragma once
// The six cash and bank document screens as rows of one table: everything in which they differ
// (caption, kind, treasury side and its list, grid columns, extra header fields, menu items and
// keys, default rate, grid-state key). The screen logic and the one Qt form read nothing else.
#include <QKeyCombination>
#include <QList>
#include <QString>
#include <optional>
#include <vector>

#include "common/grid/grid_state.h"
#include "currency/rates.h"
#include "vouchers/document_kinds.h"

namespace tr::cashbank {

enum class ScreenId { CashGet, CashPay, Tankhah, VarizBank, BardashtBank, Havaleh };

// What a grid menu item does; the texts and keys are per screen.
enum class MenuCommand {
    Help,
    Settlement,
    NewDocument,
    Search,
    SaveColumns,
    RestoreColumns,
    CopyRowAbove,
    ClipboardExport,
    RememberRow,
    RestoreRow,
    RememberCell,
    RestoreCell,
    FixedDescription,
    DeleteLine,
    ExcelImport,
    ReportProperties,
    DesignPrint,
    PrintDocument,
    PrintVoucher,
};

struct MenuItem {
    MenuCommand command;
    QString text;
    QKeyCombination key{};  // none unless set
    bool hasKey() const { return key.key() != Qt::Key(0); }
};

struct GridColumn {
    QString field;
    QString title;
    int width = 80;
    bool readOnly = false;
};

// The list behind the treasury-side code box.
struct TreasuryList {
    QString title;
    QString sql;  // answers Code (what the document keeps), Display and Nam
    QString codeCaption;
    QString nameCaption;
};

struct CashBankScreen {
    ScreenId id;
    QString formClass;  // the documented class name, also the grid-state form key
    QString caption;
    QString kindCode;
    QString serialHint;  // the list button's
    QString treasuryLabel;
    TreasuryList treasuryList;
    QString numberLabel;                 // "شماره" or the bank forms' own
    bool hasJoz = false;                 // bank forms: the number's part (N_NaghdTrans.Joz)
    bool hasDepositor = false;           // deposit: Des1
    bool hasRemitter = false;            // transfer: Des1..Des4
    bool hasInvoice = false;             // receipt and deposit settle sales invoices
    bool showsCounterPartyName = false;  // withdrawal: the line's counter-party in the bottom band
    bool secondCurrencyColumns = false;  // deposit and transfer: ArzCount2, ArzNam2
    QString fundsTitle;  // title of the ManabehCod column and of its name in the bottom band
    QString fundsType;   // sources on money coming in, uses on money going out
    std::optional<tr::currency::Screen> rateScreen;  // none: the kind has no currency twin
    QList<MenuItem> menu;
    QString printItemName;  // the print items' subject, for the report properties caption

    const tr::vouchers::TreasuryDocumentKind& kind() const;
    tr::grid::GridKey gridKey() const;
    QList<GridColumn> gridColumns(const QString& projectTitle = {}) const;
    const MenuItem* menuItem(MenuCommand command) const;
};

const std::vector<CashBankScreen>& cashBankScreens();
const CashBankScreen& cashBankScreen(ScreenId id);

// Texts shared by every screen of the family.
namespace captions {
inline const QString kSerial = QStringLiteral("سريال");
inline const QString kDate = QStringLiteral("تاريخ");
inline const QString kVoucher = QStringLiteral("سند");
inline const QString kUser = QStringLiteral("كاربر");
inline const QString kInvoice = QStringLiteral("شماره فاکتور ");
inline const QString kDescription = QStringLiteral("شرح");
inline const QString kAmount = QStringLiteral("مبلغ");
inline const QString kRate = QStringLiteral("نرخ تبديل به ريال");
inline const QString kSum = QStringLiteral("جمع");
inline const QString kCounterParty = QStringLiteral("طرف حساب");
inline const QString kCounterPartyPanel = QStringLiteral(" طرف حساب ");
inline const QString kOk = QStringLiteral("تاييد");
inline const QString kOkPrint = QStringLiteral("تاييد و چاپ");
inline const QString kNewLayout = QStringLiteral("جديد");
inline const QString kOldLayout = QStringLiteral("قديم");
inline const QString kDelete = QStringLiteral("حذف");
inline const QString kCancel = QStringLiteral("ابطال");
inline const QString kUndoCancel = QStringLiteral("برگشت از ابطال");
inline const QString kExit = QStringLiteral("انصراف");
inline const QString kDepositor = QStringLiteral("واريز كننده");
inline const QString kRemitter = QStringLiteral("حواله كننده");
inline const QString kRemitterBank = QStringLiteral("بانك حواله كننده");
inline const QString kRemitterBranch = QStringLiteral("شعبه حواله كننده");
inline const QString kFixedDescription = QStringLiteral("بازيابي شرح ثابت ...");
}  // namespace captions

}  // namespace tr::cashbank
