#include "session/ini_file.h"

#include "base/platform.h"
#include "base/text.h"
#include "session/ini_text.h"
#include "session/write_turn.h"

namespace kv {

std::string IniFile::Get(std::string_view section, std::string_view key, std::string_view fallback,
                         std::size_t maxLength) const {
    const auto raw = IniText(ReadFile(file_).value_or("")).Get(section, key);
    std::string value = raw ? ToUtf8(*raw) : std::string(fallback);
    if (value.size() < maxLength)
        return value;
    // A character that the buffer can't hold whole is left out.
    std::size_t end = maxLength > 0 ? maxLength - 1 : 0;
    while (end > 0 && (static_cast<unsigned char>(value[end]) & 0xC0) == 0x80)
        --end;
    value.resize(end);
    return value;
}

void IniFile::Set(std::string_view section, std::string_view key, std::string_view value) const {
    const WriteTurn turn(file_);
    IniText text(ReadFile(file_).value_or(""));
    text.Set(section, key, value);
    ReplaceFile(file_, text.ToText());
}

IniFile IniOf(const std::filesystem::path& folder) {
    return IniFile(FindNoCase(folder, "KESTRAVA.INI"));
}

}  // namespace kv
