#include "common/ui/entry_grid.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QStyledItemDelegate>

#include "common/ui/dataset_model.h"

namespace tr::ui {

namespace {

// The grid's own editors (columns with a delegate of their own keep it).
class WidthDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        const int width = index.data(DatasetModel::MaxLengthRole).toInt();
        if (auto* line = qobject_cast<QLineEdit*>(editor); line && width > 0) line->setMaxLength(width);
        return editor;
    }
};

}  // namespace

EntryGrid::EntryGrid(QWidget* parent) : QTableView(parent) {
    setItemDelegate(new WidthDelegate(this));
}

QModelIndex EntryGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex current = currentIndex();
    if ((action != MoveNext && action != MovePrevious) || !current.isValid() || !model())
        return QTableView::moveCursor(action, modifiers);
    // Along the row in the order the columns are shown; past its last typed cell the view's own
    // move (on to the next row) stands.
    const int step = action == MoveNext ? 1 : -1;
    const QHeaderView* header = horizontalHeader();
    for (int visual = header->visualIndex(current.column()) + step; visual >= 0 && visual < header->count();
         visual += step) {
        const int column = header->logicalIndex(visual);
        if (isColumnHidden(column)) continue;
        const QModelIndex cell = model()->index(current.row(), column);
        if (cell.flags() & Qt::ItemIsEditable) return cell;
    }
    return QTableView::moveCursor(action, modifiers);
}

}  // namespace tr::ui
