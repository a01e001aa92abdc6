#pragma once
// Sort by title for a grid over a DatasetModel: a click on a column title sorts the query in
// memory (ascending, then descending on a second click) and colours the titles: all black, the
// sorted one red when ascending and blue when descending. The header's own sorting is turned off.
#include <QObject>
#include <QPointer>
#include <QTableView>

#include "common/ui/dataset_model.h"

namespace tr::ui {

class TitleSorter : public QObject {
    Q_OBJECT
public:
    // `leadingSort` is the grid's fixed sort prefix, e.g. "sOrder, " (or empty).
    TitleSorter(QTableView* view, DatasetModel* model, const QString& leadingSort = {});

    int lastSortedColumn() const { return lastSorted_; }
    void titleClicked(int column);

private:
    QPointer<DatasetModel> model_;
    QString leadingSort_;
    int lastSorted_ = -1;
};

}  // namespace tr::ui
