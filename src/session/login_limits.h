#pragma once
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "session/session.h"

namespace kv {

/// A login with a value that is longer than the columns it would be written to. The words are for whoever
/// starts the program.
class LoginTooLong : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// How many characters of a value of the login ("User", "VENDOR", "Manager", as the settings name them) every
/// column takes that it is written to. Nothing for a value that is written to none.
std::optional<int> LoginLimit(std::string_view key);

/// Throws LoginTooLong for the first value of the session's login that a column would refuse: every save
/// would fail with it, and what was typed would not be stored.
void CheckLogin(const Session& session);

}  // namespace kv
