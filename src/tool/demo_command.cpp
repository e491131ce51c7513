// demo: fills an empty data folder with a made-up agency.
#include <memory>

#include "tool/command.h"
#include "tool/demo.h"

namespace kv::tool {
namespace {

int Demo(Context& context, const DemoOptions& options) {
    Session& session = context.session;
    const DemoCounts made =
        RunDemo(session.workspace, context.DataFolder(), session.clock, session.progress, options);
    context.Print({{"clients", made.clients},
                   {"caregivers", made.caregivers},
                   {"authorizations", made.authorizations},
                   {"assignments", made.assignments},
                   {"schedules", made.schedules}});
    return 0;
}

}  // namespace

Action PrepareDemo(CLI::App& command) {
    auto options = std::make_shared<DemoOptions>();
    const CLI::Range numbers(1L, kMostDemoPeople);
    command.add_option("--clients", options->clients, "How many clients")
        ->capture_default_str()
        ->check(numbers);
    command.add_option("--caregivers", options->caregivers, "How many caregivers")
        ->capture_default_str()
        ->check(numbers);
    command.add_option("--seed", options->seed, "Another number makes another agency")->capture_default_str();
    return [options](Context& context) { return Demo(context, *options); };
}

}  // namespace kv::tool
