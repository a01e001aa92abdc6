#include "db/pg/pg_catalog_views.h"

#include <QString>

#include "db/pg/kept_temp_tables.h"
#include "db/pg/pg_link.h"

namespace tr::pg {

namespace {

// %1 names the schema: the connection's current one (its search path starts with its book), or
// tempdb. Tables are 'U' and views 'V', as the server's xtype says. %3 is the mark of a ## table
// dropped and kept by its session, which is not there for anyone.
const char kObjects[] =
    "CREATE OR REPLACE VIEW public.tsql_%2sysobjects AS SELECT c.relname::varchar COLLATE tsql AS name, "
    "c.oid::bigint AS id, (CASE c.relkind WHEN 'v' THEN 'V' ELSE 'U' END)::varchar AS xtype, "
    "(CASE c.relkind WHEN 'v' THEN 'V' ELSE 'U' END)::varchar AS type FROM pg_class AS c "
    "WHERE c.relnamespace = to_regnamespace(%1) AND c.relkind IN ('r', 'v', 'p') "
    "AND obj_description(c.oid, 'pg_class') IS DISTINCT FROM '%3'";
const char kColumns[] =
    "CREATE OR REPLACE VIEW public.tsql_%2syscolumns AS SELECT a.attrelid::bigint AS id, "
    "a.attname::varchar COLLATE tsql AS name, a.attnum::integer AS colid, "
    "(CASE WHEN a.atttypmod > 4 THEN a.atttypmod - 4 ELSE a.attlen END)::integer AS length "
    "FROM pg_attribute AS a JOIN pg_class AS c ON c.oid = a.attrelid "
    "WHERE c.relnamespace = to_regnamespace(%1) AND c.relkind IN ('r', 'v', 'p') AND a.attnum > 0 "
    "AND NOT a.attisdropped AND obj_description(c.oid, 'pg_class') IS DISTINCT FROM '%3'";

}  // namespace

void installCatalogViews(PgLink& link) {
    for (const char* view : {kObjects, kColumns}) {
        const QString hidden = QString::fromLatin1(KeptTempTables::kHiddenMark);
        link.run(QString::fromLatin1(view).arg(QStringLiteral("current_schema()"), QString(), hidden));
        link.run(QString::fromLatin1(view).arg(QStringLiteral("'tempdb'"), QStringLiteral("tempdb_"), hidden));
    }
}

}  // namespace tr::pg
