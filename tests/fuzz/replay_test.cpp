// Every input that a fuzzer once found wrong, the fuzzers' seeds, and cheap changes of these, through the
// functions of fuzz/: what was mended stays so, under each compiler and sanitizer that the tests are built
// with.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "base/platform.h"
#include "base/text.h"
#include "fuzz/target.h"

// The targets' one function, which the build gives a name for each (tests/CMakeLists.txt).
extern "C" {
int FuzzAccess(const std::uint8_t* data, std::size_t size);
int FuzzConversions(const std::uint8_t* data, std::size_t size);
int FuzzCsv(const std::uint8_t* data, std::size_t size);
int FuzzDialect(const std::uint8_t* data, std::size_t size);
int FuzzIni(const std::uint8_t* data, std::size_t size);
int FuzzRtf(const std::uint8_t* data, std::size_t size);
}

namespace kv {
namespace {

namespace fs = std::filesystem;

struct Target {
    const char* name;
    int (*run)(const std::uint8_t*, std::size_t);
    /// How many changed inputs are tried: what takes a second or two.
    int mutations;
};

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

struct Input {
    std::string name;
    std::string content;
};

void AddFiles(const fs::path& folder, std::vector<Input>& inputs) {
    if (!fs::exists(folder))
        return;
    for (const auto& entry : fs::directory_iterator(folder))
        inputs.push_back({entry.path().filename().string(), ReadFile(entry.path()).value()});
}

/// The statements that the store's own tests run, as the dialect's target takes them; scripts/fuzz cuts them
/// out alike.
void AddStatements(std::vector<Input>& inputs) {
    const fs::path folder = fs::path(KV_SOURCE_DIR) / "tests/datastore";
    for (const std::string& line : Split(ReadFile(folder / "dialect_cases.txt").value(), '\n'))
        if (line.starts_with("> "))
            inputs.push_back({line, line.substr(2)});
    for (const std::string& line : Split(ReadFile(folder / "statements_in_use.txt").value(), '\n')) {
        if (line.empty() || line[0] == '#')
            continue;
        const std::string rest = line.substr(line.find('|') + 1);
        inputs.push_back({line, line.starts_with("find|") ? "?" + rest.substr(rest.find('|') + 1) : rest});
    }
}

std::vector<Input> InputsOf(const Target& target) {
    const fs::path source = KV_SOURCE_DIR;
    std::vector<Input> inputs;
    AddFiles(source / "tests/fuzz/findings" / target.name, inputs);
    AddFiles(source / "fuzz/seeds" / target.name, inputs);
    if (target.name == std::string("dialect"))
        AddStatements(inputs);
    std::sort(inputs.begin(), inputs.end(), [](const Input& a, const Input& b) { return a.name < b.name; });
    return inputs;
}

/// Changes of inputs, the same ones in every run.
class Mutator {
  public:
    explicit Mutator(const std::vector<Input>& inputs) : inputs_(inputs) {}

    std::string Next() {
        std::string text = Pick();
        for (std::size_t changes = 1 + Below(3); changes > 0; --changes)
            Change(text);
        return text;
    }

  private:
    std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : random_() % bound; }
    const std::string& Pick() { return inputs_[Below(inputs_.size())].content; }

    void Change(std::string& text) {
        const std::size_t at = Below(text.size() + 1);
        const std::size_t length = 1 + Below(8);
        switch (Below(5)) {
            case 0:
                if (at < text.size())
                    text[at] = static_cast<char>(random_());
                break;
            case 1:
                text.insert(at, 1, "'\"[]{}()\\;,=#*\n\x1F\xC3"[Below(18)]);
                break;
            case 2:
                text.erase(at, length);
                break;
            case 3:
                text.insert(at, text.substr(Below(text.size() + 1), length));
                break;
            default: {
                const std::string& other = Pick();
                text = text.substr(0, at) + other.substr(Below(other.size() + 1));
            }
        }
    }

    const std::vector<Input>& inputs_;
    std::mt19937 random_{20260304};
};

/// What the target says against the input; the empty text for nothing.
std::string Fault(const Target& target, const std::string& content) {
    try {
        target.run(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
        return {};
    } catch (const std::exception& error) {
        return error.what();
    }
}

class FuzzReplay : public testing::TestWithParam<Target> {};

TEST_P(FuzzReplay, SeedsAndFindings) {
    const std::vector<Input> inputs = InputsOf(GetParam());
    ASSERT_FALSE(inputs.empty());
    for (const Input& input : inputs)
        EXPECT_EQ(Fault(GetParam(), input.content), "") << input.name;
}

TEST_P(FuzzReplay, ChangedInputs) {
    const std::vector<Input> inputs = InputsOf(GetParam());
    Mutator mutator(inputs);
    for (int i = 0; i < GetParam().mutations; ++i) {
        const std::string text = mutator.Next();
        const std::string fault = Fault(GetParam(), text);
        ASSERT_EQ(fault, "") << testing::PrintToString(text);
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplay,
                         testing::Values(Target{"access", FuzzAccess, 150},
                                         Target{"conversions", FuzzConversions, 8000},
                                         Target{"csv", FuzzCsv, 8000}, Target{"dialect", FuzzDialect, 8000},
                                         Target{"ini", FuzzIni, 4000}, Target{"rtf", FuzzRtf, 8000}),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace
}  // namespace kv
