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
    /// A changed key keeps its line and its spelling; a new one goes to the end of its section. A line end in
    /// a value, which the form can't hold, becomes a blank; a value with blanks at its ends is quoted.
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

    std::vector<std::string> lines_;  // without their ends
    std::string lineEnd_ = "\n";
};

}  // namespace kv
