// Serials per kind, the holds that keep an open document's serial from being handed out, the
// new-serial dialog's logic and the rights prefixes.
#include "vouchers/serials.h"

#include <QProcess>
#include <QStringList>
#include <set>
#include <vector>

#include "common/db/query_helpers.h"
#include "db/engine/sqlite_connection.h"
#include "vouchers/new_serial_dialog.h"
#include "vouchers/rights.h"
#include "vouchers/tests/voucher_fixture.h"

namespace tr::vouchers {
namespace {

using testing::Session;
using testing::VoucherTest;

const QString kReceipt = QStringLiteral("10");
const QString kPayment = QStringLiteral("20");
const QString kReceiptTitle = QStringLiteral("دريافت صندوق");

class SerialsTest : public VoucherTest {
  protected:
    void holdSerial(int serial, const QString& user = QStringLiteral("7")) {
        hold(admin->database, kTreasuryProgram, kReceipt, QString(), QString::number(serial), user);
    }
    int holdsOf(const QString& user) {
        return value(QStringLiteral("Select Count(*) From ReserveId Where UserId = ") +
                     tr::db::sqlText(user))
            .toInt();
    }
};

TEST_F(SerialsTest, KindWithoutDocumentsOrHoldsStartsAtOne) {
    EXPECT_EQ(nextSerial(company(), kReceipt), QStringLiteral("1"));
}

struct HoldCase {
    int held;
    const char* next;
};

class NextSerialPastHolds : public SerialsTest, public ::testing::WithParamInterface<HoldCase> {};

TEST_P(NextSerialPastHolds, SavedMaximumFortyOne) {
    insertDocumentLine(kReceipt, 41);
    holdSerial(GetParam().held);
    EXPECT_EQ(nextSerial(company(), kReceipt), QString::fromLatin1(GetParam().next));
}

INSTANTIATE_TEST_SUITE_P(Holds, NextSerialPastHolds,
                         ::testing::Values(HoldCase{42, "43"}, HoldCase{30, "42"},
                                           HoldCase{41, "42"}, HoldCase{60, "61"}));

TEST_F(SerialsTest, SerialsAreNumberedPerKindAndNumerically) {
    for (int serial : {9, 10}) insertDocumentLine(kReceipt, serial);
    holdSerial(5);  // another kind's hold does not count
    hold(admin->database, kTreasuryProgram, kPayment, QString(), QStringLiteral("80"),
         QStringLiteral("7"));
    EXPECT_EQ(nextSerial(company(), kReceipt), QStringLiteral("11"));
    EXPECT_EQ(nextSerial(company(), QStringLiteral("40")), QStringLiteral("1"));
}

TEST_F(SerialsTest, SerialIsFreeRefusesOnlyTheSameKind) {
    insertDocumentLine(kReceipt, 3);
    const tr::dialog::Messages messages(&admin->dialog);
    EXPECT_TRUE(serialIsFree(company(), messages, kPayment, QStringLiteral("پرداخت صندوق"),
                             QStringLiteral("3")));
    EXPECT_TRUE(admin->dialog.shown().isEmpty());
    EXPECT_FALSE(serialIsFree(company(), messages, kReceipt, kReceiptTitle, QStringLiteral("3")));
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text, QStringLiteral("دريافت صندوق با اين شماره ثبت شده است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));
}

TEST_F(SerialsTest, OpeningHoldsForThisUserOnlyWhenNobodyElseHolds) {
    // The user's earlier hold of the kind goes when another document is opened.
    EXPECT_TRUE(
        holdOpenedDocument(admin->database, kReceipt, QStringLiteral("4"), QStringLiteral("1")));
    EXPECT_TRUE(
        holdOpenedDocument(admin->database, kReceipt, QStringLiteral("5"), QStringLiteral("1")));
    EXPECT_EQ(rows(QStringLiteral("Select ResId2 From ReserveId Where UserId='1'")), 1);
    EXPECT_EQ(value(QStringLiteral("Select ResId2 From ReserveId Where UserId='1'")).toInt(), 5);

    EXPECT_TRUE(heldByAnotherUser(company(), kTreasuryProgram, kReceipt, QString(),
                                  QStringLiteral("5"), QStringLiteral("2")));
    EXPECT_FALSE(heldByAnotherUser(company(), kTreasuryProgram, kReceipt, QString(),
                                   QStringLiteral("5"), QStringLiteral("1")));
    EXPECT_FALSE(
        holdOpenedDocument(admin->database, kReceipt, QStringLiteral("5"), QStringLiteral("2")));
    EXPECT_EQ(holdsOf(QStringLiteral("2")), 0);

    releaseHold(admin->database, kTreasuryProgram, kReceipt, QString(), QStringLiteral("5"),
                QStringLiteral("1"));
    EXPECT_EQ(holdsOf(QStringLiteral("1")), 0);
}

TEST_F(SerialsTest, ScreenReleaseClearsBothHoldTablesOfTheKindOnly) {
    holdSerial(3, QStringLiteral("1"));
    hold(admin->database, kTreasuryProgram, kPayment, QString(), QStringLiteral("3"),
         QStringLiteral("1"));
    company().execute(
        QStringLiteral("Insert Into N_reserveid (UserId, WhatDoc, Serial) Values ('1', '10', 3)"));
    company().execute(
        QStringLiteral("Insert Into N_reserveid (UserId, WhatDoc, Serial) Values ('2', '10', 4)"));
    releaseScreenHolds(admin->database, kReceipt, QStringLiteral("1"));
    EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId Where WhatDoc='10'")), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId Where WhatDoc='20'")), 1);
    EXPECT_EQ(rows(QStringLiteral("Select * From N_reserveid")), 1);
}

TEST_F(SerialsTest, NewSerialIsHeldSoTheNextUserSkipsIt) {
    insertDocumentLine(kReceipt, 7);
    EXPECT_EQ(takeNewSerial(admin->database, kReceipt, QStringLiteral("1")), QStringLiteral("8"));
    EXPECT_EQ(takeNewSerial(admin->database, kReceipt, QStringLiteral("2")), QStringLiteral("9"));
    // Taking again replaces the user's own hold instead of piling them up.
    EXPECT_EQ(takeNewSerial(admin->database, kReceipt, QStringLiteral("2")), QStringLiteral("9"));
    EXPECT_EQ(holdsOf(QStringLiteral("2")), 1);
    EXPECT_FALSE(company().inTransaction());
}

// Users work from processes of their own; each takes serials one after another, as screens do.
TEST_F(SerialsTest, UsersTakingSerialsAtOnceNeverShareOne) {
    constexpr int kUsers = 3;
    constexpr int kTakes = 25;
    std::vector<std::unique_ptr<QProcess>> users;
    for (int i = 0; i < kUsers; ++i) {
        users.push_back(std::make_unique<QProcess>());
        users.back()->start(
            QStringLiteral(TR_SERIAL_TAKER),
            {tr::test::booksAddress(books()), QString::number(100 + i), QString::number(kTakes)});
    }
    std::vector<std::set<QString>> taken(kUsers);
    for (int i = 0; i < kUsers; ++i) {
        ASSERT_TRUE(users[i]->waitForFinished(120000));
        ASSERT_EQ(users[i]->exitCode(), 0) << users[i]->readAllStandardError().toStdString();
        const QStringList serials = QString::fromUtf8(users[i]->readAllStandardOutput())
                                        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        EXPECT_EQ(serials.size(), kTakes);
        taken[i].insert(serials.begin(), serials.end());
    }
    for (int i = 0; i < kUsers; ++i)
        for (int j = i + 1; j < kUsers; ++j)
            for (const QString& serial : taken[i])
                EXPECT_EQ(taken[j].count(serial), 0u)
                    << "users " << i << " and " << j << " both got " << serial.toStdString();
    EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId")), kUsers);
}

TEST_F(SerialsTest, NewSerialDialogProposesPastSavedSerialsOnly) {
    insertDocumentLine(kReceipt, 3);
    holdSerial(50);  // the dialog does not look at holds
    NewSerialDialog dialog(company(), &admin->dialog, kReceipt, kReceiptTitle);
    EXPECT_EQ(NewSerialDialog::caption(), QStringLiteral("شماره سريال جديد"));
    EXPECT_EQ(dialog.groupCaption(), QStringLiteral("شماره دريافت صندوق جديد"));
    EXPECT_EQ(dialog.propose(), QStringLiteral("4"));
}

TEST_F(SerialsTest, NewSerialDialogRefusesASavedSerialAndStaysOpen) {
    insertDocumentLine(kReceipt, 3);
    insertDocumentLine(kPayment, 12);
    NewSerialDialog dialog(company(), &admin->dialog, kReceipt, kReceiptTitle);
    dialog.propose();
    EXPECT_FALSE(dialog.confirm(QStringLiteral("3")));
    EXPECT_FALSE(dialog.accepted());
    ASSERT_EQ(admin->dialog.shown().size(), 1);
    EXPECT_EQ(admin->dialog.last().text,
              QStringLiteral("شماره دريافت صندوق جديدي با اين شماره ثبت شده است."));
    EXPECT_EQ(admin->dialog.last().code, QStringLiteral("1ER"));

    EXPECT_TRUE(dialog.confirm(QStringLiteral(" 12 ")));  // saved only under another kind
    EXPECT_TRUE(dialog.accepted());
    EXPECT_EQ(dialog.serial(), QStringLiteral("12"));
    dialog.cancel();
    EXPECT_FALSE(dialog.accepted());
}

struct RightsCase {
    const char* rights;
    const char* prefixes;
};

class RightsPrefixes : public ::testing::TestWithParam<RightsCase> {};

TEST_P(RightsPrefixes, FollowTheMarkerOrder) {
    EXPECT_EQ(
        rightsPrefixes(QString::fromLatin1(GetParam().rights), QStringLiteral("N_A_CASHGET_")),
        QString::fromLatin1(GetParam().prefixes));
}

INSTANTIATE_TEST_SUITE_P(
    Markers, RightsPrefixes,
    ::testing::Values(RightsCase{"", ""},
                      RightsCase{"N_A_CASHGET__VIEW(Y)N_A_CASHGET__SABT(Y)", "N_V_"},
                      // Another screen's marker, and a marker that is not granted, give nothing.
                      RightsCase{"N_A_CASHPAY__DEL(Y)N_A_CASHGET__DEL(N)", ""},
                      RightsCase{"N_A_CASHGET__OKPRINT(Y)N_A_CASHGET__ABTAL(Y)N_A_CASHGET__EDIT(Y)",
                                 "A_E_P_"},
                      RightsCase{"N_A_CASHGET__FIRST(Y)", "F_"}));

TEST(RightsPrefixesAll, EveryMarkerInOrder) {
    EXPECT_EQ(rightsPrefixes(tr::fullRights({QStringLiteral("N_A_CASHGET_")}),
                             QStringLiteral("N_A_CASHGET_")),
              QStringLiteral("A_N_E_D_F_F_V_P_"));
}

}  // namespace
}  // namespace tr::vouchers
