#include "common/ui/total_rows_model.h"

#include <QColor>
#include <QFont>

namespace tr::ui {

QVariant TotalRowsModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::FontRole && role != Qt::BackgroundRole) return DatasetModel::data(index, role);
    const int order = fieldColumn(QStringLiteral("sOrder"));
    if (!query() || order < 0 || !index.isValid()) return DatasetModel::data(index, role);
    const QString kind = query()->value(index.row(), order).toString().trimmed();
    if (kind.isEmpty()) return DatasetModel::data(index, role);
    if (role == Qt::FontRole) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    return kind == QLatin1String("Y") ? QColor(0xf2, 0xd7, 0x9a) : QColor(0xfb, 0xef, 0xcf);
}

}  // namespace tr::ui
