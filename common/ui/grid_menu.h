#pragma once
// The grids' shared pop-up menu dispatches on the item's tag (QAction::data()): 15 opens the
// column settings library, 14 runs the grid's selected-column action on the current column.
// Other tags are left to the form.
#include <QString>
#include <functional>

class QAction;
class QMenu;
class QTableView;

namespace tr::ui {

inline constexpr int kSelectedColumnTag = 14;
inline constexpr int kColumnSettingsTag = 15;

struct GridMenuActions {
    QString hostFolder;
    std::function<void(int column)> selectedColumn;  // tag 14; the model column of the current cell
    std::function<void(int tag)> other;              // every other tag
};

// Returns whether the tag was one of the grid's own.
bool runGridMenuTag(int tag, QTableView* grid, const GridMenuActions& actions);
// Routes the menu's triggered actions by tag.
void connectGridMenu(QMenu* menu, QTableView* grid, GridMenuActions actions);
QAction* addGridMenuItem(QMenu* menu, const QString& text, int tag);

}  // namespace tr::ui
