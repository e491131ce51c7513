#pragma once
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "datastore/workspace.h"
#include "support/test_agency.h"

namespace kv::test {

/// What one call of kvtool answered.
struct Answer {
    int status = -1;
    std::string out;
    std::string err;
    nlohmann::ordered_json Document() const { return nlohmann::ordered_json::parse(out); }
};

/// A folder with kvtool at work in it: the data folder "data" and the settings file "settings.ini" are given
/// to each call.
class ToolFolder {
  public:
    enum Content { Empty, FreshData };
    /// With the data folder as `init` makes it, or without.
    explicit ToolFolder(Content content = FreshData);
    ~ToolFolder();
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;
    Answer Run(std::vector<std::string> arguments) const;
    /// Run, which must succeed without a word on standard error; its document.
    nlohmann::ordered_json Do(const std::vector<std::string>& arguments) const;
    /// The rows of a query, as JSON text.
    std::string Rows(const std::string& statement, const std::string& database = "kestrava") const;
    std::string Write(const std::string& name, const std::string& content) const;
    std::filesystem::path Path(const std::string& name) const { return folder_.Path() / name; }
    std::filesystem::path Data(const std::string& name) const { return folder_.Path() / "data" / name; }

  private:
    TempFolder folder_;
};

}  // namespace kv::test
