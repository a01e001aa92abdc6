#pragma once
// The built-in deposit slips, A5 landscape: the default slip, drawn whole on plain paper, and the
// two banks' printed slips, on which only the values are printed (their captions and lines are the
// bank's, drawn here only as the template that "نمايش و چاپ الگو" adds).
#include <QPageLayout>
#include <QString>

#include "cheques/bank_slips.h"

class QPainter;

namespace tr::cheques::ui {

enum class SlipForm { Default = 0, Tejarat = 1, Saderat = 2 };

struct SlipPrintOptions {
    SlipForm form = SlipForm::Default;
    double horizontal = 0;  // "جابجاييعرضي", mm, right positive, -90..90
    double vertical = 0;    // "طولي", mm, down positive, -20..20
    bool withTemplate = false;
};

QPageLayout bankSlipPage();
// The names "چاپ با فرم" offers, in SlipForm's order.
QStringList slipFormNames();
// How many lines of `slip` one page holds (the rest continue on the next page).
int slipLinesPerPage(SlipForm form, int lines);
// Lines [first, first + count) of `slip` on the current page of `painter`.
void paintBankSlip(QPainter& painter, const SlipSet& set, const Slip& slip, int first, int count,
                   const SlipPrintOptions& options);

}  // namespace tr::cheques::ui
