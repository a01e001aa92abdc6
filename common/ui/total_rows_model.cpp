#include "common/ui/total_rows_model.h"

#include <QHeaderView>
#include <QTableView>

#include "common/persian/amount_cells.h"

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

TotalRowsModel* searchResultModel(tr::db::Query* result, QObject* owner) {
    auto* model = new TotalRowsModel(result, owner);
    model->setReadOnly(true);
    model->setFieldFormat(QStringLiteral("SValue"), tr::persian::amountCellText);
    return model;
}

QTableView* searchResultGrid(DatasetModel* model, QWidget* owner) {
    auto* grid = new QTableView(owner);
    grid->setObjectName(QStringLiteral("dbg"));
    grid->setModel(model);
    grid->setLayoutDirection(Qt::RightToLeft);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->verticalHeader()->setDefaultSectionSize(24);
    grid->verticalHeader()->hide();
    return grid;
}

}  // namespace tr::ui
