#include "session/settings_store.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "base/platform.h"
#include "base/text.h"
#include "session/write_turn.h"

namespace kv {

SettingsStore::SettingsStore(std::filesystem::path file) : file_(std::move(file)) {}

std::filesystem::path SettingsStore::DefaultFile() {
    const char* named = std::getenv("KV_SETTINGS");
    return named && *named ? std::filesystem::path(named) : UserConfigFolder() / "KESTRAVA" / "settings.ini";
}

IniText SettingsStore::Read() const {
    return IniText(ReadFile(file_).value_or(""));
}

void SettingsStore::MakeFolder() const {
    if (file_.has_parent_path())
        std::filesystem::create_directories(file_.parent_path());
}

void SettingsStore::Write(const IniText& text) const {
    ReplaceFile(file_, text.ToText(), true);
}

std::string SettingsStore::Get(std::string_view section, std::string_view key,
                               std::string_view fallback) const {
    return Read().Get(section, key).value_or(std::string(fallback));
}

bool SettingsStore::GetBoolean(std::string_view section, std::string_view key) const {
    static constexpr std::array<std::string_view, 5> kTrue = {"True", "Yes", "Y", "1", "-1"};
    const std::string value = Get(section, key);
    return std::any_of(kTrue.begin(), kTrue.end(),
                       [&](std::string_view text) { return EqualsNoCase(value, text); });
}

void SettingsStore::Set(std::string_view section, std::string_view key, std::string_view value) {
    MakeFolder();
    const WriteTurn turn(file_);
    IniText text = Read();
    text.Set(section, key, value);
    Write(text);
}

void SettingsStore::Remove(std::string_view section, std::string_view key) {
    MakeFolder();
    const WriteTurn turn(file_);
    IniText text = Read();
    if (!text.Get(section, key))
        return;
    text.Remove(section, key);
    Write(text);
}

}  // namespace kv
