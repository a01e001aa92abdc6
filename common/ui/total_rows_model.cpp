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

void arrangeResultColumns(QTableView* grid, DatasetModel* model,
                          const std::function<QString(const QString& field)>& caption, const QStringList& shown,
                          const std::function<int(int visual)>& width) {
    for (int c = 0; c < model->columnCount(); ++c) {
        const QString field = model->fieldName(c);
        const QString text = caption(field);
        grid->setColumnHidden(c, text.isEmpty());
        if (!text.isEmpty()) model->setTitle(field, text);
    }
    QHeaderView* header = grid->horizontalHeader();
    for (int visual = 0; visual < shown.size(); ++visual) {
        const int c = model->fieldColumn(shown[visual]);
        if (c < 0) continue;
        header->moveSection(header->visualIndex(c), visual);
        grid->setColumnWidth(c, width(visual));
    }
}

}  // namespace tr::ui
