#pragma once
// A received-cheque document saved through its screen's logic for the print tests: two cheques,
// the second split over two counterparty lines (the lower box's account and a customer's).
#include <gtest/gtest.h>

#include <memory>

#include "cheques/received_cheque_document.h"
#include "db/procedures/tests/cheque_fixture.h"
#include "tests/support/test_session.h"

namespace tr::cheques::testing {

inline QString u(const char* text) {
    return QString::fromUtf8(text);
}

class ReceivedChequePrintTest : public tr::procedures::testing::ChequeTest {
  protected:
    void SetUp() override {
        ChequeTest::SetUp();
        session = std::make_unique<tr::test::TestSession>(
            company(), 1, QStringLiteral("admin"), tr::fullRights({QStringLiteral("N_A_CHQGET_")}));
        session->global.sCode = QString::fromUtf8(tr::schema::demo::kCompanyCode);
        session->global.sYear = QString::fromUtf8(tr::schema::demo::kCurrentYear);
        doc = std::make_unique<ReceivedChequeDocument>(session->services);
    }
    void TearDown() override {
        doc.reset();
        session.reset();
    }

    // A new document with cheque 7001 (3,000,000 to a named payee) and 7002 (2,000,000 to the
    // bearer, 1,200,000 of it on the lower box's account and 800,000 on a customer's); saved
    // normally or as opening cheques. Answers its serial.
    QString saveTwoCheques(bool opening = false) {
        doc->newDocument();
        doc->header().date = QStringLiteral("1404/02/10");
        doc->lowerAccount() = {QStringLiteral("104"), QStringLiteral("0002"), {}, {}, {}};
        typeCheque(QStringLiteral("7001"), 3000000, QStringLiteral("1404/05/10"),
                   u("شرکت پخش البرز"));
        typeCheque(QStringLiteral("7002"), 2000000, QStringLiteral("1404/06/31"), QString());
        const QString taraf = QStringLiteral("##") + doc->prefix() + QStringLiteral("_Taraf");
        company().execute(QStringLiteral("Update ") + taraf +
                          QStringLiteral(" Set ChqValue = 1200000 Where ChqNo = '7002'"));
        company().execute(
            QStringLiteral("Insert Into ") + taraf +
            QStringLiteral(" (Raj, WhatDoc2, Koll, Moein, Tafsily, Joz, ChqNo, ChqValue, "
                           "Des) Values (2, '01', '104', '0001', '30002', 'ج', '7002', "
                           "800000, ") +
            company().text(u("سهم فروشگاه از چک 7002")) + QStringLiteral(")"));
        EXPECT_TRUE(doc->save(opening)) << session->dialog.last().text.toStdString();
        return doc->header().serial.trimmed();
    }

    void typeCheque(const QString& number, double value, const QString& due, const QString& payee) {
        tr::db::Query& g = doc->cheques();
        g.Append();
        const std::pair<const char*, QVariant> fields[] = {
            {"Koll", QStringLiteral("103")},
            {"Moein", QStringLiteral("0001")},
            {"ChqNo", number},
            {"Joz", u("ج")},
            {"ChqValue", value},
            {"SarResidDate", due},
            {"BankCod", QStringLiteral("01")},
            {"ShobehNam", u("شعبه مرکزي")},
            {"AcountCod", QStringLiteral("0102030405")},
            {"Des", u("بابت فاکتور ") + number}};
        for (const auto& [name, v] : fields) g.FieldByName(QLatin1String(name)).SetValue(v);
        if (!payee.isEmpty()) g.FieldByName(QStringLiteral("ChqGetter")).SetValue(payee);
        g.Post();
        ASSERT_EQ(g.state(), tr::db::Query::State::Browse)
            << session->dialog.last().text.toStdString();
    }

    tr::Services& services() { return session->services; }

    std::unique_ptr<tr::test::TestSession> session;
    std::unique_ptr<ReceivedChequeDocument> doc;
};

}  // namespace tr::cheques::testing
