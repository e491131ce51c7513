// cobilling: the calculator of the client's percentage.
#include <memory>

#include "base/numbers.h"
#include "billing/cobilling_shares.h"
#include "tool/command.h"

namespace kv::tool {

Action PrepareCobilling(CLI::App& command) {
    struct Options {
        std::optional<double> total, client;
        double payer = 0;
    };
    auto options = std::make_shared<Options>();
    auto* known = command.add_option_group("known")->require_option(1);
    known->add_option("--total", options->total, "The most that may be billed to client and payer together");
    known->add_option("--client", options->client, "The client's portion");
    command.add_option("--payer", options->payer, "The payer's portion")->required();
    return [options](Context& context) {
        constexpr int kCents = 2;
        const auto shares = options->total ? SharesOfTotal(*options->total, options->payer)
                                           : SharesOfPortions(*options->client, options->payer);
        if (!shares)
            throw Refused(kTotalTooLow);
        context.Print({{"client", RoundTo(shares->client, kCents)},
                       {"total", RoundTo(shares->total, kCents)},
                       {"percent", shares->percent}});
        return 0;
    };
}

}  // namespace kv::tool
