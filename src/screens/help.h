#pragma once
#include <functional>
#include <string>

#include "session/session.h"

namespace kv {

/// Opens a file with the desktop's own program, with an argument.
using OpenFile = std::function<bool(const std::string& target, const std::string& argument)>;

/// Starts the suite's help program on a topic ("client", "client~5"); says so where there is none. Without
/// `open` the desktop opens it.
void StartHelp(Session& session, const std::string& topic, const OpenFile& open = {});

}  // namespace kv
