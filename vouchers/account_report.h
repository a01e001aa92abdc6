#pragma once
// The one call into the suite's AccountReport library (ReportHesab_Corvask): the filter text of
// an account, the period condition the document screens add to it, and the call with the six
// session objects. The C signature and the filter's grammar are in docs/decisions.
#include <QString>

#include "common/session/services.h"
#include "vouchers/account_checks.h"

class QObject;
class QWidget;

namespace tr::vouchers {

extern "C" {
// <host folder>/DLLS/Corvask/AccountReport: the report window, docked into `parent`. The session
// objects come in the order Global, MyDate, MyDatabase, TempGridForm, ShowStateForm, DlgMsg, then
// the filter text (UTF-16, NUL-terminated, valid during the call) and the kind of report.
using ReportHesabCorvask = void (*)(QWidget* parent, tr::Global* global, QObject* myDate,
                                    tr::db::MyDatabase* database, QObject* tempGridForm,
                                    QObject* showStateForm, QObject* dlgMsg, const char16_t* filter,
                                    int kind);
}

inline constexpr char kAccountReportLibrary[] = "AccountReport";

// The library's report kinds, by the numbers it is called with.
enum class AccountReportKind : int {
    Turnover = 1,  // GARDESH_HESAB: the account's turnover
    Detail = 2,    // JOZ_HESAB: the account's detail (subsidiary ledger)
};
inline constexpr int kAccountTurnoverKind = static_cast<int>(AccountReportKind::Turnover);

QString accountReportFolder(const QString& hostFolder);

// The filter text of an account: the level of `level` when the row fills it, else the most
// detailed level it fills; empty for a row without account.
QString turnoverFilter(const LineAccount& line, AccountLevel level = AccountLevel::None);
// "COND=SANADDATE;FR=<from>;TO=<to>;": the vouchers dated within the two dates.
QString periodCondition(const QString& from, const QString& to);
// The account filter, then the condition after a ';' when there is one.
QString accountReportFilter(const QString& accountFilter, const QString& condition = {});

// Loads the library (left loaded: the window outlives the call) and calls it; false when the
// filter is empty or the library or its entry point is missing. Nobody is told.
bool showAccountReport(const tr::Services& services, QWidget* parent, const QString& filter,
                       AccountReportKind kind = AccountReportKind::Turnover);

}  // namespace tr::vouchers
