#pragma once
#include <functional>
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// A control whose content is remembered for each user. While the screen runs its tag is "DEFAULT~" and the
/// content that was loaded, so that saving can tell whether it changed.
struct DefaultControl {
    std::string name;  ///< with its index, where it has one
    std::function<std::string()> content;
    std::function<void(const std::string&)> enter;
    std::function<std::string()> tag;
    std::function<void(const std::string&)> setTag;
};

/// LoadUserDefaults: gives each control what the user left in it, under the key user|module|screen|control.
/// A user whose option for the screen is "Never" gets nothing, unless the option is not to be looked at.
/// Throws EngineError.
void LoadUserDefaults(Session& session, const std::string& user, const std::string& module,
                      const std::string& screen, const std::vector<DefaultControl>& controls,
                      bool skipOptionCheck = false);
/// SaveUserDefaults: keeps the contents that differ from those loaded; asks once where the option is
/// "Prompt". Throws EngineError.
void SaveUserDefaults(Session& session, const std::string& user, const std::string& module,
                      const std::string& screen, const std::vector<DefaultControl>& controls,
                      bool skipOptionCheck = false);

}  // namespace kv
