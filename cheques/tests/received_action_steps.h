#pragma once
// The actions screen's received tab as a user works it in the tests that need cheques moved on:
// the listed cheques given one action each, then applied together.
#include <gtest/gtest.h>

#include <QStringList>

#include "cheques/received_actions.h"
#include "tests/support/test_session.h"

namespace tr::cheques::testing {

inline const QString kCollectAction = QStringLiteral("در جريان وصول");

// Gives each listed cheque of `numbers` the action `name`, dated `date` (undoing takes none),
// a collection to bank account `bankAccount`; then applies them.
inline void actOnReceived(tr::test::TestSession& session, const QStringList& numbers, const QString& name,
                          const QString& date, qint64 bankAccount = 1) {
    ReceivedChequeActions screen(session.services);
    screen.fill();
    tr::db::Query& rows = screen.rows();
    for (rows.First(); !rows.Eof(); rows.Next()) {
        if (!numbers.contains(rows.FieldByName(QStringLiteral("ChqNo")).AsString().trimmed())) continue;
        ASSERT_TRUE(screen.chooseAction(name)) << session.dialog.last().text.toStdString();
        if (name == kCollectAction) screen.setBankAccount(bankAccount);
        if (!date.isEmpty()) ASSERT_TRUE(screen.setActionDate(date)) << session.dialog.last().text.toStdString();
    }
    ASSERT_TRUE(screen.apply()) << session.dialog.last().text.toStdString();
}

}  // namespace tr::cheques::testing
