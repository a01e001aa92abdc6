// On the server: a receipt saved while another user's save holds the book. The cashier sees the
// wait in the status window (never a frozen screen), the save goes through once the other is
// done, and a wait the cashier stops refuses the save with nothing written and the screen as it
// was. (The embedded engine serves one machine: a save there waits only for a local one.)
#include <functional>
#include <thread>

#include "common/db/transaction.h"
#include "common/dialog/progress_wait.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "vouchers/n_global.h"
#include "vouchers/serials.h"
#include "vouchers/tests/voucher_fixture.h"

namespace tr::vouchers {
namespace {

using testing::VoucherTest;

// The status window as the cashier would see it; each poll for the stop button runs `onPoll`,
// which answers whether the button was pressed.
struct StatusWindow : tr::dialog::ProgressWindow {
    QStringList shown, texts;
    int polls = 0;
    int closed = 0;
    std::function<bool()> onPoll;
    void showState(const QString& text) override { shown << text; }
    void setStateText(const QString& text) override { texts << text; }
    bool stopRequested() override {
        ++polls;
        return onPoll ? onPoll() : false;
    }
    void closeState() override { ++closed; }
};

class WaitingSaveTest : public VoucherTest {
  protected:
    void SetUp() override {
        VoucherTest::SetUp();
        receipt = std::make_unique<N_Global>(admin->services, *findTreasuryDocumentKind(QStringLiteral("10")));
        enterReceipt();

        // Another desk in the middle of a save of its own.
        other = books().connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
        other->execute(QStringLiteral("Begin Tran"));
        other->execute(QStringLiteral("Update N_AsnadNaghd Set NDocNam = NDocNam Where WhatDoc = '10'"));
        company().setWaitObserver(&wait);
    }
    void TearDown() override {
        company().setWaitObserver(nullptr);
        if (other && other->inTransaction()) other->execute(QStringLiteral("Rollback"));
        other.reset();
        receipt.reset();
        VoucherTest::TearDown();
    }
    // A new receipt on the screen, typed as the cashier types it.
    void enterReceipt() {
        receipt->newDocument();
        receipt->fillNextSerial();
        DocumentHeader& h = receipt->header();
        h.setDate(QStringLiteral("1404/02/10"));
        h.referenceNumber = QStringLiteral("501");
        h.treasuryCode = QString::fromUtf8(tr::schema::demo::kRialCashBox);
        h.description = QStringLiteral("دريافت وجه");
        h.amount = 2500000;
        receipt->describeTreasurySide();
        tr::db::Query& grid = receipt->grid();
        grid.Append();
        grid.FieldByName(QStringLiteral("Koll")).SetAsString(QString::fromUtf8(tr::schema::demo::kCapitalKoll));
        grid.FieldByName(QStringLiteral("Moein")).SetAsString(QString::fromUtf8(tr::schema::demo::kCapitalMoein));
        grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("بابت"));
        grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(2500000);
        grid.Post();
    }
    int savedLines() { return rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '10'")); }

    StatusWindow window;
    tr::dialog::ProgressWait wait{window};
    std::unique_ptr<tr::tsql::TsqlConnection> other;
    std::unique_ptr<N_Global> receipt;
};

TEST_F(WaitingSaveTest, TheWaitIsShownAndTheSaveGoesThroughWhenTheOtherDeskIsDone) {
    // The other desk finishes on a thread of its own, as it would on its own machine.
    std::thread otherDesk;
    window.onPoll = [&] {
        if (window.polls == 3) otherDesk = std::thread([&] { other->execute(QStringLiteral("Commit")); });
        return false;
    };
    const bool saved = receipt->save();
    if (otherDesk.joinable()) otherDesk.join();
    ASSERT_TRUE(saved) << admin->dialog.last().text.toStdString();
    ASSERT_EQ(window.shown.size(), 1);
    EXPECT_TRUE(window.shown.front().startsWith(QStringLiteral("در انتظار پايان ثبت كاربر ديگر")))
        << window.shown.front().toStdString();
    EXPECT_GE(window.polls, 3);
    EXPECT_EQ(window.closed, 1);  // closed once, when the wait ended, not left over the screen
    EXPECT_EQ(savedLines(), 2);
    EXPECT_TRUE(ledgerBalances());
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

TEST_F(WaitingSaveTest, AStoppedWaitRefusesTheSaveWithNothingWrittenAndTheScreenKept) {
    // A click that would use the connection while it waits is refused before it starts.
    QString reentered;
    window.onPoll = [&] {
        try {
            company().execute(QStringLiteral("Select 1"));
        } catch (const tr::db::DatabaseError& e) {
            reentered = e.message();
        }
        return true;
    };
    const QString before = receipt->header().serial;
    // The failure reaches the form, which shows it as it shows every database failure.
    QString failure;
    try {
        receipt->save();
    } catch (const tr::db::DatabaseError& e) {
        failure = e.message();
    }
    EXPECT_EQ(failure, QStringLiteral("Operation cancelled by user."));
    EXPECT_EQ(reentered, QStringLiteral("Connection is busy with results for another command"));
    EXPECT_EQ(window.closed, 1);
    EXPECT_EQ(savedLines(), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys = 'N'")), 0);
    // The cashier's work is still on the screen: the other desk finishes and the save goes through.
    EXPECT_EQ(receipt->header().serial, before);
    EXPECT_EQ(receipt->grid().RecordCount(), 1);
    other->execute(QStringLiteral("Rollback"));
    window.onPoll = nullptr;
    ASSERT_TRUE(receipt->save()) << admin->dialog.last().text.toStdString();
    EXPECT_EQ(savedLines(), 2);
    EXPECT_TRUE(ledgerBalances());
}

// The other desk's save is still writing its voucher when this one reaches the turn: the number is
// taken once the other is done, and a serial the other saved meanwhile is refused, as the check
// before the save would have refused it.
TEST_F(WaitingSaveTest, TheVoucherIsNumberedAndTheSerialCheckedAgainAfterTheOtherDesksSave) {
    std::thread otherDesk;
    window.onPoll = [&] {
        if (window.polls == 3) otherDesk = std::thread([&] { other->execute(QStringLiteral("Commit")); });
        return false;
    };
    other->execute(QStringLiteral("Insert Into Asnad (TypeSys, WhatDoc, SanadNo, SanadDate, Raj, Koll, "
                                  "Moein, Des, Bed, Bes) Select 'M', '0', IsNull(Max(SanadNo), 0) + 1, "
                                  "'1404/02/10', 1, '") +
                   QString::fromUtf8(tr::schema::demo::kCapitalKoll) + QStringLiteral("', '") +
                   QString::fromUtf8(tr::schema::demo::kCapitalMoein) +
                   QStringLiteral("', 'سند ديگر', 0, 0 From Asnad"));
    const bool saved = receipt->save();
    if (otherDesk.joinable()) otherDesk.join();
    ASSERT_TRUE(saved) << admin->dialog.last().text.toStdString();
    EXPECT_GE(window.polls, 3);
    const qint64 others = value(QStringLiteral("Select SanadNo From Asnad Where TypeSys = 'M'")).toLongLong();
    EXPECT_EQ(receipt->header().voucherNo.trimmed().toLongLong(), others + 1);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys = 'N' And SanadNo = ") +
                   QString::number(others + 1)),
              2);
    EXPECT_TRUE(ledgerBalances());

    // Another desk saves the serial this cashier typed, while this one waits for its turn.
    enterReceipt();
    const QString serial = receipt->header().serial.trimmed();
    other->execute(QStringLiteral("Begin Tran"));
    other->execute(QStringLiteral("Insert Into N_NaghdTrans (WhatDoc, Serial, Raj, SanadDate) Values "
                                  "('10', ") + serial + QStringLiteral(", 1, '1404/02/10')"));
    window.polls = 0;
    EXPECT_FALSE(receipt->save());
    if (otherDesk.joinable()) otherDesk.join();
    EXPECT_GE(window.polls, 3);
    EXPECT_EQ(admin->dialog.last().text, serialTakenMessage(QStringLiteral("دريافت صندوق")));
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '10' And Serial = ") + serial), 1);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys = 'N'")), 2);
    EXPECT_EQ(receipt->header().serial, serial);
    EXPECT_EQ(receipt->grid().RecordCount(), 1);
    // Without the other desk's stand-in row the ledger is as the first save left it.
    other->execute(QStringLiteral("Delete From N_NaghdTrans Where WhatDoc = '10' And Serial = ") + serial);
    EXPECT_TRUE(tr::procedures::testing::ledgerIsConsistent(company()));
}

// Taking a new serial waits only for others taking or holding serials of the same kind, never for
// a save: eight cashiers at one book would otherwise queue twice for every receipt.
TEST_F(WaitingSaveTest, ANewSerialWaitsOnlyForHoldsOfItsKind) {
    window.onPoll = [] { return true; };  // a wait is stopped at once, and fails the take
    // While the other desk's save holds the book.
    N_Global next(admin->services, *findTreasuryDocumentKind(QStringLiteral("20")));
    next.newDocument();
    EXPECT_FALSE(next.fillNextSerial().isEmpty());
    EXPECT_EQ(window.polls, 0);
    other->execute(QStringLiteral("Rollback"));

    // While a third desk changes the receipts' holds, a receipt's serial waits; a payment's does not.
    auto third = books().connect(QString::fromUtf8(tr::schema::demo::kCurrentDatabase));
    tr::db::Transaction holding(*third, holdsTurn(QStringLiteral("10")));
    third->execute(QStringLiteral("Select Count(*) From ReserveId"));
    N_Global another(admin->services, *findTreasuryDocumentKind(QStringLiteral("10")));
    QString failure;
    try {
        another.newDocument();
        another.fillNextSerial();
    } catch (const tr::db::DatabaseError& e) {
        failure = e.message();
    }
    EXPECT_EQ(failure, QStringLiteral("Operation cancelled by user."));
    EXPECT_GE(window.polls, 1);
    const int polls = window.polls;
    next.newDocument();
    EXPECT_FALSE(next.fillNextSerial().isEmpty());
    EXPECT_EQ(window.polls, polls);
    holding.commit();
    window.onPoll = nullptr;
    EXPECT_FALSE(another.fillNextSerial().isEmpty());
}

}  // namespace
}  // namespace tr::vouchers
