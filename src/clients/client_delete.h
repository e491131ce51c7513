#pragma once
#include <string>

#include "clients/client_form.h"
#include "session/session.h"

namespace kv {

/// CheckClientDelete: true when the client can't be deleted; FRMDis_error then tells how many rows of which
/// kind stand against it. A client whose status word is "Potential" has no billing history, and is not looked
/// at. Throws EngineError.
bool CheckClientDelete(Session& session, const std::string& id, const std::string& statusWord);

/// The delete key: refuses on the road and while rows stand against it, asks, deletes the client with what
/// belongs to it, leaves one row in the change history and refreshes the list. True when the client is gone.
/// A client whose status is another one than `statusWord`, which the screen shows, is not deleted and shown
/// again. All of it goes or, where EngineError is thrown, nothing.
bool DeleteClient(Session& session, ClientForm& form, const std::string& statusWord);

}  // namespace kv
