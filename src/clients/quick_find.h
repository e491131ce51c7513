#pragma once
#include <functional>
#include <string>
#include <vector>

#include "clients/client_form.h"
#include "clients/client_moves.h"
#include "session/session.h"

namespace kv {

/// Lets the operator choose one of several hits; the chosen id, or "" for none.
using QuickFindChooser = std::function<std::string(const std::vector<QuickFindRow>&)>;

/// The quick find from its key to the client: the required check and the prompt, the search in the limited
/// list, the choice where there are several hits. True when the list stands on the client found; the screen
/// then empties TXTquick and runs ShowClientRecord. Throws EngineError.
bool QuickFindClient(Session& session, ClientForm& form, const std::string& text,
                     const QuickFindChooser& choose);

}  // namespace kv
