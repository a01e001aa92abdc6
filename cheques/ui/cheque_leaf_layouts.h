#pragma once
// The built-in drawings of a cheque leaf, one per book form code: where the due date, the amount
// in figures and in words, the payee and the payable-to-order mark go on the bank's leaf, which
// carries its own captions and lines. Every leaf page is 180 x 80 mm.
#include <QPageLayout>
#include <QString>

#include "cheques/cheque_leaf_print.h"

class QPainter;

namespace tr::cheques::ui {

// The leaf's page: 180 x 80 mm, landscape, no margins.
QPageLayout chequeLeafPage();
// The built-in layout a book's form code prints with: "1" or "2", anything else "1".
QString chequeLeafLayoutCode(const QString& formCode);
// `leaf` on the current page of `painter` (a leaf-sized device), moved by `offsets`.
void paintChequeLeaf(QPainter& painter, const ChequeLeaf& leaf, const ChequeLeafOffsets& offsets);

}  // namespace tr::cheques::ui
