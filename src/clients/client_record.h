#pragma once
#include <array>
#include <string>
#include <string_view>

#include "clients/client_rights.h"
#include "clients/client_texts.h"
#include "session/session.h"

namespace kv {

enum class ClientKind { Client, Potential, Template };

/// A row is a template by ISTEMPLATE, else potential by CASESTATCD "Z".
ClientKind KindOfClient(const Recordset& row);
/// The word in TXTStatus: "Active", "Template", "Suspended", "Closed", "Potential", "Deceased", or "" for any
/// other code.
std::string StatusWord(std::string_view caseStatCd, bool isTemplate);

/// Days from the first contact to the start of care. A date that is not filled counts as day 0, and more than
/// 2000 days either way show as 0, which keeps one missing date from showing a huge count.
long NumDays(const Value& firstContact, const Value& startOfCare);
/// Days in service: to the end of care, or to today when the end lies before today; more than 4000 either way
/// show as 0.
long NumActiveDays(const Value& startOfCare, const Value& endOfCare, Date today);

struct StatusBarTexts {
    std::string lastChange = "Last Change by: ";
    std::string dateTime = "Date/Time: ";
    std::string position = "0";
    std::string count = "0";
};
/// The panels for the list's current row, or the empty ones without a row.
StatusBarTexts StatusBarOf(const Recordset& list);

/// Which of Toolbar1's buttons are enabled; index 0 is not used, 6 and 11 are separators.
using ToolbarButtons = std::array<bool, 15>;
/// An empty list leaves exit (1), help (14) and, with CanAdd, new (7).
ToolbarButtons ClientToolbar(const Session& session, bool listHasRows);

/// Which images and parts are open to a client.
struct ClientSections {
    std::array<bool, kSectionCount> images{};
    std::array<bool, kPartCount> parts{};
    /// TXTmisc, TXText, cmdGetQBID, CMDpaste and FRAMEemerg are enabled.
    bool accountBoxes = true;
};
/// A template may use the sections whose rows a new client takes over from it, and the parts 0, 4, 5 and 6. A
/// potential client may use every part and the sections whose rows are removed together with a potential
/// client: it has no authorizations yet, and no caregiver who was there and should not come again. Rights
/// take 1 and 3 away from anybody.
ClientSections SectionsOf(ClientKind kind, const ClientRights& rights);

/// What ShowClientRecord shows beside the bound fields.
struct ClientView {
    std::string id;
    std::string statusWord;
    ClientKind kind = ClientKind::Client;
    std::string potentialStatus;  ///< for CMBpotientalStatus
    long numDays = 0;
    long numActiveDays = 0;
    StatusBarTexts statusBar;
    ClientSections sections;
    bool potentialButtons = false;  ///< CMDchangeToActive and CMDAnyCaregivers are shown
    std::string notes;              ///< for TXTedit and TXTbox; "" for Null
};
/// The view of the list's current row. Without a row: the empty state, in which all images are closed.
ClientView DescribeClient(const Session& session, const Recordset& list, const ClientRights& rights);

}  // namespace kv
