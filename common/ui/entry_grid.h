#pragma once
// A grid that lines are typed into: Tab and Shift+Tab go to the next (previous) cell of the row
// that takes typing, past columns shown for reading (a computed amount, a name looked up); a text
// cell's editor holds typing to its column's width (DatasetModel::MaxLengthRole).
#include <QTableView>

namespace tr::ui {

class EntryGrid : public QTableView {
    Q_OBJECT
  public:
    explicit EntryGrid(QWidget* parent = nullptr);

  protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};

}  // namespace tr::ui
