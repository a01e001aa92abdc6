#pragma once
// The commands every document grid's pop-up menu offers, over the grid's query: the user's saved
// column layout, copying the row above, the clipboard, the row and cell memories, a fixed
// description into the row and deleting the row. The row's identity fields are never copied.
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>
#include <functional>
#include <optional>

#include "common/db/query.h"
#include "common/grid/grid_state.h"
#include "common/session/services.h"

namespace tr::vouchers {

// A column the clipboard text carries, under its title.
struct ClipboardColumn {
    QString field;
    QString title;
};

class GridCommands {
  public:
    static const QString kDeleteQuestion;  // "آيا حذف شود؟"

    // `services` is read at each call, so a screen that takes new session values keeps this.
    GridCommands(const tr::Services& services, tr::db::Query& grid, tr::grid::GridKey key,
                 QStringList rowIdentity = {QStringLiteral("Raj"), QStringLiteral("IDX")});

    // Starts a row on an empty grid when a command needs one (the screen's own new row, with
    // its defaults); a plain Append when unset.
    std::function<void()> appendRow;
    // Anything the screen shows of the grid may have changed.
    std::function<void()> changed;

    tr::db::Query& grid() const { return grid_; }
    const tr::grid::GridKey& key() const { return key_; }

    bool saveColumns(const tr::grid::GridColumns& columns);
    void resetColumns();
    bool restoreColumns(tr::grid::GridColumns& columns);

    // The row the user is on, counting a row being inserted (always the last); -1 when none.
    int currentRowIndex() const;
    // Puts the current row in edit (starting one on an empty grid); whether it is.
    bool editCurrentRow();

    bool copyRowAbove();
    // `columns` as tab-separated lines under their titles, the row being inserted included.
    QString clipboardText(const QList<ClipboardColumn>& columns) const;
    void rememberRow();
    bool restoreRow();
    void rememberCell(const QString& field);
    bool restoreCell(const QString& field);
    bool pickFixedDescription(const QString& descriptionField = QStringLiteral("Des"));
    // Asks `question` ("3QR"); a row being inserted is dropped, a stored one deleted.
    bool deleteRow(const QString& question = kDeleteQuestion);

  private:
    bool isIdentity(const QString& field) const;
    tr::grid::GridState gridState() const;
    void notify() const;

    const tr::Services& services_;
    tr::db::Query& grid_;
    tr::grid::GridKey key_;
    QStringList identity_;
    QVariantMap rowMemory_;
    std::optional<QVariant> cellMemory_;
};

}  // namespace tr::vouchers
