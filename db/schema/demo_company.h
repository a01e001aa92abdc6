#pragma once
// The demo company "1" with fiscal years 1403 (previous) and 1404 (current): chart of accounts,
// cash boxes, petty-cash holders, banks, bank accounts with cheque books, currencies and rates,
// funds, fixed descriptions, users with rights and open sales invoices. Shared by host and tests.
#include <QString>
#include <functional>
#include <memory>

#include "common/db/connection.h"

namespace tr::schema {

// Opens (creating when missing) the database of the given name, e.g. "Corvask_1_1404".
using DatabaseOpener = std::function<std::unique_ptr<tr::db::Connection>(const QString&)>;

// Creates the suite schema on `suite` (CORVASK_Sdc, empty) and both fiscal years of the demo
// company in the databases that `openDatabase` gives for their names.
void loadDemoCompany(tr::db::Connection& suite, const DatabaseOpener& openDatabase);

namespace demo {

inline constexpr const char* kCompanyCode = "1";
inline constexpr const char* kCompanyName = "شرکت نمونه بازرگاني";
inline constexpr const char* kCurrentYear = "1404";
inline constexpr const char* kPreviousYear = "1403";
inline constexpr const char* kCurrentDatabase = "Corvask_1_1404";
inline constexpr const char* kPreviousDatabase = "Corvask_1_1403";
inline constexpr const char* kPeriodStart = "1404/01/01";
inline constexpr const char* kPeriodEnd = "1404/12/29";
inline constexpr const char* kOptionsText =
    "USE_SERIAL=YES;USE_MANABEH=NO;USE_HISTORY=YES;CHQ_MOJAVEZ=NO;";
// Length of the group prefix of a detail, second-detail and project code (session values).
inline constexpr int kDetailGroupLength = 2;
inline constexpr int kTafsily2GroupLength = 2;
inline constexpr int kProjectGroupLength = 2;

// Users: the administrator holds every right, the clerk only cash receipts (record, view).
inline constexpr int kAdminUserId = 1;
inline constexpr const char* kAdminUserName = "admin";
inline constexpr int kClerkUserId = 2;
inline constexpr const char* kClerkUserName = "sara";

// Chart of accounts.
inline constexpr const char* kCashKoll = "101";
inline constexpr const char* kRialCashMoein = "0001";     // detail required, group "10"
inline constexpr const char* kForeignCashMoein = "0002";  // detail required, only "11001"
inline constexpr const char* kBankKoll = "102";
inline constexpr const char* kRialBankMoein = "0001";
inline constexpr const char* kChequesKoll = "103";
inline constexpr const char* kChequesInHandMoein = "0001";  // no lower levels
inline constexpr const char* kReceivablesKoll = "104";
inline constexpr const char* kReceivablesMoein = "0001";  // detail, second detail and project
inline constexpr const char* kPayablesKoll = "202";
inline constexpr const char* kPayablesMoein = "0001";  // detail by group "30" or code "40001"
inline constexpr const char* kCapitalKoll = "301";
inline constexpr const char* kCapitalMoein = "0001";  // no lower levels
inline constexpr const char* kSalesKoll = "401";
inline constexpr const char* kSalesMoein = "0001";  // project only, group "P0"
inline constexpr const char* kExpenseKoll = "501";
inline constexpr const char* kSalaryMoein = "0001";    // detail only "60001"/"60002", 2nd detail
inline constexpr const char* kInactiveMoein = "0009";  // under kExpenseKoll
inline constexpr const char* kRevaluationKoll = "601";
inline constexpr const char* kRevaluationMoein = "0001";
inline constexpr const char* kBlankActiveKoll = "998";  // IsActive empty: inactive
inline constexpr const char* kInactiveKoll = "999";

inline constexpr const char* kCustomerAlborz = "30001";  // own second-detail group "51"
inline constexpr const char* kCustomerAftab = "30002";   // own project list "P0002"
inline constexpr const char* kCustomerNegin = "30003";
inline constexpr const char* kInactiveCustomer = "30009";
inline constexpr const char* kSalaryDetail = "60001";
inline constexpr const char* kBonusDetail = "60003";  // not allowed under kSalaryMoein
inline constexpr const char* kRegionTehran = "50001";
inline constexpr const char* kRegionShiraz = "51001";
inline constexpr const char* kInactiveRegion = "50009";
inline constexpr const char* kProjectHeadOffice = "P0001";
inline constexpr const char* kProjectSales = "P0002";
inline constexpr const char* kInactiveProject = "P0009";

// Cash boxes and petty cash (Person codes).
inline constexpr const char* kRialCashBox = "1";
inline constexpr const char* kShopCashBox = "2";
inline constexpr const char* kForeignCashBox = "3";  // in kUsd
inline constexpr const char* kPettyCashHolder = "1001";
inline constexpr const char* kSecondPettyCashHolder = "1002";

// Banks, branches and bank accounts (AcountID is an identity: 1..4 in this order).
inline constexpr const char* kBankMelli = "01";
inline constexpr const char* kBankTejarat = "02";
inline constexpr const char* kBankSaderat = "03";
inline constexpr int kMelliAccountId = 1;
inline constexpr const char* kMelliAccountCod = "0101234567";
inline constexpr int kTejaratAccountId = 2;
inline constexpr const char* kTejaratAccountCod = "2012345678";
inline constexpr int kSaderatAccountId = 3;
inline constexpr const char* kSaderatAccountCod = "3019876543";
inline constexpr int kForeignAccountId = 4;  // in kUsd
inline constexpr const char* kForeignAccountCod = "0109999999";
// Cheque books: series and leaf range of each account (kSaderat's series is empty).
inline constexpr const char* kMelliChequeSeries = "12";
inline constexpr const char* kMelliFirstLeaf = "100001";
inline constexpr const char* kMelliLastLeaf = "100050";
inline constexpr const char* kTejaratChequeSeries = "7";
inline constexpr const char* kTejaratFirstLeaf = "200001";
inline constexpr const char* kTejaratLastLeaf = "200025";

// Currencies: kAed has no rate.
inline constexpr const char* kUsd = "01";
inline constexpr const char* kEur = "02";
inline constexpr const char* kAed = "03";
inline constexpr double kUsdBuy = 850000;  // latest: 1404/02/20 14:30
inline constexpr double kUsdSell = 860000;

// Sources (receipts) and uses (payments) of funds.
inline constexpr const char* kSourceOfFunds = "10101";
inline constexpr const char* kUseOfFunds = "20101";

// Sales invoices open in the current year (R_OldFactor of kCurrentDatabase).
inline constexpr const char* kOpenInvoice = "1001";         // 1404, balance 20,000,000
inline constexpr const char* kSecondOpenInvoice = "1002";   // 1404, balance 10,000,000
inline constexpr const char* kSettledInvoice = "1003";      // 1404, balance 0
inline constexpr const char* kPreviousYearInvoice = "950";  // 1403, balance 18,000,000

}  // namespace demo

}  // namespace tr::schema
