#include "clients/client_texts.h"

#include <stdexcept>
#include <string>

namespace kv {

const std::array<std::string_view, kSectionCount> kSectionTips = {
    "Client Demographics",
    "Add/Change/View Billing Rates",
    "Add/Change/View Authorizations",
    "Add/Change/View events that has happened with this client.",
    "Add/Change/View Caregivers who Should not Visit this client.",
    "Add/Change/View Additional Phone Numbers.",
    "Add/Change/View the Plan of Care.",
    "Add/Change/View the Skills Required for this client",
    "Add/Change/View Required Dates.",
    "Add/Change/View Extra Information on the client.",
    "Add/Change/View Extra Call Type information.",
    "Add/Change/View External Documents attached to this client.",
    "To Do List for this client.",
};

const std::array<std::string_view, kPartCount> kPartTips = {
    "Change/View required client information",
    "Change/View general client information",
    "Change/View directions and a map to this client",
    "Change/View general notes for this client",
    "Change/View third party billing address",
    "Change/View referral information",
    "Change/View the history of changes made on this client",
};

const std::vector<FixedList>& FixedLists() {
    static const std::vector<FixedList> lists = {
        {"CMBpotientalStatus", {"Active", "InActive"}, "Active"},
        {"CMBhol", {"YES", "NO"}, ""},
        {"CMBwhichMap", {"Map Quest", "Rand McNally"}, "Map Quest"},
        {"CMBfindStatus", {"All", "Active", "Closed", "Potential"}, "Active"},
        {"FGReferral", {"Name", "Address", "City", "State", "Phone", "Fax"}, ""},
        {"FGcontact", {"Name", "Title", "Address", "City", "State", "Phone", "Email"}, ""},
        {"CMBhowoften", {"W", "B", "M", "O"}, ""},
        {"CMBphone", {"2nd", "Cell", "Work"}, ""},
        {"CMBbilltype", {"Scheduled", "Actual", "Rounded"}, ""},
        {"CMBcliStatus",
         {"ALL CLIENTS", "ACTIVE", "CLOSED", "SUSPENDED", "DECEASED", "POTENTIAL", "TEMPLATES",
          "Authorization Check", "First Contact Check", "Birthday Check"},
         "ACTIVE"},
    };
    return lists;
}

const FixedList& FixedListOf(std::string_view control) {
    for (const FixedList& list : FixedLists()) {
        if (list.control == control) {
            return list;
        }
    }
    throw std::out_of_range("No fixed list for " + std::string(control));
}

const std::vector<CountryText>& CountryTexts(bool canada) {
    static const std::vector<CountryText> unitedStates = {
        {"TXTstate", "State:", ""},       {"TDBText18", "State:", ""}, {"TDBText2", "State:", ""},
        {"TXTzip", "Zip:", ""},           {"TDBText17", "Zip:", ""},   {"TDBText1", "Zip:", ""},
        {"txtSsn", "SSN", "999-99-9999"},
    };
    static const std::vector<CountryText> canadian = {
        {"TXTstate", "Province:", ""},        {"TDBText18", "Province:", ""},
        {"TDBText2", "Province:", ""},        {"TXTzip", "Postal:", ""},
        {"TDBText17", "Postal:", ""},         {"TDBText1", "Postal:", ""},
        {"txtSsn", "Social:", "999-999-999"},
    };
    return canada ? canadian : unitedStates;
}

}  // namespace kv
