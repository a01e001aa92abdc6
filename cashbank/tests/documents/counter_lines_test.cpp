// What the counter lines of a saved document carry as counter-party kind: the document's own kind
// stays on its treasury line, so a search lists a document once; and the repair that mends books
// written before, run as the shell runs it.
#include <QFile>

#include "cashbank/search/document_search.h"
#include "cashbank/tests/documents/documents_fixture.h"

namespace tr::cashbank {
namespace {

using testing::DocumentsTest;
using testing::s;
namespace demo = tr::schema::demo;

class CounterLines : public DocumentsTest {
  protected:
    // A receipt of 1,000 in two counter lines, saved through the screen.
    QString saveReceipt() {
        auto receipt = open(ScreenId::CashGet);
        fillHeader(*receipt, 1000);
        EXPECT_TRUE(addLine(*receipt, 600, QStringLiteral("اول")));
        EXPECT_TRUE(addLine(*receipt, 400, QStringLiteral("دوم")));
        EXPECT_TRUE(receipt->cmdOkClick());
        EXPECT_TRUE(ledgerIsConsistent());
        return receipt->header().serial;
    }

    struct Found {
        int documents = 0;
        double documentsTotal = 0;
        double subtotal = 0;
    };
    // The cash search with its boxes as they open, as F5 runs it.
    Found searchCash() {
        DocumentSearch search(admin->services, SearchFamily::Cash);
        EXPECT_TRUE(search.mnuSearchClick());
        Found found;
        tr::db::Query& result = search.result();
        for (result.First(); !result.Eof(); result.Next()) {
            const double amount = result.FieldByName(QStringLiteral("SValue")).AsFloat();
            if (DocumentSearch::isTotalRow(
                    result.FieldByName(QStringLiteral("sOrder")).AsString())) {
                if (result.FieldByName(QStringLiteral("sOrder")).AsString().trimmed() == "X")
                    found.subtotal = amount;
            } else {
                ++found.documents;
                found.documentsTotal += amount;
            }
        }
        return found;
    }

    static QString repairStatement() {
        QFile file(QStringLiteral(TR_REPAIRS_DIR "/counter-line-kinds.sql"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        return QString::fromUtf8(file.readAll());
    }
};

TEST_F(CounterLines, AReceiptInTwoLinesIsListedOnceForItsAmount) {
    const QString serial = saveReceipt();
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '10' And WhatDoc2 = "
                                  "'10'")),
              1);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys = 'N' And WhatDoc2 = '00'")),
              2);
    const Found found = searchCash();
    EXPECT_EQ(found.documents, 1);
    EXPECT_DOUBLE_EQ(found.documentsTotal, 1000);
    EXPECT_DOUBLE_EQ(found.subtotal, 1000);

    // Cancelled, it is still one document, and the cancellation check still finds it.
    auto receipt = open(ScreenId::CashGet);
    receipt->setSerial(serial);
    ASSERT_TRUE(receipt->serialLeave());
    admin->dialog.answerYes();
    ASSERT_TRUE(receipt->cmdAbtalClick());
    EXPECT_TRUE(receipt->cancelled());
    EXPECT_EQ(searchCash().documents, 2);  // the receipt and its cancellation line
    EXPECT_DOUBLE_EQ(searchCash().subtotal, 0);
    EXPECT_TRUE(ledgerIsConsistent());
}

TEST_F(CounterLines, TheRepairMendsABookWrittenWithTheDocumentsKindOnEveryLine) {
    saveReceipt();
    auto payment = open(ScreenId::CashPay);
    fillHeader(*payment, 300);
    ASSERT_TRUE(addLine(*payment, 300));
    ASSERT_TRUE(payment->cmdOkClick());
    // As earlier versions wrote it.
    company().execute(QStringLiteral("Update N_NaghdTrans Set WhatDoc2 = WhatDoc"));
    company().execute(QStringLiteral("Update Asnad Set WhatDoc2 = WhatDoc Where TypeSys = 'N'"));
    const Found before = searchCash();
    ASSERT_EQ(before.documents, 5);  // three rows for the receipt, two for the payment

    company().execute(repairStatement());
    const Found after = searchCash();
    EXPECT_EQ(after.documents, 2);
    EXPECT_DOUBLE_EQ(after.documentsTotal, 1300);
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc2 = '00'")), 3);
    EXPECT_EQ(rows(QStringLiteral("Select * From Asnad Where TypeSys = 'N' And WhatDoc2 = '00'")),
              3);
    // A second run finds nothing left to mend.
    company().execute(repairStatement());
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc2 = '00'")), 3);
    EXPECT_TRUE(ledgerIsConsistent());

    // A document of the old book opened and saved again keeps the rule.
    company().execute(QStringLiteral("Update N_NaghdTrans Set WhatDoc2 = WhatDoc"));
    auto receipt = open(ScreenId::CashGet);
    receipt->setSerial(QStringLiteral("1"));
    ASSERT_TRUE(receipt->serialLeave());
    ASSERT_TRUE(receipt->cmdOkClick());
    EXPECT_EQ(rows(QStringLiteral("Select * From N_NaghdTrans Where WhatDoc = '10' And WhatDoc2 = "
                                  "'10'")),
              1);
}

}  // namespace
}  // namespace tr::cashbank
