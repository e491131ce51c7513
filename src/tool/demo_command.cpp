// demo: a made-up agency.
#include <memory>

#include "tool/command.h"
#include "tool/demo.h"

namespace kv::tool {
namespace {

int Demo(Context& context, const DemoOptions& options) {
    Session& session = context.session;
    const DemoCounts counts =
        RunDemo(session.workspace, context.DataFolder(), session.clock, session.progress, options);
    context.Print({{"clients", counts.clients},
                   {"caregivers", counts.caregivers},
                   {"authorizations", counts.authorizations},
                   {"assignments", counts.assignments},
                   {"schedules", counts.schedules}});
    return 0;
}

}  // namespace

Action PrepareDemo(CLI::App& command) {
    auto options = std::make_shared<DemoOptions>();
    command.add_option("--clients", options->clients, "How many clients")->capture_default_str();
    command.add_option("--caregivers", options->caregivers, "How many caregivers")->capture_default_str();
    command.add_option("--seed", options->seed, "Another number gives other people")->capture_default_str();
    return [options](Context& context) { return Demo(context, *options); };
}

}  // namespace kv::tool
