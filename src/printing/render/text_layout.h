#pragma once
#include <QFont>
#include <memory>
#include <string>
#include <vector>

#include "printing/document/document.h"

class QTextLayout;

namespace kv {

/// All layout is done in units of a fine raster, so that pages break alike on every device.
inline constexpr double kUnitsPerInch = 600;
inline double Units(double inches) {
    return inches * kUnitsPerInch;
}

/// The font of a run: what it names itself, else what its paragraph's kind and the document say.
QFont FontOf(const TextStyle& style, const TextStyle& base, int heading = 0);

/// The runs broken into lines of a width in units; each line stands at 0, 0 of the layout.
std::shared_ptr<QTextLayout> LayOut(const std::vector<TextRun>& runs, const TextStyle& base, int heading,
                                    Align align, double width);
std::shared_ptr<QTextLayout> LayOut(const std::string& text, const TextStyle& style, const TextStyle& base,
                                    Align align, double width);

}  // namespace kv
