#include "matching/suggestion.h"

#include <algorithm>
#include <cmath>
#include <system_error>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/try_step.h"
#include "matching/free_warnings.h"
#include "scheduling/visit_conflicts.h"

namespace kv {

namespace {

constexpr std::size_t kNameWidth = 40;
constexpr std::size_t kRejectedWidth = 50;
constexpr std::size_t kBetweenYields = 64;
constexpr const char* kRejectedFile = "TEMP.TXT";
constexpr double kQuartersOfHour = 4;

bool AnyOverlaps(const std::vector<TimeRow>& rows, const Window& window) {
    return std::any_of(rows.begin(), rows.end(),
                       [&](const TimeRow& row) { return Overlaps(row.Placed(), window.span); });
}

/// What a row of an assignment or a visit occupies of the day. `skipsMidnight`: a row of the day before that
/// ends at midnight sharp has nothing on this one.
void WriteRow(QuarterLine& line, QuarterTexts& texts, const TimeRow& row, bool skipsMidnight) {
    if (row.dayShift == 0) {
        WriteQuarters(line, texts, row.text, row.start, row.RunsPastMidnight() ? 0 : row.end);
    } else if (row.dayShift == -1 && row.RunsPastMidnight() && !(skipsMidnight && row.end == 0)) {
        WriteQuarters(line, texts, row.text, 0, row.end);
    }
}

void WriteRejected(Session& session, const std::vector<std::string>& lines) {
    std::string content;
    for (const std::string& line : lines) {
        content += line + "\r\n";
    }
    try {
        ReplaceFile(session.DataFile(kRejectedFile), content);
    } catch (const std::system_error& error) {
        // The list can't be printed then; the search itself stands.
        LogSkippedStep(error.code().value(), error.code().message());
    }
}

bool ComesBefore(const SuggestedCaregiver& a, const SuggestedCaregiver& b) {
    return a.max_hours != b.max_hours ? a.max_hours > b.max_hours : CompareText(a.emp_name, b.emp_name) < 0;
}

/// The employees that the boxes let through; none where their query fails.
std::vector<Candidate> ReadCandidates(Session& session, const std::string& statement) {
    std::vector<Candidate> candidates;
    try {
        for (Recordset row = session.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
             !row.Eof(); row.MoveNext()) {
            candidates.push_back(ReadCandidate(row));
        }
    } catch (const EngineError& error) {
        LogSkipped(error);
        candidates.clear();
    }
    return candidates;
}

std::set<std::string> IdsOf(const std::vector<KnownCaregiver>& known) {
    std::set<std::string> ids;
    for (const KnownCaregiver& each : known) {
        ids.insert(Upper(each.emp_id));
    }
    return ids;
}

/// All who should not visit the client, also those whom her tree leaves out.
std::set<std::string> BannedFrom(Session& session, const std::string& client) {
    std::set<std::string> ids;
    for (Recordset row = session.dbMainWork->OpenRecordset(
             Sql("select emp_id from emp_ban where client = {}", client), RecordsetType::Snapshot);
         !row.Eof(); row.MoveNext()) {
        ids.insert(Upper(row.Text("emp_id")));
    }
    return ids;
}

}  // namespace

Candidate ReadCandidate(const Recordset& employee) {
    return {employee.Text("emp_id"), employee.Text("LastName"), employee.Text("FirstName"),
            employee.Get("hrsper_week").NumberOr(0)};
}

CaregiverJudge::CaregiverJudge(const ClientNeeds& needs, const SuggestionRequest& request,
                               const SuggestionOptions& options)
    : needs_(needs),
      request_(request),
      options_(options),
      window_(WindowOf(request, options)),
      critical_(needs.CriticalSkills()) {
    for (const SkillNeed& skill : needs.skills) {
        clientSkills_ += skill.code + ",";
    }
}

int CaregiverJudge::SkillsPercent(const Commitments& commitments) const {
    constexpr double kWhole = 100;
    if (!options_.skillsPercent) {
        return 0;
    }
    if (needs_.skills.empty()) {
        return static_cast<int>(kWhole);
    }
    // A plain test for the piece of text: a short code counts inside a longer one too.
    const auto count =
        std::count_if(commitments.skills.begin(), commitments.skills.end(),
                      [this](const std::string& id) { return ContainsNoCase(clientSkills_, id); });
    return static_cast<int>(
        std::lround(static_cast<double>(count) / static_cast<double>(needs_.skills.size()) * kWhole));
}

void CaregiverJudge::Reject(const Candidate& candidate, const char* why) {
    rejected_.push_back(
        PadLeftToWidth(Trim(candidate.lastName) + ", " + candidate.firstName, kRejectedWidth) + why);
}

LeftOut CaregiverJudge::JudgeTime(const Candidate& candidate, const Commitments& commitments,
                                  QuarterLine& line, QuarterTexts& texts) {
    if (!options_.ignoreUnavailable && AnyOverlaps(commitments.unavailable, window_) &&
        !WillingOver(commitments, window_)) {
        return LeftOut::Unavailable;
    }
    for (const TimeRow& row : commitments.unavailable) {
        if (row.dayShift == 0) {
            WriteQuarters(line, texts, row.text, row.start, row.end);
        }
    }
    for (const TimeRow& row : commitments.willing) {
        if (row.dayShift == 0) {
            ClearQuarters(line, row.start, row.end);
        }
    }
    if (AnyOverlaps(commitments.assignments, window_)) {
        Reject(candidate, " is already assigned to be scheduled");
        return LeftOut::Assigned;
    }
    for (const TimeRow& row : commitments.assignments) {
        WriteRow(line, texts, row, false);
    }
    if (AnyOverlaps(commitments.visits, window_)) {
        Reject(candidate, " is already scheduled");
        if (!options_.ignoreStart) {
            return LeftOut::Scheduled;
        }
    }
    for (const TimeRow& row : commitments.visits) {
        WriteRow(line, texts, row, true);
    }
    return LeftOut::No;
}

bool CaregiverJudge::HasCriticalSkills(const Commitments& commitments) const {
    return std::all_of(critical_.begin(), critical_.end(), [&](const std::string& code) {
        return std::any_of(commitments.skills.begin(), commitments.skills.end(),
                           [&](const std::string& id) { return EqualsNoCase(id, code); });
    });
}

LeftOut CaregiverJudge::Thin(const Candidate& candidate, const Commitments& commitments,
                             SuggestedCaregiver& row, const QuarterTexts& texts) const {
    if (options_.skillsPercent && row.skills == 0) {
        return LeftOut::NoSkill;
    }
    row.max_hours = candidate.hoursPerWeek - commitments.weekHours;
    row.selectable = HasCriticalSkills(commitments) && !options_.potential;
    if (options_.critical && !HasCriticalSkills(commitments)) {
        return LeftOut::NoCriticalSkill;
    }
    int run = 0;
    for (const std::uint32_t quarter : row.quarters) {
        const bool free =
            quarter == 0 || (options_.ignoreUnavailable && texts.Text(quarter) == "UnAvailable");
        run = free ? run + 1 : 0;
        row.longest = std::max(row.longest, run);
    }
    if (options_.ignoreStart && row.longest / kQuartersOfHour < request_.hours) {
        return LeftOut::NoFreeBlock;
    }
    return LeftOut::No;
}

Judgement CaregiverJudge::Judge(const Candidate& candidate, const Commitments& commitments,
                                QuarterTexts& texts) {
    Judgement judgement;
    SuggestedCaregiver& row = judgement.row;
    row.emp_id = candidate.emp_id;
    row.emp_name = Left(Trim(candidate.lastName) + ", " + Trim(candidate.firstName), kNameWidth);
    row.skills = SkillsPercent(commitments);
    judgement.leftOut = JudgeTime(candidate, commitments, row.quarters, texts);
    if (judgement.leftOut == LeftOut::No) {
        judgement.leftOut = Thin(candidate, commitments, row, texts);
    }
    return judgement;
}

Suggestion SearchCaregivers(Session& session, const ClientNeeds& needs, const SuggestionRequest& request,
                            const SuggestionOptions& options) {
    Suggestion suggestion;
    suggestion.texts = std::make_shared<QuarterTexts>();
    const std::vector<Candidate> candidates =
        ReadCandidates(session, EmployeeStatement(needs, request, options));
    CaregiverJudge judge(needs, request, options);
    if (!candidates.empty()) {
        const AllCommitments commitments(session, request, judge.When());
        const std::set<std::string> banned = BannedFrom(session, needs.client);
        const std::set<std::string> visited = IdsOf(needs.visited);
        ProgressBar bar(session.progress, "Looking for caregivers", static_cast<long>(candidates.size()));
        suggestion.rows.reserve(candidates.size());
        for (std::size_t i = 0; i < candidates.size() && !suggestion.brokenOff; ++i) {
            const std::string key = Upper(candidates[i].emp_id);
            const Commitments& theirs = commitments.Of(key);
            Judgement judgement = judge.Judge(candidates[i], theirs, *suggestion.texts);
            if (judgement.leftOut == LeftOut::No) {
                judgement.row.warnings = FreeWarnings(theirs, judge.When(), options);
                judgement.row.banned = banned.count(key) != 0;
                judgement.row.hasVisited = visited.count(key) != 0;
                suggestion.rows.push_back(std::move(judgement.row));
            } else {
                suggestion.leftOut.emplace(key, judgement.leftOut);
            }
            if ((i + 1) % kBetweenYields == 0) {
                bar.Advance(static_cast<long>(kBetweenYields));
                suggestion.brokenOff = !session.progress.Yield();
            }
        }
    }
    suggestion.rejected = judge.Rejected();
    // A query that finds nobody leaves the list of the search before.
    if (!candidates.empty()) {
        WriteRejected(session, suggestion.rejected);
    }
    std::stable_sort(suggestion.rows.begin(), suggestion.rows.end(), ComesBefore);
    return suggestion;
}

std::vector<SuggestionWarning> Suggestion::Warnings() const {
    std::vector<SuggestionWarning> warnings;
    for (const SuggestedCaregiver& row : rows) {
        for (const std::string& reason : row.warnings) {
            warnings.push_back({row.emp_id, row.emp_name, reason});
        }
    }
    return warnings;
}

void WriteAssignHead(Database& working, const Suggestion& suggestion, const SuggestionRequest& request) {
    Transaction all = working.BeginTransaction();
    working.Execute("delete * from assign_head");
    Recordset head = working.OpenRecordset("assign_head");
    const std::string day = WeekdayCode(request.day);
    std::array<std::size_t, kQuarters> fields{};
    for (int quarter = 0; quarter < kQuarters; ++quarter) {
        fields[static_cast<std::size_t>(quarter)] = head.FieldIndex(std::to_string(QuarterNumber(quarter)));
    }
    for (const SuggestedCaregiver& row : suggestion.rows) {
        head.AddNew();
        head.Set("emp_id", row.emp_id);
        head.Set("emp_name", row.emp_name);
        head.Set("Day", day);
        head.Set("max_hours", row.max_hours);
        head.Set("skills", row.skills);
        for (std::size_t quarter = 0; quarter < kQuarters; ++quarter) {
            if (row.quarters[quarter] != 0) {
                head.Set(fields[quarter], suggestion.texts->Text(row.quarters[quarter]));
            }
        }
        head.Update();
    }
    all.Commit();
}

}  // namespace kv
