#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// The lists of which a client has several entries, picked from a company list (cli_misc).
enum class AttributeList { Skills, CallTypes, Diagnoses };

/// An entry of a company list.
struct AttributeItem {
    std::string code;
    std::string description;
    bool critical = false;  ///< a skill without which no caregiver may go
};

/// The company list, from skills, cli_calltype or ICD9 of main.mdb. Throws EngineError, as the others do.
std::vector<AttributeItem> LoadAttributeItems(Session& session, AttributeList list);

/// The client's entries, updatable.
Recordset OpenAttributes(Session& session, AttributeList list, const std::string& client);

/// Asks for the text of a call type that is in no list; nothing when the operator cancelled.
using AskCallType = std::function<std::optional<std::string>()>;

/// Adds the items to the client. One that the client has takes the company list's text again, without a
/// second row; a call type "ADD A NEW..." is asked for and always added. Writes cli_misc and, On the Road,
/// the journal. `ask` is needed for call types alone.
void AddAttributes(Session& session, AttributeList list, const std::string& client,
                   const std::vector<AttributeItem>& items, const AskCallType& ask = {});

/// Removes the current entry and moves to the first; skills and call types ask before. False where nothing
/// was removed.
bool RemoveAttribute(Session& session, AttributeList list, Recordset& entries, const std::string& client);

/// The line of a diagnosis in LSTicd9: the code in six places, two blanks, the text.
std::string DiagnosisLine(const AttributeItem& diagnosis);
/// The code and the text of such a line.
AttributeItem DiagnosisOf(const std::string& line);

/// May the user add or remove entries of a list? Diagnoses have no right of their own.
struct AttributeRights {
    bool add = true;
    bool remove = true;
};
AttributeRights AskAttributeRights(Session& session, AttributeList list);

}  // namespace kv
