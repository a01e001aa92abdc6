// The receipt screen's actions with a failing connection: for each action, the 1st, 2nd, ...
// statement (and, separately, commit) it sends fails in turn, until the action runs through.
// After every failure the database (every table, the ## tables included) and the screen are as
// they were before the action; the last round, without a failure, is the retry from what the
// failures left, and it must succeed with the ledger whole.
//
// Holds: a hold in ReserveId is taken when the serial box is entered or a document is opened, in
// the transaction that switches the screen to that document. A failed save leaves the hold of the
// document on screen in place, which is the expected state; ReserveId is compared with every
// other table, so a hold an action adds or drops and then fails is a change.
#include <functional>
#include <map>

#include "cashbank/search/document_pickers.h"
#include "cashbank/settlement/document_settlement.h"
#include "settlement/in_factor_dialog.h"
#include "cashbank/settlement/invoice_settlement.h"
#include "cashbank/tests/documents/documents_fixture.h"
#include "tests/support/failing_connection.h"

namespace tr::cashbank {
using tr::settlement::InFactorDialog;
}  // namespace tr::cashbank

namespace tr::cashbank {
namespace {

using testing::DocumentsTest;
using testing::s;
using testing::Session;
using tr::test::FailingConnection;
using tr::vouchers::DocumentState;
namespace demo = tr::schema::demo;

// Every row of every user table of a catalogue, as sorted text, by table name.
using DatabaseImage = std::map<QString, QStringList>;

void addImages(tr::db::Connection& c, const QString& catalogue, DatabaseImage& image,
               const QString& prefix = {}) {
    const tr::db::ExecResult names =
        c.execute(QStringLiteral("Select [Name] From ") + catalogue +
                  QStringLiteral(" Where XType = 'U' Order By [Name]"));
    for (const tr::db::Row& name : names.resultSets.front().rows) {
        const QString table = name.front().toString();
        const tr::db::ExecResult rows = c.execute(QStringLiteral("Select * From ") + table);
        QStringList lines;
        for (const tr::db::Row& row : rows.resultSets.front().rows) {
            QStringList cells;
            for (const QVariant& v : row)
                cells << (v.isNull() ? QStringLiteral("<null>") : v.toString());
            lines << cells.join(QLatin1Char('|'));
        }
        lines.sort();
        image[prefix + table] = lines;
    }
}

// The company database, tempdb (where the screens keep their transfer and work tables) and the
// suite database (read for the fiscal periods' names).
DatabaseImage imageOf(tr::db::Connection& company, tr::db::Connection& suite) {
    DatabaseImage image;
    addImages(company, QStringLiteral("SysObjects"), image);
    addImages(company, QStringLiteral("Tempdb..SysObjects"), image);
    addImages(suite, QStringLiteral("SysObjects"), image, QStringLiteral("CORVASK_Sdc.."));
    return image;
}

// Empty when both images are the same; else the first table that differs and how.
QString difference(const DatabaseImage& before, const DatabaseImage& after) {
    for (const auto& [table, rows] : before) {
        const auto found = after.find(table);
        if (found == after.end()) return table + QStringLiteral(" is gone");
        if (found->second == rows) continue;
        QStringList lost, added;
        for (const QString& row : rows)
            if (!found->second.contains(row)) lost << row;
        for (const QString& row : found->second)
            if (!rows.contains(row)) added << row;
        return table + QStringLiteral(": lost ") + lost.join(QStringLiteral(" / ")) +
               QStringLiteral("; added ") + added.join(QStringLiteral(" / "));
    }
    for (const auto& [table, rows] : after)
        if (!before.count(table)) return table + QStringLiteral(" is new");
    return {};
}

// What the screen shows: state, caption, invoice, every header value and every grid row.
QString screenImage(CashBankDocument& screen) {
    const tr::vouchers::DocumentHeader& h = screen.header();
    QStringList out{
        screen.caption(),
        QString::number(int(screen.state())) + QString::number(int(screen.cancelled())) +
            QString::number(int(screen.document().heldByAnotherUser())),
        QStringList{screen.invoiceText(), screen.currencyName(), screen.amountText(),
                    screen.rateText()}
            .join(QLatin1Char('|')),
        QStringList{h.serial, h.day, h.month, h.year, h.voucherNo, h.referenceNumber, h.joz,
                    h.treasuryCode, h.treasuryDisplayCode, h.treasuryName, h.description,
                    QString::number(h.amount, 'f', 2), QString::number(h.rate, 'f', 4), h.currency,
                    h.des1, h.des2, h.des3, h.des4, h.userName}
            .join(QLatin1Char('|'))};
    tr::db::Query& grid = screen.grid();
    out << QStringLiteral("grid %1 at %2").arg(int(grid.state())).arg(grid.RecNo());
    const int rows = grid.RecordCount() + (grid.state() == tr::db::Query::State::Insert ? 1 : 0);
    for (int row = 0; row < rows; ++row) {
        QStringList cells;
        for (int column = 0; column < grid.fieldNames().size(); ++column)
            cells << grid.value(row, column).toString();
        out << cells.join(QLatin1Char('|'));
    }
    return out.join(QLatin1Char('\n'));
}

// The receipt screen with its list button and invoice settlement bound as the Qt form binds them.
// Given an invoice, the screen is shown in the host's invoice container for it.
struct Receipt {
    explicit Receipt(const tr::Services& services, const QString& invoice = {})
        : logic(services, ScreenId::CashGet), binding(logic) {
        logic.pickDocument = [](CashBankDocument& d) {
            return pickDocument(d.services(), d.screen().kindCode);
        };
        logic.setInvoiceNumber(invoice);
        logic.show(invoice.isEmpty() ? QStringLiteral("pnlScreens")
                                     : CashBankDocument::kInvoiceContainer);
    }
    InvoiceSettlement& settlement() { return *binding.settlement(); }
    CashBankDocument logic;
    DocumentSettlement binding;  // unbinds before the screen goes
};

enum class Fault { Statement, Commit };

class FailedActionsTest : public DocumentsTest, public ::testing::WithParamInterface<Fault> {
  protected:
    void SetUp() override {
        DocumentsTest::SetUp();
        company().execute(QStringLiteral(
            "Update R_OldFactor Set NaghdValue = NaghdValue1, MandehFactor = FactorValue - "
            "NaghdValue1"));
        failing = std::make_unique<FailingConnection>(company());
        user = std::make_unique<Session>(*failing, demo::kAdminUserId, s(demo::kAdminUserName),
                                         testing::allRights());
        user->global.sCode = QString::fromUtf8(demo::kCompanyCode);
        user->global.sYear = QString::fromUtf8(demo::kCurrentYear);
    }
    void TearDown() override {
        user.reset();
        failing.reset();
        DocumentsTest::TearDown();
    }

    // A customer's line (receivables, detail account of the customer), posted.
    static bool addCustomerLine(CashBankDocument& screen, double amount) {
        screen.appendLine();
        tr::db::Query& grid = screen.grid();
        grid.FieldByName(QStringLiteral("Koll")).SetAsString(s(demo::kReceivablesKoll));
        grid.FieldByName(QStringLiteral("Moein")).SetAsString(s(demo::kReceivablesMoein));
        grid.FieldByName(QStringLiteral("Tafsily")).SetAsString(s(demo::kCustomerAlborz));
        grid.FieldByName(QStringLiteral("Tafsily2")).SetAsString(s(demo::kRegionShiraz));
        grid.FieldByName(QStringLiteral("ProjectCod")).SetAsString(s(demo::kProjectHeadOffice));
        grid.FieldByName(QStringLiteral("Des")).SetAsString(QStringLiteral("بابت صورتحساب"));
        grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(amount);
        return screen.postLine();
    }

    // A receipt of 5,000,000: 2,000,000 on capital, 3,000,000 from the customer; saved.
    void saveReceipt(Receipt& r) {
        fillHeader(r.logic, 5000000);
        ASSERT_TRUE(addLine(r.logic, 2000000));
        ASSERT_TRUE(addCustomerLine(r.logic, 3000000));
        ASSERT_TRUE(r.logic.cmdOkClick());
    }

    // The settlement dialog opened on the customer's line, with `amount` on the open invoice.
    static std::unique_ptr<InFactorDialog> allocationDialog(Receipt& r, double amount) {
        tr::db::Query& grid = r.logic.grid();
        for (grid.First(); !grid.Eof(); grid.Next())
            if (grid.FieldByName(QStringLiteral("Tafsily")).AsString().trimmed() ==
                s(demo::kCustomerAlborz))
                break;
        auto dialog = std::make_unique<InFactorDialog>(r.settlement());
        dialog->setCustomerFilter(false);
        tr::db::Query& list = dialog->list();
        for (list.First(); !list.Eof(); list.Next())
            if (list.FieldByName(QStringLiteral("SanadNoForosh")).AsString().trimmed() ==
                s(demo::kOpenInvoice))
                break;
        EXPECT_FALSE(list.Eof());
        EXPECT_TRUE(dialog->setAllocation(amount));
        return dialog;
    }

    // A saved receipt with 3,000,000 of it paying the open invoice.
    void saveSettledReceipt(Receipt& r) {
        saveReceipt(r);
        ASSERT_TRUE(allocationDialog(r, 3000000)->cmdOkClick());
        ASSERT_TRUE(r.logic.cmdOkClick());
        ASSERT_EQ(openBalance(), 17000000.0);
    }

    // Two saved receipts: serial 1 pays 3,000,000 of the open invoice; serial 2, in dollars, stays
    // on the screen.
    void saveTwoReceipts(Receipt& r) {
        saveSettledReceipt(r);
        r.logic.newDocumentClick();
        fillHeader(r.logic, 100, s(demo::kForeignCashBox));
        ASSERT_TRUE(addLine(r.logic, 100));
        ASSERT_TRUE(r.logic.cmdOkClick());
        ASSERT_EQ(r.logic.header().serial, QStringLiteral("2"));
    }

    // The screen on the saved receipt `serial` with its lines, and the user's one hold on it.
    static void expectOpened(Receipt& r, const QString& serial, int lines) {
        EXPECT_EQ(r.logic.state(), DocumentState::Edit);
        EXPECT_EQ(r.logic.header().serial, serial);
        EXPECT_EQ(r.logic.grid().RecordCount(), lines);
        expectHeldOnly(serial);
    }
    static void expectHeldOnly(const QString& serial) {
        EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId")), 1);
        EXPECT_EQ(rows(QStringLiteral("Select * From ReserveId Where LTrim(RTrim(ResId2)) = ") +
                       tr::db::sqlText(serial)),
                  1);
    }

    // The screen shown again in the host's invoice container, for the open invoice.
    static bool showForInvoice(Receipt& r) {
        r.logic.setInvoiceNumber(s(demo::kOpenInvoice));
        r.logic.show(CashBankDocument::kInvoiceContainer);
        return true;
    }

    static double openBalance() {
        return value(QStringLiteral("Select MandehFactor From R_OldFactor Where SanadNoForosh = ") +
                     tr::db::sqlText(s(demo::kOpenInvoice)) +
                     QStringLiteral(" And MainDorehMali = ") +
                     tr::db::sqlText(s(demo::kCurrentYear)))
            .toDouble();
    }

    // Runs `action` with the nth statement (or commit, by the test's parameter) failing, for
    // n = 1, 2, ... until a round in which nothing fails; `answers` queues the dialog's answers
    // before each round. Answers the number of failed rounds, -1 when a round left a change.
    int failEachInTurn(Receipt& r, const std::function<bool()>& action,
                       const std::function<void()>& answers = {}) {
        const DatabaseImage database = imageOf(company(), suite());
        // The invoice the settlement binds the next save to belongs to what the screen shows.
        const auto image = [&] {
            return screenImage(r.logic) + QStringLiteral("\nbound to ") +
                   r.settlement().invoiceNumber();
        };
        const QString screen = image();
        for (int n = 1;; ++n) {
            user->dialog.clearAnswers();
            if (answers) answers();
            if (GetParam() == Fault::Statement)
                failing->failStatement(n);
            else
                failing->failCommit(n);
            bool raised = false;
            bool done = false;
            QString failedSql;
            try {
                done = action();
            } catch (const tr::db::DatabaseError& error) {
                raised = true;
                failedSql = error.sql();
                EXPECT_EQ(error.message(), FailingConnection::message()) << n;
            }
            if (!failing->fired()) {
                failing->disarm();
                EXPECT_FALSE(raised);
                EXPECT_TRUE(done) << "the retry without a failure";
                return n - 1;
            }
            const std::string round =
                "failure " + std::to_string(n) + " at " + failedSql.left(160).toStdString();
            // The error reaches the host: a screen that swallowed it would look saved.
            EXPECT_TRUE(raised) << round;
            EXPECT_FALSE(company().inTransaction()) << round;
            EXPECT_EQ(difference(database, imageOf(company(), suite())).toStdString(), "") << round;
            EXPECT_EQ(image().toStdString(), screen.toStdString()) << round;
            if (HasFailure()) return -1;
        }
    }

    std::unique_ptr<FailingConnection> failing;
    std::unique_ptr<Session> user;
};

TEST_P(FailedActionsTest, SavingANewReceipt) {
    Receipt r(user->services);
    fillHeader(r.logic, 5000000);
    ASSERT_TRUE(addLine(r.logic, 2000000));
    ASSERT_TRUE(addCustomerLine(r.logic, 3000000));
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdOkClick(); }), 0);
    EXPECT_EQ(r.logic.state(), DocumentState::Edit);
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '10'")), 3);
    EXPECT_EQ(rows(QStringLiteral("Select * From ASNADACTIONS Where ActType = 'I'")), 1);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, SavingANewForeignCurrencyReceipt) {
    Receipt r(user->services);
    fillHeader(r.logic, 100, s(demo::kForeignCashBox));
    ASSERT_TRUE(addLine(r.logic, 100));
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdOkClick(); }), 0);
    EXPECT_EQ(r.logic.state(), DocumentState::Edit);
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From Asnad Where TypeSys = 'N'")).toDouble(),
              100 * demo::kUsdBuy);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, SavingAnEditedSettledReceipt) {
    Receipt r(user->services);
    saveSettledReceipt(r);
    r.logic.setDescription(QStringLiteral("دريافت اصلاح شده"));
    r.logic.setAmountText(QStringLiteral("5500000"));
    tr::db::Query& grid = r.logic.grid();
    grid.First();
    grid.Edit();
    grid.FieldByName(QStringLiteral("Bes")).SetAsFloat(2500000);
    ASSERT_TRUE(r.logic.postLine());
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdOkClick(); }), 0);
    EXPECT_EQ(value(QStringLiteral("Select Sum(Bed) From Asnad Where TypeSys = 'N'")).toDouble(),
              5500000.0);
    // The allocation found its line again.
    EXPECT_EQ(openBalance(), 17000000.0);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, CancellingAndUndoingTheCancellation) {
    Receipt r(user->services);
    saveSettledReceipt(r);
    const auto yes = [&] { user->dialog.answerYes(); };
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdAbtalClick(); }, yes), 0);
    EXPECT_TRUE(r.logic.cancelled());
    EXPECT_TRUE(ledgerIsConsistent());
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdAbtalClick(); }, yes), 0);
    EXPECT_FALSE(r.logic.cancelled());
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where DocToDate = '1'")), 0);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, DeletingASettledReceipt) {
    Receipt r(user->services);
    saveSettledReceipt(r);
    // The warning that the invoices lose their payment, then the question.
    const auto answers = [&] {
        user->dialog.answer(tr::dialog::ResultOk);
        user->dialog.answerYes();
    };
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdDelClick(); }, answers), 0);
    EXPECT_EQ(r.logic.state(), DocumentState::New);
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans")), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From R_ForoshRelatedNaghd")), 0);
    EXPECT_EQ(openBalance(), 20000000.0);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, SavingAReceiptOpenedForAnInvoice) {
    Receipt r(user->services, s(demo::kOpenInvoice));
    ASSERT_EQ(r.logic.grid().RecordCount(), 1);
    r.logic.serialEnter();
    r.logic.setReferenceNumber(QStringLiteral("77"));
    r.logic.treasuryCodeEntered(s(demo::kRialCashBox));
    r.logic.setAmountText(QStringLiteral("12000000"));
    r.logic.grid().Edit();
    r.logic.grid().FieldByName(QStringLiteral("Bes")).SetAsFloat(12000000);
    ASSERT_TRUE(r.logic.postLine());
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdOkClick(); }), 0);
    EXPECT_EQ(rows(QStringLiteral("Select * From R_ForoshRelatedNaghd")), 1);
    EXPECT_EQ(openBalance(), 8000000.0);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, SettlingAnInvoiceFromTheDialogAndSaving) {
    Receipt r(user->services);
    saveReceipt(r);
    std::unique_ptr<InFactorDialog> dialog = allocationDialog(r, 3000000);
    ASSERT_GT(failEachInTurn(r, [&] { return dialog->cmdOkClick(); }), 0);
    dialog.reset();
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.cmdOkClick(); }), 0);
    EXPECT_EQ(openBalance(), 17000000.0);
    EXPECT_EQ(rows(QStringLiteral("Select * From R_ForoshRelatedNaghd Where NaghdValue = 3000000")),
              1);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, OpeningReceiptsByTheSerialBoxTheSpinAndTheList) {
    Receipt r(user->services);
    saveTwoReceipts(r);
    // A serial typed into the box opens its receipt when the box is left.
    r.logic.setSerial(QStringLiteral("1"));
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.serialLeave(); }), 0);
    expectOpened(r, QStringLiteral("1"), 2);
    EXPECT_EQ(r.logic.currencyName(), QString());
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.spinNext(); }), 0);
    expectOpened(r, QStringLiteral("2"), 1);
    EXPECT_NE(r.logic.currencyName(), QString());
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.spinPrevious(); }), 0);
    expectOpened(r, QStringLiteral("1"), 2);
    // The list button's pick list chooses receipt 2.
    const auto choose = [&] {
        user->pickList.chooseWhere(QStringLiteral("Serial"), QStringLiteral("2"));
    };
    ASSERT_GT(failEachInTurn(
                  r, [&] { return r.logic.listButtonClick(); }, choose),
              0);
    expectOpened(r, QStringLiteral("2"), 1);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_P(FailedActionsTest, OpeningTheReceiptThatPaysAnInvoice) {
    Receipt r(user->services);
    saveTwoReceipts(r);
    ASSERT_GT(failEachInTurn(r, [&] { return showForInvoice(r); }), 0);
    expectOpened(r, QStringLiteral("1"), 2);
    EXPECT_EQ(r.logic.invoiceText(), s(demo::kOpenInvoice));
    EXPECT_EQ(r.settlement().invoiceNumber(), s(demo::kOpenInvoice));
}

TEST_P(FailedActionsTest, PreparingANewReceiptForAnInvoiceAndTakingItsSerial) {
    Receipt r(user->services);
    saveReceipt(r);
    ASSERT_GT(failEachInTurn(r, [&] { return showForInvoice(r); }), 0);
    EXPECT_EQ(r.logic.state(), DocumentState::New);
    EXPECT_EQ(r.settlement().invoiceNumber(), s(demo::kOpenInvoice));
    ASSERT_EQ(r.logic.grid().RecordCount(), 1);
    r.logic.grid().First();
    EXPECT_EQ(r.logic.grid().FieldByName(QStringLiteral("Bes")).AsFloat(), r.logic.header().amount);
    // Entering the serial box takes the next serial and moves the hold to it.
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.serialEnter(), true; }), 0);
    EXPECT_EQ(r.logic.header().serial, QStringLiteral("2"));
    expectHeldOnly(QStringLiteral("2"));
}

TEST_P(FailedActionsTest, StartingANewReceiptAndTakingItsSerial) {
    Receipt r(user->services);
    saveTwoReceipts(r);
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.newDocumentClick(), true; }), 0);
    EXPECT_EQ(r.logic.state(), DocumentState::New);
    EXPECT_EQ(r.logic.grid().RecordCount(), 0);
    EXPECT_EQ(r.logic.header().serial, QString());
    EXPECT_EQ(r.logic.currencyName(), QString());
    ASSERT_GT(failEachInTurn(r, [&] { return r.logic.serialEnter(), true; }), 0);
    EXPECT_EQ(r.logic.header().serial, QStringLiteral("3"));
    expectHeldOnly(QStringLiteral("3"));
}

INSTANTIATE_TEST_SUITE_P(Faults, FailedActionsTest,
                         ::testing::Values(Fault::Statement, Fault::Commit),
                         [](const auto& info) {
                             return info.param == Fault::Statement ? "EveryStatement"
                                                                   : "EveryCommit";
                         });

}  // namespace
}  // namespace tr::cashbank
