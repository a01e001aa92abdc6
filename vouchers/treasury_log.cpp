#include "vouchers/treasury_log.h"

#include "common/clock.h"
#include "common/db/query_helpers.h"
#include "common/persian/persian_date.h"

namespace tr::vouchers {

QString optionValue(const QString& options, const QString& key) {
    for (const QString& pair : options.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int equals = pair.indexOf(QLatin1Char('='));
        if (equals < 0) continue;
        if (pair.left(equals).trimmed().compare(key, Qt::CaseInsensitive) == 0) return pair.mid(equals + 1).trimmed();
    }
    return {};
}

QString treasuryOption(tr::db::Connection& connection, const QString& key) {
    const QVariant options = tr::db::firstColumn(connection, QStringLiteral("Select Naghd From Options"));
    return options.isNull() ? QString() : optionValue(options.toString(), key);
}

void logTreasuryAction(tr::db::MyDatabase& db, const tr::Global& g, const LoggedDocument& d, const QString& type) {
    tr::db::Connection& c = *db.Connection;
    tr::db::execute(db, QStringLiteral("Exec sp_Asnad_Actions ") + c.text(d.voucherNo.trimmed()) +
                            QStringLiteral(",'N',") + c.text(d.title) + QStringLiteral(",") +
                            c.text(tr::persian::today()) + QStringLiteral(",") + c.text(g.userName) +
                            QStringLiteral(",") + c.text(type) + QStringLiteral(", ") + c.text(tr::timeText()) +
                            QStringLiteral(",") + c.text(g.computerName) + QStringLiteral(",") + c.text(d.kind) +
                            QStringLiteral(",'' ,'',") + c.text(d.serial.trimmed()));
}

}  // namespace tr::vouchers
