#pragma once
// A search result's model: rows whose sOrder is set are totals, drawn bold on a shade of their
// own ('Y', the grand total, darker), apart from the rows they add up.
#include <QStringList>
#include <functional>

#include "common/ui/dataset_model.h"

class QTableView;
class QWidget;

namespace tr::ui {

class TotalRowsModel : public DatasetModel {
  public:
    using DatasetModel::DatasetModel;
    QVariant data(const QModelIndex& index, int role) const override;
};

// The search windows' result: a read-only model over `result` with its amounts (SValue) shown
// as amounts, and the grid over it (whole rows selected, not editable, no row header).
TotalRowsModel* searchResultModel(tr::db::Query* result, QObject* owner);
QTableView* searchResultGrid(DatasetModel* model, QWidget* owner);
// A new result's columns: each field titled by `caption` (hidden when it has none), then `shown`
// in that order, the one at visual position i `width(i)` pixels wide.
void arrangeResultColumns(QTableView* grid, DatasetModel* model,
                          const std::function<QString(const QString& field)>& caption, const QStringList& shown,
                          const std::function<int(int visual)>& width);

}  // namespace tr::ui
