#include "tool/copy_folder.h"

#include <algorithm>
#include <functional>
#include <memory>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/schema.h"
#include "session/data_folder.h"
#include "tool/command.h"
#include "tool/copy_target.h"
#include "tool/schema_script.h"
#include "tool/table_rows.h"

namespace kv::tool {
namespace {

namespace fs = std::filesystem;

/// The schema's tables with what the source has beyond them behind.
std::vector<TableInfo> MergedTables(const Catalogue& schema, const Catalogue& source) {
    std::vector<TableInfo> merged;
    for (const std::string& name : schema.Names())
        merged.push_back(*schema.Find(name));
    for (const std::string& name : source.Names()) {
        const TableInfo& table = *source.Find(name);
        const auto known = std::find_if(merged.begin(), merged.end(), [&](const TableInfo& other) {
            return EqualsNoCase(other.name, table.name);
        });
        if (known == merged.end()) {
            merged.push_back(table);
            continue;
        }
        for (const ColumnInfo& column : table.columns)
            if (!known->Find(column.name))
                known->columns.push_back(column);
    }
    return merged;
}

std::string ScriptOf(const std::vector<TableInfo>& tables) {
    std::string script;
    for (const TableInfo& table : tables)
        script += TableScript(table);
    return script;
}

/// What is compared of a table: a sum of hashes does not depend on the order of the rows.
struct TableDigest {
    long rows = 0;
    std::uint64_t sum = 0;
    friend bool operator==(const TableDigest&, const TableDigest&) = default;
};

class DigestedRow {
  public:
    void Add(const Value& value) {
        text_ += static_cast<char>('0' + static_cast<int>(value.Type()));
        text_ += value.Type() == ValueType::Date ? NumberText(StoredSerial(value.ToDate())) : value.ToText();
        text_ += '\0';
    }
    void AddTo(TableDigest& digest) {
        ++digest.rows;
        digest.sum += std::hash<std::string>()(text_);
        text_.clear();
    }

  private:
    std::string text_;
};

/// The columns that both tables have.
struct SharedColumns {
    SharedColumns(const TableInfo& from, const TableInfo& to) {
        for (const ColumnInfo& column : from.columns) {
            if (const auto place = to.Find(column.name)) {
                names.push_back(column.name);
                places.push_back(*place);
            }
        }
    }
    std::vector<std::string> names;
    std::vector<std::size_t> places;  ///< in the target
};

TableDigest CopyRows(Database& source, const TableInfo& from, Database& target, const TableInfo& to,
                     const SharedColumns& shared) {
    Recordset rows = source.OpenRecordset(AllRows(from, shared.names));
    RowWriter writer(target, to, shared.places);
    TableDigest digest;
    DigestedRow row;
    for (; !rows.Eof(); rows.MoveNext()) {
        writer.Begin();
        for (std::size_t i = 0; i < shared.names.size(); ++i) {
            Value value = ConvertToColumn(rows.Get(i), to.columns[shared.places[i]]);
            row.Add(value);
            writer.Set(i, std::move(value));
        }
        writer.Write();
        row.AddTo(digest);
    }
    if (from.Counter() && to.Counter())
        target.SetNextCounter(to.name, source.NextCounter(from.name));
    return digest;
}

TableDigest DigestOf(Database& database, const TableInfo& table, const SharedColumns& shared) {
    Recordset rows = database.OpenRecordset(AllRows(table, shared.names));
    TableDigest digest;
    DigestedRow row;
    for (; !rows.Eof(); rows.MoveNext()) {
        for (std::size_t i = 0; i < shared.names.size(); ++i)
            row.Add(rows.Get(i));
        row.AddTo(digest);
    }
    return digest;
}

/// Copies a table and compares what arrived; how many rows it has.
long CopyTable(Database& source, const TableInfo& from, Database& target, const TableInfo& to) {
    const SharedColumns shared(from, to);
    const TableDigest sent = CopyRows(source, from, target, to, shared);
    const TableDigest arrived = DigestOf(target, to, shared);
    if (sent != arrived)
        throw Refused(
            fmt::format("the copy of {} differs from its source ({} rows of {}); nothing was copied",
                        from.name, arrived.rows, sent.rows));
    return sent.rows;
}

CopyCounts CopyTables(Database& source, Database& target, Progress& progress) {
    const Catalogue from = source.Tables();
    const Catalogue to = target.Tables();
    ProgressBar bar(progress, "Copying " + source.Name(), static_cast<long>(from.Names().size()));
    const ReadSpan span = source.BeginRead();
    Transaction all = target.BeginTransaction();
    CopyCounts counts;
    for (const std::string& name : from.Names()) {
        try {
            counts.rows += CopyTable(source, *from.Find(name), target, *to.Find(name));
        } catch (const EngineError& error) {
            throw EngineError(error.Number(), name + ": " + error.Description());
        }
        ++counts.tables;
        bar.Advance();
    }
    all.Commit();
    target.LearnTables();
    return counts;
}

CopyCounts CopyDatabase(Workspace& workspace, const DatabasePlace& from, const DatabasePlace& to,
                        const std::string& name, Progress& progress) {
    const DatabasePtr source = workspace.OpenDatabase(from, SchemaCheck::Ignored);
    const auto tables = MergedTables(SchemaTables(name), source->Tables());
    const DatabasePtr target = workspace.CreateDatabase(to, ScriptOf(tables));
    return CopyTables(*source, *target, progress);
}

}  // namespace

CopyCounts CopyDataFolder(Workspace& workspace, const fs::path& from, const std::string& to,
                          Progress& progress) {
    const std::unique_ptr<CopyTarget> target = MakeCopyTarget(to, from);
    target->Begin();
    CopyCounts counts;
    for (const std::string& name : SchemaNames()) {
        if (!target->Takes(name))
            continue;
        const CopyCounts added =
            CopyDatabase(workspace, PlaceOf(from, name), target->Scratch(name), name, progress);
        counts.tables += added.tables;
        counts.rows += added.rows;
    }
    target->Finish(from);
    return counts;
}

Action PrepareCopy(CLI::App& command) {
    auto to = std::make_shared<std::string>();
    command.add_option("--to", *to, "An empty data folder, or a database server's connection string")
        ->required();
    return [to](Context& context) {
        const CopyCounts counts =
            CopyDataFolder(context.session.workspace, context.DataFolder(), *to, context.session.progress);
        context.Print({{"tables", counts.tables}, {"rows", counts.rows}});
        return 0;
    };
}

}  // namespace kv::tool
