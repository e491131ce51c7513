// authorization-use, cobilling: what is left of authorizations, and the client's percentage.
#include <memory>

#include "base/format.h"
#include "base/numbers.h"
#include "billing/authorization_use.h"
#include "billing/cobilling_shares.h"
#include "tool/command.h"

namespace kv::tool {

namespace {

Json DocumentOf(const AuthorizationUse& use) {
    const auto day = [](Date date) { return FormatDate(date, "YYYY-MM-DD"); };
    return {
        {"authorization", use.sequence},
        {"client", use.client},
        {"name", use.clientName},
        {"payer", use.payer},
        {"visit_type", use.visitType},
        {"from", day(use.from)},
        {"to", day(use.to)},
        {"period",
         {{"per", use.per},
          {"from", day(use.periodFrom)},
          {"to", day(use.periodTo)},
          {"authorized", use.authorized},
          {"scheduled", use.scheduled},
          {"worked", use.worked},
          {"left", use.left}}},
        {"total", {{"authorized", use.totalAuthorized}, {"used", use.totalUsed}, {"left", use.totalLeft}}},
        {"lasts", day(use.lasts)},
        {"runs_out", use.runsOut}};
}

}  // namespace

Action PrepareAuthorizationUse(CLI::App& command) {
    auto client = std::make_shared<std::string>();
    command.add_option("--client", *client, "Those of one client; left out, all that are active");
    return [client](Context& context) {
        context.OpenWork();
        Json uses = Json::array();
        for (const AuthorizationUse& use : UseOfAuthorizations(context.session, *client))
            uses.push_back(DocumentOf(use));
        context.Print({{"authorizations", uses}});
        return 0;
    };
}

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
