#include "common/ui/masked_date_delegate.h"

#include <QLineEdit>

#include "common/persian/persian_date.h"

namespace tr::ui {

QWidget* MaskedDateDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
    auto* line = new QLineEdit(parent);
    line->setInputMask(QStringLiteral("0000/00/00;_"));
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
    const QString text = static_cast<QLineEdit*>(editor)->text();
    // Nothing typed leaves only the mask's slashes.
    const QString digits = QString(text).remove(QLatin1Char('/')).trimmed();
    model->setData(index, digits.isEmpty() ? QString() : text, Qt::EditRole);
}

}  // namespace tr::ui
