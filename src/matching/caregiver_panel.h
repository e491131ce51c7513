#pragma once
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "billing/visit_amounts.h"
#include "matching/client_needs.h"

namespace kv {

/// A child of a tree of the caregiver's; `matches` what the client needs.
struct PanelItem {
    std::string text;
    bool matches = false;
};

/// Everything that stands beside the chosen caregiver.
struct CaregiverPanel {
    std::vector<LabelledText> rows;   ///< fgEMP
    std::set<std::string> differing;  ///< labels in which client and caregiver do not agree
    std::vector<std::string> expired;
    std::vector<PanelItem> areas, languages, skills;
    std::set<std::string> skillCodes;  ///< hers, in capitals
    std::vector<std::string> missingCritical;
    bool maySelect = false;
    bool banned = false;
    std::string notes;  ///< of the caregiver, or why she should not visit
    std::string notesTitle;
    double pay = 0;
    std::string payFault;
    std::optional<double> margin;   ///< percent; nothing where a rate is missing
    std::filesystem::path picture;  ///< empty for none
    double weekHours = 0;           ///< of the week of the visit
    double weekHoursAfter = 0;      ///< with this visit
    long visits = 0;                ///< how often she has been with this client
};

/// ShowCaregiverPanel. `amounts` may have read the pay rates of many before. A step that fails is passed
/// over.
CaregiverPanel DescribeCaregiverForVisit(Session& session, const ClientNeeds& needs,
                                         const SuggestionRequest& request, const SuggestionOptions& options,
                                         const std::string& emp_id, VisitAmounts& amounts);

/// The burdens that KESTRAVA.INI puts on what is paid, in percent.
long Burdens(Session& session);
/// What is left of the bill behind pay and burdens, in percent; nothing where an amount is 0.
std::optional<double> GrossMargin(double bill, double pay, long burdens);
/// The tool tip of Numgross.
std::string MarginTip(long burdens);

/// What has expired of a caregiver's papers by today: her licence, and dated requirements.
std::vector<std::string> ExpiredInformation(Session& session, const Recordset& employee);
/// Her picture in the data folder, where there is one; the ".JPG" wins.
std::filesystem::path CaregiverPicture(const Session& session, const std::string& emp_id);
std::vector<PanelItem> LanguagesOf(Session& session, const Recordset& employee, const std::string& wanted);
std::vector<PanelItem> AreasOf(Session& session, const std::string& emp_id, const std::string& wanted);

}  // namespace kv
