#include "datastore/schema.h"

#include <stdexcept>

namespace kv {

/// Made by the build from data/schema.
const char* EmbeddedText(std::string_view name);

const std::vector<std::string>& SchemaNames() {
    static const std::vector<std::string> names = {"kestrava", "main", "archive", "trans", "tempassign"};
    return names;
}

std::string_view SchemaScript(std::string_view name) {
    const char* script = EmbeddedText(std::string(name) + ".sql");
    if (script == nullptr) {
        throw std::out_of_range("no schema of the name " + std::string(name));
    }
    return script;
}

}  // namespace kv
