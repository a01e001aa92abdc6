#pragma once
// "تاييد صدور مجوز پرداخت چك": the finance manager, then the managing director, approve or void
// payment permits. The approver's role comes from the rights N_A_MOJAVEZ_TAED_MALY(Y) and
// N_A_MOJAVEZ_TAED_AMEL(Y) (a user holding both chooses). The list holds the permits in the
// serial and date ranges, the managing director's only those the finance manager approved; the
// approver's own approvals and voidings come ticked. "تاييد" dates the newly ticked permits and
// clears the unticked ones for the approver's role only, all in one transaction.
#include <QList>
#include <QString>

#include "common/db/query.h"
#include "common/db/scoped_temp_table.h"
#include "common/dialog/message_dialog.h"
#include "common/session/services.h"

namespace tr::cheques {

enum class Approver { FinanceManager, ManagingDirector };

class PermitApproval {
  public:
    static const QString kFinanceManagerRight;   // "N_A_MOJAVEZ_TAED_MALY(Y)"
    static const QString kManagingDirectorRight;  // "N_A_MOJAVEZ_TAED_AMEL(Y)"
    static const QString kTicked;                 // "ض"

    explicit PermitApproval(const tr::Services& services);

    // The roles the user's rights grant, the finance manager's first; empty: none.
    QList<Approver> roles() const;
    static QString roleName(Approver role);  // "مدير مالي" / "مدير عامل"
    // The first granted role until the user chooses another; false for one not granted.
    Approver approver() const { return approver_; }
    bool setApprover(Approver role);
    bool mayApprove() const { return !roles().isEmpty(); }

    struct Filter {
        QString fromSerial, toSerial, fromDate, toDate;  // empty: open
    };
    Filter& filter() { return filter_; }
    // "تاريخ تاييد/ابطال": the date "تاييد" writes; the period's default date to start with.
    QString& actionDate() { return date_; }

    // The list for the approver and the filter.
    void fill();
    tr::db::Query& rows() { return rows_; }
    QString table() const { return table_.name(); }
    // The tick of the current row's "تاييد" (sSelect) or "ابطال" (Abtal) turned; false after the
    // refusal: a permit a payment used, or for the finance manager one the managing director approved.
    bool toggle(const QString& field);
    // "تاييد": the date checked against the listed permits, then the role's dates written.
    bool apply();

  private:
    bool refuse(const QString& message);
    bool write();
    QString approvalColumn() const;
    QString voidColumn() const;

    tr::Services services_;
    tr::dialog::Messages messages_;
    tr::db::ScopedTempTable table_;
    tr::db::Query rows_;
    Approver approver_ = Approver::FinanceManager;
    Filter filter_;
    QString date_;
};

}  // namespace tr::cheques
