#pragma once
#include <optional>
#include <string>

#include "session/session.h"

namespace kv {

/// The fewest characters of a client's id.
inline constexpr std::size_t kLeastIdLength = 5;

enum class IdState { Empty, TooShort, Free, Used };
/// Looks at an id as the operator leaves its box; blanks around it do not count. Throws EngineError.
IdState CheckNewId(Session& session, const std::string& id);
/// What LBLresult says of it.
std::string IdStateText(IdState state);

/// The next free number above the last one used (KESTRAVA.INI, "KESTRAVA SYSTEM", "ClientID") as five
/// digits: 1 to 99899, for a template 99900 to 99999. Nothing when the range is used up. Nothing is written.
/// Throws EngineError.
std::optional<std::string> NextClientId(Session& session, bool forTemplate);
/// NextClientId, and the number goes into the INI file, but for a template: those leave the clients' counter
/// alone. Throws std::system_error where the file can't be written.
std::optional<std::string> GenerateClientId(Session& session, bool forTemplate);

}  // namespace kv
