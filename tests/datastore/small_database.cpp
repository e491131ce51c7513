#include "datastore/small_database.h"

#include "base/format.h"
#include "base/numbers.h"

namespace kv::test {
namespace {

constexpr const char* kScript = R"(
-- People and their visits; the names are words of the language wherever the suite has such names.
CREATE TABLE people (
    client TEXT(10) NOT NULL PRIMARY KEY,
    lastname TEXT(20),
    firstnam TEXT(20) DEFAULT 'unknown',
    phone TEXT(15),
    bdate DATETIME,
    istemplate SHORT DEFAULT 0,
    active YESNO,
    rate CURRENCY DEFAULT 0,
    notes MEMO,
    [group] TEXT(10)
);
CREATE INDEX people_name ON people (lastname, firstnam DESC);
CREATE TABLE visits (
    sequence COUNTER PRIMARY KEY,
    client TEXT(10),
    [date] DATETIME,
    [time] DATETIME,
    [day] TEXT(3),
    [type] TEXT(1) DEFAULT 'A',
    [user] TEXT(10),
    [order] LONG,
    hrs DOUBLE,
    amount CURRENCY,
    cancelled YESNO
);
CREATE INDEX visits_client ON visits (client);
CREATE TABLE slots (
    header_id COUNTER PRIMARY KEY,
    emp_id TEXT(6),
    [day] TEXT(3),
    [0] TEXT(40) DEFAULT '',
    [900] TEXT(40) DEFAULT '',
    [915] TEXT(40) DEFAULT '',
    [0ID] LONG DEFAULT 0,
    [915ID] LONG DEFAULT 0
);
CREATE TABLE [TWO WORDS] (code TEXT(5), description TEXT(30));
CREATE TABLE keyed (a TEXT(3), b LONG, c TEXT(3), CONSTRAINT PrimaryKey PRIMARY KEY (a, b));
CREATE UNIQUE INDEX keyed_c ON keyed (c);
)";

constexpr const char* kRows[] = {
    "insert into people values ('A01', 'Smith', 'Ann', '2125550101', #1950/02/03#, 0, true, 12.5, 'first', "
    "'North')",
    "insert into people values ('A02', 'smythe', 'Bob', '', #1900/05/01#, 0, false, 0, null, 'South')",
    "insert into people values ('A03', 'Jones', 'Carl', null, null, 1, true, 20.25, '', 'north')",
    "insert into people values ('B01', 'ADAMS', 'Dora', '7185550199', #12/31/1970#, null, false, null, 'x', "
    "null)",
    "insert into visits (client, [date], [time], [day], [user], [order], hrs, amount, cancelled) values "
    "('A01', 46023, "
    "#09:00#, 'MON', 'ann', 2, 4, 61.5, false)",
    "insert into visits (client, [date], [time], [day], [user], [order], hrs, amount, cancelled) values "
    "('A01', 46024, "
    "#10:30#, 'TUE', 'bob', 1, 2.5, 40, true)",
    "insert into visits (client, [date], [time], [day], [user], [order], hrs, amount, cancelled) values "
    "('A02', 46030, "
    "#23:15#, 'MON', 'ANN', 3, 8, null, false)",
    "insert into slots (emp_id, [day]) values ('1', 'MON')",
    "insert into [TWO WORDS] values ('x', 'the first')",
};

}  // namespace

SmallDatabase::SmallDatabase() {
    workspace.SetClock([] { return Date::FromCivil(2026, 3, 4, 5, 6, 7); });
    database = workspace.CreateDatabase(Place(), kScript);
    Transaction rows = database->BeginTransaction();
    for (const char* row : kRows)
        database->Execute(row);
    rows.Commit();
}

std::string Shown(const Value& value) {
    switch (value.Type()) {
        case ValueType::Null:
            return "null";
        case ValueType::Boolean:
            return value.ToBoolean() ? "true" : "false";
        case ValueType::Date:
            return FormatDate(value.ToDate(),
                              value.ToDate().SecondOfDay() == 0 ? "#YYYY/MM/DD#" : "#YYYY/MM/DD HH:NN:SS#");
        case ValueType::Text:
            return "'" + value.ToText() + "'";
        case ValueType::Currency:
            return "$" + value.ToText();
        default:
            return value.ToText();
    }
}

std::vector<std::string> RowsOf(Database& database, const std::string& sql) {
    std::vector<std::string> rows;
    for (Recordset set = database.OpenRecordset(sql); !set.Eof(); set.MoveNext()) {
        std::string row;
        for (std::size_t field = 0; field < set.Fields().size(); ++field)
            row += (field > 0 ? " | " : "") + Shown(set.Get(field));
        rows.push_back(row);
    }
    return rows;
}

}  // namespace kv::test
