#pragma once
#include <functional>
#include <vector>

#include "session/session.h"

class QWidget;

namespace kv {

class BoundControl;

/// The one gate before a save, however it is asked for: the box with the focus is finished as if the operator
/// had left it, and every box that was changed is judged by itself and by its screen's rule. A box that is
/// refused is told by name, marked, and gets the focus; false then, and nothing may be saved.
///
/// `show` brings a box into sight that lies on a page behind another one.
bool PassesGate(Session& session, const std::vector<BoundControl*>& boxes,
                const std::function<void(BoundControl&)>& show = {});
/// The same for the boxes of a screen that the operator can see.
bool PassesGate(Session& session, const QWidget* screen);

}  // namespace kv
