#include "screens/frmClient_part.h"

#include "screens/widgets/bound_control.h"
#include "screens/widgets/bound_source.h"

namespace kv {

ClientPart::ClientPart(const QString& frame, QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    auto* page = new QWidget(this);
    page->setObjectName(frame);
    setWidget(page);
}

void ClientPart::BindTo(BoundSource& source) const {
    for (const auto& [control, field] : Ties()) {
        source.Bind(*control, field);
    }
}

void ClientPart::FocusFirst() {
    QWidget* next = this;
    while ((next = next->nextInFocusChain()) != this && isAncestorOf(next)) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisibleTo(this) && next->isEnabled()) {
            next->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

}  // namespace kv
