#pragma once
// TTempGridForm, the host's pick-list window: shows the rows of a statement over a "##" table
// with the caller's column captions and widths, and answers the chosen row's fields by name
// (Enter or double-click) or nothing (Escape). Typing jumps to the first row whose current
// column starts with the typed text.
#include <QDialog>
#include <QList>
#include <QVariantMap>
#include <optional>

#include "common/db/result_set.h"
#include "common/dialog/host_windows.h"
#include "host/sdk/sdk_export.h"

class QLabel;
class QTableWidget;

namespace tr::db {
class Connection;
}

namespace tr::sdk {

class TR_SDK_EXPORT TTempGridForm : public QDialog, public tr::dialog::PickList {
    Q_OBJECT
  public:
    struct Column {
        QString field;    // a column of the statement's result
        QString caption;  // the grid's column title
        int width = 0;    // pixels; 0 leaves the grid's default
    };

    explicit TTempGridForm(QWidget* parent = nullptr);

    void setConnection(tr::db::Connection* connection) { connection_ = connection; }
    tr::db::Connection* connection() const { return connection_; }
    void setTitle(const QString& title);
    QString title() const;
    void setSql(const QString& sql) { sql_ = sql; }
    const QString& sql() const { return sql_; }
    // The grid shows these columns in this order; fields not listed are not shown but are still
    // answered. Without columns every field is shown under its own name.
    void setColumns(const QList<Column>& columns) { columns_ = columns; }
    const QList<Column>& columns() const { return columns_; }
    // The caller's kind of list (pick list, quick report...); kept for the caller, the window
    // behaves the same for every kind.
    void setBrowseKind(int kind) { browseKind_ = kind; }
    int browseKind() const { return browseKind_; }

    // The pick-list call of the core logic: title, statement, columns and kind, then choose().
    std::optional<QVariantMap> pick(const QString& title, const QString& sql,
                                    const QList<tr::dialog::PickColumn>& columns,
                                    int browseKind) override;
    // Runs the statement, fills the grid and shows the window modally.
    std::optional<QVariantMap> choose();

    // Runs the statement and fills the grid without showing the window.
    void load();
    QTableWidget* grid() const { return grid_; }
    int rowCount() const { return int(rows_.rows.size()); }
    void setCurrentRow(int row);
    int currentRow() const;
    QVariantMap rowValues(int row) const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void chooseCurrent();

    tr::db::Connection* connection_ = nullptr;
    QString sql_;
    QList<Column> columns_;
    int browseKind_ = 0;
    tr::db::ResultSet rows_;
    QLabel* title_;
    QTableWidget* grid_;
};

}  // namespace tr::sdk
