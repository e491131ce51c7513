#include "screens/widgets/status_bar.h"

#include <QLabel>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

StatusBar::StatusBar(const QString& name, const std::vector<Panel>& panels, QWidget* parent)
    : QStatusBar(parent) {
    setObjectName(name);
    for (const Panel& panel : panels) {
        auto* label = new QLabel(this);
        label->setObjectName(name + QStringLiteral("_%1").arg(PanelCount() + 1));
        label->setAccessibleName(panel.meaning);
        label->setToolTip(panel.meaning);
        label->setFrameShape(QFrame::StyledPanel);
        label->setIndent(theme::kHalfUnit);
        label->setMinimumWidth(theme::CharactersWide(*label, panel.characters));
        addWidget(label, panel.stretches ? 1 : 0);
        panels_.push_back(label);
    }
}

void StatusBar::SetPanel(int index, const QString& text) {
    panels_.at(static_cast<std::size_t>(index) - 1)->setText(text);
}

QString StatusBar::PanelText(int index) const {
    return panels_.at(static_cast<std::size_t>(index) - 1)->text();
}

}  // namespace kv
