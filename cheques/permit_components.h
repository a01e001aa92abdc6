#pragma once
// "مقداردهي عوامل مجوز": the components a permit's amount is built from, one row per kind of
// N_Mojavez over the permit's ##<prefix>_Fact. A component adds (Sign "+") or subtracts ("-");
// with a rate (Nerkh, a percentage) its amount is that share of the gross, the sum of the adding
// components without a rate; without one it is the amount typed. Their signed total ("جمع عوامل")
// is shown beside the cheques' total ("مبلغ چك") and becomes the cheques' FactValue.
#include "cheques/permit_document.h"

namespace tr::cheques {

class PermitComponents {
  public:
    explicit PermitComponents(PermitDocument& permit);

    // Every component kind listed (those the permit lacks at nothing, adding), the grid opened.
    void open();
    tr::db::Query& rows() { return rows_; }
    // Space on "علامت": the current row adds or subtracts in turn.
    bool toggleSign();
    // The amounts the rates give, after any change of a row.
    void computeRates();
    double chequeTotal() const;     // "مبلغ چك"
    double componentTotal() const;  // "جمع عوامل"
    // "تاييد": the rates worked out and the total spread over the permit's cheques.
    bool apply();
    // "انصراف": the components as open() found them.
    void discard();

  private:
    PermitDocument& permit_;
    tr::db::Query rows_;
    QList<QVariantList> opened_;
};

}  // namespace tr::cheques
