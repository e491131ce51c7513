#include "tool/scratch_folder.h"

#include <random>

#include <fmt/format.h>

#include "base/platform.h"

namespace kv::tool {

ScratchFolder::ScratchFolder(const std::filesystem::path& parent) {
    std::random_device random;
    do
        path_ = (parent.empty() ? UserTempFolder() : parent) / fmt::format(".kvtool-{:08x}", random());
    while (!std::filesystem::create_directory(path_));
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace kv::tool
