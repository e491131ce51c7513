#pragma once
#include <filesystem>
#include <string>
#include <string_view>

#include "session/ini_text.h"

namespace kv {

/// The per-user keyed texts of the suite, application "KESTRAVA", shared with the menu program and the other
/// modules. An INI-form file, so that another module's writing is seen at once, written whole and atomically,
/// readable by its owner alone. Sections and keys are matched without regard to case.
class SettingsStore {
  public:
    /// The file is made at the first Set.
    explicit SettingsStore(std::filesystem::path file);
    /// KV_SETTINGS in the environment, else KESTRAVA/settings.ini in the user's configuration folder.
    static std::filesystem::path DefaultFile();

    std::string Get(std::string_view section, std::string_view key, std::string_view fallback = {}) const;
    /// "True", "Yes", "Y", "1" and "-1" in any case are true.
    bool GetBoolean(std::string_view section, std::string_view key) const;
    /// Throws std::system_error when the file can't be written; the old content then stays.
    void Set(std::string_view section, std::string_view key, std::string_view value);
    void Remove(std::string_view section, std::string_view key);
    const std::filesystem::path& File() const { return file_; }

  private:
    /// Read afresh at each call: the file is small and other modules write it.
    IniText Read() const;
    void MakeFolder() const;
    void Write(const IniText& text) const;

    std::filesystem::path file_;
};

}  // namespace kv
