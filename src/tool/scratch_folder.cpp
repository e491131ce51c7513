#include "tool/scratch_folder.h"

#include <random>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace kv::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".kvtool-";
/// Locked by the folder's program as long as it lives.
constexpr const char* kAtWork = "at-work";

}  // namespace

ScratchFolder::ScratchFolder(const fs::path& parent) {
    std::random_device random;
    do
        path_ = (parent.empty() ? UserTempFolder() : parent) / fmt::format("{}{:08x}", kPrefix, random());
    while (!fs::create_directory(path_));
    fs::permissions(path_, fs::perms::owner_all);
    atWork_.emplace(path_ / kAtWork);
    atWork_->Lock(0);
}

bool ScratchFolder::ClearBeside() const {
    std::vector<fs::path> beside;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_.parent_path()))
        if (entry.is_directory() && entry.path().filename() != path_.filename() &&
            entry.path().filename().string().starts_with(kPrefix))
            beside.push_back(entry.path());
    bool others = false;
    for (const fs::path& folder : beside) {
        ByteLocks atWork(folder / kAtWork);
        if (atWork.TryLock(0))
            fs::remove_all(folder);
        else
            others = true;
    }
    return others;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

}  // namespace kv::tool
