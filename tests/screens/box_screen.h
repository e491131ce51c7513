#pragma once
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWidget>

#include "screens/widgets/bound_control.h"
#include "support/qt_driver.h"

namespace kv {

/// A shown window with one box in it.
template <typename Box>
struct BoxScreen {
    template <typename... Arguments>
    explicit BoxScreen(Arguments&&... arguments)
        : box(new Box(std::forward<Arguments>(arguments)..., &window)) {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(box);
        qt_driver::Show(window);
        qt_driver::Leave(*box);
    }
    QWidget window;
    Box* box;
};

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

}  // namespace kv
