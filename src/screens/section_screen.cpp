#include "screens/section_screen.h"

#include "screens/FRMNotVisit.h"
#include "screens/FRMauthorization.h"
#include "screens/FRMbillRates.h"
#include "screens/FRMextra_Calltype.h"
#include "screens/FRMskills.h"
#include "screens/frmAddPhone.h"

namespace kv {

const Sections& ClientSectionScreens() {
    static const Sections sections = {{
        {"section_demographics", "Client"},
        {"section_rates", "Rates", MakeSection<FRMbillRates>},
        {"section_authorization", "Authorizations", MakeSection<FRMauthorization>},
        {"section_events", "Events"},
        {"section_not_visit", "Not Visit", MakeSection<FRMNotVisit>},
        {"section_phone", "Phones", MakeSection<frmAddPhone>},
        {"section_plan", "Plan of Care"},
        {"section_skills", "Skills", MakeSection<FRMskills>},
        {"section_required", "Required Dates"},
        {"section_extra", "Extra Info"},
        {"section_calltype", "Call Types", MakeSection<FRMextra_Calltype>},
        {"section_documents", "Documents"},
        {"section_todo", "To Do"},
    }};
    return sections;
}

}  // namespace kv
