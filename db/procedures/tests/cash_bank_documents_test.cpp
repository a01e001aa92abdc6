// The cash and bank document procedures through the engine on the demo company: every kind saves
// and reloads, edits keep their voucher, serials stay unique per kind, cancel / undo / delete, the
// currency rows of the _Arzi twins, and refused or failing calls that leave the data as it was.
#include <gtest/gtest.h>

#include <QHash>

#include "db/procedures/tests/procedures_fixture.h"

namespace tr::procedures::testing {
namespace {

struct KindCase {
    const char* whatDoc;
    const char* procedure;
    const char* gridColumn;  // where the counter lines' amounts stand
    const char* code;        // the treasury-side object in the demo company
    const char* account[3];  // the ledger account it posts to
    bool foreign;
    double rate;
};

const KindCase kKinds[] = {
    {"10", "sp_N_Asnad_Trans_CashGet", "Bes", "1", {"101", "0001", "10001"}, false, 0},
    {"20", "sp_N_Asnad_Trans_CashPay", "Bed", "2", {"101", "0001", "10002"}, false, 0},
    {"40", "sp_N_Asnad_Trans_Tankhah", "Bed", "1001", {"105", "0001", "40001"}, false, 0},
    {"50", "sp_N_Asnad_Trans_VarizBank", "Bes", "1", {"102", "0001", "20001"}, false, 0},
    {"60", "sp_N_Asnad_Trans_HavalehBank", "Bes", "2", {"102", "0001", "20002"}, false, 0},
    {"90", "sp_N_Asnad_Trans_BardashtBank", "Bed", "3", {"102", "0001", "20003"}, false, 0},
    {"10", "sp_N_Asnad_Trans_CashGet_Arzi", "Bes", "3", {"101", "0002", "11001"}, true, 850000},
    {"20", "sp_N_Asnad_Trans_CashPay_Arzi", "Bed", "3", {"101", "0002", "11001"}, true, 860000},
    {"50", "sp_N_Asnad_Trans_VarizBank_Arzi", "Bes", "4", {"102", "0002", "20004"}, true, 850000},
    {"60", "sp_N_Asnad_Trans_HavalehBank_Arzi", "Bes", "4", {"102", "0002", "20004"}, true, 850000},
    {"90",
     "sp_N_Asnad_Trans_BardashtBank_Arzi",
     "Bed",
     "4",
     {"102", "0002", "20004"},
     true,
     860000},
};

QString s(const char* utf8) {
    return QString::fromUtf8(utf8);
}

qint64 freshSerial() {
    static qint64 next = 100;
    return next++;
}

// Two counter lines: a customer with every level and the header values that travel on each row,
// and a capital account with none of the lower levels. Currency lines carry the dollar.
std::vector<TransferLine> sampleLines(bool foreign) {
    TransferLine customer = accountLine(s("104"), s("0001"), s("30001"), s("51001"), s("P0001"),
                                        s("بابت صورتحساب فروش"), foreign ? 120.25 : 3000000);
    customer.whatDoc2 = s("01");
    customer.namWhatDoc2 = s("شرکت پخش البرز");
    customer.codWhatDoc2 = s("30001");
    customer.manabehCod = s("10101");
    TransferLine capital = accountLine(s("301"), s("0001"), {}, {}, {}, s("افزايش سرمايه"),
                                       foreign ? 30.0 : 2000000.0);
    capital.whatDoc2 = s("05");
    capital.namWhatDoc2 = s("سرمايه");
    for (TransferLine* l : {&customer, &capital}) {
        l->joz = s("12");
        l->des1 = s("رضا محمدي");
        l->des2 = s("بانک ملي");
        l->des3 = s("101");
        l->des4 = s("شعبه مرکزي");
        if (foreign) {
            l->arzCod = s("01");
            l->arzNam = s("دلار آمريکا");
            l->arzUnitPrice = 1;
        }
    }
    if (foreign) {
        customer.arzCount2 = 110;
        customer.arzNam2 = s("يورو");
    }
    return {customer, capital};
}

class DocumentKindTest : public ProceduresTest, public ::testing::WithParamInterface<KindCase> {
  protected:
    const KindCase& kind() const { return GetParam(); }
    QString procedure() const { return s(kind().procedure); }
    QString whatDoc() const { return s(kind().whatDoc); }
    QString title() const {
        static const QHash<QString, QString> titles = {
            {"10", s("دريافت صندوق")},  {"20", s("پرداخت صندوق")}, {"40", s("تنخواه گردان")},
            {"50", s("واريز به بانك")}, {"60", s("حواله بانكي")},  {"90", s("برداشت بانك")}};
        return titles.value(whatDoc());
    }
    Header header() const {
        Header h;
        h.code = s(kind().code);
        return h;
    }
    void saveDocument(const QString& table, qint64 serial, const Header& h) {
        save(procedure(), table, serial, h, kind().foreign, kind().rate,
             s(kind().foreign ? "01" : ""));
    }
    void loadDocument(const QString& table, qint64 serial) {
        call(procedure(), QStringLiteral("DB->TRANS"), {table, QString::number(serial)},
             kind().foreign, 0, {});
    }
    double rials(double amount) const { return kind().foreign ? amount * kind().rate : amount; }
};

TEST_P(DocumentKindTest, SavedLinesComeBackAndTheVoucherPostsTheTreasurySide) {
    const qint64 serial = freshSerial();
    const QString table = transferTable(QStringLiteral("N_A_SAVE_") + QString::number(serial));
    const auto lines = sampleLines(kind().foreign);
    fill(table, s(kind().gridColumn), lines);
    const qint64 expectedVoucher =
        value(QStringLiteral("Select IsNull(Max(SanadNo), 0) + 1 From Asnad")).toLongLong();
    ASSERT_NO_THROW(saveDocument(table, serial, header()));
    EXPECT_TRUE(ledgerIsConsistent(db()));

    const QList<qint64> idx = documentLines(whatDoc(), serial);
    ASSERT_EQ(idx.size(), 3);
    const auto voucher = rows(
        QStringLiteral("Select Raj, Koll, Moein, Tafsily, Des, Bed, Bes, SanadNo, SanadDate, "
                       "DocToDate, Document, "
                       "AtfCh, User_Name, WhatDoc From Asnad Where TypeSys = 'N' And WhatDoc = ") +
        tr::db::sqlText(whatDoc()) + QStringLiteral(" And SanadNo = ") +
        tr::db::sqlNumber(expectedVoucher) + QStringLiteral(" Order By Raj"));
    ASSERT_EQ(voucher.rows.size(), 3u);
    const bool treasuryDebit = QLatin1String(kind().gridColumn) == QLatin1String("Bes");
    const double total = rials(lines[0].amount) + rials(lines[1].amount);
    for (int i = 0; i < 3; ++i) {
        const auto& r = voucher.rows[i];
        EXPECT_EQ(r[0].toInt(), i + 1);
        EXPECT_EQ(r[8].toString(), QStringLiteral("1404/02/10"));
        EXPECT_EQ(r[9].toString(), QStringLiteral("0"));
        EXPECT_EQ(r[10].toString(), QString::number(idx[i]));
        EXPECT_EQ(r[11].toString(), QStringLiteral("501"));
        EXPECT_EQ(r[12].toString(), QStringLiteral("admin"));
    }
    const auto& treasury = voucher.rows[0];
    EXPECT_EQ(treasury[1].toString(), s(kind().account[0]));
    EXPECT_EQ(treasury[2].toString(), s(kind().account[1]));
    EXPECT_EQ(treasury[3].toString(), s(kind().account[2]));
    EXPECT_EQ(treasury[4].toString(), s("دريافت وجه از مشتري"));
    EXPECT_DOUBLE_EQ(treasury[treasuryDebit ? 5 : 6].toDouble(), total);
    EXPECT_DOUBLE_EQ(voucher.rows[1][treasuryDebit ? 6 : 5].toDouble(), rials(lines[0].amount));
    EXPECT_EQ(value(QStringLiteral("Select CodWhatDoc From N_NaghdTrans Where Raj = 1 And IDX = ") +
                    tr::db::sqlNumber(idx[0]))
                  .toString(),
              s(kind().code));

    // Reload into a table that still holds someone else's line.
    const QString reload = transferTable(QStringLiteral("N_A_LOAD_") + QString::number(serial));
    fill(reload, s(kind().gridColumn), {sampleLines(false)[1]});
    ASSERT_NO_THROW(loadDocument(reload, serial));
    const auto transferRows = [&](const QString& t) {
        return rows(QStringLiteral("Select Raj, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des, Bed, "
                                   "Bes, WhatDoc2, NamWhatDoc2, CodWhatDoc2, ManabehCod, Joz, Des1, "
                                   "Des2, Des3, Des4, IDX, ArzCod, ArzRate, ArzTotalPrice, ArzCount2, "
                                   "ArzNam2 From ") +
                    t + QStringLiteral(" Order By Raj"));
    };
    const auto back = transferRows(reload);
    ASSERT_EQ(back.rows.size(), lines.size());
    // The save left its own transfer table as a load leaves one: the screen shows it as it is.
    EXPECT_EQ(transferRows(table).rows, back.rows);
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto& r = back.rows[i];
        const TransferLine& l = lines[i];
        EXPECT_EQ(r[0].toInt(), static_cast<int>(i) + 1);
        EXPECT_EQ(QStringList({r[1].toString(), r[2].toString(), r[3].toString(), r[4].toString(),
                               r[5].toString(), r[6].toString()}),
                  QStringList({l.koll, l.moein, l.tafsily, l.tafsily2, l.projectCod, l.des}));
        EXPECT_DOUBLE_EQ(r[treasuryDebit ? 8 : 7].toDouble(), l.amount);
        EXPECT_DOUBLE_EQ(r[treasuryDebit ? 7 : 8].toDouble(), 0);
        EXPECT_EQ(QStringList({r[9].toString(), r[10].toString(), r[11].toString(),
                               r[12].toString(), r[13].toString(), r[14].toString(),
                               r[15].toString(), r[16].toString(), r[17].toString()}),
                  QStringList({l.whatDoc2, l.namWhatDoc2, l.codWhatDoc2, l.manabehCod, l.joz,
                               l.des1, l.des2, l.des3, l.des4}));
        EXPECT_EQ(r[18].toLongLong(), idx[static_cast<int>(i) + 1]);
        if (kind().foreign) {
            EXPECT_EQ(r[19].toString(), QStringLiteral("01"));
            EXPECT_DOUBLE_EQ(r[20].toDouble(), kind().rate);
            EXPECT_DOUBLE_EQ(r[21].toDouble(), rials(l.amount));
            EXPECT_DOUBLE_EQ(r[22].toDouble(), l.arzCount2);
            EXPECT_EQ(r[23].toString(), l.arzNam2);
        }
    }
}

TEST_P(DocumentKindTest, AnEditReplacesTheDocumentAndKeepsItsVoucherNumber) {
    const qint64 serial = freshSerial();
    const qint64 neighbour = freshSerial();
    const QString table = transferTable(QStringLiteral("N_A_EDIT_") + QString::number(serial));
    fill(table, s(kind().gridColumn), sampleLines(kind().foreign));
    ASSERT_NO_THROW(saveDocument(table, serial, header()));
    ASSERT_NO_THROW(saveDocument(table, neighbour, header()));
    const qint64 voucher = voucherNumber(whatDoc(), serial);
    const QList<qint64> before = documentLines(whatDoc(), serial);
    const auto neighbourRows = [&] {
        return rows(QStringLiteral("Select * From Asnad Where SanadNo = ") +
                    tr::db::sqlNumber(voucherNumber(whatDoc(), neighbour)) +
                    QStringLiteral(" Order By Raj"))
            .rows;
    };
    const auto neighbourBefore = neighbourRows();

    auto lines = sampleLines(kind().foreign);
    lines[0].amount *= 2;
    lines.push_back(lines[1]);
    lines.back().des = s("هزينه کارمزد");
    fill(table, s(kind().gridColumn), lines);
    Header edit = header();
    edit.state = QStringLiteral("EDIT");
    edit.date = QStringLiteral("1404/02/12");
    ASSERT_NO_THROW(saveDocument(table, serial, edit));
    EXPECT_TRUE(ledgerIsConsistent(db()));

    EXPECT_EQ(voucherNumber(whatDoc(), serial), voucher);
    const QList<qint64> after = documentLines(whatDoc(), serial);
    EXPECT_EQ(after.size(), 4);
    for (qint64 old : before) EXPECT_FALSE(after.contains(old));
    QStringList formerIds;
    for (qint64 old : before) formerIds << QString::number(old);
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From Asnad Where WhatDoc = ") +
                    tr::db::sqlText(whatDoc()) + QStringLiteral(" And Document In ('") +
                    formerIds.join(QStringLiteral("','")) + QStringLiteral("')"))
                  .toInt(),
              0);
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From Asnad Where SanadNo = ") +
                    tr::db::sqlNumber(voucher))
                  .toInt(),
              4);
    EXPECT_EQ(value(QStringLiteral("Select Count(*) From Asnad Where SanadNo = ") +
                    tr::db::sqlNumber(voucher) + QStringLiteral(" And SanadDate = '1404/02/12'"))
                  .toInt(),
              4);
    if (kind().foreign) {
        EXPECT_EQ(value(QStringLiteral("Select Count(*) From N_ArzTrans Where WhatDoc = ") +
                        tr::db::sqlText(whatDoc()) + QStringLiteral(" And Serial = ") +
                        tr::db::sqlNumber(serial))
                      .toInt(),
                  4);
    }
    EXPECT_EQ(neighbourRows(), neighbourBefore);
}

TEST_P(DocumentKindTest, CancelUndoAndDeleteLeaveTheLedgerBalanced) {
    const qint64 serial = freshSerial();
    const QString table = transferTable(QStringLiteral("N_A_CANCEL_") + QString::number(serial));
    fill(table, s(kind().gridColumn), sampleLines(kind().foreign));
    ASSERT_NO_THROW(saveDocument(table, serial, header()));
    const qint64 voucher = voucherNumber(whatDoc(), serial);
    const QList<qint64> idx = documentLines(whatDoc(), serial);
    const auto cancelCall = [&](const char* action, const char* date) {
        return refusal([&] {
            call(procedure(), s(action),
                 {table,
                  QString::number(serial),
                  s(kind().code),
                  {},
                  {},
                  s(date),
                  {},
                  QStringLiteral("sara"),
                  QStringLiteral("PC-02")},
                 kind().foreign, kind().rate, QStringLiteral("01"));
        });
    };

    EXPECT_EQ(cancelCall("ABTAL", "1404/02/09"),
              s("تاريخ ابطال بايد بزرگتر يا مساوي تاريخ 1404/02/10 باشد"));
    EXPECT_EQ(cancelCall("RET_EBTAL", "1404/02/10"), title() + s(" ابطال نشده است."));
    EXPECT_EQ(cancelCall("ABTAL", "1404/02/10"), QString());
    EXPECT_TRUE(ledgerIsConsistent(db()));
    const auto original =
        rows(QStringLiteral("Select Document, Bed, Bes From Asnad Where SanadNo = ") +
             tr::db::sqlNumber(voucher) + QStringLiteral(" Order By Raj"));
    const auto reversal = rows(
        QStringLiteral("Select Document, Bed, Bes, SanadNo, SanadDate, User_Name From Asnad Where "
                       "DocToDate = '1' And WhatDoc = ") +
        tr::db::sqlText(whatDoc()) +
        QStringLiteral(" And Document In (Select Cast(IDX As "
                       "Varchar(20)) From N_NaghdTrans Where "
                       "WhatDoc = ") +
        tr::db::sqlText(whatDoc()) + QStringLiteral(" And Serial = ") + tr::db::sqlNumber(serial) +
        QStringLiteral(") Order By Raj"));
    ASSERT_EQ(reversal.rows.size(), original.rows.size());
    for (size_t i = 0; i < reversal.rows.size(); ++i) {
        EXPECT_EQ(reversal.rows[i][0], original.rows[i][0]);
        EXPECT_DOUBLE_EQ(reversal.rows[i][1].toDouble(), original.rows[i][2].toDouble());
        EXPECT_DOUBLE_EQ(reversal.rows[i][2].toDouble(), original.rows[i][1].toDouble());
        EXPECT_NE(reversal.rows[i][3].toLongLong(), voucher);
        EXPECT_EQ(reversal.rows[i][4].toString(), QStringLiteral("1404/02/10"));
        EXPECT_EQ(reversal.rows[i][5].toString(), QStringLiteral("sara"));
    }
    EXPECT_EQ(cancelCall("ABTAL", "1404/02/11"), title() + s(" قبلا ابطال شده است."));

    EXPECT_EQ(cancelCall("RET_EBTAL", "1404/02/11"), QString());
    EXPECT_EQ(
        value(QStringLiteral("Select Count(*) From Asnad Where DocToDate = '1' And SanadNo = ") +
              reversal.rows[0][3].toString())
            .toInt(),
        0);
    EXPECT_EQ(voucherNumber(whatDoc(), serial), voucher);
    EXPECT_NE(cancelCall("RET_EBTAL", "1404/02/11"), QString());
    EXPECT_TRUE(ledgerIsConsistent(db()));

    // A cancelled document is deleted with both of its vouchers.
    EXPECT_EQ(cancelCall("ABTAL", "1404/03/01"), QString());
    ASSERT_NO_THROW(call(procedure(), QStringLiteral("DELETE"), {table, QString::number(serial)},
                         kind().foreign, 0, {}));
    EXPECT_TRUE(documentIsGone(db(), whatDoc(), serial, idx));
    EXPECT_TRUE(ledgerIsConsistent(db()));
    EXPECT_NE(refusal([&] {
                  call(procedure(), QStringLiteral("DELETE"), {table, QString::number(serial)},
                       kind().foreign, 0, {});
              }),
              QString());
}

INSTANTIATE_TEST_SUITE_P(Kinds, DocumentKindTest, ::testing::ValuesIn(kKinds),
                         [](const ::testing::TestParamInfo<KindCase>& info) {
                             return std::string(info.param.procedure).substr(15);
                         });

class DocumentRulesTest : public ProceduresTest {};

TEST_F(DocumentRulesTest, ANewDocumentUnderAUsedSerialIsRefusedWithTheKindsTitle) {
    const struct {
        const char* procedure;
        const char* column;
        const char* code;
        const char* message;
    } cases[] = {
        {"sp_N_Asnad_Trans_CashGet", "Bes", "1", "دريافت صندوق با اين شماره ثبت شده است."},
        {"sp_N_Asnad_Trans_CashPay", "Bed", "1", "پرداخت صندوق با اين شماره ثبت شده است."},
        {"sp_N_Asnad_Trans_Tankhah", "Bed", "1002", "تنخواه گردان با اين شماره ثبت شده است."},
        {"sp_N_Asnad_Trans_VarizBank", "Bes", "1", "واريز به بانك با اين شماره ثبت شده است."},
        {"sp_N_Asnad_Trans_HavalehBank", "Bes", "2", "حواله بانكي با اين شماره ثبت شده است."},
        {"sp_N_Asnad_Trans_BardashtBank", "Bed", "3", "برداشت بانك با اين شماره ثبت شده است."},
    };
    const qint64 serial = freshSerial();
    const QString table = transferTable(QStringLiteral("N_A_DUP"));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.procedure);
        Header h;
        h.code = s(c.code);
        fill(table, s(c.column), sampleLines(false));
        // The same serial is free under every other kind.
        ASSERT_NO_THROW(save(s(c.procedure), table, serial, h));
        const QString before = snapshot();
        auto other = sampleLines(false);
        other[0].amount = 7;
        fill(table, s(c.column), other);
        EXPECT_EQ(refusal([&] { save(s(c.procedure), table, serial, h); }), s(c.message));
        EXPECT_EQ(snapshot(), before);
    }
    EXPECT_EQ(
        value(QStringLiteral("Select Count(Distinct WhatDoc) From N_NaghdTrans Where Serial = ") +
              tr::db::sqlNumber(serial))
            .toInt(),
        6);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

// Refusals happen inside the call, before anything is written.
TEST_F(DocumentRulesTest, RefusedSavesChangeNothing) {
    const QString table = transferTable(QStringLiteral("N_A_REFUSE"));
    const qint64 cancelled = freshSerial();
    Header cash;
    cash.code = QStringLiteral("1");
    fill(table, QStringLiteral("Bes"), sampleLines(false));
    ASSERT_NO_THROW(save(QStringLiteral("sp_N_Asnad_Trans_CashGet"), table, cancelled, cash));
    ASSERT_NO_THROW(call(QStringLiteral("sp_N_Asnad_Trans_CashGet"), QStringLiteral("ABTAL"),
                         {table,
                          QString::number(cancelled),
                          QStringLiteral("1"),
                          {},
                          {},
                          QStringLiteral("1404/02/10"),
                          {},
                          QStringLiteral("admin"),
                          {}}));

    const struct {
        const char* name;
        const char* procedure;
        const char* column;  // where the sample lines go; "" leaves the table empty
        const char* code;
        const char* state;
        double rate;
        const char* message;  // "" when any refusal will do
    } cases[] = {
        {"empty table", "sp_N_Asnad_Trans_CashGet", "", "1", "NEW", 0, "سند هيچ رديفي ندارد."},
        {"lines on the treasury side", "sp_N_Asnad_Trans_CashGet", "Bed", "1", "NEW", 0,
         "سند تراز نميباشد."},
        {"unknown cash box", "sp_N_Asnad_Trans_CashPay", "Bed", "9", "NEW", 0,
         "صندوق با کد «9» وجود ندارد."},
        {"a person who holds no petty cash", "sp_N_Asnad_Trans_Tankhah", "Bed", "1003", "NEW", 0,
         "تنخواه گردان با کد «1003» وجود ندارد."},
        {"unknown bank account", "sp_N_Asnad_Trans_VarizBank", "Bes", "77", "NEW", 0,
         "حساب بانکي با کد «77» وجود ندارد."},
        {"no treasury-side code", "sp_N_Asnad_Trans_BardashtBank", "Bed", "", "NEW", 0, ""},
        {"currency document without a rate", "sp_N_Asnad_Trans_CashGet_Arzi", "Bes", "3", "NEW", 0,
         "نرخ ارز نبايد صفر باشد !"},
        {"edit of a cancelled document", "sp_N_Asnad_Trans_CashGet", "Bes", "1", "EDIT", 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        if (*c.column) {
            fill(table, s(c.column), sampleLines(false));
        } else {
            fill(table, QStringLiteral("Bes"), {});
        }
        Header h;
        h.code = s(c.code);
        h.state = s(c.state);
        const QString procedure = s(c.procedure);
        const bool foreign = procedure.endsWith(QLatin1String("_Arzi"));
        const qint64 serial =
            QLatin1String(c.state) == QLatin1String("EDIT") ? cancelled : freshSerial();
        const QString before = snapshot();
        const QString message = refusal(
            [&] { save(procedure, table, serial, h, foreign, c.rate, QStringLiteral("01")); });
        EXPECT_FALSE(message.isEmpty());
        if (*c.message) {
            EXPECT_EQ(message, s(c.message));
        }
        EXPECT_EQ(snapshot(), before);
    }

    const QString before = snapshot();
    EXPECT_FALSE(refusal([&] {
                     save(QStringLiteral("sp_N_Asnad_Trans_CashGet"),
                          QStringLiteral("##T; Delete From Asnad"), freshSerial(), cash);
                 }).isEmpty());
    EXPECT_EQ(snapshot(), before);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

TEST_F(DocumentRulesTest, ACurrencyDocumentKeepsItsAmountsInTheCurrencyAndTheLedgerInRials) {
    const qint64 serial = freshSerial();
    const QString table = transferTable(QStringLiteral("N_A_ARZ"));
    fill(table, QStringLiteral("Bes"), sampleLines(true));
    Header h;
    h.code = QStringLiteral("4");
    ASSERT_NO_THROW(save(QStringLiteral("sp_N_Asnad_Trans_VarizBank_Arzi"), table, serial, h, true,
                         851234.5, QStringLiteral("01")));
    const auto currency =
        rows(QStringLiteral("Select T.Raj, T.ArzCod, T.ArzCount, T.Nerkh, "
                            "T.ArzTotalPrice, A.Bed + A.Bes From N_ArzTrans As T "
                            "Inner Join Asnad As A On (A.Document = Cast(T.IDX As "
                            "Varchar(20)) And A.WhatDoc = T.WhatDoc) Where "
                            "T.WhatDoc = '50' And T.Serial = ") +
             tr::db::sqlNumber(serial) + QStringLiteral(" Order By T.Raj"));
    ASSERT_EQ(currency.rows.size(), 3u);
    // The treasury line holds the document's whole currency amount at the document's rate.
    EXPECT_DOUBLE_EQ(currency.rows[0][2].toDouble(), 150.25);
    EXPECT_DOUBLE_EQ(currency.rows[1][2].toDouble(), 120.25);
    for (const auto& r : currency.rows) {
        EXPECT_EQ(r[1].toString(), QStringLiteral("01"));
        EXPECT_DOUBLE_EQ(r[3].toDouble(), 851234.5);
        EXPECT_DOUBLE_EQ(r[4].toDouble(), r[5].toDouble()) << "rials of line " << r[0].toInt();
    }
    // 120.25 x 851234.5 = 102360948.625: the ledger keeps two decimals, a tie going to the even
    // cent as every amount of the module rounds.
    EXPECT_DOUBLE_EQ(currency.rows[1][5].toDouble(), 102360948.62);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

// A call that fails after it has started writing is rolled back whole. N_ArzTrans is made to
// vanish, so the edit of a currency document fails only after its old rows were removed.
class RollbackTest : public ProceduresTest {};

TEST_F(RollbackTest, AnEditThatFailsHalfwayLeavesTheEarlierVersion) {
    const QString table = transferTable(QStringLiteral("N_A_ROLLBACK"));
    fill(table, QStringLiteral("Bed"), sampleLines(true));
    Header h;
    h.code = QStringLiteral("3");
    ASSERT_NO_THROW(save(QStringLiteral("sp_N_Asnad_Trans_CashPay_Arzi"), table, 1, h, true, 860000,
                         QStringLiteral("01")));
    db().execute(QStringLiteral("Drop Table N_ArzTrans"));
    const QString before = snapshot({"N_NaghdTrans", "Asnad"});
    ASSERT_FALSE(before.isEmpty());
    h.state = QStringLiteral("EDIT");
    EXPECT_THROW(save(QStringLiteral("sp_N_Asnad_Trans_CashPay_Arzi"), table, 1, h, true, 860000,
                      QStringLiteral("01")),
                 tr::db::DatabaseError);
    const QString after = snapshot({"N_NaghdTrans", "Asnad"});
    EXPECT_EQ(after, before);
    EXPECT_TRUE(ledgerIsConsistent(db()));
}

}  // namespace
}  // namespace tr::procedures::testing
