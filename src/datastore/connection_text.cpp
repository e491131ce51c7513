#include "datastore/connection_text.h"

#include <memory>
#include <string_view>

#include <libpq-fe.h>

#include "base/text.h"

namespace kv {
namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

/// The library's words without their line's end, and without the text: a password may stand in it.
std::string Fault(const char* words, const std::string& text) {
    return ReplaceAll(ReplaceAll(words ? words : "out of memory", "\n", ""), ": \"" + text + "\"", "");
}

/// All that the library knows, with the values that the text gives.
Options Parse(const std::string& text, std::string& fault) {
    char* words = nullptr;
    Options options(PQconninfoParse(text.c_str(), &words), PQconninfoFree);
    if (!options)
        fault = Fault(words, text);
    PQfreemem(words);
    return options;
}

bool IsAddress(std::string_view text) {
    return text.starts_with("postgresql://") || text.starts_with("postgres://");
}

bool IsKeyword(std::string_view word) {
    std::string none;
    const Options known = Parse("", none);
    for (const PQconninfoOption* option = known.get(); option && option->keyword; ++option)
        if (word == option->keyword)
            return true;
    return false;
}

/// The library marks what must not be shown.
bool IsSecret(const PQconninfoOption& option) {
    return std::string_view(option.dispchar) == "*";
}

}  // namespace

ConnectionText ReadConnectionText(const std::string& text) {
    ConnectionText read;
    const std::size_t equals = text.find('=');
    read.meant = IsAddress(text) || (equals != std::string::npos && IsKeyword(Trim(text.substr(0, equals))));
    const Options options = Parse(text, read.fault);
    for (const PQconninfoOption* option = options.get(); option && option->keyword; ++option)
        if (IsSecret(*option) && option->val && *option->val != 0)
            read.holdsPassword = true;
    return read;
}

}  // namespace kv
