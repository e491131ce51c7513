#include "tool/tool_run.h"

#include <sstream>

#include <gtest/gtest.h>

#include "base/platform.h"
#include "tool/tool.h"

namespace kv::test {

ToolFolder::ToolFolder(Content content) {
    if (content == FreshData)
        CopyFreshData(Path("data"));
    else
        NameEmptyServer(Path("data"));
}

ToolFolder::~ToolFolder() {
    DropServerData(Path("data"));
}

Answer ToolFolder::Run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(),
                     {"--data", Path("data").string(), "--settings", Path("settings.ini").string()});
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunTool(arguments, out, err);
    return {status, out.str(), err.str()};
}

nlohmann::ordered_json ToolFolder::Do(const std::vector<std::string>& arguments) const {
    const Answer answer = Run(arguments);
    EXPECT_EQ(answer.status, 0) << arguments.front() << ": " << answer.err;
    EXPECT_EQ(answer.err, "") << arguments.front();
    return answer.status == 0 ? answer.Document() : nlohmann::ordered_json();
}

std::string ToolFolder::Rows(const std::string& statement, const std::string& database) const {
    return Do({"sql", "--db", database, statement})["rows"].dump();
}

std::string ToolFolder::Write(const std::string& name, const std::string& content) const {
    ReplaceFile(Path(name), content);
    return Path(name).string();
}

}  // namespace kv::test
