// The document pickers: title, columns, the rows of each kind's own vouchers, and the serial
// handed back; plus the launcher's buttons by the user's rights.
#include "cashbank/search/document_pickers.h"

#include <gtest/gtest.h>

#include "cashbank/search/search_launcher.h"
#include "cashbank/tests/search/search_fixture.h"

namespace tr::cashbank::testing {
namespace {

QString s(const char* text) {
    return QString::fromUtf8(text);
}

class Pickers : public SearchTest {
  protected:
    // Two documents of every kind; the first of each is cancelled.
    void saveAll() {
        const QList<std::pair<QString, QString>> kinds = {{s("10"), s("1")},    {s("20"), s("2")},
                                                          {s("40"), s("1001")}, {s("50"), s("1")},
                                                          {s("60"), s("2")},    {s("90"), s("3")}};
        for (const auto& [kind, code] : kinds) {
            for (qint64 serial : {5, 11}) {
                Doc d;
                d.kind = kind;
                d.code = code;
                d.serial = serial;
                d.amount = 100 * serial;
                d.date = serial == 5 ? s("1404/02/12") : s("1404/02/01");
                d.des1 = s("واريز کننده");
                save(d);
            }
            cancel(kind, 5, code);
        }
    }
};

TEST_F(Pickers, EachListsItsKindsOwnTreasuryLinesAndAnswersTheSerial) {
    saveAll();
    struct Case {
        const char* kind;
        const char* title;
        QStringList fields;
        int rows;  // the petty-cash list also shows the cancellation voucher's lines
    };
    const QList<Case> cases = {
        {"10",
         "انتخاب دريافت صندوق",
         {"Serial", "CashNo", "SanadDate", "sValue", "Des", "CashCod", "CashNam"},
         2},
        {"20",
         "انتخاب پرداخت صندوق",
         {"Serial", "CashNo", "SanadDate", "sValue", "Des", "CashCod", "CashNam"},
         2},
        {"40",
         "انتخاب تنخواه",
         {"Serial", "TankhahNo", "SanadDate", "sValue", "Des", "TankhahCod", "TankhahNam"},
         3},
        {"50",
         "انتخاب واريز نقدي",
         {"Serial", "Joz", "VarizNo", "SanadDate", "sValue", "Des1", "Des", "AcountCod",
          "AcountNam", "AcountID"},
         2},
        {"60",
         "انتخاب حواله بانكي",
         {"Serial", "Joz", "HavalehNo", "SanadDate", "sValue", "BankNam", "ShobehCod", "ShobehNam",
          "Havaleh", "Des", "AcountCod", "AcountNam", "AcountID"},
         2},
        {"90",
         "انتخاب برداشت بانک",
         {"Serial", "Joz", "BardashtNo", "SanadDate", "sValue", "Des", "AcountCod", "AcountNam",
          "AcountID"},
         2},
    };
    for (const Case& c : cases) {
        session->pickList.chooseRow(1);
        const std::optional<QString> serial = pickDocument(session->services, s(c.kind));
        const auto& shown = session->pickList.last();
        EXPECT_EQ(shown.title, s(c.title)) << c.kind;
        QStringList fields;
        for (const auto& column : shown.columns) fields << column.field;
        EXPECT_EQ(fields, c.fields) << c.kind;
        ASSERT_EQ(shown.rows.size(), c.rows) << c.kind;
        // Ordered by date: serial 11 was dated first.
        EXPECT_EQ(shown.rows[0].value(s("Serial")).toLongLong(), 11) << c.kind;
        EXPECT_DOUBLE_EQ(shown.rows[0].value(s("sValue")).toDouble(), 1100) << c.kind;
        EXPECT_EQ(serial, std::optional<QString>(s("5"))) << c.kind;
        EXPECT_EQ(
            value(s("Select Count(*) From Tempdb..SysObjects Where [Name] Like '%Pick%'")).toInt(),
            0)
            << c.kind << ": the pick table is dropped";
    }
    EXPECT_EQ(session->pickList.shown()[0].rows[0].value(s("CashNam")).toString(),
              s("صندوق مرکزي"));
    EXPECT_EQ(session->pickList.shown()[2].rows[0].value(s("TankhahNam")).toString(),
              s("علي-رضايي"));
    EXPECT_EQ(session->pickList.shown()[3].rows[0].value(s("AcountNam")).toString(),
              s("بانک ملي-شعبه مرکزي"));
    EXPECT_EQ(session->pickList.shown()[3].rows[0].value(s("Des1")).toString(), s("واريز کننده"));
}

TEST_F(Pickers, CancellingTheListOrAnUnknownKindAnswersNothing) {
    saveAll();
    session->pickList.cancel();
    EXPECT_EQ(pickDocument(session->services, s("10")), std::nullopt);
    EXPECT_EQ(pickDocument(session->services, s("71")), std::nullopt);
    EXPECT_EQ(session->pickList.shown().size(), 1);
}

TEST(SearchLauncher, ButtonsFollowTheSearchRights) {
    const QString rights =
        s("N_A_SEARCH_CASH(Y)N_A_SEARCH_VARIZ(Y)N_A_SEARCH_CHQGET(Y)"
          "N_A_CASHGET__SABT(Y)");
    QStringList visible;
    for (const LauncherButton& b : launcherButtons())
        if (buttonVisible(b, rights)) visible << b.caption;
    EXPECT_EQ(visible, (QStringList{s("دريافت سفته"), s("پرداخت سفته"), s("دريافت چک"),
                                    s("واريز بانک"), s("صندوق")}));
    int shownToAll = 0;
    for (const LauncherButton& b : launcherButtons()) shownToAll += buttonVisible(b, {}) ? 1 : 0;
    EXPECT_EQ(shownToAll, 2);  // the note searches carry no marker of their own
}

}  // namespace
}  // namespace tr::cashbank::testing
