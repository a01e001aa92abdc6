#pragma once
// What the cheque tests type again and again: a received cheque's fields in the cheque grid's
// current row (as the grid's cells take them), and a customer's cheque received through its own
// screen, for the tests that need one in hand.
#include <gtest/gtest.h>

#include "cheques/received_cheque_document.h"
#include "common/session/services.h"

namespace tr::cheques::testing {

struct TypedCheque {
    QString number;
    double value = 0;
    QString series = QStringLiteral("ج");
    QString due = QStringLiteral("1404/05/10");
};

// The row being typed: the cheques-in-hand account, number, series, amount and due date.
inline void typeReceivedFields(tr::db::Query& grid, const TypedCheque& cheque) {
    grid.FieldByName(QStringLiteral("Koll")).SetValue(QStringLiteral("103"));
    grid.FieldByName(QStringLiteral("Moein")).SetValue(QStringLiteral("0001"));
    grid.FieldByName(QStringLiteral("ChqNo")).SetValue(cheque.number);
    grid.FieldByName(QStringLiteral("Joz")).SetValue(cheque.series);
    grid.FieldByName(QStringLiteral("ChqValue")).SetValue(cheque.value);
    grid.FieldByName(QStringLiteral("SarResidDate")).SetValue(cheque.due);
}

// A new row typed and left: whether it posted (a refused row is cancelled).
inline bool typeReceivedCheque(tr::db::Query& grid, const TypedCheque& cheque) {
    grid.Append();
    typeReceivedFields(grid, cheque);
    grid.Post();
    const bool posted = grid.state() == tr::db::Query::State::Browse;
    if (!posted) grid.Cancel();
    return posted;
}

// A customer's cheque received on 1404/02/10 through the received-cheque screen, credited to
// 104-0002; `more` sets further fields of the row (guarantee, bank, description) before it posts.
// Answers the document's serial.
inline QString receiveThroughScreen(const tr::Services& services, const TypedCheque& cheque,
                                    const std::function<void(tr::db::Query&)>& more = {}) {
    ReceivedChequeDocument receipt(services);
    receipt.newDocument();
    receipt.header().date = QStringLiteral("1404/02/10");
    receipt.lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
    receipt.appendCheque();
    typeReceivedFields(receipt.cheques(), cheque);
    if (more) more(receipt.cheques());
    EXPECT_TRUE(receipt.postCheque() && receipt.save()) << cheque.number.toStdString();
    return receipt.header().serial;
}

}  // namespace tr::cheques::testing
