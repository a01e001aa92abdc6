#include "common/ui/grid_menu.h"

#include <QMenu>
#include <QPointer>
#include <QTableView>

#include "common/ui/settings_libraries.h"

namespace tr::ui {

bool runGridMenuTag(int tag, QTableView* grid, const GridMenuActions& actions) {
    switch (tag) {
        case kColumnSettingsTag:
            openColumnSettings(actions.hostFolder, grid);
            return true;
        case kSelectedColumnTag:
            if (actions.selectedColumn && grid && grid->currentIndex().isValid()) {
                actions.selectedColumn(grid->currentIndex().column());
            }
            return true;
        default:
            if (actions.other) actions.other(tag);
            return false;
    }
}

void connectGridMenu(QMenu* menu, QTableView* grid, GridMenuActions actions) {
    QPointer<QTableView> view(grid);
    QObject::connect(menu, &QMenu::triggered, menu, [view, actions](QAction* action) {
        if (view) runGridMenuTag(action->data().toInt(), view, actions);
    });
}

QAction* addGridMenuItem(QMenu* menu, const QString& text, int tag) {
    QAction* action = menu->addAction(text);
    action->setData(tag);
    return action;
}

}  // namespace tr::ui
