// amount, suggest: what a visit costs, and who can be sent to it.
#include <cmath>
#include <memory>

#include "base/text.h"
#include "billing/visit_amounts.h"
#include "matching/caregiver_panel.h"
#include "matching/suggestion.h"
#include "matching/why_not.h"
#include "tool/command.h"

namespace kv::tool {

namespace {

/// "YYYY-MM-DD HH:MM".
Date MomentArgument(const std::string& text) {
    const std::vector<std::string> parts = Split(text, ' ');
    if (parts.size() != 2)
        throw UnusableArgument("\"" + text + "\" is no moment like 2026-03-04 09:30");
    return DayArgument(parts[0]).At(TimeArgument(parts[1]));
}

double Rounded(double percent) {
    constexpr double kHundredths = 100;
    return std::round(percent * kHundredths) / kHundredths;
}

struct SuggestArguments {
    std::string client, date, time, why;
    double hours = 0;
    long authorization = 0;
    bool liveIn = false;
    SuggestionOptions options;

    SuggestionRequest Request() const {
        SuggestionRequest request;
        request.client = client;
        request.day = DayArgument(date);
        request.time = time.empty() ? Date() : TimeArgument(time);
        request.hours = hours;
        request.authorization = authorization;
        request.liveIn = liveIn;
        return request;
    }
};

void AddSuggestOptions(CLI::App& command, SuggestArguments& given) {
    command.add_option("--client", given.client, "The client's id")->required();
    command.add_option("--date", given.date, "The day of the visit, YYYY-MM-DD")->required();
    command.add_option("--time", given.time, "Its start, HH:MM");
    command.add_option("--hours", given.hours, "Its hours")->check(CLI::NonNegativeNumber);
    command.add_option("--authorization", given.authorization, "The authorization that it comes from");
    command.add_flag("--live-in", given.liveIn, "Around the clock");
    SuggestionOptions& options = given.options;
    command.add_flag("--areas", options.areas, "Only those who work in the client's area");
    command.add_flag("--potential", options.potential, "Potential caregivers only");
    command.add_flag("--language", options.language, "Only those who speak the client's language");
    command.add_flag("--gender", options.gender, "Only the gender that the client asked for");
    command.add_flag("--discipline", options.discipline, "Exactly the discipline's level");
    command.add_flag("--type", options.type, "Only the type of caregiver");
    command.add_flag("--skills", options.skillsPercent, "Compare the skills, and leave out those with none");
    command.add_flag("--critical", options.critical, "Only those with all critical skills");
    command.add_flag("--ignore-unavailable", options.ignoreUnavailable, "Ignore declared unavailable time");
    command.add_flag("--ignore-start", options.ignoreStart, "Any start, where enough hours are free");
    command.add_option("--group", options.group, "Only one care group");
    command.add_option("--why", given.why, "Why this caregiver is not found, and what would let her in");
}

Json RowOf(const Suggestion& suggestion, const SuggestedCaregiver& row, double bill, double pay, long burdens,
           bool withSkills) {
    const std::optional<double> margin = GrossMargin(bill, pay, burdens);
    Json slots = Json::object();
    for (int quarter = 0; quarter < kQuarters; ++quarter)
        if (!suggestion.IsFree(row, quarter))
            slots[std::to_string(QuarterNumber(quarter))] = suggestion.TextOf(row, quarter);
    return {{"emp_id", row.emp_id},
            {"emp_name", row.emp_name},
            {"max_hours", row.max_hours},
            {"skills", withSkills ? Json(row.skills) : Json()},
            {"longest", row.longest},
            {"banned", row.banned},
            {"selectable", row.selectable},
            {"bill", bill},
            {"pay", pay},
            {"margin", margin ? Json(Rounded(*margin)) : Json()},
            {"slots", slots}};
}

int RunSuggest(Context& context, const SuggestArguments& given) {
    const SuggestionRequest request = given.Request();
    context.OpenWork();
    Session& session = context.session;
    const ClientNeeds needs = PrepareClient(session, request);
    if (needs.panel.empty())
        throw Refused("There is no client " + given.client);
    if (!given.why.empty()) {
        const WhyNot why = ExplainCaregiver(session, needs, request, given.options, given.why);
        if (!why.found)
            throw Refused("There is no caregiver " + given.why);
        context.Print({{"emp_id", why.emp_id},
                       {"emp_name", why.emp_name},
                       {"shown", why.shown},
                       {"reason", why.reason},
                       {"change", why.change}});
        return 0;
    }
    const Suggestion suggestion = SearchCaregivers(session, needs, request, given.options);
    VisitAmounts amounts(session);
    amounts.ReadPayRates(needs.client, needs.visitType);
    const long burdens = Burdens(session);
    Json rows = Json::array();
    for (const SuggestedCaregiver& row : suggestion.rows) {
        const double pay =
            amounts.Pay({needs.client, needs.visitType, needs.billCode, needs.liveIn, row.emp_id},
                        request.day.At(request.time), request.hours);
        rows.push_back(RowOf(suggestion, row, needs.bill, pay, burdens, given.options.skillsPercent));
    }
    Json warnings = Json::array();
    for (const SuggestionWarning& warning : suggestion.Warnings())
        warnings.push_back(
            {{"emp_id", warning.emp_id}, {"emp_name", warning.emp_name}, {"reason", warning.reason}});
    context.Print({{"count", suggestion.rows.size()},
                   {"rows", rows},
                   {"rejected", suggestion.rejected},
                   {"warnings", warnings}});
    return 0;
}

}  // namespace

Action PrepareAmount(CLI::App& command) {
    struct Options {
        bool bill = false;
        bool pay = false;
        RatedVisit visit;
        std::string start;
        double hours = 0;
    };
    auto given = std::make_shared<Options>();
    auto* which = command.add_option_group("which")->require_option(1);
    which->add_flag("--bill", given->bill, "What the payer is billed");
    which->add_flag("--pay", given->pay, "What the caregiver is paid");
    command.add_option("--client", given->visit.client, "The client's id")->required();
    command.add_option("--visit-type", given->visit.visitType, "The call type's code")->required();
    command.add_option("--bill-code", given->visit.billCode, "The payer's code; 1 is the client himself");
    command.add_option("--emp", given->visit.emp_id, "The caregiver's id");
    command.add_option("--start", given->start, "The visit's start, YYYY-MM-DD HH:MM")->required();
    command.add_option("--hours", given->hours, "Its hours")->required()->check(CLI::NonNegativeNumber);
    command.add_flag("--live-in", given->visit.liveIn, "By the live-in rate");
    return [given](Context& context) {
        const Date start = MomentArgument(given->start);
        context.OpenWork();
        const double amount = given->bill
                                  ? BillAmountForVisit(context.session, given->visit, start, given->hours)
                                  : PayAmountForVisit(context.session, given->visit, start, given->hours);
        context.Print({{"amount", amount}});
        return 0;
    };
}

Action PrepareSuggest(CLI::App& command) {
    auto given = std::make_shared<SuggestArguments>();
    AddSuggestOptions(command, *given);
    return [given](Context& context) { return RunSuggest(context, *given); };
}

}  // namespace kv::tool
