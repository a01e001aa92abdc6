#pragma once
// The editor of a grid's date cell: "0000/00/00", so that the user types the digits alone and the
// cell gets "yyyy/mm/dd"; a cell left blank gets an empty text.
#include <QStyledItemDelegate>

namespace tr::ui {

class MaskedDateDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};

}  // namespace tr::ui
