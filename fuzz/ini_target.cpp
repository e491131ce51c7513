// "section<US>key<US>value<US>file", the parts divided by 0x1F: what is set in the file is read back, also
// through the settings' and the data folder's files, and every other line stays as it stood.
#include <algorithm>

#include "base/platform.h"
#include "base/text.h"
#include "fuzz/target.h"
#include "session/ini_file.h"
#include "session/settings_store.h"
#include "support/test_agency.h"

namespace kv {
namespace {

constexpr std::size_t kLongest = 4096;
constexpr char kDivider = '\x1F';

struct Entry {
    std::string_view section, key, value;
};

/// The names that the form can hold: the program's own are all such.
bool IsName(std::string_view name, std::string_view forbidden) {
    constexpr std::string_view kBlanks = " \t\r";
    return name.find_first_of("\r\n") == std::string_view::npos &&
           name.find_first_of(forbidden) == std::string_view::npos &&
           (name.empty() || (kBlanks.find(name.front()) == std::string_view::npos &&
                             kBlanks.find(name.back()) == std::string_view::npos));
}

bool Fits(const Entry& entry) {
    return IsName(entry.section, "]") && IsName(entry.key, "=") && !entry.key.starts_with('[') &&
           !entry.key.starts_with(';');
}

std::string Expected(std::string_view value) {
    return ReplaceAll(ReplaceAll(ReplaceAll(value, "\r\n", " "), "\n", " "), "\r", " ");
}

std::vector<std::string> LinesOf(const IniText& text) {
    std::vector<std::string> lines = Split(text.ToText(), '\n');
    for (std::string& line : lines)
        if (line.ends_with('\r'))
            line.pop_back();
    lines.pop_back();
    return lines;
}

/// One line changed, or one came in, or a section with its line (and a blank one before it) did at the end.
bool OthersStay(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    const auto [left, right] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const std::size_t grown = after.size() - before.size();
    if (left == before.end())
        return grown <= 3;
    const bool changed = grown == 0 && std::equal(left + 1, before.end(), right + 1, after.end());
    const bool inserted = grown == 1 && std::equal(left, before.end(), right + 1, after.end());
    return changed || inserted;
}

void CheckText(std::string_view file, const Entry& entry) {
    IniText text(file);
    Expect(IniText(text.ToText()).ToText() == text.ToText(), "a written file is read back as another");
    const std::vector<std::string> before = LinesOf(text);
    text.Set(entry.section, entry.key, entry.value);
    if (!Fits(entry))
        return;
    Expect(OthersStay(before, LinesOf(text)), "other lines changed");
    Expect(text.Get(entry.section, entry.key) == Expected(entry.value), "what was set is not there");
    Expect(IniText(text.ToText()).Get(entry.section, entry.key) == Expected(entry.value),
           "what was set is not read back");
    const std::vector<std::string> set = LinesOf(text);
    text.Remove(entry.section, entry.key);
    Expect(LinesOf(text).size() + 1 == set.size(), "not one line was removed");
}

void CheckFiles(std::string_view file, const Entry& entry) {
    static const test::TempFolder folder;
    const std::filesystem::path path = folder.Path() / "settings.ini";
    ReplaceFile(path, file);
    SettingsStore store(path);
    store.GetBoolean(entry.section, entry.key);
    store.Get(entry.section, entry.key);
    store.Set(entry.section, entry.key, entry.value);
    const IniFile ini(path);
    const std::size_t buffer = 1 + entry.value.size() / 2;
    const std::string cut = ini.Get(entry.section, entry.key, "", buffer);
    Expect(cut.size() < buffer && ToUtf8(cut) == cut, "a value does not fit its reader's buffer");
    if (Fits(entry))
        Expect(store.Get(entry.section, entry.key) == Expected(entry.value), "the settings lost a value");
    store.Remove(entry.section, entry.key);
}

}  // namespace
}  // namespace kv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, std::min(size, kv::kLongest));
    kv::Entry entry;
    entry.section = input.Part(kv::kDivider);
    entry.key = input.Part(kv::kDivider);
    entry.value = input.Part(kv::kDivider);
    kv::CheckText(input.Rest(), entry);
    kv::CheckFiles(input.Rest(), entry);
    return 0;
}
