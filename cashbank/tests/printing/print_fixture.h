#pragma once
// The demo company with its document procedures, one logged-in user, and documents saved the way
// the document screens save them (transfer table, then the kind's procedure).
#include <gtest/gtest.h>

#include "common/db/query.h"
#include "common/session/services.h"
#include "db/procedures/tests/procedures_fixture.h"
#include "tests/support/test_session.h"
#include "vouchers/document_kinds.h"

namespace tr::cashbank::testing {

using tr::procedures::testing::accountLine;
using tr::procedures::testing::Header;
using tr::procedures::testing::TransferLine;

class PrintTest : public tr::procedures::testing::ProceduresTest {
  protected:
    void SetUp() override {
        ProceduresTest::SetUp();
        for (const char* sql : {"Delete From Asnad Where TypeSys='N'", "Delete From N_NaghdTrans",
                                "Delete From N_ArzTrans"})
            db().execute(QString::fromUtf8(sql));
        global.sCode = QString::fromUtf8(tr::schema::demo::kCompanyCode);
        global.sYear = QString::fromUtf8(tr::schema::demo::kCurrentYear);
    }

    // Saves document `serial` of a kind ("10", "90", ...) with the treasury object `code`.
    static void saveDocument(const QString& kind, qint64 serial, const QString& code,
                             const std::vector<TransferLine>& lines, Header header = {}) {
        const auto* k = tr::vouchers::findTreasuryDocumentKind(kind);
        ASSERT_NE(k, nullptr);
        const QString table = transferTable(QStringLiteral("PrintTest"));
        fill(table, tr::vouchers::sideColumn(k->gridSide()), lines);
        header.code = code;
        save(k->procedure, table, serial, header);
    }

    static void cancelDocument(const QString& kind, qint64 serial, const QString& code,
                               const QString& date) {
        const auto* k = tr::vouchers::findTreasuryDocumentKind(kind);
        call(k->procedure, QStringLiteral("ABTAL"),
             {transferTable(QStringLiteral("PrintTest")),
              QString::number(serial),
              code,
              {},
              {},
              date,
              {},
              QStringLiteral("admin")});
    }

    tr::test::TestSession session{db()};
    tr::Global& global = session.global;
    tr::test::RecordingMessageDialog& dialog = session.dialog;
    tr::Services& services = session.services;
};

}  // namespace tr::cashbank::testing
