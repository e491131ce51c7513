// next-id: what the main screen knows of a new client.
#include <memory>

#include "clients/client_id.h"
#include "tool/command.h"

namespace kv::tool {

Action PrepareNextId(CLI::App& command) {
    auto forTemplate = std::make_shared<bool>(false);
    command.add_flag("--template", *forTemplate, "For a template");
    return [forTemplate](Context& context) {
        context.session.dbMainWork = context.OpenDatabase("kestrava");
        const std::optional<std::string> id = NextClientId(context.session, *forTemplate);
        if (!id)
            throw Refused("All the IDs are used");
        context.Print({{"id", *id}});
        return 0;
    };
}

}  // namespace kv::tool
