#include "tool/copy_folder.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/schema.h"
#include "session/data_folder.h"
#include "tool/command.h"
#include "tool/schema_script.h"
#include "tool/scratch_folder.h"
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

/// The rows of one table; how many.
long CopyRows(Database& source, const TableInfo& from, Database& target, const TableInfo& to) {
    std::vector<std::string> names;
    std::vector<std::size_t> places;
    for (const ColumnInfo& column : from.columns) {
        if (const auto place = to.Find(column.name)) {
            names.push_back(column.name);
            places.push_back(*place);
        }
    }
    Recordset rows = source.OpenRecordset(RowsInKeyOrder(from, names), RecordsetType::Snapshot);
    RowWriter writer(target, to, places);
    long count = 0;
    for (; !rows.Eof(); rows.MoveNext(), ++count) {
        writer.Begin();
        for (std::size_t i = 0; i < names.size(); ++i)
            writer.Set(i, rows.Get(i));
        writer.Write();
    }
    if (from.Counter() && to.Counter())
        target.SetNextCounter(to.name, source.NextCounter(from.name));
    return count;
}

CopyCounts CopyTables(Database& source, Database& target, Progress& progress) {
    const Catalogue from = source.Tables();
    const Catalogue to = target.Tables();
    ProgressBar bar(progress, "Copying " + source.Path().filename().string(),
                    static_cast<long>(from.Names().size()));
    const ReadSpan span = source.BeginRead();
    Transaction all = target.BeginTransaction();
    CopyCounts counts;
    for (const std::string& name : from.Names()) {
        try {
            counts.rows += CopyRows(source, *from.Find(name), target, *to.Find(name));
        } catch (const EngineError& error) {
            throw EngineError(error.Number(), name + ": " + error.Description());
        }
        ++counts.tables;
        bar.Advance();
    }
    all.Commit();
    return counts;
}

CopyCounts CopyDatabase(Workspace& workspace, const fs::path& from, const fs::path& to,
                        const std::string& name, Progress& progress) {
    const DatabasePtr source = workspace.OpenDatabase(from, SchemaCheck::Ignored);
    const auto tables = MergedTables(SchemaTables(workspace, name), source->Tables());
    const DatabasePtr target = workspace.CreateDatabase(to, ScriptOf(tables));
    return CopyTables(*source, *target, progress);
}

/// The file of a database, or one that the engine keeps beside it.
bool BelongsTo(const fs::path& file, const std::string& database) {
    static constexpr const char* kBeside[] = {"", "-wal", "-shm", "-journal", ".lck"};
    return std::any_of(std::begin(kBeside), std::end(kBeside), [&](const char* suffix) {
        return EqualsNoCase(file.filename().string(), database + suffix);
    });
}

/// True when a database holds no more than `init` puts into a new one: its Agency row.
bool IsFresh(Workspace& workspace, const fs::path& file) {
    const DatabasePtr database = workspace.OpenDatabase(file, SchemaCheck::Ignored);
    const auto isFresh = [&](const std::string& table) {
        const long most = EqualsNoCase(table, "Agency") ? 1 : 0;
        return database->OpenRecordset(table, RecordsetType::Snapshot).RecordCount() <= most;
    };
    const std::vector<std::string> names = database->Tables().Names();
    return std::all_of(names.begin(), names.end(), isFresh);
}

void RefuseUsedTarget(Workspace& workspace, const fs::path& from, const fs::path& to) {
    if (fs::exists(to) && fs::equivalent(from, to))
        throw Refused("A data folder can't be copied to itself");
    for (const std::string& name : SchemaNames()) {
        const fs::path file = FindNoCase(to, DatabaseFile(name));
        if (fs::exists(file) && !IsFresh(workspace, file))
            throw Refused(file.string() + " holds rows already; name an empty data folder");
    }
}

void MoveInto(const fs::path& made, const fs::path& to) {
    std::vector<fs::path> old;
    for (const fs::directory_entry& entry : fs::directory_iterator(to))
        for (const std::string& name : SchemaNames())
            if (BelongsTo(entry.path(), DatabaseFile(name)))
                old.push_back(entry.path());
    for (const fs::path& file : old)
        fs::remove(file);
    for (const fs::directory_entry& entry : fs::directory_iterator(made))
        fs::rename(entry.path(), to / entry.path().filename());
}

void CopyIni(const fs::path& from, const fs::path& to) {
    const auto content = ReadFile(FindNoCase(from, "KESTRAVA.INI"));
    const fs::path target = FindNoCase(to, "KESTRAVA.INI");
    if (content && !fs::exists(target))
        ReplaceFile(target, *content);
}

}  // namespace

CopyCounts CopyDataFolder(Workspace& workspace, const fs::path& from, const fs::path& to,
                          Progress& progress) {
    RefuseUsedTarget(workspace, from, to);
    fs::create_directories(to);
    CopyCounts counts;
    {
        const ScratchFolder scratch(to);
        for (const std::string& name : SchemaNames()) {
            const CopyCounts added = CopyDatabase(workspace, FindNoCase(from, DatabaseFile(name)),
                                                  scratch.Path() / DatabaseFile(name), name, progress);
            counts.tables += added.tables;
            counts.rows += added.rows;
        }
        MoveInto(scratch.Path(), to);
    }
    CopyIni(from, to);
    return counts;
}

Action PrepareCopy(CLI::App& command) {
    auto to = std::make_shared<std::string>();
    command.add_option("--to", *to, "An empty data folder")->required();
    return [to](Context& context) {
        if (to->find('=') != std::string::npos)
            throw Refused("This program can't copy to a database server");
        const CopyCounts counts = CopyDataFolder(context.session.workspace, context.DataFolder(),
                                                 NativePath(*to), context.session.progress);
        context.Print({{"tables", counts.tables}, {"rows", counts.rows}});
        return 0;
    };
}

}  // namespace kv::tool
