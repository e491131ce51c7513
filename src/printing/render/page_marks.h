#pragma once
#include <QImage>
#include <QLineF>
#include <QRectF>
#include <memory>
#include <variant>
#include <vector>

class QTextLayout;

namespace kv {

// What stands on a laid-out page, in units of the layout's raster.

/// One line of a text.
struct TextMark {
    std::shared_ptr<QTextLayout> layout;
    int line = 0;
    QPointF at;
};
struct RuleMark {
    QLineF line;
    bool faint = false;
};
struct BarMark {
    QRectF rect;
    bool faint = false;  ///< a ground for text
};
struct PictureMark {
    QRectF rect;
    QImage image;
};

using PageMarks = std::vector<std::variant<TextMark, RuleMark, BarMark, PictureMark>>;

}  // namespace kv
