#pragma once
// A search result's model: rows whose sOrder is set are totals, drawn bold on a shade of their
// own ('Y', the grand total, darker), apart from the rows they add up.
#include "common/ui/dataset_model.h"

namespace tr::ui {

class TotalRowsModel : public DatasetModel {
  public:
    using DatasetModel::DatasetModel;
    QVariant data(const QModelIndex& index, int role) const override;
};

}  // namespace tr::ui
