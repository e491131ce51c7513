// load and dump: tables as CSV.
#include <memory>
#include <ostream>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "tool/cells.h"
#include "tool/command.h"
#include "tool/table_rows.h"

namespace kv::tool {
namespace {

struct LoadOptions {
    std::string table, file, database;
    bool replace = false;
};

struct DumpOptions {
    std::string table, database;
};

/// The columns that the first row names, by their places in the table.
std::vector<std::size_t> ReadHeader(CsvReader& reader, const TableInfo& table) {
    const auto names = reader.Next();
    if (!names)
        throw Refused("The file has no row of column names");
    std::vector<std::size_t> columns;
    for (const CsvCell& name : *names) {
        const auto place = table.Find(Trim(name.value_or("")));
        if (!place)
            throw Refused(fmt::format("{} has no column \"{}\"", table.name, name.value_or("")));
        if (std::find(columns.begin(), columns.end(), *place) != columns.end())
            throw Refused(fmt::format("The column {} is named twice", *name));
        columns.push_back(*place);
    }
    return columns;
}

std::string Shown(const CsvCell& cell) {
    constexpr std::size_t kShownLength = 60;
    if (!cell)
        return "Null";
    return Length(*cell) > kShownLength ? '"' + Left(*cell, kShownLength) + "...\"" : '"' + *cell + '"';
}

/// Adds the rows of a file to a table, each fault with its place.
class Loader {
  public:
    Loader(Database& database, const TableInfo& table, std::string_view text)
        : table_(table),
          reader_(text),
          columns_(ReadHeader(reader_, table)),
          writer_(database, table, columns_) {}

    long Run() {
        while (const auto row = reader_.Next()) {
            ++count_;
            AddRow(*row);
        }
        return count_;
    }

  private:
    std::string RowPlace() const { return fmt::format("row {} (line {})", count_, reader_.Line()); }

    void AddRow(const CsvRow& row) {
        if (row.size() != columns_.size())
            throw Refused(
                fmt::format("{}: {} cells for {} columns", RowPlace(), row.size(), columns_.size()));
        writer_.Begin();
        for (std::size_t i = 0; i < row.size(); ++i)
            SetCell(i, row[i]);
        try {
            writer_.Write();
        } catch (const EngineError& error) {
            throw EngineError(error.Number(), RowPlace() + ": " + error.Description());
        }
    }

    void SetCell(std::size_t i, const CsvCell& cell) {
        const ColumnInfo& column = table_.columns[columns_[i]];
        const auto place = [&] {
            return fmt::format("{}, column {}, value {}", RowPlace(), column.name, Shown(cell));
        };
        try {
            writer_.Set(i, ReadCell(cell, column));
        } catch (const CellError& error) {
            throw Refused(place() + ": " + error.what());
        } catch (const EngineError& error) {
            throw EngineError(error.Number(), place() + ": " + error.Description());
        }
    }

    const TableInfo& table_;
    CsvReader reader_;
    std::vector<std::size_t> columns_;
    RowWriter writer_;
    long count_ = 0;
};

int Load(Context& context, const LoadOptions& options) {
    const auto content = ReadFile(NativePath(options.file));
    if (!content)
        throw Refused("The file " + options.file + " can't be read");
    const std::string text = ToUtf8(*content);
    const DatabasePtr database = context.OpenDatabase(options.database);
    const TableInfo table = FindTable(*database, options.table);
    Transaction all = database->BeginTransaction();
    if (options.replace)
        database->Execute("delete * from " + Bracketed(table.name));
    const long rows = Loader(*database, table, text).Run();
    all.Commit();
    database->LearnTables();
    context.Print({{"table", table.name}, {"rows", rows}});
    return 0;
}

int Dump(Context& context, const DumpOptions& options) {
    const DatabasePtr database = context.OpenDatabase(options.database);
    const TableInfo table = FindTable(*database, options.table);
    CsvRow row;
    for (const ColumnInfo& column : table.columns)
        row.push_back(column.name);
    const ReadSpan span = database->BeginRead();
    Recordset rows = database->OpenRecordset(RowsInKeyOrder(table), RecordsetType::Snapshot);
    context.out << CsvLine(row);
    for (; !rows.Eof(); rows.MoveNext()) {
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = WriteCell(rows.Get(i));
        context.out << CsvLine(row);
    }
    return 0;
}

}  // namespace

Action PrepareLoad(CLI::App& command) {
    auto options = std::make_shared<LoadOptions>();
    command.add_option("TABLE", options->table, "The table to add to")->required();
    command.add_option("FILE", options->file, "A CSV file, UTF-8, its first row the column names")
        ->required();
    AddDatabaseOption(command, options->database);
    command.add_flag("--replace", options->replace, "Empty the table first");
    return [options](Context& context) { return Load(context, *options); };
}

Action PrepareDump(CLI::App& command) {
    auto options = std::make_shared<DumpOptions>();
    command.add_option("TABLE", options->table, "The table to write")->required();
    AddDatabaseOption(command, options->database);
    return [options](Context& context) { return Dump(context, *options); };
}

}  // namespace kv::tool
