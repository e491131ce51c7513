#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/dialect/statement.h"
#include "datastore/engine/engine_sql.h"

namespace kv {

/// The column that holds the row key: the table's counter, else one that the store adds and never shows.
inline constexpr std::string_view kKeyColumn = "kv_row";
std::string_view KeyColumnOf(const TableInfo& table);

/// Which rows and columns of a query a statement fetches.
struct SelectForm {
    bool keys = false;        ///< the sources' keys first
    std::vector<int> fields;  ///< the query's columns of those places, behind the keys
    enum class Rows {
        All,       ///< what the query selects, in its order
        ByKey,     ///< the row of the keys given, whether the query still selects it or not
        KeyRange,  ///< the rows of a one-table query from one key to another, in the order of keys, likewise
        NextRows,  ///< likewise those behind a key, at most a number given
    };
    Rows rows = Rows::All;
    const dialect::Expression* criteria = nullptr;  ///< a further condition
    bool anyRow = false;                            ///< also rows that the query's own condition leaves out
    bool behindKey = false;                         ///< only keys above the one given, of a one-table query
    int amongKeys = 0;                              ///< only those so many keys given, of a one-table query
    std::optional<long> limit;
    /// The table and its columns that the fields are written to, of a query that gives an INSERT its rows.
    const TableInfo* target = nullptr;
    std::vector<const ColumnInfo*> into;
};

/// Writes bound statements in one engine's language. The base class writes what the engines have in common; a
/// derived one holds what is its own: spellings of functions, text comparison, placeholders.
class Generator {
  public:
    virtual ~Generator() = default;

    EngineSql Select(const dialect::Select& select, const SelectForm& form) const;
    EngineSql CountRows(const dialect::Select& select) const;
    /// The greatest key of a one-table query's table.
    EngineSql LastKey(const dialect::Select& select) const;
    /// `counter`: the counter column that the statement leaves out. The first value given fills it; where a
    /// query gives the rows it is the first of as many consecutive counters.
    EngineSql Insert(const dialect::Insert& insert, const ColumnInfo* counter) const;
    EngineSql Update(const dialect::Update& update) const;
    EngineSql Delete(const dialect::Delete& statement) const;

    // One row, its fields given in the order of `columns`, the key behind them.
    std::string InsertRow(const TableInfo& table, std::span<const std::size_t> columns) const;
    /// With the key behind the fields, of a table whose key is the store's own.
    std::string InsertKeyedRow(const TableInfo& table, std::span<const std::size_t> columns) const;
    std::string UpdateRow(const TableInfo& table, std::span<const std::size_t> columns) const;
    std::string DeleteRow(const TableInfo& table) const;

    static std::string Quoted(std::string_view name);
    static std::vector<int> AllFields(const dialect::Select& select);

    /// A table's or column's name as the engine's statements hold it.
    virtual std::string Name(std::string_view name) const { return Quoted(name); }
    /// The engine fills a counter that an INSERT leaves out. One that a row brings as Null is filled by
    /// either engine, by this one with what NextCounter says.
    virtual bool FillsCounters() const { return false; }

  protected:
    class Writer;

    virtual std::string NextCounter(const TableInfo& /*table*/, const ColumnInfo& /*column*/) const {
        return {};
    }

    /// The placeholder of the value that stands at that place of the list, counted from 1. `type` is what it
    /// is compared or calculated as; Null for one whose column tells.
    virtual std::string Placeholder(std::size_t place, ValueType type) const = 0;
    /// Dates and booleans are types of their own in the engine and no numbers. A column is then turned into
    /// the store's number where it is calculated with (ColumnNumber), and a number into a date where it is
    /// compared with a date column (Moment), so that the column's index serves.
    virtual bool SeparatesTypes() const { return false; }
    virtual std::string ColumnNumber(const std::string& column, ColumnType /*type*/) const { return column; }
    virtual std::string Moment(const std::string& number) const { return number; }
    /// A constant, or a value of an expression, on its way into a column of its own type.
    virtual std::string ColumnConstant(const Value& value) const { return ConstantText(value); }
    /// Nulls come first.
    virtual std::string Ordered(const std::string& value, bool descending) const {
        return descending ? value + " DESC" : value;
    }
    /// Behind the INSERT of one row, so that it gives the row's key.
    virtual std::string ReturningKey(const TableInfo& /*table*/) const { return {}; }
    virtual std::string Divided(const std::string& a, const std::string& b) const {
        return "((" + a + " * 1.0) / " + b + ")";
    }
    virtual std::string FunctionCall(dialect::Function function,
                                     const std::vector<std::string>& arguments) const = 0;
    /// A text expression other than a plain column, so that it compares without regard to case. `ofColumns`:
    /// a text column is part of it.
    virtual std::string CaseBlind(const std::string& text, bool ofColumns) const = 0;
    virtual std::string Like(const std::string& value, const std::string& pattern) const = 0;
    virtual std::string Converted(const std::string& value, ValueType from, ValueType to) const = 0;
    virtual std::string FittedTo(const std::string& value, ColumnType to, int size) const = 0;
    virtual std::string IntegerDivided(const std::string& a, const std::string& b) const = 0;
    virtual std::string Remainder(const std::string& a, const std::string& b) const = 0;
    /// A condition as the number -1 or 0.
    virtual std::string ConditionAsNumber(const std::string& condition) const = 0;
    virtual std::string ConstantText(const Value& value) const = 0;

  private:
    std::string CounterOrNext(const TableInfo& table, const ColumnInfo& column,
                              const std::string& value) const;
    std::string InsertNamed(const TableInfo& table, std::span<const std::size_t> columns,
                            std::string_view more) const;
};

}  // namespace kv
