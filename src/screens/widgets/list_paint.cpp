#include "screens/widgets/list_paint.h"

#include <QPainter>
#include <QWidget>

#include "screens/widgets/theme.h"

namespace kv {

void PaintListGround(QWidget& viewport, int top, const std::optional<QColor>& ground,
                     const QString& emptyText) {
    QPainter painter(&viewport);
    if (ground) {
        painter.fillRect(viewport.rect().adjusted(0, top, 0, 0), *ground);
    }
    if (!emptyText.isEmpty()) {
        painter.setPen(theme::ColorOf(theme::Ink::Hint, viewport.palette()));
        painter.drawText(viewport.rect().adjusted(theme::kUnit, theme::kUnit, -theme::kUnit, -theme::kUnit),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText);
    }
}

}  // namespace kv
