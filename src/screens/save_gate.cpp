#include "screens/save_gate.h"

#include <QWidget>
#include <algorithm>

#include "screens/widgets/bound_control.h"
#include "screens/widgets/qt_text.h"

namespace kv {

bool PassesGate(Session& session, const std::vector<BoundControl*>& boxes,
                const std::function<void(BoundControl&)>& show) {
    const auto refused =
        std::find_if(boxes.begin(), boxes.end(), [](BoundControl* box) { return !box->Finish(); });
    if (refused == boxes.end()) {
        return true;
    }
    BoundControl& box = **refused;
    // A rule has told by itself why.
    if (!box.Fault().isEmpty()) {
        session.ShowMessageWindow(FromQt(box.Caption() + QLatin1Char(' ') + box.Fault()));
    }
    if (show) {
        show(box);
    }
    box.Widget()->setFocus();
    return false;
}

bool PassesGate(Session& session, const QWidget* screen) {
    std::vector<BoundControl*> boxes = BoundControlsOf(screen);
    std::erase_if(boxes, [&](BoundControl* box) { return !box->Widget()->isVisibleTo(screen); });
    return PassesGate(session, boxes);
}

}  // namespace kv
