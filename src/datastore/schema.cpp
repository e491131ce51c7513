#include "datastore/schema.h"

#include "base/text.h"
#include "datastore/faults.h"

namespace kv {

/// Made by the build from data/schema.
const char* EmbeddedText(std::string_view name);

const std::vector<std::string>& SchemaNames() {
    static const std::vector<std::string> kNames = {"kestrava", "main", "archive", "trans", "tempassign"};
    return kNames;
}

std::string_view SchemaScript(std::string_view name) {
    const char* script = EmbeddedText(Lower(name) + ".sql");
    if (!script)
        throw faults::ItemNotFound(name);
    return script;
}

}  // namespace kv
