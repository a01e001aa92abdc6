#pragma once
// The demo company with every procedure registered and no treasury documents, cheques, holds or
// log rows, for the tests of the cheque procedures and screens; the cheque documents' work tables
// made anew under a prefix, as their screens make them; and one-call receipts and payments.
#include <vector>

#include <QRandomGenerator>

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_state_model.h"
#include "db/procedures/tests/procedures_fixture.h"
#include "instruments/cheque_work_tables.h"

namespace tr::procedures::testing {

class ChequeTest : public ProceduresTest {
  protected:
    void SetUp() override {
        ProceduresTest::SetUp();
        for (const char* sql : {"Delete From Asnad Where TypeSys = 'N'", "Delete From N_NaghdTrans",
                                "Delete From N_ArzTrans", "Delete From N_ChqLastTrans", "Delete From N_ChqFirst",
                                "Delete From N_ChqFirst_Log", "Delete From ASNADACTIONS", "Delete From Reserveid",
                                "Delete From N_reserveid", "Delete From R_ForoshRelatedNaghd"})
            db().execute(QString::fromUtf8(sql));
    }

    // `table` (with its "##") made anew with `columns`.
    static void remake(const QString& table, const QString& columns) {
        if (tr::db::objectExistsInTempdb(db(), table)) db().execute(QStringLiteral("Drop Table ") + table);
        db().execute(QStringLiteral("Create Table ") + table + QStringLiteral(" (") + columns + QLatin1Char(')'));
    }
    // ##<prefix>_Chq and ##<prefix>_Taraf, empty.
    static void makeDocumentTables(const QString& prefix) {
        remake(QStringLiteral("##") + prefix + QStringLiteral("_Chq"), tr::instruments::chequeWorkTableColumns());
        remake(QStringLiteral("##") + prefix + QStringLiteral("_Taraf"), tr::instruments::counterpartyWorkTableColumns());
    }

    // A line a cheque of a document is credited (receipt) or debited (payment) to.
    struct ChequeParty {
        QString koll, moein;
        double value = 0;
    };
    struct DocumentCheque {
        QString number, series;
        double value = 0;
        QString due = QStringLiteral("1404/05/01");
        bool guarantee = false;
        qint64 bankAccount = 0;         // a payment's own leaf; 0 passes on a received cheque
        std::vector<ChequeParty> parties;  // empty: the whole amount to one default party
    };
    // One received-cheque document (an opening one when `opening`) of `cheques`, from the
    // customer 104-0002 unless a cheque names its parties; cheques stand on 103-0001.
    static void receiveCheques(const std::vector<DocumentCheque>& cheques, qint64 serial,
                               const QString& date = QStringLiteral("1404/02/10"), bool opening = false) {
        saveDocument(QStringLiteral("CF71"), QStringLiteral("sp_N_Asnad_Trans_ChqGet"), cheques, serial, date, opening,
                     {QStringLiteral("104"), QStringLiteral("0002"), 0});
    }
    // One cheque payment (an opening one when `opening`) of our leaves and received cheques
    // passed on, to the supplier 202-0001 unless a cheque names its parties.
    static void payCheques(const std::vector<DocumentCheque>& cheques, qint64 serial,
                           const QString& date = QStringLiteral("1404/02/20"), bool opening = false) {
        saveDocument(QStringLiteral("CF81"), QStringLiteral("sp_N_Asnad_Trans_ChqPay"), cheques, serial, date, opening,
                     {QStringLiteral("202"), QStringLiteral("0001"), 0});
    }

    // The series of a walk's cheques: our leaves' book "W", received cheques passed on "S".
    static QString seriesOf(const chequemodel::Cheque& c) {
        return c.origin == chequemodel::Origin::Own ? QStringLiteral("W") : QStringLiteral("S");
    }
    // One payment (serial `serial`, 1404/02/20) of `count` new cheques for the walks: our leaves on
    // bank account 1, a quarter of them guarantee cheques, and unless `opening` about a third
    // received cheques, received first and passed on; numbered from `ownBase` / `spentBase` +
    // `offset`, worth 1,000 to `maxThousands` thousand. Answers the model's cheques, all at 81.
    static std::vector<chequemodel::Cheque> payRandomCheques(QRandomGenerator& random, int count, int offset,
                                                             int ownBase, int spentBase, int maxThousands,
                                                             qint64 serial, bool opening) {
        using chequemodel::Origin;
        std::vector<chequemodel::Cheque> cheques(count);
        std::vector<DocumentCheque> paid, receipts;
        for (int i = 0; i < count; ++i) {
            chequemodel::Cheque& c = cheques[i];
            c.origin = !opening && random.bounded(3) == 0 ? Origin::Spent : Origin::Own;
            c.number = QString::number((c.origin == Origin::Own ? ownBase : spentBase) + offset + i);
            c.guarantee = c.origin == Origin::Own && random.bounded(4) == 0;
            c.opening = opening;
            c.value = 1000.0 * (1 + random.bounded(maxThousands));
            c.history = {{QStringLiteral("81"), QStringLiteral("1404/02/20")}};
            DocumentCheque d{c.number, seriesOf(c), c.value, chequemodel::kDue, c.guarantee, 0, {}};
            if (c.origin == Origin::Own)
                d.bankAccount = 1;
            else
                receipts.push_back(d);
            paid.push_back(d);
        }
        if (!receipts.empty()) receiveCheques(receipts, serial);
        payCheques(paid, serial, QStringLiteral("1404/02/20"), opening);
        return cheques;
    }

  private:
    static void saveDocument(const QString& prefix, const QString& procedure, const std::vector<DocumentCheque>& cheques,
                             qint64 serial, const QString& date, bool opening, const ChequeParty& party) {
        const bool payment = procedure.endsWith(QLatin1String("ChqPay"));
        const QString chequeTable = QStringLiteral("##") + prefix + (payment ? QStringLiteral("Bed") : QStringLiteral("_Chq"));
        const QString partyTable = QStringLiteral("##") + prefix + QStringLiteral("_Taraf");
        remake(chequeTable, payment ? tr::instruments::paymentChequeWorkTableColumns()
                                    : tr::instruments::chequeWorkTableColumns());
        remake(partyTable, tr::instruments::counterpartyWorkTableColumns());
        tr::db::Connection& c = db();
        int raj = 0;
        for (const DocumentCheque& ch : cheques) {
            const QString common = c.text(ch.series) + QStringLiteral(", ") + c.text(ch.number) + QStringLiteral(", ") +
                                   tr::db::sqlNumber(ch.value) + QStringLiteral(", ") + c.text(ch.due) +
                                   QStringLiteral(", ") + c.text(ch.guarantee ? QStringLiteral("ض") : QString());
            if (payment) {
                c.execute(QStringLiteral("Insert Into ") + chequeTable +
                          QStringLiteral(" (Raj, ChqStateNam, AcountID, Joz, ChqNo, ChqValue, SarResidDate, Tazmin, "
                                         "ChqGetter, Des) Values (") +
                          tr::db::sqlNumber(raj) + QStringLiteral(", ") +
                          c.text(ch.bankAccount > 0 ? QStringLiteral("صدور چك") : QStringLiteral("خرج چك")) +
                          QStringLiteral(", ") + tr::db::sqlNumber(ch.bankAccount) + QStringLiteral(", ") + common +
                          QStringLiteral(", 'شرکت تامين', 'خريد کالا')"));
            } else {
                c.execute(QStringLiteral("Insert Into ") + chequeTable +
                          QStringLiteral(" (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, Tazmin, BankCod, "
                                         "ChqGetter) Values (") +
                          tr::db::sqlNumber(raj) + QStringLiteral(", '103', '0001', ") + common +
                          QStringLiteral(", '01', 'حامل')"));
            }
            std::vector<ChequeParty> parties = ch.parties;
            if (parties.empty()) parties.push_back({party.koll, party.moein, ch.value});
            for (const ChequeParty& p : parties) {
                c.execute(QStringLiteral("Insert Into ") + partyTable +
                          QStringLiteral(" (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue, Des) Values (") +
                          tr::db::sqlNumber(raj++) + QStringLiteral(", '01', ") + c.text(p.koll) + QStringLiteral(", ") +
                          c.text(p.moein) + QStringLiteral(", ") + c.text(ch.series) + QStringLiteral(", ") +
                          c.text(ch.number) + QStringLiteral(", ") + tr::db::sqlNumber(p.value) +
                          QStringLiteral(", 'بابت')"));
            }
        }
        c.execute(QStringLiteral("Exec ") + procedure + QLatin1Char(' ') +
                  c.text(opening ? QStringLiteral("FIRST->DB") : QStringLiteral("TRANS->DB")) + QStringLiteral(", ") +
                  c.text(prefix) + QStringLiteral(", ") + c.text(QString::number(serial)) + QStringLiteral(", ") +
                  c.text(date) + QStringLiteral(", 'admin', 'NEW'"));
    }
};

}  // namespace tr::procedures::testing
