#include "db/pg/pg_runtime.h"

#include <QString>

#include "db/pg/pg_link.h"

namespace tr::pg {

namespace {

// Arabic and Persian yeh and kaf and letter case are equal, Persian sorts in its own order, and
// blanks count for nothing (ka-shifted with blanks as the only variable characters), so a code
// kept with a leading or trailing blank equals the code, as under the embedded engine's collation.
// Scripts sort as the embedded engine sorts them: digits, Latin, then the scripts before Arabic in
// Unicode, then Persian, then the rest (Persian's own rules would put it before Latin).
//
// tsql_order is the order Order By gives text (see the writer's orderKey): the same, but a blank
// inside a text sorts before any other character, as on the embedded engine ("بانک ملت" before
// "بانکداری"); under tsql a blank weighs nothing, which sorts these two the other way.
const char kCollation[] =
    "DO $$ BEGIN IF NOT EXISTS (SELECT 1 FROM pg_collation WHERE collname = 'tsql') THEN "
    "CREATE COLLATION tsql (provider = icu, "
    "locale = 'fa-u-ks-level1-ka-shifted-kv-space-kr-latn-grek-cyrl-armn-hebr-arab', deterministic = false); "
    "END IF; END $$";
const char kOrderCollation[] =
    "DO $$ BEGIN IF NOT EXISTS (SELECT 1 FROM pg_collation WHERE collname = 'tsql_order') THEN "
    "CREATE COLLATION tsql_order (provider = icu, locale = 'fa-u-ks-level1-kr-latn-grek-cyrl-armn-hebr-arab'); "
    "END IF; END $$";

// A value on its way into a column: text of a Varchar(n) column may lose only blanks past its
// width (compared under "C": the collation would take characters it ignores for none); a number
// must be finite. Integers and decimals pass as they are: through a double they would lose digits.
const char kFitText[] =
    "CREATE OR REPLACE FUNCTION tsql_fit(v text, width integer) RETURNS text LANGUAGE plpgsql "
    "IMMUTABLE AS $$ BEGIN "
    "IF v IS NULL OR width <= 0 OR char_length(v) <= width THEN RETURN v; END IF; "
    "IF rtrim(substr(v, width + 1), ' ') COLLATE \"C\" <> '' THEN "
    "RAISE EXCEPTION 'String or binary data would be truncated.' USING ERRCODE = '22001'; END IF; "
    "RETURN substr(v, 1, width); END $$";
const char kFitNumber[] =
    "CREATE OR REPLACE FUNCTION tsql_fit(v double precision, width integer) RETURNS double "
    "precision LANGUAGE plpgsql IMMUTABLE AS $$ BEGIN "
    "IF v = 'Infinity' OR v = '-Infinity' OR v = 'NaN' THEN "
    "RAISE EXCEPTION 'Arithmetic overflow error converting expression to data type float.' "
    "USING ERRCODE = '22003'; END IF; RETURN v; END $$";
const char kFitDecimal[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_fit(v numeric, width integer) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    IF v IN ('Infinity', '-Infinity', 'NaN') THEN
        RAISE EXCEPTION 'Arithmetic overflow error converting expression to data type float.'
            USING ERRCODE = '22003';
    END IF;
    RETURN v;
END $$)sql";
const char kFitInteger[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_fit(v bigint, width integer) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT v $$)sql";

// ---- text under the collation --------------------------------------------------------------

// The server refuses pattern matching and searching in text of the tsql collation, so every
// helper that searches text folds it itself and searches under "C". Local text variables are
// declared "C" too: they would otherwise take the tsql collation of the arguments.

// Text as the collation compares it, character for character: ASCII letters in lower case,
// Arabic yeh and alef maksura as Persian yeh, Arabic kaf as Persian kaf. Under "C", lower()
// changes ASCII letters only; three replaces take a fifth of the time of one translate(), which
// looks every character up in its list.
const char kFold[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_fold(v text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT replace(replace(replace(lower(v COLLATE "C"), 'ي', 'ی'), 'ى', 'ی'), 'ك', 'ک') $$)sql";

// One character as a regular expression matching only itself (an ASCII sign is escaped).
const char kRegexChar[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_regex_char(c text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN c COLLATE "C" ~ '^[a-zA-Z0-9]$' OR ascii(c) > 127 THEN c ELSE '\' || c END $$)sql";

// A LIKE pattern as an anchored regular expression over folded text: % any run, _ one
// character, [set] [^set] with a-z ranges (a range from high to low holds nothing), `esc`
// making the next character itself. A [ without a later ] (or with ] right after it) is itself,
// and neither the escape nor % and _ mean anything inside a set.
const char kLikeRegex[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like_regex(p text, esc text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    raw text[] COLLATE "C" := string_to_array(p, NULL);
    folded text[] COLLATE "C" := string_to_array(tsql_fold(p), NULL);
    n integer := cardinality(raw);
    closing integer[] := '{}';  -- where the first ] after each character is, 0 for none
    parts text[] := '{}';
    i integer;
    k integer;
    next integer := 0;
    items text COLLATE "C";
    lo text COLLATE "C";
    hi text COLLATE "C";
    negate boolean;
    rest boolean := false;      -- the last part is a %
BEGIN
    IF p IS NULL THEN RETURN NULL; END IF;
    FOR i IN REVERSE n..1 LOOP
        closing[i] := next;
        IF raw[i] = ']' THEN next := i; END IF;
    END LOOP;
    i := 1;
    WHILE i <= n LOOP
        IF raw[i] = esc COLLATE "C" AND i < n THEN
            i := i + 1;
            parts := parts || tsql_regex_char(folded[i]);
        ELSIF raw[i] = '%' THEN
            IF NOT rest THEN parts := parts || '.*'::text; END IF;
            rest := true;
            i := i + 1;
            CONTINUE;
        ELSIF raw[i] = '_' THEN
            parts := parts || '.'::text;
        ELSIF raw[i] = '[' AND closing[i] > i + 1 THEN
            negate := folded[i + 1] = '^';
            k := i + CASE WHEN negate THEN 2 ELSE 1 END;
            items := '';
            WHILE k < closing[i] LOOP
                lo := folded[k];
                IF k + 2 < closing[i] AND folded[k + 1] = '-' THEN
                    hi := folded[k + 2];
                    IF lo <= hi THEN
                        items := items || tsql_regex_char(lo) || '-' || tsql_regex_char(hi);
                    END IF;
                    k := k + 3;
                ELSE
                    items := items || tsql_regex_char(lo);
                    k := k + 1;
                END IF;
            END LOOP;
            parts := parts || CASE WHEN items <> '' THEN CASE WHEN negate THEN '[^' ELSE '[' END || items || ']'
                                   WHEN negate THEN '.' ELSE '(?!)' END;
            i := closing[i];
        ELSE
            parts := parts || tsql_regex_char(folded[i]);
        END IF;
        rest := false;
        i := i + 1;
    END LOOP;
    -- A pattern that starts or ends with % needs no anchor there: the engine then stops at the
    -- first match instead of trying every start.
    IF cardinality(parts) > 0 AND parts[cardinality(parts)] = '.*' THEN
        parts := parts[1:cardinality(parts) - 1];
    ELSE
        parts := parts || '$'::text;
    END IF;
    IF cardinality(parts) > 0 AND parts[1] = '.*' THEN
        RETURN array_to_string(parts[2:], '');
    END IF;
    RETURN '^' || array_to_string(parts, '');
END $$)sql";

// T-SQL LIKE. The call is inlined into the statement, so a constant pattern becomes its regular
// expression once, when the statement is planned.
const char kLike[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like(v text, p text) RETURNS boolean LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT tsql_fold(v) COLLATE "C" ~ tsql_like_regex(p, NULL) $$)sql";
// A pattern without a [set] as a regular expression over the text as it is, matched without
// regard to ASCII case (all "C" folds, as lower() under "C" does): each yeh and kaf stands for
// its kind. Null for a pattern with a set, which is matched on the folded text.
const char kLikeRawRegex[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like_raw_regex(p text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN strpos(p, '[') = 0
            THEN replace(replace(tsql_like_regex(p, NULL) COLLATE "C", 'ی', '[یيى]'), 'ک', '[کك]') END $$)sql";
// LIKE against a pattern already made a regular expression, raw or over folded text: a plan
// kept for any parameters makes them once per run, not once per row, and the raw one spares
// folding every row's text. Each expression is named once, or the server would not inline the
// call (its arguments are subqueries) and would run it as a function for every row.
const char kLikeRegexMatch[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like_rx(v text, raw text, folded text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT coalesce(v COLLATE "C" ~* raw, tsql_fold(v) COLLATE "C" ~ folded) $$)sql";
const char kLikeEscape[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like_escape(e text) RETURNS text LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    IF e IS NULL OR char_length(e) <> 1 THEN
        RAISE EXCEPTION 'The escape of LIKE must be a single character' USING ERRCODE = '22025';
    END IF;
    RETURN e;
END $$)sql";
const char kLikeEscaped[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like(v text, p text, e text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN v IS NOT NULL AND p IS NOT NULL
            THEN tsql_fold(v) COLLATE "C" ~ tsql_like_regex(p, tsql_like_escape(e)) END $$)sql";

// ---- numbers read from text ----------------------------------------------------------------

// The blanks around a number that conversion ignores: ASCII white space and Unicode's spaces.
const char kTrim[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_trim(v text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT btrim(v, E' \t\n\r\f\u000b\u0085\u00a0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200a\u2028\u2029\u202f\u205f\u3000')
$$)sql";

// The number a text holds, or null when it holds none: digits with an optional sign, point and
// exponent, within the range of a double; blank text is 0. Kept exact as numeric, which
// PostgreSQL's round() and the link's reading (as a double) both take.
const char kParseNumber[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_parse_number(v text) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    t text COLLATE "C" := tsql_trim(v);
BEGIN
    IF t = '' THEN RETURN 0; END IF;
    IF t !~ '^[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?$' THEN RETURN NULL; END IF;
    IF t ~ '[eE]' OR char_length(t) > 300 THEN
        BEGIN
            PERFORM t::double precision;
        EXCEPTION WHEN numeric_value_out_of_range THEN
            RETURN NULL;
        END;
    END IF;
    RETURN t::numeric;
END $$)sql";

// Whether a text reads as an integer (of 64 bits) rather than a fraction; blank text does.
const char kIsInteger[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_is_integer(v text) RETURNS boolean LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN tsql_trim(v) COLLATE "C" ~ '^[+-]?[0-9]+$'
            THEN tsql_trim(v)::numeric BETWEEN -9223372036854775808 AND 9223372036854775807
            ELSE tsql_trim(v) COLLATE "C" = '' END $$)sql";

// A value as a number: text is converted (or refused with the server's message), a number is
// itself.
const char kNumText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_num(v text) RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    n numeric := tsql_parse_number(v);
BEGIN
    IF n IS NULL THEN
        RAISE EXCEPTION 'Conversion failed when converting the varchar value ''%'' to data type int.', v
            USING ERRCODE = '22018';
    END IF;
    RETURN n;
END $$)sql";
const char kNumNumber[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_num(v anyelement) RETURNS anyelement LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT v $$)sql";

// Cast(... As Int): text must hold an integer; a fraction is cut toward zero.
const char kIntText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_int(v text) RETURNS bigint LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF NOT tsql_is_integer(v) THEN
        RAISE EXCEPTION 'Conversion failed when converting the varchar value ''%'' to data type int.', v
            USING ERRCODE = '22018';
    END IF;
    RETURN tsql_parse_number(v);
END $$)sql";
const char kIntNumber[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_int(v anyelement) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT trunc(v::numeric)::bigint $$)sql";

// `+` of operands whose types the statement does not tell: two texts join, otherwise both are
// numbers. Numbers keep the type the server gives their sum; text with a number is numeric.
const char kAddTexts[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_add(a text, b text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT a || b $$)sql";
const char kAddNumbers[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_add(a anycompatible, b anycompatible) RETURNS anycompatible
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT a + b $$)sql";
const char kAddTextNumber[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_add(a text, b anycompatible) RETURNS numeric LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN b IS NOT NULL THEN (tsql_num(a) + b)::numeric END $$)sql";
const char kAddNumberText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_add(a anycompatible, b text) RETURNS numeric LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN a IS NOT NULL THEN (a + tsql_num(b))::numeric END $$)sql";

// `/` likewise: two integers (an integer's text counts as one) divide to an integer cut toward
// zero, anything else to a fraction; nothing divides by zero.
const char kDivideNumbers[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_divide(a anycompatible, b anycompatible) RETURNS anycompatible
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF b = 0 THEN RAISE EXCEPTION 'Divide by zero error encountered.' USING ERRCODE = '22012'; END IF;
    RETURN a / b;
END $$)sql";
const char kDivideTexts[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_divide(a text, b text) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    x numeric := tsql_num(a);
    y numeric := tsql_num(b);
BEGIN
    IF y = 0 THEN RAISE EXCEPTION 'Divide by zero error encountered.' USING ERRCODE = '22012'; END IF;
    IF tsql_is_integer(a) AND tsql_is_integer(b) THEN RETURN div(x, y); END IF;
    RETURN x / y;
END $$)sql";
const char kDivideTextNumber[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_divide(a text, b anycompatible) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    x numeric := tsql_num(a);
BEGIN
    IF b = 0 THEN RAISE EXCEPTION 'Divide by zero error encountered.' USING ERRCODE = '22012'; END IF;
    IF tsql_is_integer(a) AND pg_typeof(b) IN ('smallint'::regtype, 'integer'::regtype, 'bigint'::regtype) THEN
        RETURN div(x, b::numeric);
    END IF;
    RETURN x / b;
END $$)sql";
const char kDivideNumberText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_divide(a anycompatible, b text) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    y numeric := tsql_num(b);
BEGIN
    IF y = 0 THEN RAISE EXCEPTION 'Divide by zero error encountered.' USING ERRCODE = '22012'; END IF;
    IF tsql_is_integer(b) AND pg_typeof(a) IN ('smallint'::regtype, 'integer'::regtype, 'bigint'::regtype) THEN
        RETURN div(a::numeric, y);
    END IF;
    RETURN a / y;
END $$)sql";

// ---- numbers as text -----------------------------------------------------------------------

// A double as the embedded engine writes it: a whole number below 10^15 in digits, otherwise
// the shortest digits that read back as the same double, in positional or scientific notation,
// whichever is shorter (positional when both are as long), with an exponent of two digits at
// least. A double that is not finite reads Inf or -Inf.
const char kNumberText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_number_text(v double precision) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    s text COLLATE "C";
    digits text COLLATE "C";
    point integer;  -- the value is 0.<digits> times 10 to this power
    n integer;
    e integer;
    scientific integer;
    positional integer;
    negative boolean;
BEGIN
    IF v = 'Infinity' THEN RETURN 'Inf'; END IF;
    IF v = '-Infinity' OR v = 'NaN' THEN RETURN '-Inf'; END IF;
    IF v = trunc(v) AND abs(v) < 1e15 THEN RETURN trunc(v)::bigint::text; END IF;
    s := v::text;  -- the shortest digits, in the server's own notation
    negative := left(s, 1) = '-';
    IF negative THEN s := substr(s, 2); END IF;
    IF strpos(s, 'e') > 0 THEN
        digits := replace(split_part(s, 'e', 1), '.', '');
        point := split_part(s, 'e', 2)::integer + 1;
    ELSE
        digits := replace(s, '.', '');
        point := strpos(s || '.', '.') - 1 - (char_length(digits) - char_length(ltrim(digits, '0')));
        digits := ltrim(digits, '0');
    END IF;
    digits := rtrim(digits, '0');
    n := char_length(digits);
    e := point - 1;
    scientific := n + (n > 1)::integer + 2 + greatest(2, char_length(abs(e)::text));
    positional := CASE WHEN point <= 0 THEN 2 - point + n WHEN point < n THEN n + 1 ELSE point END;
    IF scientific < positional THEN
        s := left(digits, 1) || CASE WHEN n > 1 THEN '.' || substr(digits, 2) ELSE '' END
             || CASE WHEN e < 0 THEN 'e-' ELSE 'e+' END || lpad(abs(e)::text, 2, '0');
    ELSIF point <= 0 THEN
        s := '0.' || repeat('0', -point) || digits;
    ELSIF point < n THEN
        s := left(digits, point) || '.' || substr(digits, point + 1);
    ELSE
        s := digits || repeat('0', point - n);
    END IF;
    RETURN CASE WHEN negative THEN '-' || s ELSE s END;
END $$)sql";

// Any value as text: numbers with fractions as above (a decimal as the double it is nearest,
// as the embedded engine stores it), anything else in the server's notation.
const char kText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_text(v anyelement) RETURNS text LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
    IF pg_typeof(v) IN ('double precision'::regtype, 'real'::regtype, 'numeric'::regtype) THEN
        RETURN tsql_number_text(v::double precision);
    END IF;
    RETURN v::text;
END $$)sql";

// Whole numbers are written the same in both dialects: plain SQL, which the planner inlines, so a
// key compared as text (Cast(Idx As Varchar(50)) = Document) costs a cast per row, not a call.
const char kTextInteger[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_text(v bigint) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT v::text $$;
CREATE OR REPLACE FUNCTION tsql_text(v integer) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT v::text $$;
CREATE OR REPLACE FUNCTION tsql_text(v smallint) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT v::text $$)sql";

// LIKE of a number: of its text.
const char kLikeValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like(v anyelement, p text) RETURNS boolean LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT tsql_like(tsql_text(v), p) $$)sql";
const char kLikeRegexMatchValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like_rx(v anyelement, raw text, folded text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_like_rx(tsql_text(v), raw, folded) $$)sql";
const char kLikeValueEscaped[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_like(v anyelement, p text, e text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_like(tsql_text(v), p, e) $$)sql";

// Cast(... As Varchar(n)): text is cut to n characters, a number too long for n is *; a length
// of -1 is none.
const char kVarcharText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_varchar(v text, length integer) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN length >= 0 AND char_length(v) > length THEN left(v, length) ELSE v END $$)sql";
const char kVarcharValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_varchar(v anyelement, length integer) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN length >= 0 AND char_length(tsql_text(v)) > length THEN '*' ELSE tsql_text(v) END $$)sql";

// The integer a text names, for finding a row by its key where a statement compares the key's
// text: digits with an optional minus between blanks, else null.
const char kIntkeyText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_intkey(v text) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN btrim(v, ' ') COLLATE "C" ~ '^-?0*[0-9]{1,19}$' THEN
    CASE WHEN btrim(v, ' ')::numeric BETWEEN -9223372036854775808 AND 9223372036854775807
         THEN btrim(v, ' ')::bigint END END $$)sql";
const char kIntkeyInteger[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_intkey(v bigint) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT v $$)sql";

// ---- string functions ----------------------------------------------------------------------

// Substring (and Left): a start before 1 counts the characters before the text; a negative
// length is refused. A null start or length gives null.
const char kSubstring[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_substring(v text, start bigint, length bigint) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    first bigint := greatest(start, 1);
BEGIN
    IF length < 0 THEN
        RAISE EXCEPTION 'Invalid length parameter passed to the substring function.' USING ERRCODE = '22011';
    END IF;
    IF start + length <= first THEN RETURN ''; END IF;
    RETURN substr(v, least(first, 2147483647)::integer, least(start + length - first, 2147483647)::integer);
END $$)sql";
const char kSubstringValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_substring(v anyelement, start bigint, length bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_substring(tsql_text(v), start, length) $$)sql";

// Right: the last characters; a negative count is refused.
const char kRight[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_right(v text, length bigint) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF length < 0 THEN
        RAISE EXCEPTION 'Invalid length parameter passed to the right function.' USING ERRCODE = '22011';
    END IF;
    RETURN right(v, least(length, 2147483647)::integer);
END $$)sql";
const char kRightValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_right(v anyelement, length bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_right(tsql_text(v), length) $$)sql";

// CharIndex under the collation: the first place from `start` (1 when before 1 or null) where
// the needle is, 0 when nowhere or when the needle is empty.
const char kCharindex[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_charindex(needle text, hay text, start bigint) RETURNS bigint
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    first integer := least(greatest(coalesce(start, 1), 1), 2147483647);
    found integer;
BEGIN
    IF needle IS NULL OR hay IS NULL THEN RETURN NULL; END IF;
    IF char_length(needle) = 0 THEN RETURN 0; END IF;
    found := strpos(substr(tsql_fold(hay), first) COLLATE "C", tsql_fold(needle));
    RETURN CASE WHEN found = 0 THEN 0 ELSE found + first - 1 END;
END $$)sql";
const char kCharindexFromStart[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_charindex(needle text, hay text) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_charindex(needle, hay, 1) $$)sql";

// PatIndex: with a leading %, the first place from which the rest of the pattern matches all
// that follows; without, 1 when the whole text matches.
const char kPatindex[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_patindex(pattern text, v text) RETURNS bigint LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN pattern IS NULL OR v IS NULL THEN NULL
            WHEN left(pattern, 1) COLLATE "C" <> '%' THEN CASE WHEN tsql_like(v, pattern) THEN 1 ELSE 0 END
            ELSE regexp_instr(tsql_fold(v) COLLATE "C", substr(tsql_like_regex(substr(pattern, 2), NULL), 2))
       END $$)sql";

// Replace under the collation: each character of the text sought matches any character that
// folds as it does, so the text keeps its own letters where nothing is replaced.
const char kReplaceRegex[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_replace_regex(v text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT string_agg(CASE WHEN c BETWEEN 'a' AND 'z' THEN '[' || c || upper(c) || ']'
                       WHEN c = 'ی' THEN '[یيى]'
                       WHEN c = 'ک' THEN '[کك]'
                       ELSE tsql_regex_char(c) END, '' ORDER BY i)
FROM unnest(string_to_array(tsql_fold(v) COLLATE "C", NULL)) WITH ORDINALITY AS x(c, i) $$)sql";
const char kReplace[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_replace(v text, old text, new text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN old IS NULL OR new IS NULL THEN NULL
            WHEN char_length(old) = 0 THEN v
            ELSE regexp_replace(v COLLATE "C", tsql_replace_regex(old), replace(new COLLATE "C", '\', '\\'), 'g')
       END $$)sql";

// Replicate (and Space): at most 8000 copies; a negative count gives null.
const char kReplicate[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_replicate(v text, n bigint) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN n >= 0 THEN repeat(v, least(n, 8000)::integer) END $$)sql";
const char kReplicateValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_replicate(v anyelement, n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_replicate(tsql_text(v), n) $$)sql";

// ---- numeric functions ---------------------------------------------------------------------

// Round(x, digits[, truncate]): halves away from zero, or cut toward zero when `truncate` is
// not 0; the result has x's type. A double is scaled and rounded as a double, as the embedded
// engine does; an integer or decimal is rounded exactly. Text is read as a number first.
const char kRound[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_round(v anyelement, digits integer, truncate integer) RETURNS anyelement
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    scale double precision;
    x double precision;
BEGIN
    IF pg_typeof(v) IN ('double precision'::regtype, 'real'::regtype) THEN
        scale := power(10::double precision, digits);
        x := v * scale;
        IF truncate = 0 AND abs(x - trunc(x)) >= 0.5 THEN RETURN (trunc(x) + sign(x)) / scale; END IF;
        RETURN trunc(x) / scale;
    END IF;
    IF truncate <> 0 THEN RETURN trunc(v::numeric, digits); END IF;
    RETURN round(v::numeric, digits);
END $$)sql";
const char kRoundText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_round(v text, digits integer, truncate integer) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT tsql_round(tsql_num(v), digits, truncate) $$)sql";

// IsNumeric: 1 for a number, and for text that converts to one (blank text does not).
const char kIsnumericText[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_isnumeric(v text) RETURNS integer LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN char_length(tsql_trim(v)) > 0 AND tsql_parse_number(v) IS NOT NULL THEN 1 ELSE 0 END $$)sql";
const char kIsnumericValue[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_isnumeric(v anyelement) RETURNS integer LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
SELECT CASE WHEN v IS NULL THEN 0 ELSE 1 END $$)sql";

// ---- the session and the catalogue ---------------------------------------------------------

// GetDate(): the statement's start, in the suite's text form of a date and time.
const char kGetdate[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_getdate() RETURNS text LANGUAGE sql STABLE PARALLEL SAFE AS $$
SELECT to_char(statement_timestamp(), 'YYYY-MM-DD HH24:MI:SS.MS') $$)sql";

// A book is a schema: the current one is the current database.
const char kDbName[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_db_name() RETURNS text LANGUAGE sql STABLE AS $$
SELECT current_schema()::text $$)sql";

// The key the session's last insert into an identity column drew, null before any.
const char kScopeIdentity[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_scope_identity() RETURNS bigint LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    RETURN lastval();
EXCEPTION WHEN object_not_in_prerequisite_state THEN
    RETURN NULL;
END $$)sql";

// The table or view a T-SQL name stands for, or null: ##name in tempdb, #name among the
// session's temporary tables, Book..Name and Book.dbo.Name in the book's schema, any other in
// the current one. Names are kept in lower case. The mark is KeptTempTables::kHiddenMark.
const char kRelation[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_relation(name text) RETURNS oid LANGUAGE plpgsql STABLE STRICT AS $$
DECLARE
    parts text[] COLLATE "C" := string_to_array(name, '.');
    object text COLLATE "C" := lower(parts[cardinality(parts)]);
    space oid;
BEGIN
    IF left(object, 2) = '##' THEN
        space := (SELECT oid FROM pg_namespace WHERE nspname = 'tempdb');
    ELSIF left(object, 1) = '#' THEN
        space := pg_my_temp_schema();
    ELSIF cardinality(parts) = 3 AND parts[1] <> '' THEN
        space := (SELECT oid FROM pg_namespace WHERE nspname = lower(parts[1]));
    ELSE
        space := (SELECT oid FROM pg_namespace WHERE nspname = current_schema());
    END IF;
    -- A ## table its session dropped and kept (comment 'tsql:dropped') is no longer there.
    RETURN (SELECT oid FROM pg_class
            WHERE relnamespace = space AND relname = object AND relkind IN ('r', 'p', 'v', 'm', 'f')
              AND obj_description(oid, 'pg_class') IS DISTINCT FROM 'tsql:dropped');
END $$)sql";

const char kObjectId[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_object_id(name text) RETURNS bigint LANGUAGE sql STABLE AS $$
SELECT tsql_relation(name)::bigint $$)sql";

// Col_Length: a column's width in bytes as SQL Server gives it. A varchar without a length is a
// date, which takes 8; a decimal takes 5, 9, 13 or 17 bytes by its precision (18 when not given).
const char kColLength[] = R"sql(
CREATE OR REPLACE FUNCTION tsql_col_length(tbl text, col text) RETURNS bigint LANGUAGE sql STABLE AS $$
SELECT CASE
    WHEN atttypid IN ('varchar'::regtype, 'bpchar'::regtype) THEN CASE WHEN atttypmod >= 4 THEN atttypmod - 4 ELSE 8 END
    WHEN atttypid IN ('bigint'::regtype, 'double precision'::regtype) THEN 8
    WHEN atttypid IN ('integer'::regtype, 'real'::regtype) THEN 4
    WHEN atttypid = 'smallint'::regtype THEN 2
    WHEN atttypid = 'boolean'::regtype THEN 1
    WHEN atttypid = 'numeric'::regtype THEN CASE
        WHEN atttypmod < 4 THEN 9
        WHEN (atttypmod - 4) >> 16 <= 9 THEN 5
        WHEN (atttypmod - 4) >> 16 <= 19 THEN 9
        WHEN (atttypmod - 4) >> 16 <= 28 THEN 13
        ELSE 17 END
    ELSE 16 END
FROM pg_attribute
WHERE attrelid = tsql_relation(tbl) AND attname = lower(col COLLATE "C") AND attnum > 0 AND NOT attisdropped $$)sql";

// A Decimal cast of a floating value rounds it: the server's round() takes numeric only.
const char kRoundDouble[] = R"sql(
CREATE OR REPLACE FUNCTION round(v double precision, places integer) RETURNS double precision
LANGUAGE sql IMMUTABLE AS $$ SELECT pg_catalog.round(v::numeric, places)::double precision $$)sql";

// In order: a function's body names only functions made before it.
const char* const kStatements[] = {
    kCollation, kOrderCollation, kFitText, kFitNumber, kFitDecimal, kFitInteger,
    kFold, kRegexChar, kLikeRegex, kLike, kLikeRawRegex, kLikeRegexMatch, kLikeEscape, kLikeEscaped,
    kTrim, kParseNumber, kIsInteger, kNumText, kNumNumber, kIntText, kIntNumber,
    kAddTexts, kAddNumbers, kAddTextNumber, kAddNumberText,
    kDivideNumbers, kDivideTexts, kDivideTextNumber, kDivideNumberText,
    kNumberText, kText, kTextInteger, kLikeValue, kLikeRegexMatchValue, kLikeValueEscaped, kVarcharText, kVarcharValue,
    kIntkeyText, kIntkeyInteger, kSubstring, kSubstringValue, kRight, kRightValue,
    kCharindex, kCharindexFromStart, kPatindex, kReplaceRegex, kReplace,
    kReplicate, kReplicateValue, kRound, kRoundText, kIsnumericText, kIsnumericValue,
    kGetdate, kDbName, kScopeIdentity, kRelation, kObjectId, kColLength, kRoundDouble,
};

}  // namespace

void installRuntime(PgLink& link) {
    for (const char* sql : kStatements) link.run(QString::fromUtf8(sql));
}

}  // namespace tr::pg
