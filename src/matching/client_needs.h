#pragma once
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// For whom and when a caregiver is looked for.
struct SuggestionRequest {
    std::string client;
    Date day;
    Date time;  ///< of day; midnight where none was given
    double hours = 0;
    long authorization = 0;  ///< 0 for none
    bool liveIn = false;     ///< around the clock
    /// The authorization of the assignment that the search was opened from, 0 for none. It filters nobody: a
    /// missing rate is explained with it.
    long openedFrom = 0;
};

/// The boxes of FRMempsug.
struct SuggestionOptions {
    bool areas = false;              ///< CHKWillWork
    bool potential = false;          ///< CHKPotential
    bool language = false;           ///< CHKLanguage
    bool gender = false;             ///< CHKgender
    bool discipline = false;         ///< CHKDiscipline: exactly that level
    bool type = false;               ///< CHKtype
    bool skillsPercent = false;      ///< CHKskills
    bool critical = false;           ///< CHKcritical
    bool ignoreUnavailable = false;  ///< CHKtime
    bool ignoreStart = false;        ///< CHKignore_Times
    std::string group = "ALL";       ///< CMBempgroup
};

struct SkillNeed {
    std::string code;
    std::string description;
    bool critical = false;
};
/// A caregiver who has visited the client, or should not.
struct KnownCaregiver {
    std::string emp_id;
    std::string text;
};
using LabelledText = std::pair<std::string, std::string>;

/// The client's side of the search.
struct ClientNeeds {
    std::string client;
    std::string area;      ///< BORO; empty for none
    std::string language;  ///< its code
    std::string gender;    ///< "F", "M", or none asked for
    std::string type;      ///< "FIELD", "STAFFING" or "BOTH"
    long disciplineValue = 0;
    bool liveIn = false;  ///< by the request or the authorization
    std::string visitType;
    long billCode = 0;
    std::vector<SkillNeed> skills;  ///< as TreeView1 lists them
    std::vector<KnownCaregiver> visited, banned;
    std::vector<LabelledText> panel;  ///< FGcli
    double bill = 0;                  ///< of the visit; 0 is told as missing
    std::string billFault;            ///< LBLbillrate
    std::string billReason;           ///< why it is missing, where that is known

    std::vector<std::string> CriticalSkills() const;
};
/// Activate_Suggestion. A step that fails is passed over. Throws EngineError only where the databases can't
/// be read at all.
ClientNeeds PrepareClient(Session& session, const SuggestionRequest& request);

/// The query of the employees that the boxes let through.
/// With an id, whether they let her through.
std::string EmployeeStatement(const ClientNeeds& needs, const SuggestionRequest& request,
                              const SuggestionOptions& options, const std::string& emp_id = {});

}  // namespace kv
