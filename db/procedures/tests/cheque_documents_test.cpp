// The received-cheque document's procedure on the demo company: a document of two cheques (one
// split over two counterparty lines) saved, loaded back, edited and deleted; its refusals in the
// order the save checks them, each leaving the book as it was; the opening-cheque save without a
// voucher; a cheque returned to its drawer received again; and the last-action table.
#include "db/procedures/cheque_documents.h"

#include "common/db/query_helpers.h"
#include "db/procedures/tests/cheque_fixture.h"

namespace tr::procedures {
namespace {


using testing::ledgerIsConsistent;

const QString kChequesKoll = QString::fromUtf8(tr::schema::demo::kChequesKoll);
const QString kChequesMoein = QString::fromUtf8(tr::schema::demo::kChequesInHandMoein);
const QString kCapitalKoll = QString::fromUtf8(tr::schema::demo::kCapitalKoll);
const QString kCapitalMoein = QString::fromUtf8(tr::schema::demo::kCapitalMoein);

struct ChequeLine {
    QString number, series;
    double value = 0;
    QString due = QStringLiteral("1404/05/01");
    QString guarantee;
};
struct PartyLine {
    QString number, series;
    double value = 0;
    QString koll = kCapitalKoll;
};

class ChequeDocumentTest : public testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        makeDocumentTables(QStringLiteral("T71"));
    }

    static void fill(const std::vector<ChequeLine>& cheques, const std::vector<PartyLine>& parties) {
        db().execute(QStringLiteral("Delete From ##T71_Chq"));
        db().execute(QStringLiteral("Delete From ##T71_Taraf"));
        int raj = 0;
        for (const ChequeLine& c : cheques) {
            db().execute(QStringLiteral("Insert Into ##T71_Chq (Raj, Koll, Moein, Joz, ChqNo, ChqValue, SarResidDate, "
                                        "ChqGetter, Des, BankCod, ShobehCod, ShobehNam, AcountCod, Tazmin) Values (") +
                         QString::number(raj++) + QStringLiteral(", ") + db().text(kChequesKoll) +
                         QStringLiteral(", ") + db().text(kChequesMoein) + QStringLiteral(", ") + db().text(c.series) +
                         QStringLiteral(", ") + db().text(c.number) + QStringLiteral(", ") + tr::db::sqlNumber(c.value) +
                         QStringLiteral(", ") + db().text(c.due) +
                         QStringLiteral(", 'حامل', 'چك مشتري', '01', '120', 'شعبه مركزي', '0102030405', ") +
                         db().text(c.guarantee) + QStringLiteral(")"));
        }
        raj = 0;
        for (const PartyLine& p : parties) {
            db().execute(QStringLiteral("Insert Into ##T71_Taraf (Raj, WhatDoc2, Koll, Moein, Joz, ChqNo, ChqValue, "
                                        "Des) Values (") +
                         QString::number(raj++) + QStringLiteral(", '01', ") + db().text(p.koll) +
                         QStringLiteral(", ") + db().text(kCapitalMoein) + QStringLiteral(", ") + db().text(p.series) +
                         QStringLiteral(", ") + db().text(p.number) + QStringLiteral(", ") + tr::db::sqlNumber(p.value) +
                         QStringLiteral(", 'بابت فروش')"));
        }
    }

    static void call(const QString& mode, qint64 serial, const QString& state = QStringLiteral("NEW"),
                     const QString& date = QStringLiteral("1404/02/10")) {
        db().execute(QStringLiteral("Exec sp_N_Asnad_Trans_ChqGet ") + db().text(mode) + QStringLiteral(", 'T71', ") +
                     db().text(QString::number(serial)) + QStringLiteral(", ") + db().text(date) +
                     QStringLiteral(", 'admin', ") + db().text(state));
    }
    static QString refusal(const QString& mode, qint64 serial, const QString& state = QStringLiteral("NEW"),
                           const QString& date = QStringLiteral("1404/02/10")) {
        try {
            call(mode, serial, state, date);
        } catch (const tr::db::DatabaseError& e) {
            return e.message();
        }
        return {};
    }
    static qint64 count(const QString& sql) { return tr::db::firstColumn(db(), sql).toLongLong(); }
    // Everything the procedure writes, as one text: a refused call must leave it as it was.
    static QString book() {
        QString out;
        for (const char* sql :
             {"Select WhatDoc, Serial, Raj, CodWhatDoc, Joz, Des4, Des6 From N_NaghdTrans Order By IDX",
              "Select SanadNo, Koll, Bed, Bes, AtfCh, DocToDate, AtfDate From Asnad Where TypeSys = 'N' Order By REC",
              "Select WhatDoc, ChqNo, Joz, SanadDate, Serial From N_ChqLastTrans Order By IDX",
              "Select ChqOrTaraf, ChqNo, sValue From N_ChqFirst Order By IDX"}) {
            const tr::db::ExecResult result = db().execute(QString::fromUtf8(sql));
            for (const auto& row : result.resultSets.front().rows) {
                for (const QVariant& v : row) out += v.toString() + QLatin1Char('|');
                out += QLatin1Char('\n');
            }
        }
        return out;
    }
    // A cheque's latest action, as another screen would record it.
    static void recordAction(const QString& kind, const QString& number, const QString& series, const QString& date) {
        db().execute(QStringLiteral("Insert Into N_ChqLastTrans (WhatDoc, ChqNo, Joz, SanadDate, CodWhatDoc, Serial) "
                                    "Values (") +
                     db().text(kind) + QStringLiteral(", ") + db().text(number) + QStringLiteral(", ") +
                     db().text(series) + QStringLiteral(", ") + db().text(date) + QStringLiteral(", '', 0)"));
    }

    // Two cheques, the second split over two counterparty lines.
    static void twoCheques() {
        fill({{QStringLiteral("1001"), QStringLiteral("1"), 5000000}, {QStringLiteral("1002"), QStringLiteral("A"), 3000000}},
             {{QStringLiteral("1001"), QStringLiteral("1"), 5000000},
              {QStringLiteral("1002"), QStringLiteral("A"), 1000000},
              {QStringLiteral("1002"), QStringLiteral("A"), 2000000}});
    }
};

TEST_F(ChequeDocumentTest, ADocumentSavesLoadsBackEditsAndDeletesWithTheLedgerWhole) {
    twoCheques();
    call(QStringLiteral("TRANS->DB"), 1);
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc = '71' And Serial = 1"), 5);
    // One voucher: each cheque debited, each counterparty line credited, the cheque's number,
    // series and due date on every line; a series of "1" is not a cancellation.
    EXPECT_EQ(count("Select Count(Distinct SanadNo) From Asnad Where WhatDoc = '71'"), 1);
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '71' And AtfCh = '1002' And DocToDate = 'A' And "
                    "AtfDate = '1404/05/01'"),
              3);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(db(), "Select Sum(Bed) From Asnad Where WhatDoc = '71'").toDouble(), 8000000);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '71' And Serial = 1"), 2);
    EXPECT_TRUE(ledgerIsConsistent(db()));

    // Loaded back, each cheque and counterparty line as it was entered.
    db().execute(QStringLiteral("Delete From ##T71_Chq"));
    call(QStringLiteral("DB->TRANS"), 1);
    const auto cheques = db().execute(QStringLiteral("Select ChqNo, Joz, ChqValue, SarResidDate, ChqGetter, BankNam, "
                                                     "AcountCod, Koll From ##T71_Chq Order By Raj"))
                             .resultSets.front()
                             .rows;
    ASSERT_EQ(cheques.size(), 2u);
    EXPECT_EQ(cheques[1][0].toString(), QStringLiteral("1002"));
    EXPECT_EQ(cheques[1][1].toString(), QStringLiteral("A"));
    EXPECT_DOUBLE_EQ(cheques[1][2].toDouble(), 3000000);
    EXPECT_EQ(cheques[1][4].toString(), QStringLiteral("حامل"));
    EXPECT_FALSE(cheques[1][5].toString().isEmpty());
    EXPECT_EQ(cheques[1][6].toString(), QStringLiteral("0102030405"));
    EXPECT_EQ(count("Select Count(*) From ##T71_Taraf Where ChqNo = '1002'"), 2);
    const qint64 voucher = count("Select Max(SanadNo) From Asnad Where WhatDoc = '71'");

    // An edit replaces the document and keeps its voucher number.
    db().execute(QStringLiteral("Update ##T71_Chq Set ChqValue = 4000000 Where ChqNo = '1002'"));
    db().execute(QStringLiteral("Update ##T71_Taraf Set ChqValue = 3000000 Where ChqNo = '1002' And ChqValue = 2000000"));
    call(QStringLiteral("TRANS->DB"), 1, QStringLiteral("EDIT"));
    EXPECT_EQ(count("Select Count(Distinct SanadNo) From Asnad Where WhatDoc = '71'"), 1);
    EXPECT_EQ(count("Select Max(SanadNo) From Asnad Where WhatDoc = '71'"), voucher);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(db(), "Select Sum(Bes) From Asnad Where WhatDoc = '71'").toDouble(), 9000000);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '71'"), 2);
    EXPECT_TRUE(ledgerIsConsistent(db()));

    call(QStringLiteral("DELETE_DOREH"), 1);
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans Where WhatDoc = '71'"), 0);
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '71'"), 0);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans"), 0);
}

TEST_F(ChequeDocumentTest, TheSaveRefusesInItsOrderAndARefusalChangesNothing) {
    twoCheques();
    call(QStringLiteral("TRANS->DB"), 1);
    const QString before = book();
    struct Case {
        const char* what;
        std::vector<ChequeLine> cheques;
        std::vector<PartyLine> parties;
        QString message;
    };
    const std::vector<Case> cases = {
        {"a counterparty line without its account",
         {{"2001", "", 100}},
         {{"2001", "", 100, QString()}},
         QStringLiteral("سرفصل در قسمت طرف حساب پر نشده است")},
        {"debits and credits apart (before the per-cheque sums)",
         {{"2001", "", 100}},
         {{"2001", "", 99}},
         QStringLiteral("سند تراز نميباشد.")},
        {"a split off by one rial from its cheque",
         {{"2001", "", 100}, {"2002", "", 50}},
         {{"2001", "", 49}, {"2001", "", 50}, {"2002", "", 51}},
         QStringLiteral("جمع مبلغ چك 2001 در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد.")},
        {"a counterparty line of a cheque the document lacks",
         {{"2001", "", 100}},
         {{"2001", "", 60}, {"2009", "", 40}},
         QStringLiteral("جمع مبلغ چك 2001 در قسمت طرف حساب/بابت با مبلغ چك يكسان نميباشد.")},
        {"a cheque twice in the document",
         {{"2001", "", 100}, {"2001", "", 100}},
         {{"2001", "", 200}},
         QStringLiteral("شماره چك تكراري ميباشد.")},
        {"a cheque already in the book",
         {{"1002", "A", 100}},
         {{"1002", "A", 100}},
         QStringLiteral("چك شماره 1002 با سريA قبلا ثبت شده است !")},
        {"no due date",
         {{"2001", "", 100, QString()}},
         {{"2001", "", 100}},
         QStringLiteral("تاريخ سررسيد وارد نشده است.")},
    };
    for (const Case& c : cases) {
        fill(c.cheques, c.parties);
        EXPECT_EQ(refusal(QStringLiteral("TRANS->DB"), 2), c.message) << c.what;
        EXPECT_EQ(book(), before) << c.what;
    }
    // Step 5 on its own: the counterparty cheque is unknown but the sums agree.
    fill({{"2001", "", 100}}, {{"2001", "", 100}, {"2009", "", 0}});
    EXPECT_EQ(refusal(QStringLiteral("TRANS->DB"), 2), QStringLiteral("چك 2009 در قسمت بالا ثبت نشده است !"));
    // A new document under a saved serial.
    fill({{"2001", "", 100}}, {{"2001", "", 100}});
    EXPECT_EQ(refusal(QStringLiteral("TRANS->DB"), 1), QStringLiteral("دريافت چک با اين شماره ثبت شده است."));
    EXPECT_EQ(book(), before);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

TEST_F(ChequeDocumentTest, AMovedChequeFreezesItsDocumentAndNamesItsLatestAction) {
    twoCheques();
    call(QStringLiteral("TRANS->DB"), 1);
    recordAction(QStringLiteral("72"), QStringLiteral("1002"), QStringLiteral("A"), QStringLiteral("1404/02/20"));
    const QString before = book();
    const QString name =
        tr::db::firstColumn(db(), "Select NDocNam From N_AsnadNaghd Where WhatDoc = '72'").toString().trimmed();
    EXPECT_EQ(refusal(QStringLiteral("DELETE_DOREH"), 1),
              QStringLiteral("آخرين گردش چك شماره 1002 ") + name + QStringLiteral(" ميباشد."));
    call(QStringLiteral("DB->TRANS"), 1);
    EXPECT_EQ(refusal(QStringLiteral("TRANS->DB"), 1, QStringLiteral("EDIT")),
              QStringLiteral("چك 1002 گردش پيدا كرده است."));
    EXPECT_EQ(book(), before);
}

TEST_F(ChequeDocumentTest, AChequeReturnedToItsDrawerIsReceivedAgainOnlyAfterTheReturn) {
    fill({{"3001", "B", 700}}, {{"3001", "B", 700}});
    call(QStringLiteral("TRANS->DB"), 1);
    recordAction(QStringLiteral("78"), QStringLiteral("3001"), QStringLiteral("B"), QStringLiteral("1404/03/01"));
    fill({{"3001", "B", 700}}, {{"3001", "B", 700}});
    EXPECT_EQ(refusal(QStringLiteral("TRANS->DB"), 2, QStringLiteral("NEW"), QStringLiteral("1404/03/01")),
              QStringLiteral("تاريخ صدور چك بايد بزرگتر از تاريخ 1404/03/01 باشد."));
    call(QStringLiteral("TRANS->DB"), 2, QStringLiteral("NEW"), QStringLiteral("1404/03/02"));
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where ChqNo = '3001'"), 3);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

TEST_F(ChequeDocumentTest, AnOpeningDocumentHasNoVoucherAndLoadsFromItsOpeningRows) {
    twoCheques();
    call(QStringLiteral("FIRST->DB"), 5);
    EXPECT_EQ(count("Select Count(*) From Asnad Where WhatDoc = '71'"), 0);
    EXPECT_EQ(count("Select Count(*) From N_ChqFirst Where Serial = 5 And ChqOrTaraf = 1"), 2);
    EXPECT_EQ(count("Select Count(*) From N_ChqFirst Where Serial = 5 And ChqOrTaraf = 2"), 3);
    EXPECT_EQ(count("Select Count(*) From N_ChqLastTrans Where WhatDoc = '71' And Serial = 5"), 2);
    call(QStringLiteral("DB->TRANS"), 5);
    EXPECT_EQ(count("Select Count(*) From ##T71_Chq"), 2);
    EXPECT_EQ(count("Select Count(*) From ##T71_Taraf Where Koll = '301'"), 3);
    EXPECT_DOUBLE_EQ(tr::db::firstColumn(db(), "Select Sum(ChqValue) From ##T71_Taraf").toDouble(), 8000000);
    // An opening document is deleted as one, not as a normal document.
    EXPECT_EQ(refusal(QStringLiteral("DELETE_DOREH"), 5), QStringLiteral("اين شماره دريافت چک در دسترس نمي باشد"));
    call(QStringLiteral("DELETE_FIRST"), 5);
    EXPECT_EQ(count("Select Count(*) From N_ChqFirst"), 0);
    EXPECT_EQ(count("Select Count(*) From N_NaghdTrans"), 0);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

TEST_F(ChequeDocumentTest, TheLastActionTableHoldsEachChequesLatestRow) {
    twoCheques();
    call(QStringLiteral("TRANS->DB"), 1);
    fill({{"4001", "", 10}}, {{"4001", "", 10}});
    call(QStringLiteral("FIRST->DB"), 2);
    recordAction(QStringLiteral("72"), QStringLiteral("1001"), QStringLiteral("1"), QStringLiteral("1404/04/01"));
    db().execute(QStringLiteral("Exec sp_N_Create_LastChqAction '##TmpChqLastTrans', '', 'FALSE'"));
    const auto rows = db().execute(QStringLiteral("Select ChqNo, WhatDoc From ##TmpChqLastTrans Order By ChqNo"))
                          .resultSets.front()
                          .rows;
    ASSERT_EQ(rows.size(), 2u);  // the opening cheque left out
    EXPECT_EQ(rows[0][1].toString(), QStringLiteral("72"));
    EXPECT_EQ(rows[1][1].toString(), QStringLiteral("71"));
    // As the history stood on a date: before the collection.
    db().execute(QStringLiteral("Exec sp_N_Create_LastChqAction '##TmpChqLastTrans', '1404/03/01', 'TRUE'"));
    EXPECT_EQ(count("Select Count(*) From ##TmpChqLastTrans Where WhatDoc = '71'"), 3);
    db().execute(QStringLiteral("Drop Table ##TmpChqLastTrans"));
}

}  // namespace
}  // namespace tr::procedures
