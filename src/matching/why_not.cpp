#include "matching/why_not.h"

#include <cstdlib>

#include "base/format.h"
#include "base/text.h"
#include "matching/free_warnings.h"
#include "matching/suggestion.h"

namespace kv {

namespace {

constexpr int kMinutesOfQuarter = 15;
constexpr int kMinutesOfHour = 60;
constexpr double kQuartersOfHour = 4;

/// A filter of the employee query that keeps her out.
struct Barrier {
    std::string reason;
    const char* box = nullptr;  ///< the box that need not be ticked, or nullptr where no box helps
};

bool LivesIn(Session& session, const std::string& emp_id, const std::string& area) {
    for (Recordset row = session.dbMainWork->OpenRecordset(
             Sql("select * from emp_locations where emp = {}", emp_id), RecordsetType::Snapshot);
         !row.Eof(); row.MoveNext()) {
        if (EqualsNoCase(row.Text("district"), area)) {
            return true;
        }
    }
    return false;
}

std::vector<Barrier> BarriersOf(Session& session, const Recordset& employee, const ClientNeeds& needs,
                                const SuggestionRequest& request, const SuggestionOptions& options) {
    std::vector<Barrier> barriers;
    const auto add = [&barriers](std::string reason, const char* box) {
        Barrier& barrier = barriers.emplace_back();
        barrier.reason = std::move(reason);
        barrier.box = box;
    };
    const std::string status = employee.Text("t_code");
    const Value left = employee.Get("t_date");
    const bool isPotential = EqualsNoCase(status, "Z");
    if (options.potential && !isPotential) {
        add("Is not a potential caregiver", "Try 'Potential' Only");
    } else if (!options.potential && !EqualsNoCase(status, "A") &&
               (left.IsNull() || left.ToDate() < request.day.DayOnly())) {
        std::string reason = "Is not active";
        if (isPotential) {
            reason = "Is a potential caregiver";
        } else if (!left.IsNull()) {
            reason += " since " + FormatDate(left.ToDate(), "MMM/DD/YYYY");
        }
        add(reason, nullptr);
    }
    if (options.group != "ALL" && !EqualsNoCase(employee.Text("dept"), Trim(options.group))) {
        add("Is in the care group '" + employee.Text("dept") + "'", "Care Group");
    }
    if (needs.liveIn && !employee.Get("live_in").IsTrue()) {
        add("Takes no live-in work", nullptr);
    }
    if (options.language && !ContainsNoCase(employee.Text("tot_lang"), needs.language)) {
        add("Does not speak the client's language", "Language");
    }
    if (options.gender && (needs.gender == "F" || needs.gender == "M") &&
        !EqualsNoCase(employee.Text("SEX"), needs.gender)) {
        add("Is not of the requested gender", "Requested Gender");
    }
    const double level = employee.Get("disp_level").NumberOr(0);
    const auto wanted = static_cast<double>(needs.disciplineValue);
    if (level < wanted) {
        add("The discipline level " + FormatNumber(level, "0") + " is below the required " +
                FormatNumber(wanted, "0"),
            nullptr);
    } else if (options.discipline && level > wanted) {
        add("The discipline level is above the required one", "Discipline");
    }
    if (options.type && (needs.type == "FIELD" || needs.type == "STAFFING") &&
        EqualsNoCase(employee.Text("EMP_TYPE"), needs.type == "FIELD" ? "STAFFING" : "FIELD")) {
        add("Is a caregiver of the type " + Upper(employee.Text("EMP_TYPE")), "Caregiver Type");
    }
    if (options.areas && !needs.area.empty() && !LivesIn(session, employee.Text("emp_id"), needs.area)) {
        add("Does not work in " + needs.area, "Areas the Caregiver will Work");
    }
    return barriers;
}

/// Would she be in the result?
bool IsShown(Session& session, const ClientNeeds& needs, const SuggestionRequest& request,
             const SuggestionOptions& options, const Candidate& candidate) {
    if (session.dbMainWork
            ->OpenRecordset(EmployeeStatement(needs, request, options, candidate.emp_id),
                            RecordsetType::Snapshot)
            .Eof()) {
        return false;
    }
    CaregiverJudge judge(needs, request, options);
    const AllCommitments commitments(session, request, judge.When(), candidate.emp_id);
    QuarterTexts texts;
    return judge.Judge(candidate, commitments.Of(candidate.emp_id), texts).leftOut == LeftOut::No;
}

/// The same search with the boxes unticked.
SuggestionOptions Without(SuggestionOptions options, const std::vector<Barrier>& barriers) {
    for (const Barrier& barrier : barriers) {
        const std::string box = barrier.box == nullptr ? "" : barrier.box;
        options.potential = options.potential && box != "Try 'Potential' Only";
        options.language = options.language && box != "Language";
        options.gender = options.gender && box != "Requested Gender";
        options.discipline = options.discipline && box != "Discipline";
        options.type = options.type && box != "Caregiver Type";
        options.areas = options.areas && box != "Areas the Caregiver will Work";
        options.group = box == "Care Group" ? "ALL" : options.group;
    }
    return options;
}

void TellBarriers(const std::vector<Barrier>& barriers, bool helps, WhyNot& answer) {
    std::vector<std::string> reasons;
    std::vector<std::string> boxes;
    for (const Barrier& barrier : barriers) {
        reasons.push_back(barrier.reason);
        if (barrier.box != nullptr) {
            boxes.push_back(std::string("'") + barrier.box + "'");
        }
    }
    answer.reason = Join(reasons, "; ") + ".";
    if (helps) {
        const bool group = boxes.size() == 1 && boxes.front() == "'Care Group'";
        answer.change = group ? "Search in all care groups." : "Search without " + Join(boxes, " and ") + ".";
    }
}

/// The start nearest to the one asked for, on the same day, at which she is free; nothing where there is
/// none.
std::string NearestStart(const Candidate& candidate, const ClientNeeds& needs, SuggestionRequest request,
                         const SuggestionOptions& options, Session& session) {
    const int asked = MinuteOfDay(request.time);
    for (int shift = kMinutesOfQuarter; shift < kMinutesOfDay; shift += kMinutesOfQuarter) {
        for (const int start : {asked + shift, asked - shift}) {
            if (start < 0 || start >= kMinutesOfDay) {
                continue;
            }
            request.time = Date::FromTime(start / kMinutesOfHour, start % kMinutesOfHour);
            if (IsShown(session, needs, request, options, candidate)) {
                const int minutes = std::abs(start - asked);
                const std::string span =
                    minutes < kMinutesOfHour
                        ? std::to_string(minutes) + " minutes"
                        : FormatNumber(static_cast<double>(minutes) / kMinutesOfHour, "0.##") + " hours";
                return "Start at " + ClockText(start) + ", " + span +
                       (start > asked ? " later." : " earlier.");
            }
        }
    }
    return {};
}

std::string MissingSkill(const ClientNeeds& needs, const Commitments& commitments) {
    std::vector<std::string> missing;
    for (const SkillNeed& need : needs.skills) {
        bool has = !need.critical;
        for (const std::string& skill : commitments.skills) {
            has = has || EqualsNoCase(skill, need.code);
        }
        if (!has) {
            missing.push_back(need.description.empty() ? need.code : need.description);
        }
    }
    return Join(missing, ", ");
}

}  // namespace

WhyNot ExplainCaregiver(Session& session, const ClientNeeds& needs, const SuggestionRequest& request,
                        const SuggestionOptions& options, const std::string& emp_id) {
    WhyNot answer;
    answer.emp_id = emp_id;
    const Recordset employee = session.dbMainWork->OpenRecordset(
        Sql("select * from employee where emp_id = {}", emp_id), RecordsetType::Snapshot);
    if (employee.Eof()) {
        answer.reason = "Caregiver was not found";
        return answer;
    }
    answer.found = true;
    answer.emp_id = employee.Text("emp_id");
    const Candidate candidate = ReadCandidate(employee);
    answer.emp_name = Trim(candidate.lastName) + ", " + Trim(candidate.firstName);
    if (const auto barriers = BarriersOf(session, employee, needs, request, options); !barriers.empty()) {
        TellBarriers(barriers, IsShown(session, needs, request, Without(options, barriers), candidate),
                     answer);
        return answer;
    }
    if (session.dbMainWork
            ->OpenRecordset(EmployeeStatement(needs, request, options, answer.emp_id),
                            RecordsetType::Snapshot)
            .Eof()) {
        answer.reason = "The caregiver's record does not hold what the boxes ask for.";
        return answer;
    }
    CaregiverJudge judge(needs, request, options);
    const AllCommitments all(session, request, judge.When(), answer.emp_id);
    const Commitments& commitments = all.Of(answer.emp_id);
    QuarterTexts texts;
    const Judgement judgement = judge.Judge(candidate, commitments, texts);
    const auto nearest = [&] { return NearestStart(candidate, needs, request, options, session); };
    SuggestionOptions other = options;
    switch (judgement.leftOut) {
        case LeftOut::No:
            answer.shown = true;
            break;
        case LeftOut::Unavailable:
            answer.reason = "Declared not to be available then.";
            answer.change = options.ignoreStart ? std::string() : nearest();
            other.ignoreUnavailable = true;
            if (answer.change.empty() && IsShown(session, needs, request, other, candidate)) {
                answer.change = "Tick 'Ignore Unavailable Time'.";
            }
            break;
        case LeftOut::Assigned:
            answer.reason = "Is already assigned to be scheduled then.";
            answer.change = options.ignoreStart ? std::string() : nearest();
            break;
        case LeftOut::Scheduled:
            answer.reason = "Is already scheduled then.";
            answer.change = nearest();
            break;
        case LeftOut::NoSkill:
            answer.reason = "Has none of the skills that the client needs.";
            other.skillsPercent = false;
            if (IsShown(session, needs, request, other, candidate)) {
                answer.change = "Search without 'Show Skills Percent'.";
            }
            break;
        case LeftOut::NoCriticalSkill:
            answer.reason = "Lacks the critical skill: " + MissingSkill(needs, commitments) + ".";
            answer.change = "One skill: " + MissingSkill(needs, commitments) + ".";
            break;
        case LeftOut::NoFreeBlock:
            answer.reason = "The longest free block has " +
                            FormatNumber(judgement.row.longest / kQuartersOfHour, "0.00") + " hours.";
            answer.change = judgement.row.longest > 0
                                ? "Ask for " + FormatNumber(judgement.row.longest / kQuartersOfHour, "0.00") +
                                      " hours at most."
                                : std::string();
            break;
    }
    return answer;
}

std::string CaregiverOfWords(Session& session, const std::string& words) {
    const std::string text = Trim(words);
    if (text.empty()) {
        return {};
    }
    Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select emp_id from employee where emp_id = {}", text), RecordsetType::Snapshot);
    if (!row.Eof()) {
        return row.Text("emp_id");
    }
    // The last name is found by its index; the first one, where there is a comma, beside it.
    const std::size_t comma = text.find(',');
    const std::string last = Trim(text.substr(0, comma));
    const std::string first = comma == std::string::npos ? std::string() : Trim(text.substr(comma + 1));
    row = session.dbMainWork->OpenRecordset(
        Sql("select emp_id from employee where left(lastname,{}) = {} and left(firstname,{}) = {} order by "
            "lastname,firstname",
            Length(last), last, Length(first), first),
        RecordsetType::Snapshot);
    return row.Eof() ? std::string() : row.Text("emp_id");
}

}  // namespace kv
