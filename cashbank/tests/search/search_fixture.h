#pragma once
// The demo company with its documents saved through the real procedures, and one user's session
// whose message box, pick list and progress window are test doubles.
#include <QVariant>
#include <memory>

#include "cashbank/search/document_search.h"
#include "common/db/query.h"
#include "common/session/services.h"
#include "db/procedures/tests/procedures_fixture.h"
#include "tests/support/recording_message_dialog.h"
#include "tests/support/test_session.h"
#include "tests/support/recording_pick_list.h"

namespace tr::cashbank::testing {

using tr::procedures::testing::Header;
using tr::procedures::testing::TransferLine;

// A progress window whose stop button is pressed after the given number of polls.
class StopAfter : public tr::dialog::ProgressWindow {
  public:
    int stopAfter = -1;  // never
    int polls = 0;
    bool open = false;
    QStringList texts;
    void showState(const QString& text) override {
        open = true;
        texts << text;
    }
    void setStateText(const QString& text) override { texts << text; }
    bool stopRequested() override { return stopAfter >= 0 && ++polls > stopAfter; }
    void closeState() override { open = false; }
};

// The search tests' user, whose progress window can be told to stop.
struct Session : tr::test::TestSession {
    explicit Session(tr::db::Connection& connection) : TestSession(connection) { services.progress = &progress; }
    StopAfter progress;
};

class SearchTest : public tr::procedures::testing::ProceduresTest {
  protected:
    void SetUp() override {
        ProceduresTest::SetUp();
        for (const char* sql : {"Delete From Asnad Where TypeSys='N'", "Delete From N_NaghdTrans",
                                "Delete From N_ArzTrans", "Delete From ASNADACTIONS"})
            db().execute(QString::fromUtf8(sql));
        session = std::make_unique<Session>(db());
    }
    void TearDown() override { session.reset(); }

    struct Doc {
        QString kind;
        qint64 serial = 1;
        QString code;
        double amount = 1000;
        QString date = QStringLiteral("1404/02/10");
        QString description = QStringLiteral("دريافت وجه");
        QString lineDescription = QStringLiteral("بابت سرمايه");
        QString des1, des2, des3, des4;
    };

    static QString procedureOf(const QString& kind) {
        if (kind == QLatin1String("10")) return QStringLiteral("sp_N_Asnad_Trans_CashGet");
        if (kind == QLatin1String("20")) return QStringLiteral("sp_N_Asnad_Trans_CashPay");
        if (kind == QLatin1String("40")) return QStringLiteral("sp_N_Asnad_Trans_Tankhah");
        if (kind == QLatin1String("50")) return QStringLiteral("sp_N_Asnad_Trans_VarizBank");
        if (kind == QLatin1String("60")) return QStringLiteral("sp_N_Asnad_Trans_HavalehBank");
        return QStringLiteral("sp_N_Asnad_Trans_BardashtBank");
    }
    // The grid column: opposite the treasury side.
    static QString gridColumnOf(const QString& kind) {
        return QStringList{"20", "40", "90"}.contains(kind) ? QStringLiteral("Bed")
                                                            : QStringLiteral("Bes");
    }

    // Saves a document with one counter line on the capital account.
    static void save(const Doc& d) {
        const QString table = transferTable(QStringLiteral("SEARCH_TEST_TRANS"));
        TransferLine line = tr::procedures::testing::accountLine(
            QStringLiteral("301"), QStringLiteral("0001"), {}, {}, {}, d.lineDescription, d.amount);
        line.des1 = d.des1;
        line.des2 = d.des2;
        line.des3 = d.des3;
        line.des4 = d.des4;
        fill(table, gridColumnOf(d.kind), {line});
        Header h;
        h.code = d.code;
        h.date = d.date;
        h.description = d.description;
        h.reference = QStringLiteral("R") + QString::number(d.serial);
        ProceduresTest::save(procedureOf(d.kind), table, d.serial, h);
    }
    static void cancel(const QString& kind, qint64 serial, const QString& code,
                       const QString& date = QStringLiteral("1404/02/20")) {
        const QString table = transferTable(QStringLiteral("SEARCH_TEST_TRANS"));
        call(procedureOf(kind), QStringLiteral("ABTAL"),
             {table,
              QString::number(serial),
              code,
              {},
              {},
              date,
              {},
              QStringLiteral("admin"),
              QStringLiteral("PC-01")});
    }
    static Doc receipt(qint64 serial, double amount, const QString& box = QStringLiteral("1")) {
        Doc d;
        d.kind = QStringLiteral("10");
        d.serial = serial;
        d.amount = amount;
        d.code = box;
        return d;
    }

    struct Row {
        QString cashCod, cashNam, docName, des, whatDoc, docToDate, sOrder;
        qint64 serial = 0;
        double value = 0;
        int sign = 0;
    };
    // The result as the grid shows it, in the query's current order.
    static QList<Row> resultRows(tr::db::Query& q) {
        QList<Row> out;
        if (!q.Active()) return out;
        for (q.First(); !q.Eof(); q.Next()) {
            Row r;
            r.cashCod = q.FieldByName(QStringLiteral("CashCod")).AsString();
            r.cashNam = q.FieldByName(QStringLiteral("CashNam")).AsString();
            r.docName = q.FieldByName(QStringLiteral("NDocNam")).AsString();
            r.des = q.FieldByName(QStringLiteral("Des")).AsString();
            r.whatDoc = q.FieldByName(QStringLiteral("WhatDoc")).AsString();
            r.docToDate = q.FieldByName(QStringLiteral("DocToDate")).AsString();
            r.sOrder = q.FieldByName(QStringLiteral("sOrder")).AsString();
            r.serial = q.FieldByName(QStringLiteral("Serial")).AsInteger();
            r.value = q.FieldByName(QStringLiteral("SValue")).AsFloat();
            r.sign = int(q.FieldByName(QStringLiteral("Sign")).AsInteger());
            out << r;
        }
        return out;
    }
    static QList<Row> documentRows(const QList<Row>& rows) {
        QList<Row> out;
        for (const Row& r : rows)
            if (r.sOrder.isEmpty()) out << r;
        return out;
    }
    static QList<qint64> serials(const QList<Row>& rows) {
        QList<qint64> out;
        for (const Row& r : documentRows(rows)) out << r.serial;
        return out;
    }
    static const Row* totalRow(const QList<Row>& rows, const QString& des) {
        for (const Row& r : rows)
            if (!r.sOrder.isEmpty() && r.des == des) return &r;
        return nullptr;
    }

    std::unique_ptr<Session> session;
};

}  // namespace tr::cashbank::testing
