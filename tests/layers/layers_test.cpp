// The include arrows between the folders of src/: each folder may use those named here, and nothing else of
// the project.
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Folders = std::set<std::string>;

const Folders kRules = {"base", "datastore", "session"};

Folders With(Folders folders, const Folders& more) {
    folders.insert(more.begin(), more.end());
    return folders;
}

/// What each folder may include besides itself. A folder that is not here fails the test until somebody
/// decides where it stands.
const std::map<std::string, Folders>& Arrows() {
    static const Folders kAllRules = With(kRules, {"clients", "scheduling", "billing", "matching", "careplan",
                                                   "events", "exchange", "printing"});
    static const std::map<std::string, Folders> kArrows = {
        {"base", {}},
        {"datastore", {"base"}},
        {"session", {"base", "datastore"}},
        {"printing", {"base", "datastore", "session"}},
        {"clients", With(kRules, {"printing"})},
        {"scheduling", With(kRules, {"printing", "clients"})},
        {"billing", With(kRules, {"printing", "clients", "scheduling"})},
        {"matching", With(kRules, {"printing", "clients", "scheduling", "billing"})},
        {"careplan", With(kRules, {"printing", "clients"})},
        {"events", With(kRules, {"printing", "clients"})},
        {"exchange", With(kRules, {"printing", "clients"})},
        {"screens", kAllRules},
        {"tool", kAllRules},
        {"web", {}},
        {"app", With(kAllRules, {"screens", "tool"})},
    };
    return kArrows;
}

const Folders kMayUseQt = {"screens", "app", "web"};

struct Include {
    std::string file;
    std::string folder;
    std::string target;
    bool quoted;
};

std::vector<Include> IncludesOf(const std::filesystem::path& src) {
    static const std::regex kInclude(R"re(^\s*#\s*include\s*(["<])([^">]+)[">])re");
    std::vector<Include> includes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(src)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") {
            continue;
        }
        const auto relative = entry.path().lexically_relative(src);
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (std::regex_search(line, match, kInclude)) {
                includes.push_back(
                    {relative.string(), relative.begin()->string(), match[2], match[1] == "\""});
            }
        }
    }
    return includes;
}

bool IsQt(const std::string& target) {
    return target.size() > 1 && target[0] == 'Q' &&
           std::isupper(static_cast<unsigned char>(target[1])) != 0 && target.find('.') == std::string::npos;
}

TEST(Layers, IncludesOnlyPointDown) {
    const auto includes = IncludesOf(std::filesystem::path(KV_SOURCE_DIR) / "src");
    ASSERT_GT(includes.size(), 100U) << "the sources were not found";
    for (const auto& include : includes) {
        const auto arrows = Arrows().find(include.folder);
        ASSERT_NE(arrows, Arrows().end()) << include.folder << " stands in no layer";
        const auto target = include.target.substr(0, include.target.find('/'));
        if (include.quoted && Arrows().count(target) > 0 && target != include.folder) {
            EXPECT_TRUE(arrows->second.count(target) > 0) << include.file << " includes " << include.target;
        }
        // printing/render draws what printing/document describes, and is the one place below the screens that
        // knows Qt.
        const bool draws = include.file.rfind("printing/render", 0) == 0;
        if (IsQt(include.target) && !draws) {
            EXPECT_TRUE(kMayUseQt.count(include.folder) > 0)
                << include.file << " includes " << include.target;
        }
    }
}

TEST(Layers, OneLibraryPerFolderUsesWhatItMayInclude) {
    std::ifstream file(std::filesystem::path(KV_SOURCE_DIR) / "CMakeLists.txt");
    static const std::regex kFolder(R"(^kv_folder\((\w+)[\w/]*(?: USES ([\w/ ]+?))?(?: QT| LIBRARIES|\)))");
    std::size_t found = 0;
    for (std::string line; std::getline(file, line);) {
        std::smatch match;
        if (!std::regex_search(line, match, kFolder)) {
            continue;
        }
        ++found;
        std::istringstream uses(match[2]);
        for (std::string used; uses >> used;) {
            used = used.substr(0, used.find('/'));
            EXPECT_TRUE(used == match[1] || Arrows().at(match[1]).count(used) > 0)
                << match[1] << " is linked to " << used;
        }
    }
    EXPECT_GE(found, 6U);
}

TEST(Layers, StoresEngineStaysInTheDatastore) {
    for (const auto& include : IncludesOf(std::filesystem::path(KV_SOURCE_DIR) / "src")) {
        if (include.target == "sqlite3.h" || include.target.rfind("libpq", 0) == 0) {
            EXPECT_EQ(include.folder, "datastore") << include.file;
        }
    }
}

}  // namespace
