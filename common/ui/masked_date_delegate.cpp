#include "common/ui/masked_date_delegate.h"

#include <QLineEdit>

#include "common/persian/persian_date.h"
#include "common/ui/date_boxes.h"

namespace tr::ui {

QWidget* MaskedDateDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
    QLineEdit* line = maskedDateBox(parent);
    line->setLayoutDirection(Qt::LeftToRight);
    return line;
}

void MaskedDateDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* line = static_cast<QLineEdit*>(editor);
    // The mask takes Latin digits; a date shown in Persian ones is read back as Latin.
    line->setText(tr::persian::latinDigits(index.data(Qt::EditRole).toString().trimmed()));
    line->selectAll();
}

void MaskedDateDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    model->setData(index, maskedDate(static_cast<QLineEdit*>(editor)), Qt::EditRole);
}

}  // namespace tr::ui
