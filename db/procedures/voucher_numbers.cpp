#include "db/procedures/voucher_numbers.h"

#include "common/db/database_error.h"
#include "common/db/query_helpers.h"

namespace tr::procedures {

QVariant nextVoucherNumber(tr::db::Connection& connection, const Args& args) {
    if (!args.empty()) {
        throw tr::db::DatabaseError(QStringLiteral("sp_M_Asnad_GetMaxSanadNo takes no arguments"));
    }
    // Every subsystem of the suite numbers its vouchers from the same sequence, so the maximum is
    // taken over the whole ledger, not only over the treasury's lines.
    return tr::db::firstColumn(connection,
                               QStringLiteral("Select IsNull(Max(SanadNo), 0) + 1 As SanadNo From "
                                              "Asnad"))
        .toLongLong();
}

}  // namespace tr::procedures
