#pragma once
// The demo company with every procedure registered and no treasury documents, cheques, holds or
// log rows, for the tests of the cheque procedures and screens; and the received-cheque
// document's two work tables made anew under a prefix, as its screen makes them.
#include "common/db/query_helpers.h"
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
};

}  // namespace tr::procedures::testing
