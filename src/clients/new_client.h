#pragma once
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// A row of LSTtemplate. The last one stands for any client, who is picked when it is ticked.
struct TemplateRow {
    std::string text;
    std::string id;
    bool isTemplate = true;
};
/// The templates by name, and "Use an Existing Client". Throws EngineError.
std::vector<TemplateRow> LoadTemplates(Session& session);
/// The name of a client as LSTtemplate shows it.
std::string TemplateName(Session& session, const std::string& id);

struct PayerItem {
    std::string name;
    long billCode = 0;
};
/// The payers by name. Throws EngineError.
std::vector<PayerItem> LoadPayers(Session& session);

/// What frmnew's boxes hold.
struct NewClient {
    std::string id;
    Date start;
    bool asTemplate = false;
    bool potential = false;
    std::string pattern;  ///< the client or template whose rows are copied; empty for none
    std::optional<PayerItem> payer;
    std::string visitType;         ///< the call type's code; empty for none
    std::string visitDescription;  ///< and its words
};

enum class NewClientResult {
    Saved,
    NoCallType,  ///< told in a message
    IdUsed,      ///< result says so, and the id's box is to be emptied
    IdTooShort,
};
struct NewClientAnswer {
    NewClientResult result = NewClientResult::Saved;
    std::string words;  ///< for LBLresult
};
/// Makes the client with copies of the pattern's rows (phones, documents, extra information, lists, plan of
/// care, the client row itself), and with a payer a rate and an authorization. The id goes into
/// Session::PickedEmployee, where the main screen looks for it. All of it is stored or,
/// where EngineError is thrown, nothing.
NewClientAnswer SaveNewClient(Session& session, const NewClient& client);

}  // namespace kv
