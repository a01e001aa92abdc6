#pragma once
// GridColumns over a QTableView: positions are the header's visual order, field names come from
// the model (DatasetModel::FieldNameRole, else the title), and hidden columns keep their width.
#include <QPointer>
#include <QTableView>

#include "common/grid/grid_state.h"

namespace tr::ui {

class TableViewColumns : public tr::grid::GridColumns {
public:
    explicit TableViewColumns(QTableView* view) : view_(view) {}

    int count() const override;
    tr::grid::GridColumn column(int position) const override;
    void setColumn(int position, const tr::grid::GridColumn& column) override;
    void moveColumn(int from, int to) override;
    bool datasetOpen() const override;

private:
    QPointer<QTableView> view_;
};

}  // namespace tr::ui
