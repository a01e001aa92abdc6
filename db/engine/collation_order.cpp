#include "db/engine/collation_order.h"

#include <sqlite3.h>

#include <QStringList>

#include "common/db/database_error.h"
#include "common/text/tsql_collation.h"
#include "db/engine/sql_identifiers.h"

namespace tr::engine {

namespace {

void run(sqlite3* db, const QString& sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const QString message = QString::fromUtf8(error ? error : sqlite3_errmsg(db));
        sqlite3_free(error);
        throw tr::db::DatabaseError(message, sql);
    }
}

// The first column of every row.
QStringList column(sqlite3* db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw tr::db::DatabaseError(QString::fromUtf8(sqlite3_errmsg(db)), sql);
    QStringList values;
    int step;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW)
        values << QString::fromUtf8(
            reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    if (step != SQLITE_DONE)
        throw tr::db::DatabaseError(QString::fromUtf8(sqlite3_errmsg(db)), sql);
    return values;
}

int stampedOrder(sqlite3* db, const QString& schema) {
    return column(db, QStringLiteral("PRAGMA %1.user_version").arg(quoteIdent(schema)))
        .value(0)
        .toInt();
}

// Named indexes and those behind UNIQUE and PRIMARY KEY constraints alike.
QStringList indexesOnTsqlText(sqlite3* db, const QString& schema) {
    QStringList found;
    const QStringList indexes =
        column(db, QStringLiteral("SELECT name FROM %1.sqlite_master WHERE type = 'index'")
                       .arg(quoteIdent(schema)));
    for (const QString& index : indexes) {
        const QStringList collations = column(
            db, QStringLiteral("SELECT coll FROM pragma_index_xinfo(%1, %2) WHERE key = 1")
                    .arg(QLatin1Char('\'') +
                             QString(index).replace(QLatin1Char('\''), QLatin1String("''")) +
                             QLatin1Char('\''),
                         QLatin1Char('\'') +
                             QString(schema).replace(QLatin1Char('\''), QLatin1String("''")) +
                             QLatin1Char('\'')));
        if (collations.contains(QLatin1String("TSQL"), Qt::CaseInsensitive)) found << index;
    }
    return found;
}

}  // namespace

void bringCollationOrderUpToDate(sqlite3* db, const QString& schema) {
    if (stampedOrder(db, schema) >= tr::text::kTsqlCollationVersion) return;
    const bool own = sqlite3_get_autocommit(db) != 0;
    if (own) run(db, QStringLiteral("BEGIN IMMEDIATE"));
    try {
        // Another connection may have done it while this one waited for the write lock.
        if (stampedOrder(db, schema) < tr::text::kTsqlCollationVersion) {
            for (const QString& index : indexesOnTsqlText(db, schema))
                run(db, QStringLiteral("REINDEX %1.%2").arg(quoteIdent(schema), quoteIdent(index)));
            run(db, QStringLiteral("PRAGMA %1.user_version = %2")
                        .arg(quoteIdent(schema))
                        .arg(tr::text::kTsqlCollationVersion));
        }
        if (own) run(db, QStringLiteral("COMMIT"));
    } catch (...) {
        if (own) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

}  // namespace tr::engine
