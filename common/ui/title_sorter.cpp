#include "common/ui/title_sorter.h"

#include <QHeaderView>

#include "common/grid/grid_state.h"

namespace tr::ui {

TitleSorter::TitleSorter(QTableView* view, DatasetModel* model, const QString& leadingSort)
    : QObject(view), model_(model), leadingSort_(leadingSort) {
    view->setSortingEnabled(false);
    view->horizontalHeader()->setSectionsClickable(true);
    connect(view->horizontalHeader(), &QHeaderView::sectionClicked, this, &TitleSorter::titleClicked);
}

void TitleSorter::titleClicked(int column) {
    if (!model_ || !model_->datasetOpen()) return;
    tr::db::Query* query = model_->query();
    const QString field = model_->fieldName(column);
    if (field.isEmpty()) return;
    const tr::grid::TitleSort sort =
        tr::grid::sortByTitle(query->sort(), lastSorted_, column, field, leadingSort_);
    model_->setAllTitleColours(Qt::black);
    model_->setTitleColour(field, sort.highlight == tr::grid::TitleColour::Blue ? QColor(Qt::blue)
                                                                                : QColor(Qt::red));
    query->setSort(sort.sortText);
    lastSorted_ = column;
}

}  // namespace tr::ui
