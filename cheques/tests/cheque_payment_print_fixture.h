#pragma once
// A cheque payment saved through its screen's logic for the print tests: two of our own leaves
// from books of two form codes (one payable to order, one of a ten-figure amount to the bearer)
// and, unless left out, a customer's cheque passed on, all paid to one supplier.
#include <gtest/gtest.h>

#include "cheques/tests/cheque_typing.h"

#include <memory>

#include "cheques/cheque_payment_document.h"
#include "cheques/received_cheque_document.h"
#include "common/db/query_helpers.h"
#include "common/db/sql_literal.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques::testing {

inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

class ChequePaymentPrintTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"),
            tr::fullRights({QStringLiteral("N_A_CHQPAY_"), QStringLiteral("N_A_CHQGET_")}));
        session->global.sCode = QString::fromUtf8(tr::schema::demo::kCompanyCode);
        session->global.sYear = QString::fromUtf8(tr::schema::demo::kCurrentYear);
        doc = std::make_unique<ChequePaymentDocument>(session->services);
        books = tr::db::openQuery(company(), QStringLiteral("Select AcountID, Joz, FirstNum, "
                                                            "LastNum, FormCode From N_Cheque"));
        options = tr::db::firstColumn(company(), QStringLiteral("Select Naghd From Options"));
    }
    // The book is the suite's: cheque books and options a test changed are put back.
    void TearDown() override {
        doc.reset();
        session.reset();
        tr::db::Connection& c = company();
        c.execute(QStringLiteral("Delete From N_Cheque"));
        for (int i = 0; i < books.RecordCount(); ++i) {
            QStringList values;
            for (int f = 0; f < 5; ++f)
                values << (f == 0 ? tr::db::sqlNumber(books.value(i, f).toLongLong())
                                  : c.text(books.value(i, f).toString()));
            c.execute(QStringLiteral("Insert Into N_Cheque (AcountID, Joz, FirstNum, LastNum, "
                                     "FormCode) Values (") +
                      values.join(QStringLiteral(", ")) + QLatin1Char(')'));
        }
        c.execute(QStringLiteral("Update Options Set Naghd = ") + c.text(options.toString()));
    }

    // Leaf 100005/12 of account 1 (book form "1") for 2,500,000 to a named payee, payable to
    // order; leaf 200003/7 of account 2 (book form "2") for 1,234,567,000 to the bearer; customer
    // cheque 5101/ج for 1,000,000 passed on unless `passOn` is false. Saved on 1404/02/20 normally
    // or as opening cheques; answers the serial.
    QString savePayment(bool passOn = true, bool opening = false) {
        if (passOn) receive(QStringLiteral("5101"), 1000000);
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/20");
        doc->lowerAccount() = {QStringLiteral("202"), QStringLiteral("0001"),
                               QStringLiteral("30003"), {}, {}};
        typeLeaf(1, QStringLiteral("100005"), QStringLiteral("12"), 2500000,
                 text("شرکت فولاد مبارکه"), true);
        typeLeaf(2, QStringLiteral("200003"), QStringLiteral("7"), 1234567000, QString(), false);
        if (passOn) {
            EXPECT_TRUE(doc->spendCheque(QStringLiteral("5101"), text("ج"))) << lastMessage();
            doc->cheques().FieldByName(QStringLiteral("ChqGetter")).SetValue(text("تعاوني حمل بار"));
            doc->cheques().FieldByName(QStringLiteral("Des")).SetValue(text("کرايه حمل"));
            EXPECT_TRUE(post()) << lastMessage();
        }
        EXPECT_TRUE(doc->save(opening)) << lastMessage();
        return doc->header().serial.trimmed();
    }

    void typeLeaf(qint64 account, const QString& number, const QString& series, double value,
                  const QString& payee, bool payableToOrder) {
        doc->appendCheque();
        tr::db::Query& g = doc->cheques();
        ASSERT_TRUE(doc->setBankAccount(account));
        g.FieldByName(QStringLiteral("ChqNo")).SetValue(number);
        g.FieldByName(QStringLiteral("Joz")).SetValue(series);
        g.FieldByName(QStringLiteral("ChqValue")).SetValue(value);
        g.FieldByName(QStringLiteral("SarResidDate")).SetValue(QStringLiteral("1404/03/15"));
        g.FieldByName(QStringLiteral("Des")).SetValue(text("خريد ورق فولادي"));
        if (!payee.isEmpty()) g.FieldByName(QStringLiteral("ChqGetter")).SetValue(payee);
        if (payableToOrder) g.FieldByName(QStringLiteral("Havaleh")).SetValue(text("ض"));
        ASSERT_TRUE(post()) << lastMessage();
    }

    bool post() {
        tr::db::Query& g = doc->cheques();
        g.Post();
        return g.state() == tr::db::Query::State::Browse;
    }

    // A customer's cheque on Bank Saderat received through its own screen on 1404/02/10.
    void receive(const QString& number, double value) {
        testing::receiveThroughScreen(session->services, {number, value, text("ج"), QStringLiteral("1404/04/01")},
                                      [&](tr::db::Query& g) {
                                          g.FieldByName(QStringLiteral("BankCod")).SetValue(QStringLiteral("03"));
                                          g.FieldByName(QStringLiteral("ShobehNam")).SetValue(text("شعبه انقلاب"));
                                          g.FieldByName(QStringLiteral("Des")).SetValue(text("چك مشتري ") + number);
                                      });
    }

    std::string lastMessage() const {
        return session->dialog.shown().isEmpty() ? std::string()
                                                 : session->dialog.last().text.toStdString();
    }
    tr::Services& services() { return session->services; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ChequePaymentDocument> doc;
    tr::db::Query books;
    QVariant options;
};

}  // namespace tr::cheques::testing
