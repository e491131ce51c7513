#pragma once
#include <QColor>
#include <QString>
#include <optional>

class QWidget;

namespace kv {

/// What the lists paint behind their rows: the ground from `top` down where they have one, and grey words
/// where they are empty.
void PaintListGround(QWidget& viewport, int top, const std::optional<QColor>& ground,
                     const QString& emptyText);

}  // namespace kv
