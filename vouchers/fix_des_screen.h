#pragma once
// The fixed-descriptions screen without its widgets: the grid over FixDes (an editable query),
// the checks before a row is posted, the account lists of the account cells, the account
// turnover of the AccountReport library and the printable report of the grid.
#include <QString>
#include <QStringList>

#include "common/db/query.h"
#include "common/session/services.h"
#include "vouchers/account_checks.h"
#include "vouchers/account_report.h"

class QWidget;

namespace tr::vouchers {

class FixDesScreen {
  public:
    static const QString kCaption;
    static const QString kFormKey;

    explicit FixDesScreen(const tr::Services& services);
    ~FixDesScreen();
    FixDesScreen(const FixDesScreen&) = delete;
    FixDesScreen& operator=(const FixDesScreen&) = delete;

    // The entry point hands in the latest session values on every call.
    void setServices(const tr::Services& services);
    const tr::Services& services() const { return services_; }
    // The host's date object, passed on to the AccountReport library (may stay null).

    // Showing the screen puts the grid on the host's connection and reads FixDes.
    void show();
    tr::db::Query& grid() { return grid_; }
    // Grid fields in column order (right to left on screen) and their titles.
    static QStringList gridFields();
    static QString gridTitle(const QString& field);

    // The grid's BeforePost: description, duplicate, account; false keeps the row in edit.
    bool beforePost(tr::db::Query& row);
    // The field of the cell to focus after a refusal; empty when the last post was accepted.
    const QString& refusedField() const { return refusedField_; }

    void appendRow();
    // Asks before deleting the current row; whether it was deleted.
    bool deleteRow();

    // The account list of an account cell (key or double-click); whether the row took a code.
    bool pickAccount(const QString& field);

    // Turnover of the current row's account; false when there is no account or no library.
    bool showTurnover(const QString& field, QWidget* parent);

    QString reportTitle() const;
    static QString reportPropertiesCaption();
    // The grid as a right-to-left HTML table under the report title, for printing.
    QString reportHtml();

  private:
    void rememberCurrentRow(tr::db::Query& query);
    bool isDuplicate(const LineAccount& line, const QString& description);

    tr::Services services_;
    tr::db::Query grid_;
    QString refusedField_;
    QStringList
        browsedValues_;  // the current row as last read or posted, to spot an unchanged edit
};

}  // namespace tr::vouchers
