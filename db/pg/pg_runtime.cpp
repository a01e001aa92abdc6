#include "db/pg/pg_runtime.h"

#include "db/pg/pg_link.h"

namespace tr::pg {

namespace {

// Arabic and Persian yeh and kaf and letter case are equal, and Persian sorts in its own order.
const char kCollation[] =
    "DO $$ BEGIN IF NOT EXISTS (SELECT 1 FROM pg_collation WHERE collname = 'tsql') THEN "
    "CREATE COLLATION tsql (provider = icu, locale = 'fa-u-ks-level1', deterministic = false); "
    "END IF; END $$";

// A value on its way into a column: text of a Varchar(n) column may lose only blanks past its
// width; a number must be finite.
const char kFitText[] =
    "CREATE OR REPLACE FUNCTION tsql_fit(v text, width integer) RETURNS text LANGUAGE plpgsql "
    "IMMUTABLE AS $$ BEGIN "
    "IF v IS NULL OR width <= 0 OR char_length(v) <= width THEN RETURN v; END IF; "
    "IF rtrim(substr(v, width + 1), ' ') <> '' THEN "
    "RAISE EXCEPTION 'String or binary data would be truncated.' USING ERRCODE = '22001'; END IF; "
    "RETURN substr(v, 1, width); END $$";
const char kFitNumber[] =
    "CREATE OR REPLACE FUNCTION tsql_fit(v double precision, width integer) RETURNS double "
    "precision LANGUAGE plpgsql IMMUTABLE AS $$ BEGIN "
    "IF v = 'Infinity' OR v = '-Infinity' OR v = 'NaN' THEN "
    "RAISE EXCEPTION 'Arithmetic overflow error converting expression to data type float.' "
    "USING ERRCODE = '22003'; END IF; RETURN v; END $$";

}  // namespace

void installRuntime(PgLink& link) {
    for (const char* sql : {kCollation, kFitText, kFitNumber}) link.run(QString::fromLatin1(sql));
}

}  // namespace tr::pg
