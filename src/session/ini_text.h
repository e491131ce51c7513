#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The text of an INI file: sections, keys and values, with remarks, blank lines and order kept as they
/// stand. Names are matched without regard to case; of two sections or keys of one name the first counts.
class IniText {
  public:
    IniText() = default;
    explicit IniText(std::string_view text);

    std::optional<std::string> Get(std::string_view section, std::string_view key) const;
    void Set(std::string_view section, std::string_view key, std::string_view value);
    void Remove(std::string_view section, std::string_view key);
    std::string ToText() const;

  private:
    struct Place {
        std::size_t sectionLine = 0;
        std::optional<std::size_t> keyLine;
        std::size_t insertAt = 0;
    };
    std::optional<Place> Locate(std::string_view section, std::string_view key) const;
    std::vector<std::string> lines_;
};

}  // namespace kv
