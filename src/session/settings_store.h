#pragma once
#include <filesystem>
#include <string>
#include <string_view>

#include "session/ini_text.h"

namespace kv {

/// The per-user keyed texts of the suite, application "KESTRAVA", shared with the menu program and the other
/// modules. An INI-form file, re-read when another module wrote it, written whole and atomically, readable by
/// its owner alone. Sections and keys are matched without regard to case.
class SettingsStore {
  public:
    /// The file is made at the first Set.
    explicit SettingsStore(std::filesystem::path file);
    /// KV_SETTINGS in the environment, else KESTRAVA/settings.ini in the user's configuration folder.
    static std::filesystem::path DefaultFile();

    std::string Get(std::string_view section, std::string_view key, std::string_view fallback = {});
    /// "True", "Yes", "Y", "1" and "-1" in any case are true.
    bool GetBoolean(std::string_view section, std::string_view key);
    /// Throws std::system_error when the file can't be written; the old content then stays.
    void Set(std::string_view section, std::string_view key, std::string_view value);
    void Remove(std::string_view section, std::string_view key);
    const std::filesystem::path& File() const { return file_; }

  private:
    void Reread();
    template <typename Change>
    void Rewrite(Change change);

    std::filesystem::path file_;
    std::filesystem::file_time_type readAt_{};
    std::uintmax_t readSize_ = 0;
    IniText text_;
};

}  // namespace kv
