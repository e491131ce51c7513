-- What generated statements call in a server database: the dialect's own dates, formats and conversions, which
-- answer as the program's do. Run as a whole when the schema "kv" has been made, and again by the first seat that
-- brings a newer version of them: who changes one raises the number below. Older seats go on with newer ones.
--
-- version 2
--
-- A number is a double, a serial a date in the store's own form: days since 1899-12-30, the time of day as the
-- fraction. Texts may come with the collation kv.ci, which refuses patterns and searches, so everything that
-- looks into a text says COLLATE "C", or "und-x-icu" where case is folded for all scripts.
--
-- Functions that scans call by the row are single expressions that the planner puts in place of the call. It
-- does so only where a function is no stricter and no steadier than what it is made of: hence the ones that are
-- not STRICT, though they answer Null for Null all the same, and those that write dates are STABLE as to_char is.

-- Text without regard to case, accents counting.
CREATE COLLATION IF NOT EXISTS kv.ci (provider = icu, locale = 'und-u-ks-level2', deterministic = false);

-- Failures. The last three digits of the code tell the engine's error 3nnn. Volatile, so that no planner
-- calls it before its branch is taken.

CREATE OR REPLACE FUNCTION kv.fail(code text) RETURNS text LANGUAGE plpgsql VOLATILE PARALLEL SAFE AS $$
BEGIN
    RAISE EXCEPTION USING ERRCODE = code, MESSAGE = CASE code
        WHEN 'KV163' THEN 'The field is too small to accept the amount of data you attempted to add.'
        ELSE 'Data type conversion error.'
    END;
END $$;

-- Dates.

CREATE OR REPLACE FUNCTION kv.serial(moment timestamp) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN (moment::date - date '1899-12-30')::double precision
       + date_part('epoch', moment::time) / 86400::double precision;

-- To the nearest second, halves away from zero: what is added is the greatest number below a half, which
-- carries every half over and nothing else. Dates outside the years 1 to 9999 become the nearest of them.
CREATE OR REPLACE FUNCTION kv.moment(serial double precision) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
    WHEN serial < -693593 THEN timestamp '0001-01-01 00:00:00'
    WHEN serial > 2958465.99999 THEN timestamp '9999-12-31 23:59:59'
    ELSE timestamp '1899-12-30' + interval '1 second'
         * trunc(serial * 86400 + sign(serial) * 0.49999999999999994::double precision)
END;

CREATE OR REPLACE FUNCTION kv.year(serial double precision) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN date_part('year', kv.moment(serial))::integer;

CREATE OR REPLACE FUNCTION kv.month(serial double precision) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN date_part('month', kv.moment(serial))::integer;

CREATE OR REPLACE FUNCTION kv.day(serial double precision) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN date_part('day', kv.moment(serial))::integer;

-- 1 is Sunday.
CREATE OR REPLACE FUNCTION kv.weekday(serial double precision) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN date_part('dow', kv.moment(serial))::integer + 1;

-- Months and days that the calendar lacks carry over.
CREATE OR REPLACE FUNCTION kv.date_serial(year double precision, month double precision, day double precision)
RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN (date '1900-01-01' + interval '1 month' * (12 * (trunc(year) - 1900) + trunc(month) - 1))::date
       - date '1899-12-30' + trunc(day) - 1;

-- Numbers.

CREATE OR REPLACE FUNCTION kv.round_even(number double precision) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN CASE
    WHEN abs(number) < 9.2e18::double precision THEN round(number)::bigint
    ELSE kv.fail('KV421')::bigint
END;

-- The shortest text that reads back as the number. The server turns to exponents one digit earlier than the
-- program does.
CREATE OR REPLACE FUNCTION kv.number_text(number double precision) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
    WHEN number = 0 THEN '0'
    WHEN abs(number) >= 1e15::double precision AND abs(number) < 1e16::double precision
        THEN number::text::numeric::text
    ELSE number::text
END;

-- A well-formed decimal as a number; Null where no double holds it.
CREATE OR REPLACE FUNCTION kv.read_decimal(plain text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE STRICT AS $$
BEGIN
    IF length(plain) < 300 AND plain COLLATE "C" !~ '[eE]' THEN
        RETURN plain;
    END IF;
    IF plain COLLATE "C" ~ '[eE][+-]?0*[1-9][0-9]{3}' OR abs(plain::numeric) >= 1.797693134862315808e308
        OR (plain::numeric <> 0 AND abs(plain::numeric) < 2.3e-308) THEN
        RETURN NULL;
    END IF;
    RETURN plain;
END $$;

-- The number at the front of a text, blanks passed over, 0 where there is none.
CREATE OR REPLACE FUNCTION kv.val(value text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE STRICT AS $$
BEGIN
    RETURN coalesce(kv.read_decimal(substring(replace(value COLLATE "C", ' ', '')
                                    FROM '^[+-]?(?:[0-9]+[.]?[0-9]*|[.][0-9]+)(?:[eE][+-]?[0-9]+)?')), 0);
END $$;

-- The whole text as a number, Null where it is none: a sign and a $ may stand in front, commas between the
-- digits before the point.
CREATE OR REPLACE FUNCTION kv.parse_number(value text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE STRICT AS $$
DECLARE
    trimmed text COLLATE "C" := btrim(value COLLATE "C", ' ');
    rest text COLLATE "C" := ltrim(trimmed, '$+- ');
    front text COLLATE "C" := left(trimmed, length(trimmed) - length(rest));
    plain text COLLATE "C" := replace(rest, ',', '');
BEGIN
    IF front ~ '[$].*[$]|[+-].*[+-]' OR rest ~ '^,|[.].*,'
        OR plain !~ '^(?:[0-9]+[.]?[0-9]*|[.][0-9]+)(?:[eE][+-]?[0-9]+)?$' THEN
        RETURN NULL;
    END IF;
    RETURN kv.read_decimal(CASE WHEN front ~ '-' THEN '-' ELSE '' END || plain);
END $$;

CREATE OR REPLACE FUNCTION kv.to_number(text) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN coalesce(kv.parse_number($1), kv.fail('KV421')::double precision);

-- Texts.

CREATE OR REPLACE FUNCTION kv.right_text(value text, count double precision) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
    WHEN count < 1 THEN left(value, 0)
    WHEN count > 1e9 THEN value
    ELSE right(value, trunc(count)::integer)
END;

CREATE OR REPLACE FUNCTION kv.ucase(text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN upper($1 COLLATE "und-x-icu");

CREATE OR REPLACE FUNCTION kv.lcase(text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN lower($1 COLLATE "und-x-icu");

-- Dates from and to texts.

-- Reads "YYYY/MM/DD", "YYYY-MM-DD", "MM/DD/YYYY" and "MMM/DD/YYYY", each with or without a time of day behind,
-- and a time alone; Null for any other text and for days that the calendar lacks. The form is tried as a whole
-- and the pieces are cut out afterwards, which is far quicker than having the expression catch them.
CREATE OR REPLACE FUNCTION kv.parse_date(value text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE STRICT AS $$
DECLARE
    plain text COLLATE "C" := btrim(value COLLATE "C", ' ');
    day_text text COLLATE "C" := '';
    pieces text[] COLLATE "C";
    year integer;
    month integer;
    day integer;
    hour integer;
    half text COLLATE "C" := lower(right(plain, 2));
    day_number integer := 0;
BEGIN
    IF plain = '' OR plain !~ ('^(?:[0-9]{4}-[0-9]{1,2}-[0-9]{1,2}|[0-9]{4}/[0-9]{1,2}/[0-9]{1,2}|'
                               '(?:[A-Za-z]+|[0-9]{1,2})/[0-9]{1,2}/[0-9]{4})?'
                               '(?:(?:^| +)[0-9]{1,2}:[0-9]{2}(?::[0-9]{2})? *(?:[AaPp][Mm])?)?$') THEN
        RETURN NULL;
    END IF;

    IF plain ~ '[-/]' THEN
        day_text := split_part(plain, ' ', 1);
        pieces := string_to_array(translate(day_text, '-', '/'), '/');
        IF length(pieces[3]) < 4 THEN
            pieces := ARRAY[pieces[2], pieces[3], pieces[1]];
        END IF;
        year := pieces[3]::integer;
        month := CASE
            WHEN pieces[1] ~ '^[0-9]' THEN pieces[1]::integer
            ELSE array_position('{jan,feb,mar,apr,may,jun,jul,aug,sep,oct,nov,dec}'::text[], lower(pieces[1]))
        END;
        day := pieces[2]::integer;
        IF month IS NULL OR year < 100 OR month NOT BETWEEN 1 AND 12 OR day < 1
            OR day > date_part('day', make_date(year, month, 1) + interval '1 month - 1 day') THEN
            RETURN NULL;
        END IF;
        day_number := make_date(year, month, day) - date '1899-12-30';
        IF day_text = plain THEN
            RETURN day_number;
        END IF;
    END IF;

    pieces := string_to_array(translate(substr(plain, length(day_text) + 1), ' AaPpMm', ''), ':');
    hour := pieces[1]::integer;
    IF half IN ('am', 'pm') THEN
        IF hour NOT BETWEEN 1 AND 12 THEN
            RETURN NULL;
        END IF;
        hour := hour % 12 + CASE half WHEN 'pm' THEN 12 ELSE 0 END;
    END IF;
    IF hour > 23 OR pieces[2] > '59' OR pieces[3] > '59' THEN
        RETURN NULL;
    END IF;
    RETURN day_number + (3600 * hour + 60 * pieces[2]::integer + coalesce(pieces[3], '0')::integer)
                        / 86400::double precision;
END $$;

CREATE OR REPLACE FUNCTION kv.to_date(text) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN coalesce(kv.parse_date($1), kv.fail('KV421')::double precision);

-- The day or the time alone where the other is nought.
CREATE OR REPLACE FUNCTION kv.date_text(serial double precision) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE
RETURN to_char(kv.moment(serial), CASE
    WHEN kv.moment(serial)::date = date '1899-12-30' THEN 'FMHH12:MI:SS AM'
    WHEN kv.moment(serial)::time = time '00:00' THEN 'FMMM/FMDD/YYYY'
    ELSE 'FMMM/FMDD/YYYY FMHH12:MI:SS AM'
END);

-- Formats. One of Null is the empty text.

-- The server's own template of a date pattern: the same for all rows of a statement, so that the planner
-- translates a constant once.
CREATE OR REPLACE FUNCTION kv.date_template(pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE STRICT AS $$
DECLARE
    plain text COLLATE "C" := CASE lower(pattern COLLATE "C")
        WHEN 'medium date' THEN 'DD-MMM-YY'
        WHEN 'medium time' THEN 'HH:NN AM/PM'
        WHEN 'short date' THEN 'M/D/YYYY'
        ELSE pattern
    END;
    halves boolean := plain ~* 'am/pm';
    piece text COLLATE "C";
    letter text COLLATE "C";
    field text COLLATE "C";
    size integer;
    after_hour boolean := false;
    template text := '';
BEGIN
    FOR piece IN SELECT match[1] FROM regexp_matches(plain, '(am/pm|(.)\2*)', 'gi') AS match LOOP
        size := length(piece);
        letter := lower(left(piece, 1));
        IF letter = 'm' AND size <= 2 AND after_hour THEN
            letter := 'n';
        END IF;
        field := CASE letter
            WHEN 'd' THEN CASE size WHEN 1 THEN 'FMDD' WHEN 2 THEN 'DD' WHEN 3 THEN 'Dy' ELSE 'FMDay' END
            WHEN 'm' THEN CASE size WHEN 1 THEN 'FMMM' WHEN 2 THEN 'MM' WHEN 3 THEN 'Mon' ELSE 'FMMonth' END
            WHEN 'y' THEN CASE WHEN size > 2 THEN 'YYYY' ELSE 'YY' END
            WHEN 'h' THEN CASE WHEN halves THEN 'HH12' ELSE 'HH24' END
            WHEN 'n' THEN 'MI'
            WHEN 's' THEN 'SS'
        END;
        IF lower(piece) = 'am/pm' THEN
            template := template || CASE WHEN left(piece, 1) = 'a' THEN 'am' ELSE 'AM' END;
        ELSIF field IS NULL THEN
            template := template || '"' || regexp_replace(piece, '(["\\])', '\\\1', 'g') || '"';
        ELSE
            IF letter IN ('h', 'n', 's') THEN
                field := CASE size WHEN 1 THEN 'FM' ELSE '"' || repeat('0', size - 2) || '"' END || field;
            END IF;
            template := template || field;
            after_hour := letter = 'h';
        END IF;
    END LOOP;
    RETURN template;
END $$;

CREATE OR REPLACE FUNCTION kv.format_date(serial double precision, pattern text) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE
RETURN coalesce(to_char(kv.moment(serial), kv.date_template(pattern)), '');

-- A # shows no needless nought; digits beyond the first place stand in front of it.
CREATE OR REPLACE FUNCTION kv.format_number(number double precision, pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    -- What stands before the digits, the digits, and what stands behind them.
    parts text[] COLLATE "C" := regexp_match(pattern COLLATE "C", '^([^0#.]*)([0#.](?:.*[0#])?)([^0#]*)$');
    whole text COLLATE "C" := split_part(parts[2], '.', 1);
    places text COLLATE "C" := substr(parts[2], length(whole) + 2);
    decimals integer := length(places);
    first_place integer := length(substring(whole FROM '^[^0#]*')) + 1;
    thousands boolean := whole ~ ',';
    units numeric;
    digits text COLLATE "C";
    fraction text COLLATE "C";
    place text COLLATE "C";
    used integer := 0;
    shown text := '';
BEGIN
    IF number IS NULL THEN
        RETURN '';
    END IF;
    IF parts IS NULL OR parts[2] = '.' THEN
        RETURN coalesce(pattern, '');
    END IF;
    IF parts[3] ~ '^[^% ]*%' THEN
        number := number * 100;
    END IF;
    -- The cast keeps the fifteen digits that a double surely holds, so that 1.005 counts as a half.
    units := round(CASE
        WHEN abs(number) < 1e15 THEN (number * 10 ^ decimals)::numeric
        ELSE number::numeric * 10::numeric ^ decimals
    END);
    digits := abs(units)::text;
    digits := lpad(digits, greatest(length(digits), decimals + 1), '0');
    fraction := right(digits, decimals);
    fraction := left(fraction, greatest(length(rtrim(fraction, '0')), length(substring(places FROM '^.*0'))));
    digits := ltrim(left(digits, length(digits) - decimals), '0');

    FOR i IN REVERSE length(whole)..1 LOOP
        place := substr(whole, i, 1);
        IF place NOT IN ('0', '#', ',') THEN
            shown := place || shown;
        END IF;
        WHILE place = '0' OR (place = '#' AND digits <> '') LOOP
            shown := CASE WHEN digits = '' THEN '0' ELSE right(digits, 1) END
                     || CASE WHEN thousands AND used > 0 AND used % 3 = 0 THEN ',' ELSE '' END || shown;
            digits := left(digits, -1);
            used := used + 1;
            place := CASE WHEN i = first_place THEN '#' END;
        END LOOP;
    END LOOP;
    RETURN CASE WHEN units < 0 THEN '-' ELSE '' END || parts[1] || shown
           || CASE WHEN fraction <> '' THEN '.' || fraction ELSE '' END || parts[3];
END $$;

-- Each # takes a character from the right, the first one all that are left.
CREATE OR REPLACE FUNCTION kv.format_text(value text, pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    places text COLLATE "C" := coalesce(pattern, '');
    first_place integer := position('#' IN places);
    place text COLLATE "C";
    rest text := coalesce(value, '');
    shown text := '';
BEGIN
    IF places = '>' THEN
        RETURN upper(rest COLLATE "und-x-icu");
    END IF;
    IF rest COLLATE "C" = '' OR first_place = 0 THEN
        RETURN rest;
    END IF;
    FOR i IN REVERSE length(places)..1 LOOP
        place := substr(places, i, 1);
        IF place <> '#' THEN
            shown := place || shown;
        ELSE
            shown := coalesce(nullif(right(rest COLLATE "C", 1), ''), ' ') || shown;
            rest := left(rest, -1);
        END IF;
        IF i = first_place THEN
            shown := rest || shown;
        END IF;
    END LOOP;
    RETURN shown;
END $$;

-- Patterns of LIKE, as regular expressions for value COLLATE "und-x-icu" ~* kv.like_regex(pattern).

CREATE OR REPLACE FUNCTION kv.regex_escape(piece text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN regexp_replace(piece COLLATE "C", '([\u0021-\u002f\u003a-\u0040\u005b-\u0060\u007b-\u007e])', '\\\1', 'g');

-- One list in its brackets: "[a-z]", "[!a-z]". "[]" stands for nothing at all, "[!]" for the mark itself. A
-- range that runs backwards holds no character.
CREATE OR REPLACE FUNCTION kv.like_list(list text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN (
    SELECT CASE
        WHEN body = '' THEN ''
        WHEN held <> '' THEN CASE WHEN negated THEN '[^' ELSE '[' END || held || ']'
        WHEN negated THEN '.'
        ELSE '\Z.'
    END
    FROM (SELECT list COLLATE "C" ~ '^\[!.+\]$' AS negated) AS kind,
         LATERAL (SELECT substr(list, CASE WHEN negated THEN 3 ELSE 2 END) COLLATE "C" AS tail) AS cut,
         LATERAL (SELECT left(tail, -1) AS body) AS inner_text,
         LATERAL (SELECT coalesce(string_agg(CASE
                             WHEN length(item[1]) = 1 THEN kv.regex_escape(item[1])
                             WHEN left(item[1], 1) COLLATE "C" > right(item[1], 1) THEN ''
                             ELSE kv.regex_escape(left(item[1], 1)) || '-' || kv.regex_escape(right(item[1], 1))
                         END, '' ORDER BY place), '') COLLATE "C" AS held
                  FROM regexp_matches(body, '(.-.|.)', 'g') WITH ORDINALITY AS items (item, place)) AS joined
);

-- Runs at the ends are left open instead, which lets the server search rather than try every beginning.
CREATE OR REPLACE FUNCTION kv.like_regex(pattern text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN (
    SELECT CASE WHEN folded ~ '^\*' THEN '' ELSE '^' END
           || coalesce(string_agg(CASE
                  WHEN piece[1] = '*' THEN '.*'
                  WHEN piece[1] = '?' THEN '.'
                  WHEN piece[1] = '#' THEN '[0-9]'
                  WHEN length(piece[1]) > 1 THEN kv.like_list(piece[1])
                  ELSE kv.regex_escape(piece[1])
              END, '' ORDER BY place), '')
           || CASE WHEN folded ~ '\*$' THEN '' ELSE '$' END
    FROM (SELECT lower(pattern COLLATE "und-x-icu") COLLATE "C" AS folded) AS text
         LEFT JOIN LATERAL regexp_matches(btrim(folded, '*'), '(\[[^]]*\]|.)', 'g')
             WITH ORDINALITY AS pieces (piece, place) ON true
    GROUP BY folded
);

-- Values on their way into a column, one function for each of its types, from numbers and from texts.

CREATE OR REPLACE FUNCTION kv.fit_text(value text, size integer) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN CASE WHEN size > 0 AND length(value) > size THEN kv.fail('KV163') ELSE value END;

CREATE OR REPLACE FUNCTION kv.fit_text(value double precision, size integer) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN kv.fit_text(kv.number_text(value), size);

CREATE OR REPLACE FUNCTION kv.fit_memo(value text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN value;

CREATE OR REPLACE FUNCTION kv.fit_memo(value double precision) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN kv.number_text(value);

CREATE OR REPLACE FUNCTION kv.fit_short(value double precision) RETURNS smallint
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN CASE
    WHEN round(value) BETWEEN -32768 AND 32767 THEN round(value)::smallint
    ELSE kv.fail('KV421')::smallint
END;

CREATE OR REPLACE FUNCTION kv.fit_short(value text) RETURNS smallint
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN kv.fit_short(kv.to_number(value));

CREATE OR REPLACE FUNCTION kv.fit_long(value double precision) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN CASE
    WHEN round(value) BETWEEN -2147483648 AND 2147483647 THEN round(value)::integer
    ELSE kv.fail('KV421')::integer
END;

CREATE OR REPLACE FUNCTION kv.fit_long(value text) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN kv.fit_long(kv.to_number(value));

CREATE OR REPLACE FUNCTION kv.fit_double(value double precision) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN value;

CREATE OR REPLACE FUNCTION kv.fit_double(value text) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN kv.to_number(value);

-- To four decimals, halves away from zero, of the fifteen digits that a double surely holds.
CREATE OR REPLACE FUNCTION kv.fit_currency(value double precision) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN CASE
    WHEN abs(value) < 9.2e14 THEN (round((value * 10000)::numeric) * 0.0001)::numeric(19, 4)
    ELSE kv.fail('KV421')::numeric
END;

CREATE OR REPLACE FUNCTION kv.fit_currency(value text) RETURNS numeric
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN kv.fit_currency(kv.to_number(value));

CREATE OR REPLACE FUNCTION kv.fit_date(value double precision) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN kv.moment(value);

CREATE OR REPLACE FUNCTION kv.fit_date(value text) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE STRICT
RETURN kv.moment(kv.to_date(value));

-- No column of this type knows Null.
CREATE OR REPLACE FUNCTION kv.fit_boolean(value double precision) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN coalesce(value <> 0, false);

CREATE OR REPLACE FUNCTION kv.fit_boolean(value text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
    WHEN value IS NULL OR lower(value COLLATE "C") IN ('false', 'no') THEN false
    WHEN lower(value COLLATE "C") IN ('true', 'yes') THEN true
    ELSE kv.to_number(value) <> 0
END;

-- Counters.

-- Rows came with numbers of their own: the counter goes on above them. It is never set back, whatever other seats
-- take from it meanwhile: those that raise it too come one behind the other; beside them, a short way is gone number
-- by number and a long one at once, for nobody takes so many between the look and the step.
CREATE OR REPLACE FUNCTION kv.raise_counter(counter text, bottom bigint) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    far CONSTANT bigint := 10000;
    turn CONSTANT integer := counter::regclass::oid::bigint % 2147483647;
    last bigint;
BEGIN
    PERFORM pg_advisory_lock(7310, turn);
    last := coalesce(pg_sequence_last_value(counter::regclass), 0);
    IF bottom - last > far THEN
        PERFORM setval(counter, bottom);
    ELSE
        PERFORM nextval(counter) FROM generate_series(last + 1, bottom);
    END IF;
    PERFORM pg_advisory_unlock(7310, turn);
END $$;
