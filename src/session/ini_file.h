#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace kv {

/// KESTRAVA.INI in the data folder. Read afresh at each call, since other seats write it.
class IniFile {
  public:
    explicit IniFile(std::filesystem::path file) : file_(std::move(file)) {}
    /// The value, cut to maxLength - 1 bytes as a reader's buffer of that many would; `fallback` when the key
    /// or file is missing.
    std::string Get(std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t maxLength = 256) const;
    /// Throws std::system_error when the file can't be written.
    void Set(std::string_view section, std::string_view key, std::string_view value) const;
    const std::filesystem::path& File() const { return file_; }

  private:
    std::filesystem::path file_;
};

/// KESTRAVA.INI in a data folder, the case of its name ignored.
IniFile IniOf(const std::filesystem::path& folder);

}  // namespace kv
