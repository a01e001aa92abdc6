#include "common/ui/table_view_columns.h"

#include <QHeaderView>

#include "common/ui/dataset_model.h"

namespace tr::ui {

int TableViewColumns::count() const {
    return view_ && view_->model() ? view_->horizontalHeader()->count() : 0;
}

tr::grid::GridColumn TableViewColumns::column(int position) const {
    QHeaderView* header = view_->horizontalHeader();
    const int logical = header->logicalIndex(position);
    tr::grid::GridColumn result;
    const QVariant field = view_->model()->headerData(logical, Qt::Horizontal, DatasetModel::FieldNameRole);
    result.fieldName = field.isValid() ? field.toString()
                                       : view_->model()->headerData(logical, Qt::Horizontal).toString();
    result.visible = !header->isSectionHidden(logical);
    if (result.visible) {
        result.width = header->sectionSize(logical);
    } else {
        // A hidden section reports 0; the header keeps the width it had and gives it back when
        // the section is shown.
        header->showSection(logical);
        result.width = header->sectionSize(logical);
        header->hideSection(logical);
    }
    return result;
}

void TableViewColumns::setColumn(int position, const tr::grid::GridColumn& column) {
    QHeaderView* header = view_->horizontalHeader();
    const int logical = header->logicalIndex(position);
    // Resizing a hidden section stores the width for when it is shown again.
    if (column.width > 0) header->resizeSection(logical, column.width);
    header->setSectionHidden(logical, !column.visible);
}

void TableViewColumns::moveColumn(int from, int to) { view_->horizontalHeader()->moveSection(from, to); }

bool TableViewColumns::datasetOpen() const {
    if (!view_ || !view_->model()) return false;
    if (auto* model = qobject_cast<DatasetModel*>(view_->model())) return model->datasetOpen();
    return true;
}

}  // namespace tr::ui
