// schedule, conflicts, will-work, week-hours: the visits of assignments, and the caregivers' time.
#include <memory>
#include <optional>

#include "base/format.h"
#include "scheduling/schedule_creation.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"
#include "tool/command.h"

namespace kv::tool {

namespace {

struct WhichAssignments {
    std::optional<long> assignment;
    std::optional<long> authorization;
    bool all = false;
};

std::vector<long> Chosen(Session& session, const WhichAssignments& which) {
    if (which.assignment)
        return {*which.assignment};
    return which.authorization ? AssignmentsOf(session, *which.authorization) : AllAssignments(session);
}

Json RowOf(const RemovedVisit& visit) {
    return {{"what", visit.what},
            {"reason", visit.reason},
            {"caregiver", visit.caregiver},
            {"client", visit.client},
            {"date", FormatDate(visit.date, "YYYY-MM-DD")},
            {"time", visit.time}};
}

Json DocumentOf(const ScheduleCreation& creation) {
    Json removed = Json::array();
    for (const RemovedVisit& visit : creation.Removed())
        removed.push_back(RowOf(visit));
    return {{"assignments", creation.Finished()}, {"created", creation.Created()}, {"removed", removed}};
}

int RunSchedule(Context& context, const WhichAssignments& which) {
    Session& session = context.session;
    context.OpenWork();
    const std::vector<long> assignments = Chosen(session, which);
    ScheduleCreation creation(session);
    try {
        creation.RunAll(assignments);
    } catch (const EngineError&) {
        // The batches before are stored: who was taken off their visits must be known.
        context.Print(DocumentOf(creation));
        throw;
    }
    context.Print(DocumentOf(creation));
    return 0;
}

/// The options of a visit that a caregiver might make.
struct VisitOptions {
    std::string emp, date, start;
    double hours = 0;

    void AddTo(CLI::App& command) {
        command.add_option("--emp", emp, "The caregiver's id")->required();
        command.add_option("--date", date, "The visit's day, YYYY-MM-DD")->required();
        command.add_option("--start", start, "Its start, HH:MM")->required();
        command.add_option("--hours", hours, "Its hours")->required()->check(CLI::NonNegativeNumber);
    }
    ProposedVisit Visit(const Session& session) const {
        return ProposeVisit(session.clock, emp, DayArgument(date), TimeArgument(start), hours);
    }
};

template <typename Answer>
Action PrepareVisitQuestion(CLI::App& command, Answer answer) {
    auto options = std::make_shared<VisitOptions>();
    options->AddTo(command);
    return [options, answer](Context& context) {
        const ProposedVisit visit = options->Visit(context.session);
        context.OpenWork();
        context.Print(answer(context.session, visit));
        return 0;
    };
}

}  // namespace

Action PrepareSchedule(CLI::App& command) {
    auto which = std::make_shared<WhichAssignments>();
    auto* choice = command.add_option_group("which")->require_option(1);
    choice->add_option("--assignment", which->assignment, "One assignment, by its sequence");
    choice->add_option("--authorization", which->authorization, "Those of one authorization");
    choice->add_flag("--all", which->all, "Every assignment");
    return [which](Context& context) { return RunSchedule(context, *which); };
}

Action PrepareConflicts(CLI::App& command) {
    return PrepareVisitQuestion(command, [](Session& session, const ProposedVisit& visit) {
        return Json{{"count", FindScheduleConflict(session, visit)}};
    });
}

Action PrepareWillWork(CLI::App& command) {
    return PrepareVisitQuestion(command, [](Session& session, const ProposedVisit& visit) {
        return Json{{"covered", FindWillWorkConflict(session, visit)}};
    });
}

Action PrepareWeekHours(CLI::App& command) {
    struct Options {
        std::string emp, date;
    };
    auto options = std::make_shared<Options>();
    command.add_option("--emp", options->emp, "The caregiver's id")->required();
    command.add_option("--date", options->date, "A day of the week, YYYY-MM-DD")->required();
    return [options](Context& context) {
        const Date day = DayArgument(options->date);
        context.OpenWork();
        context.Print({{"hours", CaregiverWeekHours(context.session, options->emp, day)}});
        return 0;
    };
}

}  // namespace kv::tool
