#include "tool/import_file.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "base/text.h"
#include "tool/schema_script.h"
#include "tool/table_rows.h"

namespace kv::tool {
namespace {

long CountRows(Database& database, const std::string& table) {
    return database.Lookup("select count(*) from " + Bracketed(table)).ToInteger();
}

/// False for a name that no statement can hold; only a damaged file has such.
bool IsUsableName(const std::string& name) {
    constexpr std::size_t kLongest = 64;
    const auto unusable = [](unsigned char letter) { return letter < ' ' || letter == '[' || letter == ']'; };
    return !Trim(name).empty() && Length(name) <= kLongest &&
           std::none_of(name.begin(), name.end(), unusable);
}

/// True for the faults of a single row; with any other the import can't go on.
bool IsRowFault(const EngineError& error) {
    static constexpr int kFaults[] = {engine_error::kDuplicateKey,     engine_error::kRequiredField,
                                      engine_error::kFieldTooSmall,    engine_error::kTypeConversion,
                                      engine_error::kInvalidUseOfNull, engine_error::kTypeMismatch};
    return std::find(std::begin(kFaults), std::end(kFaults), error.Number()) != std::end(kFaults);
}

/// The table's columns with those behind that only the file has.
TableInfo WithMoreColumns(TableInfo table, const TableInfo& file) {
    for (ColumnInfo column : file.columns) {
        if (table.Find(column.name))
            continue;
        column.counter = column.counter && !table.Counter();
        table.columns.push_back(std::move(column));
    }
    return table;
}

bool HasIndex(const TableInfo& table, const std::string& name) {
    return std::any_of(table.indexes.begin(), table.indexes.end(),
                       [&](const IndexInfo& index) { return EqualsNoCase(index.name, name); });
}

/// Brings one table over; what is left behind is told in lines without the table's name.
class TableImport {
  public:
    TableImport(Database& target, AccessTable& source, std::vector<std::string>& skipped)
        : target_(target), source_(source), skipped_(skipped), file_(Usable(source.Info())) {
        for (const std::string& line : source.Untaken())
            skipped_.push_back(line);
    }

    /// How many rows came over. Throws AccessError when the table as a whole can't be kept.
    long Run() {
        const TableInfo* found = target_.Tables().Find(file_.name);
        if (!found)
            return FillNew();
        const TableInfo known = *found;
        table_ = WithMoreColumns(known, file_);
        const auto before = ReadRows(known);
        if (table_.columns.size() > known.columns.size()) {
            target_.Execute("drop table " + Bracketed(table_.name));
            CreateTable(table_);
        } else if (!before.empty()) {
            target_.Execute("delete * from " + Bracketed(table_.name));
        }
        const long added = AddRows();
        if (added == 0)
            PutBack(before);
        return added;
    }

  private:
    TableInfo Usable(TableInfo table) {
        const auto unusable = [&](const ColumnInfo& column) {
            if (IsUsableName(column.name))
                return false;
            skipped_.push_back("column " + column.name + ": its name can't be kept");
            return true;
        };
        table.columns.erase(std::remove_if(table.columns.begin(), table.columns.end(), unusable),
                            table.columns.end());
        const std::vector<IndexInfo> indexes = std::move(table.indexes);
        table.indexes.clear();
        for (const IndexInfo& index : indexes) {
            const bool lacksColumn = std::any_of(index.columns.begin(), index.columns.end(),
                                                 [&](const auto& name) { return !table.Find(name); });
            if (IsUsableName(index.name) && !lacksColumn && !HasIndex(table, index.name))
                table.indexes.push_back(index);
        }
        return table;
    }

    long FillNew() {
        if (file_.columns.empty())
            throw AccessError("none of its columns can be kept");
        try {
            CreateTable(file_);
        } catch (const EngineError& error) {
            throw AccessError("it can't be made here: " + error.Description());
        }
        return AddRows();
    }

    void CreateTable(const TableInfo& table) {
        for (const std::string& statement : TableStatements(table))
            target_.Execute(statement);
        table_ = FindTable(target_, table.name);
    }

    std::vector<std::vector<Value>> ReadRows(const TableInfo& table) {
        std::vector<std::vector<Value>> rows;
        Recordset open = target_.OpenRecordset(table.name, RecordsetType::Snapshot);
        for (; !open.Eof(); open.MoveNext()) {
            std::vector<Value>& row = rows.emplace_back();
            for (std::size_t i = 0; i < table.columns.size(); ++i)
                row.push_back(open.Get(i));
        }
        return rows;
    }

    void PutBack(const std::vector<std::vector<Value>>& rows) {
        for (const std::vector<Value>& row : rows) {
            std::vector<std::size_t> places(row.size());
            for (std::size_t i = 0; i < places.size(); ++i)
                places[i] = i;  // the columns that were added stand behind
            RowWriter writer(target_, table_, places);
            writer.Begin();
            for (std::size_t i = 0; i < row.size(); ++i)
                writer.Set(i, row[i]);
            writer.Write();
        }
    }

    long AddRows() {
        std::vector<std::size_t> places;
        std::vector<std::size_t> taken;  // the places in the file's rows
        for (std::size_t i = 0; i < source_.Info().columns.size(); ++i) {
            if (const auto place = table_.Find(source_.Info().columns[i].name)) {
                places.push_back(*place);
                taken.push_back(i);
            }
        }
        RowWriter writer(target_, table_, places);
        std::vector<Value> values;
        long added = 0;
        for (row_ = 1;; ++row_) {
            try {
                if (!source_.Next(values))
                    break;
            } catch (const AccessError& error) {
                const bool inside = StartsWithNoCase(error.what(), "column ");
                skipped_.push_back(fmt::format("row {}{} {}", row_, inside ? "," : ":", error.what()));
                continue;
            }
            added += AddRow(writer, places, taken, values) ? 1 : 0;
        }
        if (const long lost = source_.StatedRows() - (row_ - 1); lost > 0)
            skipped_.push_back(
                fmt::format("{} of its {} rows can't be found: it is damaged", lost, source_.StatedRows()));
        SetCounter();
        return added;
    }

    /// Rows that bring numbers of their own leave some behind them that were handed out for nothing.
    void SetCounter() {
        const auto counter = table_.Counter();
        if (!counter)
            return;
        const std::string column = Bracketed(table_.columns[*counter].name);
        const Value last = target_.Lookup("select max(" + column + ") from " + Bracketed(table_.name));
        target_.SetNextCounter(table_.name,
                               std::max<std::int64_t>(last.IsNull() ? 0 : last.ToInteger(), 0) + 1);
    }

    bool AddRow(RowWriter& writer, const std::vector<std::size_t>& places,
                const std::vector<std::size_t>& taken, const std::vector<Value>& values) {
        writer.Begin();
        for (std::size_t i = 0; i < places.size(); ++i) {
            const ColumnInfo& column = table_.columns[places[i]];
            const Value value = AsKept(values[taken[i]], column);
            const auto refuse = [&](const std::string& words) {
                skipped_.push_back(fmt::format("{}, column {}: {}", RowWords(values), column.name, words));
                return false;
            };
            if (LosesDecimals(value, column))
                return refuse(value.ToText() + " is no whole number");
            try {
                writer.Set(i, value);
            } catch (const EngineError& error) {
                return refuse(error.Description());
            }
        }
        try {
            writer.Write();
        } catch (const EngineError& error) {
            if (!IsRowFault(error))
                throw;
            skipped_.push_back(fmt::format("{}: {}", RowWords(values), error.Description()));
            return false;
        }
        return true;
    }

    /// The programs write 1 for true into a column of numbers, where the file's own true would become -1.
    static Value AsKept(const Value& value, const ColumnInfo& column) {
        const bool isNumber = column.type == ColumnType::Short || column.type == ColumnType::Long ||
                              column.type == ColumnType::Double || column.type == ColumnType::Currency;
        return isNumber && value.Type() == ValueType::Boolean ? Value(value.IsTrue() ? 1 : 0) : value;
    }

    static bool LosesDecimals(const Value& value, const ColumnInfo& column) {
        const bool whole = column.type == ColumnType::Short || column.type == ColumnType::Long;
        const bool broken = value.Type() == ValueType::Double || value.Type() == ValueType::Currency;
        return whole && broken && value.ToDouble() != std::floor(value.ToDouble());
    }

    /// "row 17 (CLIENT 00017)".
    std::string RowWords(const std::vector<Value>& values) const {
        constexpr std::size_t kShown = 60;
        std::vector<std::string> keys;
        for (const IndexInfo& index : table_.indexes)
            for (const std::string& column : index.primary ? index.columns : std::vector<std::string>())
                if (const auto place = source_.Info().Find(column); place && !IsBlank(values[*place]))
                    keys.push_back(column + " " + Left(values[*place].ToText(), kShown));
        return fmt::format("row {}", row_) + (keys.empty() ? "" : " (" + Join(keys, ", ") + ")");
    }

    Database& target_;
    AccessTable& source_;
    std::vector<std::string>& skipped_;
    TableInfo file_;
    TableInfo table_;
    long row_ = 0;
};

/// One table with what goes wrong told in `skipped`; the rows that came over, or nothing where none could.
std::optional<long> ImportTable(Database& target, const AccessFile& file, const std::string& name,
                                std::vector<std::string>& skipped) {
    std::vector<std::string> lines;
    std::optional<long> rows;
    try {
        if (!IsUsableName(name))
            throw AccessError("its name can't be kept");
        AccessTable source = file.OpenTable(name);
        rows = TableImport(target, source, lines).Run();
    } catch (const AccessError& error) {
        lines.emplace_back(error.what());
    } catch (const EngineError& error) {
        throw EngineError(error.Number(), fmt::format("{}, table {}: {}", file.Path().filename().string(),
                                                      name, error.Description()));
    }
    for (const std::string& line : lines) {
        // A line about a column or row goes on after the table's name, one about the table as a whole behind
        // it.
        const bool inside = StartsWithNoCase(line, "column ") || StartsWithNoCase(line, "row ");
        skipped.push_back(fmt::format("table {}{} {}", name, inside ? "," : ":", line));
    }
    return rows;
}

}  // namespace

void RefuseFilledTables(Database& target, const AccessFile& file) {
    for (const std::string& name : file.TableNames()) {
        const TableInfo* table = target.Tables().Find(name);
        const long most = EqualsNoCase(name, "Agency") ? 1 : 0;
        if (table && CountRows(target, table->name) > most)
            throw Refused(fmt::format("The table {} of {} holds rows already; import into a new data folder",
                                      table->name, target.Name()));
    }
}

ImportCounts ImportFile(Database& target, const AccessFile& file, Progress& progress) {
    const std::string fileName = file.Path().filename().string();
    ImportCounts counts;
    std::vector<std::string> skipped = file.Untaken();
    std::vector<std::string> done;
    ProgressBar bar(progress, "Reading " + fileName, static_cast<long>(file.TableNames().size()));
    Transaction all = target.BeginTransaction();
    for (const std::string& name : file.TableNames()) {
        if (std::find(done.begin(), done.end(), Lower(name)) != done.end()) {
            skipped.push_back(fmt::format("table {}: the file has another of this name", name));
            continue;
        }
        done.push_back(Lower(name));
        if (const auto rows = ImportTable(target, file, name, skipped)) {
            ++counts.tables;
            counts.rows += *rows;
        }
        bar.Advance();
    }
    all.Commit();
    target.LearnTables();
    for (const std::string& line : skipped)
        counts.skipped.push_back(fmt::format("{}: {}", fileName, line));
    return counts;
}

}  // namespace kv::tool
