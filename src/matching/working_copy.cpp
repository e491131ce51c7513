#include "matching/working_copy.h"

#include <system_error>

namespace kv {

std::unique_ptr<WorkingCopy> WorkingCopy::Make(Session& session, const std::string& name) {
    constexpr std::uint64_t kHolder = 0;
    const std::filesystem::path folder = session.TempPath;
    std::unique_ptr<WorkingCopy> copy(new WorkingCopy(folder / (name + ".lock")));
    if (!copy->lock_.TryLock(kHolder)) {
        return nullptr;
    }
    const std::filesystem::path file = folder / name;
    for (const char* part : {"", "-wal", "-shm", "-journal"}) {
        std::filesystem::remove(file.string() + part);
    }
    std::filesystem::copy_file(session.DataFile("tempassign.mdb"), file);
    copy->database_ = session.workspace.OpenDatabase(file);
    return copy;
}

}  // namespace kv
