#pragma once
// "چکهاي برگشتي ": the received cheques now returned to a counterparty account, filled by
// sp_N_Report_ChqGetReturned into a ## table of the session, the grid's column widths from the
// table's text columns, printed through the grid-report printer under the key CHQGETRETURNED.
#include <QTextDocument>
#include <QWidget>

#include "common/db/query.h"
#include "common/session/services.h"
#include "vouchers/account_checks.h"

class QTableView;

namespace tr::ui {
class DatasetModel;
}

namespace tr::cheques {

class TChqGetReturnedForm : public QWidget {
    Q_OBJECT
  public:
    static const QString kReportKey;  // "CHQGETRETURNED"

    TChqGetReturnedForm(const tr::Services& services, const tr::vouchers::LineAccount& account,
                        QWidget* parent = nullptr);
    ~TChqGetReturnedForm() override;

    tr::db::Query& rows() { return rows_; }
    QTableView* grid() const { return grid_; }
    bool printClick(const QString& pdfFile = {});

  private:
    tr::Services services_;
    QString table_;
    tr::db::Query rows_;
    tr::ui::DatasetModel* model_ = nullptr;
    QTableView* grid_ = nullptr;
    QTextDocument report_;
};

// The report for the account of the current counterparty line, as a window of its own.
TChqGetReturnedForm* showReturnedCheques(const tr::Services& services, const tr::vouchers::LineAccount& account,
                                         QWidget* owner);

}  // namespace tr::cheques
