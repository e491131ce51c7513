#pragma once
#include <vector>

#include "session/user_defaults.h"

class QWidget;

namespace kv {

/// The controls of a screen whose tag holds "DEFAULT", for LoadUserDefaults and SaveUserDefaults.
std::vector<DefaultControl> DefaultControlsOf(const QWidget* screen);

}  // namespace kv
