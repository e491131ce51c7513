#pragma once
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "matching/client_needs.h"
#include "matching/commitments.h"
#include "matching/day_slots.h"

namespace kv {

/// Why a caregiver whom the query let through is not in the result.
enum class LeftOut {
    No,
    Unavailable,      ///< she declared that she is not there
    Assigned,         ///< an assignment whose visit is still to be made
    Scheduled,        ///< a visit
    NoSkill,          ///< none of the client's skills
    NoCriticalSkill,  ///< one of the client's critical skills is missing
    NoFreeBlock,      ///< no block of free time that is long enough
};

/// A row of the result.
struct SuggestedCaregiver {
    std::string emp_id;
    std::string emp_name;  ///< "Last, First", at most 40 characters
    double max_hours = 0;  ///< left of the hours that she wants this week; may be below 0
    int skills = 0;        ///< percent of the client's
    int longest = 0;       ///< quarters of the longest free block
    bool banned = false;   ///< should not visit this client
    bool hasVisited = false;
    bool selectable = false;  ///< has every critical skill, and is employed
    QuarterLine quarters{};
    std::vector<std::string> warnings;  ///< why they may be less free than they look, a sentence each
};

/// Somebody of the result looks free by the rules, and may not be.
struct SuggestionWarning {
    std::string emp_id;
    std::string emp_name;
    std::string reason;  ///< in plain words
};

struct Suggestion {
    std::vector<SuggestedCaregiver> rows;              ///< most hours left first, then by name
    std::vector<std::string> rejected;                 ///< the lines of TEMP.TXT
    std::shared_ptr<QuarterTexts> texts;               ///< of the rows' quarters
    std::unordered_map<std::string, LeftOut> leftOut;  ///< by the id in capitals
    bool brokenOff = false;  ///< by the operator; the rows are those looked at so far

    /// Of all rows, in their order.
    std::vector<SuggestionWarning> Warnings() const;
    bool IsFree(const SuggestedCaregiver& row, int quarter) const {
        return row.quarters[static_cast<std::size_t>(quarter)] == 0;
    }
    const std::string& TextOf(const SuggestedCaregiver& row, int quarter) const {
        return texts->Text(row.quarters[static_cast<std::size_t>(quarter)]);
    }
};

/// redo_Search and the thinning of its result: who can be sent, in the order of the grid. Writes the lines of
/// the rejected to TEMP.TXT in the data folder. An employee query that fails finds nobody; where the
/// caregivers' time can't be read EngineError is thrown, for nobody may be called free then. Lets the window
/// system breathe and can be broken off.
Suggestion SearchCaregivers(Session& session, const ClientNeeds& needs, const SuggestionRequest& request,
                            const SuggestionOptions& options);

/// Puts the rows into assign_head of a private working database, in one go. Throws EngineError.
void WriteAssignHead(Database& working, const Suggestion& suggestion, const SuggestionRequest& request);

/// What a search finds of one caregiver.
struct Judgement {
    LeftOut leftOut = LeftOut::No;
    SuggestedCaregiver row;
};
/// The part of an employee's row that the search reads.
struct Candidate {
    std::string emp_id, lastName, firstName;
    double hoursPerWeek = 0;
};
Candidate ReadCandidate(const Recordset& employee);

/// The rules for one candidate after another.
class CaregiverJudge {
  public:
    CaregiverJudge(const ClientNeeds& needs, const SuggestionRequest& request,
                   const SuggestionOptions& options);
    const Window& When() const { return window_; }
    /// `quarters` must be free at first. The names of rejected ones are kept in Rejected().
    Judgement Judge(const Candidate& candidate, const Commitments& commitments, QuarterTexts& texts);
    const std::vector<std::string>& Rejected() const { return rejected_; }

  private:
    int SkillsPercent(const Commitments& commitments) const;
    LeftOut JudgeTime(const Candidate& candidate, const Commitments& commitments, QuarterLine& line,
                      QuarterTexts& texts);
    bool HasCriticalSkills(const Commitments& commitments) const;
    LeftOut Thin(const Candidate& candidate, const Commitments& commitments, SuggestedCaregiver& row,
                 const QuarterTexts& texts) const;
    void Reject(const Candidate& candidate, const char* why);

    const ClientNeeds& needs_;
    const SuggestionRequest& request_;
    const SuggestionOptions& options_;
    Window window_;
    std::string clientSkills_;  ///< each followed by a comma
    std::vector<std::string> critical_;
    std::vector<std::string> rejected_;
};

}  // namespace kv
