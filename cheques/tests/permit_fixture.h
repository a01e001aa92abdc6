#pragma once
// The permit tests' common ground: the demo company with permits required (CHQ_MOJAVEZ=YES) and
// no permits; users holding the permit, payment and approval rights; a permit written through its
// screen's logic and approved through the approval screen's, as the users would.
#include <gtest/gtest.h>

#include <memory>

#include "cheques/cheque_payment_document.h"
#include "cheques/permit_approval.h"
#include "cheques/permit_document.h"
#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "tests/support/test_session.h"

namespace tr::cheques::testing {

inline QString permitRights() {
    return tr::fullRights({QStringLiteral("N_A_CHQMOJAVEZ_"), QStringLiteral("N_A_CHQPAY_"), QStringLiteral("N_A_CHQGET_")}) +
           PermitApproval::kFinanceManagerRight + PermitApproval::kManagingDirectorRight;
}

class PermitTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        for (const char* sql : {"Delete From N_MojavezTrans", "Delete From N_MOJAVEZCHQ", "Delete From N_MojavezFact"})
            company().execute(QString::fromUtf8(sql));
        options_ = tr::db::firstColumn(company(), QStringLiteral("Select Naghd From Options")).toString();
        setOptions(QString(options_).replace(QStringLiteral("CHQ_MOJAVEZ=NO"), QStringLiteral("CHQ_MOJAVEZ=YES")));
        session = std::make_unique<tr::test::TestSession>(company(), 1, QStringLiteral("admin"), permitRights());
    }
    void TearDown() override {
        setOptions(options_);
        session.reset();
    }
    static void setOptions(const QString& text) {
        company().execute(QStringLiteral("Update Options Set Naghd = ") + company().text(text));
    }

    // A new permit on `doc`, dated `date`, to the supplier 202-0001-30001.
    static void startPermit(ChequePaymentDocument& doc, const QString& date = QStringLiteral("1404/02/10")) {
        doc.newDocument();
        doc.header().date = date;
        doc.lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"), QStringLiteral("30001"), {}, {}};
    }
    // Our own leaf of book "12" (account 1 unless said) typed on a new row; whether it posted.
    static bool typeLeaf(ChequePaymentDocument& doc, const QString& number, double value, qint64 account = 1,
                         const QString& series = QStringLiteral("12")) {
        doc.appendCheque();
        tr::db::Query& g = doc.cheques();
        if (!doc.setBankAccount(account)) g.FieldByName(QStringLiteral("AcountID")).SetValue(account);
        g.FieldByName(QStringLiteral("ChqNo")).SetValue(number);
        g.FieldByName(QStringLiteral("Joz")).SetValue(series);
        g.FieldByName(QStringLiteral("ChqValue")).SetValue(value);
        g.FieldByName(QStringLiteral("SarResidDate")).SetValue(QStringLiteral("1404/03/15"));
        g.FieldByName(QStringLiteral("Des")).SetValue(QStringLiteral("پيش پرداخت قرارداد"));
        g.Post();
        const bool posted = g.state() == tr::db::Query::State::Browse;
        if (!posted) g.Cancel();
        return posted;
    }
    // A permit of our leaves `numbers` (1,000,000 each), saved; answers its serial.
    QString writePermit(const QStringList& numbers, const QString& date = QStringLiteral("1404/02/10")) {
        PermitDocument doc(session->services);
        startPermit(doc, date);
        for (const QString& number : numbers) EXPECT_TRUE(typeLeaf(doc, number, 1000000)) << lastMessage().toStdString();
        EXPECT_TRUE(doc.save()) << lastMessage().toStdString();
        return doc.header().serial;
    }
    // `approver` ticks (or unticks) the permit's approval column, or its voiding one, and
    // confirms with `date`; whether the change was written.
    bool decide(const QString& serial, Approver approver, const QString& date, const QString& field = QStringLiteral("sSelect")) {
        PermitApproval screen(session->services);
        EXPECT_TRUE(screen.setApprover(approver));
        screen.fill();
        if (!moveTo(screen, serial)) return false;
        if (!screen.toggle(field)) return false;
        screen.actionDate() = date;
        return screen.apply();
    }
    static bool moveTo(PermitApproval& screen, const QString& serial) {
        tr::db::Query& rows = screen.rows();
        for (rows.First(); !rows.Eof(); rows.Next())
            if (rows.FieldByName(QStringLiteral("Serial")).AsString().trimmed() == serial) return true;
        return false;
    }
    static QString permitValue(const QString& serial, const char* column) {
        const QVariant v = tr::db::firstColumn(company(), QStringLiteral("Select ") + QString::fromLatin1(column) +
                                                              QStringLiteral(" From N_MojavezTrans Where Serial = ") + serial);
        return v.isNull() ? QString() : v.toString().trimmed();
    }
    static qint64 count(const QString& sql) { return tr::db::firstColumn(company(), sql).toLongLong(); }
    QString lastMessage() const { return session->dialog.shown().isEmpty() ? QString() : session->dialog.last().text; }

    std::unique_ptr<tr::test::TestSession> session;

  private:
    QString options_;
};

}  // namespace tr::cheques::testing
