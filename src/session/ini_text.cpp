#include "session/ini_text.h"

#include "base/text.h"

namespace kv {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

/// The name of the section that the line begins, or nothing.
std::optional<std::string_view> SectionName(std::string_view line) {
    line = WithoutBlanks(line);
    if (line.substr(0, 1) != "[")
        return std::nullopt;
    return WithoutBlanks(line.substr(1, line.find(']') - 1));
}

/// The name of the key that the line holds, or nothing for remarks, blank lines and sections.
std::optional<std::string_view> KeyName(std::string_view line) {
    line = WithoutBlanks(line);
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line[0] == ';' || line[0] == '[')
        return std::nullopt;
    return WithoutBlanks(line.substr(0, equals));
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && value.front() == '"' && value.back() == '"';
}

std::string_view ValueOf(std::string_view line) {
    const std::string_view value = WithoutBlanks(line.substr(line.find('=') + 1));
    return IsQuoted(value) ? value.substr(1, value.size() - 2) : value;
}

std::string WrittenValue(std::string_view value) {
    std::string written = ReplaceAll(ReplaceAll(ReplaceAll(value, "\r\n", " "), "\n", " "), "\r", " ");
    if (IsQuoted(written) || WithoutBlanks(written).size() != written.size())
        written = '"' + written + '"';
    return written;
}

}  // namespace

IniText::IniText(std::string_view text) {
    // A careless editor puts a mark before the one that is there.
    while (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    if (text.find("\r\n") != std::string_view::npos)
        lineEnd_ = "\r\n";
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        while (line.ends_with('\r'))
            line.remove_suffix(1);
        lines_.emplace_back(line);
    }
}

std::optional<IniText::Place> IniText::Locate(std::string_view section, std::string_view key) const {
    std::optional<Place> place;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const auto begun = SectionName(lines_[i]);
        if (place && begun)
            return place;
        if (begun && EqualsNoCase(*begun, section))
            place = Place{i, std::nullopt, i + 1};
        if (!place || begun || WithoutBlanks(lines_[i]).empty())
            continue;
        place->insertAt = i + 1;
        const auto name = KeyName(lines_[i]);
        if (!place->keyLine && name && EqualsNoCase(*name, key))
            place->keyLine = i;
    }
    return place;
}

std::optional<std::string> IniText::Get(std::string_view section, std::string_view key) const {
    const auto place = Locate(section, key);
    if (!place || !place->keyLine)
        return std::nullopt;
    return std::string(ValueOf(lines_[*place->keyLine]));
}

void IniText::Set(std::string_view section, std::string_view key, std::string_view value) {
    auto place = Locate(section, key);
    if (place && place->keyLine) {
        std::string& line = lines_[*place->keyLine];
        line = std::string(*KeyName(line)) + "=" + WrittenValue(value);
        return;
    }
    if (!place) {
        if (!lines_.empty() && !WithoutBlanks(lines_.back()).empty())
            lines_.emplace_back();
        lines_.push_back("[" + std::string(section) + "]");
        place = Place{lines_.size() - 1, std::nullopt, lines_.size()};
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place->insertAt),
                  std::string(key) + "=" + WrittenValue(value));
}

void IniText::Remove(std::string_view section, std::string_view key) {
    const auto place = Locate(section, key);
    if (place && place->keyLine)
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*place->keyLine));
}

std::string IniText::ToText() const {
    std::string text;
    for (const std::string& line : lines_) {
        text += line;
        text += lineEnd_;
    }
    return text;
}

}  // namespace kv
