#pragma once
// The demo company with every stored procedure and function registered, and the client's side of
// the treasury call contract: transfer tables, their lines, and the calls with their arguments.
#include <QStringList>
#include <vector>

#include "common/db/database_error.h"
#include "db/procedures/procedures.h"
#include "db/procedures/tests/ledger_invariants.h"
#include "db/schema/tests/demo_fixture.h"

namespace tr::procedures::testing {

// One grid line of a document; `amount` goes into the kind's grid column.
struct TransferLine {
    QString koll, moein, tafsily, tafsily2, projectCod, des;
    double amount = 0;
    QString whatDoc2, namWhatDoc2, codWhatDoc2, manabehCod;
    QString joz, des1, des2, des3, des4;
    QString arzCod, arzNam;
    double arzUnitPrice = 0, arzCount2 = 0;
    QString arzNam2;
};

inline TransferLine accountLine(const QString& koll, const QString& moein, const QString& tafsily,
                                const QString& tafsily2, const QString& projectCod,
                                const QString& des, double amount) {
    TransferLine l;
    l.koll = koll;
    l.moein = moein;
    l.tafsily = tafsily;
    l.tafsily2 = tafsily2;
    l.projectCod = projectCod;
    l.des = des;
    l.amount = amount;
    return l;
}

// The header values of a 'TRANS->DB' call.
struct Header {
    QString code, reference = QStringLiteral("501"), date = QStringLiteral("1404/02/10");
    QString description = QStringLiteral("دريافت وجه از مشتري"), user = QStringLiteral("admin");
    QString state = QStringLiteral("NEW");
};

class ProceduresTest : public tr::schema::testing::DemoCompanyTest {
  protected:
    static void SetUpTestSuite() {
        DemoCompanyTest::SetUpTestSuite();
        for (const auto& p : allProcedures()) books().procedures().addProcedure(p.name, p.body);
        for (const auto& f : allFunctions()) books().procedures().addFunction(f.name, f.body);
    }

    static tr::db::Connection& db() { return company(); }

    static QString transferTable(const QString& name) {
        const QString table = QStringLiteral("##") + name;
        db().execute(
            QStringLiteral("If Exists (Select * From Tempdb..SysObjects Where [Name] Like ") +
            db().text(table) + QStringLiteral(") Exec('Drop Table ") + table +
            QStringLiteral("')"));
        db().execute(
            QStringLiteral("Create Table ") + table +
            QStringLiteral(
                " (Raj Int, Koll Varchar(3), Moein Varchar(4), Tafsily Varchar(5), "
                "Tafsily2 Varchar(5), ProjectCod Varchar(10), Des Varchar(200), Bed Float, "
                "Bes Float, WhatDoc2 Varchar(10), NamWhatDoc2 NVarchar(100), CodWhatDoc2 "
                "Varchar(50), ManabehCod Varchar(5), ArzCod Varchar(10), ArzNam "
                "NVarchar(50), ArzRate Float, ArzUnitPrice Float, ArzTotalPrice Float, "
                "ArzCount2 Float, ArzNam2 NVarchar(50), Joz Varchar(10), Des1 "
                "NVarchar(200), Des2 NVarchar(200), Des3 NVarchar(200), Des4 "
                "NVarchar(200), IDX Int)"));
        return table;
    }

    // Fills `table` as the grid would: Raj from 1, the amount in `amountColumn` ("Bed"/"Bes").
    static void fill(const QString& table, const QString& amountColumn,
                     const std::vector<TransferLine>& lines) {
        db().execute(QStringLiteral("Delete From ") + table);
        int raj = 0;
        for (const TransferLine& l : lines) {
            const auto t = [](const QString& v) { return tr::db::sqlText(v); };
            const auto n = [](double v) { return tr::db::sqlNumber(v); };
            const bool bed = amountColumn == QLatin1String("Bed");
            const QStringList values = {
                tr::db::sqlNumber(++raj),
                t(l.koll),
                t(l.moein),
                t(l.tafsily),
                t(l.tafsily2),
                t(l.projectCod),
                t(l.des),
                n(bed ? l.amount : 0),
                n(bed ? 0 : l.amount),
                t(l.whatDoc2),
                t(l.namWhatDoc2),
                t(l.codWhatDoc2),
                t(l.manabehCod),
                l.arzCod.isEmpty() ? QStringLiteral("Null") : t(l.arzCod),
                l.arzNam.isEmpty() ? QStringLiteral("Null") : t(l.arzNam),
                QStringLiteral("Null"),
                l.arzUnitPrice == 0 ? QStringLiteral("Null") : n(l.arzUnitPrice),
                QStringLiteral("Null"),
                l.arzCount2 == 0 ? QStringLiteral("Null") : n(l.arzCount2),
                l.arzNam2.isEmpty() ? QStringLiteral("Null") : t(l.arzNam2),
                t(l.joz),
                t(l.des1),
                t(l.des2),
                t(l.des3),
                t(l.des4),
                QStringLiteral("Null")};
            db().execute(QStringLiteral("Insert Into ") + table + QStringLiteral(" Values (") +
                         values.join(QStringLiteral(", ")) + QStringLiteral(")"));
        }
    }

    // "Exec <procedure> [rate, 'currency',] 'action', 'a1', ..., 'a9'".
    static void call(const QString& procedure, const QString& action, const QStringList& nine,
                     bool foreign = false, double rate = 0, const QString& currency = {}) {
        QStringList args;
        if (foreign) args << tr::db::sqlNumber(rate) << tr::db::sqlText(currency);
        args << tr::db::sqlText(action);
        for (const QString& a : nine) args << tr::db::sqlText(a);
        while (args.size() < (foreign ? 12 : 10)) args << QStringLiteral("''");
        db().execute(QStringLiteral("Exec ") + procedure + QStringLiteral(" ") +
                     args.join(QStringLiteral(", ")));
    }

    static void save(const QString& procedure, const QString& table, qint64 serial, const Header& h,
                     bool foreign = false, double rate = 0, const QString& currency = {}) {
        call(procedure, QStringLiteral("TRANS->DB"),
             {table, QString::number(serial), h.code, h.reference, h.date, h.description, h.user,
              h.state, QStringLiteral("PC-01")},
             foreign, rate, currency);
    }

    // The message a refused call raises, or "" when it went through.
    template <typename F>
    static QString refusal(F&& work) {
        try {
            work();
        } catch (const tr::db::DatabaseError& error) {
            return error.message();
        }
        return {};
    }

    static tr::db::ResultSet rows(const QString& sql) { return selectRows(db(), sql); }
    static QVariant value(const QString& sql) { return tr::schema::testing::scalar(db(), sql); }

    // Every stored row of the given tables, to show that a call changed nothing.
    static QString snapshot(const QStringList& tables = {"N_NaghdTrans", "Asnad", "N_ArzTrans"}) {
        QString out;
        for (const QString& table : tables) {
            const auto all =
                rows(QStringLiteral("Select * From ") + table + QStringLiteral(" Order By 1"));
            for (const auto& row : all.rows) {
                for (const QVariant& v : row) out += v.toString() + QLatin1Char('|');
                out += QLatin1Char('\n');
            }
        }
        return out;
    }

    static QList<qint64> documentLines(const QString& whatDoc, qint64 serial) {
        QList<qint64> out;
        for (const auto& row :
             rows(QStringLiteral("Select IDX From N_NaghdTrans Where WhatDoc = ") +
                  tr::db::sqlText(whatDoc) + QStringLiteral(" And Serial = ") +
                  tr::db::sqlNumber(serial) + QStringLiteral(" Order By Raj"))
                 .rows) {
            out << row[0].toLongLong();
        }
        return out;
    }

    static qint64 voucherNumber(const QString& whatDoc, qint64 serial) {
        return value(QStringLiteral("Select Max(A.SanadNo) From Asnad As A Inner Join N_NaghdTrans "
                                    "As N On (A.Document = Cast(N.IDX As Varchar(20)) And "
                                    "A.DocToDate = '0' And A.WhatDoc = N.WhatDoc) Where "
                                    "N.WhatDoc = ") +
                     tr::db::sqlText(whatDoc) + QStringLiteral(" And N.Serial = ") +
                     tr::db::sqlNumber(serial))
            .toLongLong();
    }
};

}  // namespace tr::procedures::testing
