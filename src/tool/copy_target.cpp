#include "tool/copy_target.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/connection_text.h"
#include "datastore/replacing.h"
#include "datastore/schema.h"
#include "session/data_folder.h"
#include "session/ini_file.h"
#include "session/ini_text.h"
#include "tool/command.h"
#include "tool/scratch_folder.h"

namespace kv::tool {
namespace {

namespace fs = std::filesystem;

/// A table may hold what `init` makes and nothing else.
void RefuseRows(const std::string& database, const std::string& table, long rows) {
    const long most = EqualsNoCase(table, "Agency") ? 1 : 0;
    if (rows > most)
        throw Refused(fmt::format(
            "'{}' holds rows already, in the table {}; name an empty data folder or database server",
            database, table));
}

class FolderTarget final : public CopyTarget {
  public:
    explicit FolderTarget(fs::path to) : to_(std::move(to)) {}

    void Begin() override {
        if (!ServerOf(to_).empty())
            throw Refused(to_.string() + " works on a database server; name another folder, or the server");
        Look(HeldFiles(Present()));
        fs::create_directories(to_);
        scratch_.emplace(to_);
        if (scratch_->ClearBeside())
            throw Refused("Another copy to " + to_.string() + " is under way. Please wait for its end");
    }
    bool Takes(const std::string& /*name*/) const override { return true; }
    DatabasePlace Scratch(const std::string& name) const override {
        return scratch_->Path() / DatabaseFile(name);
    }

    void Finish(const fs::path& from) override {
        HeldFiles held(Present());
        Look(held);
        CopyIni(from);
        ReplaceFile(CopyMark(to_), "A copy is being put in its place here.\n");
        held.Drop();
        for (const std::string& name : MovingOrder()) {
            Workspace::DropDatabase(FileOf(name));  // what may lie beside a file that is not there
            MoveIn(name);
        }
        fs::remove(CopyMark(to_));
        scratch_.reset();
    }

  private:
    fs::path FileOf(const std::string& name) const { return FindNoCase(to_, DatabaseFile(name)); }

    static std::vector<std::string> MovingOrder() {
        std::vector<std::string> names = SchemaNames();
        std::stable_partition(names.begin(), names.end(),
                              [](const auto& name) { return name != kLastMoved; });
        return names;
    }

    /// The files that are there, the one that is moved last in front.
    std::vector<fs::path> Present() const {
        std::vector<fs::path> files;
        for (const std::string& name : MovingOrder())
            if (const fs::path file = FileOf(name); fs::exists(file))
                files.insert(files.begin(), file);
        return files;
    }

    void Look(const HeldFiles& files) const {
        // What stands there of a broken copy comes from the source.
        if (!HoldsBrokenCopy(to_))
            files.Look(RefuseRows);
    }

    /// The file goes last, so that it never stands there without what belongs to it.
    void MoveIn(const std::string& name) const {
        const std::string file = DatabaseFile(name);
        for (const char* beside : {"-wal", "-shm", "-journal", ""}) {
            const fs::path made = scratch_->Path() / (file + beside);
            if (fs::exists(made))
                fs::rename(made, to_ / made.filename());
        }
    }

    /// A road copy works on its own files, not on the server that the office's INI file names.
    void CopyIni(const fs::path& from) const {
        const auto content = ReadFile(IniOf(from).File());
        const fs::path target = IniOf(to_).File();
        if (!content || fs::exists(target))
            return;
        IniText text(*content);
        if (text.Get("Database", "Server"))
            text.Remove("Database", "Server");
        ReplaceFile(target, text.ToText());
    }

    fs::path to_;
    std::optional<ScratchFolder> scratch_;
};

class ServerTarget final : public CopyTarget {
  public:
    explicit ServerTarget(std::string server) : server_(std::move(server)) {}
    ~ServerTarget() override {
        try {
            DropScratch();
        } catch (const EngineError&) {
            // What is left there is taken away by the next copy.
        }
    }

    void Begin() override {
        turn_.emplace(server_);
        turn_->Try(SharedDatabases(), RefuseRows);
        DropScratch();
    }
    bool Takes(const std::string& name) const override {
        const std::vector<std::string>& shared = SharedDatabases();
        return std::find(shared.begin(), shared.end(), name) != shared.end();
    }
    DatabasePlace Scratch(const std::string& name) const override { return {server_, ScratchName(name)}; }

    void Finish(const fs::path& /*from*/) override {
        std::vector<std::pair<std::string, std::string>> moves;
        for (const std::string& name : SharedDatabases())
            moves.emplace_back(ScratchName(name), name);
        turn_->Move(moves, RefuseRows);
        turn_.reset();
    }

  private:
    static std::string ScratchName(const std::string& name) { return "kv_copy_" + name; }

    void DropScratch() const {
        for (const std::string& name : SharedDatabases())
            if (turn_)
                Workspace::DropDatabase(Scratch(name));
    }

    std::string server_;
    std::optional<ServerTurn> turn_;  ///< held while the scratch databases may be there
};

/// A folder's name may look like a connection string.
bool IsServer(const std::string& to) {
    const bool address = to.find("://") != std::string::npos;
    if ((!address && to.find('=') == std::string::npos) || fs::is_directory(NativePath(to)))
        return false;
    const ConnectionText read = ReadConnectionText(to);
    const bool path = !address && to.find_first_of("/\\") != std::string::npos;
    if (!read.meant && path)
        return false;
    if (!read.fault.empty())
        throw Refused(fmt::format(
            "The target names no database server: {}. A folder's name is written with './' before it",
            read.fault));
    return true;
}

}  // namespace

std::unique_ptr<CopyTarget> MakeCopyTarget(const std::string& to, const fs::path& from) {
    if (IsServer(to)) {
        RefusePassword(to, "The connection string");
        if (ServerOf(from) == to)
            throw Refused("A database server can't be copied to itself");
        return std::make_unique<ServerTarget>(to);
    }
    const fs::path folder = NativePath(to);
    if (fs::exists(folder) && fs::equivalent(from, folder))
        throw Refused("A data folder can't be copied to itself");
    return std::make_unique<FolderTarget>(folder);
}

}  // namespace kv::tool
