#pragma once
#include <string>

#include "session/session.h"

namespace kv {

/// Does the user hold a right? A code asked for the first time is registered in Screens of main.mdb with
/// `defaultAccess`; later defaults are not used. With `showMessage` a refusal is told in a box "Security
/// Message". Opens and closes main.mdb, so it is called while a screen loads and not in loops. Throws
/// EngineError.
bool CheckScreenAccess(Session& session, const std::string& screen, bool showMessage = false,
                       const std::string& description = {}, const std::string& system = {},
                       const std::string& defaultAccess = {});

}  // namespace kv
