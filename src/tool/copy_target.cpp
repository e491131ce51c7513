#include "tool/copy_target.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/connection_text.h"
#include "datastore/schema.h"
#include "session/data_folder.h"
#include "session/ini_file.h"
#include "session/ini_text.h"
#include "tool/command.h"
#include "tool/scratch_folder.h"

namespace kv::tool {
namespace {

namespace fs = std::filesystem;

/// Nothing in it but what `init` makes.
bool IsFresh(Workspace& workspace, const DatabasePlace& place) {
    const DatabasePtr database = workspace.OpenDatabase(place, SchemaCheck::Ignored);
    const auto isFresh = [&](const std::string& table) {
        const long most = EqualsNoCase(table, "Agency") ? 1 : 0;
        return database->Lookup("select count(*) from [" + table + "]").ToInteger() <= most;
    };
    const std::vector<std::string> names = database->Tables().Names();
    return std::all_of(names.begin(), names.end(), isFresh);
}

/// The databases with the one that is moved last behind all others.
std::vector<std::string> InMovingOrder(std::vector<std::string> names) {
    std::stable_partition(names.begin(), names.end(), [](const auto& name) { return name != kLastMoved; });
    return names;
}

class FolderTarget final : public CopyTarget {
  public:
    explicit FolderTarget(fs::path to) : to_(std::move(to)) {}

    void RefuseUsed(Workspace& workspace) const override {
        if (!ServerOf(to_).empty())
            throw Refused(to_.string() + " works on a database server; name another folder, or the server");
        if (HoldsBrokenCopy(to_))
            return;  // what stands there comes from the copy that was broken off
        for (const std::string& name : SchemaNames()) {
            const fs::path file = FileOf(name);
            if (fs::exists(file) && !IsFresh(workspace, file))
                throw Refused(file.string() + " holds rows already; name an empty data folder");
        }
    }

    void Begin() override {
        fs::create_directories(to_);
        scratch_.emplace(to_);
    }
    bool Takes(const std::string& /*name*/) const override { return true; }
    DatabasePlace Scratch(const std::string& name) const override {
        return scratch_->Path() / DatabaseFile(name);
    }

    void Finish(const fs::path& from) override {
        CopyIni(from);
        ReplaceFile(CopyMark(to_), "A copy is being put in its place here.\n");
        const std::vector<std::string> names = InMovingOrder(SchemaNames());
        std::for_each(names.rbegin(), names.rend(),
                      [&](const std::string& name) { Workspace::DropDatabase(FileOf(name)); });
        for (const std::string& name : names)
            MoveIn(name);
        fs::remove(CopyMark(to_));
        scratch_.reset();
    }

  private:
    fs::path FileOf(const std::string& name) const { return FindNoCase(to_, DatabaseFile(name)); }

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

    void RefuseUsed(Workspace& workspace) const override {
        for (const std::string& name : SharedDatabases()) {
            const DatabasePlace place(server_, name);
            if (Workspace::HasDatabase(place) && !IsFresh(workspace, place))
                throw Refused("The server's database '" + name +
                              "' holds rows already; name an empty database server");
        }
    }

    void Begin() override {
        begun_ = true;
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
        Workspace::MoveDatabases(server_, moves);
        begun_ = false;
    }

  private:
    static std::string ScratchName(const std::string& name) { return "kv_copy_" + name; }

    void DropScratch() const {
        for (const std::string& name : SharedDatabases())
            if (begun_)
                Workspace::DropDatabase(Scratch(name));
    }

    std::string server_;
    bool begun_ = false;
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
