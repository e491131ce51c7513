#include "screens/notes_keys.h"

#include "screens/widgets/notes_box.h"

namespace kv {

std::vector<ToolKey> NotesToolKeys(const QString& stampKey) {
    const auto key = [](const QString& name, const QString& word, const QString& tip, const char* icon,
                        const char* shortcut) {
        return ToolKey{name, word, tip, QString::fromLatin1(icon),
                       QKeySequence(QString::fromLatin1(shortcut))};
    };
    return {
        key(QStringLiteral("bottom"), QObject::tr("Bottom"), QObject::tr("Go to the end of the notes"),
            "last", ""),
        key(stampKey, QObject::tr("Stamp"), QStringLiteral("Insert a Date/Time stamp"), "clock",
            "Ctrl+Shift+T"),
        key(QStringLiteral("bold"), QObject::tr("Bold"), QObject::tr("Bold"), "bold", "Ctrl+B"),
        key(QStringLiteral("underline"), QObject::tr("Underline"), QObject::tr("Underline"), "underline",
            "Ctrl+U"),
        key(QStringLiteral("italic"), QObject::tr("Italic"), QObject::tr("Italic"), "italic", "Ctrl+I"),
    };
}

std::map<QString, std::function<void()>> NotesKeyActions(const QString& stampKey, NotesBox& box,
                                                         const std::function<Date()>& now) {
    return {
        {QStringLiteral("bottom"), [&box] { box.Bottom(); }},
        {stampKey, [&box, now] { box.Stamp(now()); }},
        {QStringLiteral("bold"), [&box] { box.ToggleBold(); }},
        {QStringLiteral("underline"), [&box] { box.ToggleUnderline(); }},
        {QStringLiteral("italic"), [&box] { box.ToggleItalic(); }},
    };
}

}  // namespace kv
