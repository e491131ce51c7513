#pragma once
#include <QString>
#include <string>
#include <string_view>

namespace kv {

/// The rules speak UTF-8, the widgets QString.
inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

/// The object name of one control of an array: "IMGCommand" and 3 give "IMGCommand3".
inline QString IndexedName(const QString& name, int index) {
    return name + QString::number(index);
}

}  // namespace kv
