#pragma once
// Per-user grid layouts in Grid_State (save, reset, restore including column order), column
// look-up by field name and the sort-by-title rule, over an abstract grid so the logic stays
// headless. Statements run through the command query; messages go through `showMessage`.
#include <QString>
#include <functional>

#include "common/db/my_database.h"
#include "common/db/query.h"

namespace tr::grid {

struct GridColumn {
    QString fieldName;
    bool visible = true;
    int width = 0;
};

// A grid's columns in display order (position 0 is the first column the user sees).
class GridColumns {
public:
    virtual ~GridColumns() = default;
    virtual int count() const = 0;
    virtual GridColumn column(int position) const = 0;
    // Applies visibility and width; the field name is not changed.
    virtual void setColumn(int position, const GridColumn& column) = 0;
    virtual void moveColumn(int from, int to) = 0;
    // Whether the grid's dataset is open; a closed grid's layout is not saved.
    virtual bool datasetOpen() const = 0;
};

// sProg, sItem, sForm, sPart: with the user number they identify one layout.
struct GridKey {
    QString prog;
    QString item;
    QString form;
    QString part;
};

// The message dialog: (text, caption, kind code) -> modal result.
using ShowMessage =
    std::function<int(const QString& text, const QString& caption, const QString& code)>;

class GridState {
public:
    GridState(tr::db::MyDatabase& database, qint64 userNumber, ShowMessage showMessage);

    // Nothing happens (false) when the grid's dataset is closed.
    bool save(const GridColumns& grid, const GridKey& key);
    void reset(const GridKey& key);
    // Reads the layout into `query` (on the database's connection when it has none) and applies
    // visibility, width and the saved order; columns without a saved row keep their state and
    // follow the saved ones. Returns whether a layout was found.
    bool restore(GridColumns& grid, tr::db::Query& query, const GridKey& key);

    QString deleteStatement(const GridKey& key) const;
    QString selectStatement(const GridKey& key) const;

    ShowMessage showMessage;

private:
    QString text(const QString& value) const;

    tr::db::MyDatabase& database_;
    QString user_;
};

// Position of the first column whose field name matches, ignoring case; -1 when none.
int columnIndexByFieldName(const GridColumns& grid, const QString& fieldName);

enum class TitleColour { Black, Red, Blue };

struct TitleSort {
    QString sortText;      // the dataset's new in-memory sort
    TitleColour highlight;  // the clicked title's colour; every other title turns black
    bool descending;
};

// A second click on the column sorted last (while ascending) sorts it descending; any other
// click sorts the clicked column ascending. `leadingSort` is the grid's fixed prefix, e.g.
// "sOrder, ". Column identities are the caller's (-1 for "none sorted yet").
TitleSort sortByTitle(const QString& currentSort, int lastSortedColumn, int clickedColumn,
                      const QString& clickedFieldName, const QString& leadingSort);

}  // namespace tr::grid
