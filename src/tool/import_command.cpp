// import-mdb: Access files into the databases of the data folder.
#include <memory>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "session/data_folder.h"
#include "tool/command.h"
#include "tool/import_file.h"

namespace kv::tool {
namespace {

struct Import {
    std::string database;
    AccessFile file;
    DatabasePtr target;
};

/// The database that the file's name stands for.
std::string DatabaseOf(const std::filesystem::path& file) {
    for (const std::string& name : SharedDatabases())
        if (EqualsNoCase(file.stem().string(), name))
            return name;
    throw Refused(
        fmt::format("'{}' is named for no database: {}", file.string(), Join(SharedDatabases(), ", ")));
}

/// Opens all files and databases, so that nothing is changed where one of them can't be used.
std::vector<Import> OpenAll(const Context& context, const std::vector<std::string>& files) {
    std::vector<Import> imports;
    for (const std::string& name : files) {
        const std::filesystem::path path = NativePath(name);
        const std::string database = DatabaseOf(path);
        for (const Import& other : imports)
            if (other.database == database)
                throw Refused(fmt::format("Two files are named for the database {}", database));
        imports.push_back({database, AccessFile(path), context.OpenDatabase(database)});
        RefuseFilledTables(*imports.back().target, imports.back().file);
    }
    return imports;
}

int ImportMdb(Context& context, const std::vector<std::string>& files) {
    ImportCounts counts;
    for (const Import& import : OpenAll(context, files)) {
        ImportCounts added = ImportFile(*import.target, import.file, context.session.progress);
        counts.tables += added.tables;
        counts.rows += added.rows;
        std::move(added.skipped.begin(), added.skipped.end(), std::back_inserter(counts.skipped));
    }
    context.Print({{"tables", counts.tables}, {"rows", counts.rows}, {"skipped", counts.skipped}});
    return 0;
}

}  // namespace

Action PrepareImportMdb(CLI::App& command) {
    auto files = std::make_shared<std::vector<std::string>>();
    command
        .add_option("FILE", *files, "Access files, each named for its database: kestrava.mdb, main.mdb ...")
        ->required();
    return [files](Context& context) { return ImportMdb(context, *files); };
}

}  // namespace kv::tool
