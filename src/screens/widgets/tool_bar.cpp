#include "screens/widgets/tool_bar.h"

#include <QAction>
#include <QToolButton>
#include <algorithm>

#include "screens/widgets/theme.h"

namespace kv {

namespace {

struct Standard {
    const char* key;
    const char* word;
    const char* tip;
    const char* shortcut;
};

// Shortcuts that the text boxes leave free.
constexpr Standard kStandard[] = {
    {"exit", "Exit", "Exit", "Ctrl+Q"},
    {"first", "First", "First record", "Alt+Home"},
    {"previous", "Previous", "Previous record", "Alt+PgUp"},
    {"next", "Next", "Next record", "Alt+PgDown"},
    {"last", "Last", "Last record", "Alt+End"},
    {"new", "New", "Add a new record", "Ctrl+N"},
    {"edit", "Edit", "Change this record", "F2"},
    {"delete", "Delete", "Delete this record", "Ctrl+D"},
    {"save", "Save", "Save the changes", "Ctrl+S"},
    {"discard", "Discard", "Discard the changes", "Ctrl+R"},
    {"sort", "Sort", "Choose the order", "Ctrl+T"},
    {"search", "Search", "Search", "Ctrl+F"},
    {"select", "Select", "Take the highlighted row", "Ctrl+Return"},
    {"print", "Print", "Print", "Ctrl+P"},
    {"setup", "Setup", "Set the printer up", ""},
    {"export", "Export", "Save as a file", "Ctrl+E"},
    {"import", "Import", "Take over from another program", ""},
    {"generate", "Generate", "The next free ID", "Ctrl+G"},
    {"assign", "Assign", "Assignments", ""},
    {"goto", "Go To", "Go to a page", "Ctrl+G"},
    {"interface", "Interface", "Exchange with other programs", "Ctrl+I"},
    {"help", "Help", "Help", "F1"},
};

QString TipOf(const ToolKey& key) {
    const QString tip = key.tip.isEmpty() ? key.word : key.tip;
    return key.shortcut.isEmpty()
               ? tip
               : QStringLiteral("%1 (%2)").arg(tip, key.shortcut.toString(QKeySequence::NativeText));
}

}  // namespace

ToolKey StandardKey(const QString& key, const QString& tip) {
    const auto* found = std::find_if(std::begin(kStandard), std::end(kStandard),
                                     [&](const Standard& each) { return key == QLatin1String(each.key); });
    if (found == std::end(kStandard)) {
        return {key, key, tip, {}, {}};
    }
    return {key, QString::fromLatin1(found->word), tip.isEmpty() ? QString::fromLatin1(found->tip) : tip, key,
            QKeySequence(QString::fromLatin1(found->shortcut))};
}

ToolKey ToolSeparator() {
    return {};
}

ToolBar::ToolBar(const QString& name, const std::vector<ToolKey>& keys, QWidget* screen) : QToolBar(screen) {
    setObjectName(name);
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const int side = theme::IconSide(*this);
    setIconSize(QSize(side, side));
    for (const ToolKey& key : keys) {
        if (key.key.isEmpty()) {
            buttons_.push_back({key, addSeparator()});
            continue;
        }
        QAction* action = addAction(theme::Icon(key.icon), key.word);
        action->setShortcut(key.shortcut);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        screen->addAction(action);
        connect(action, &QAction::triggered, this, [this, pressed = key.key] { emit keyPressed(pressed); });
        QWidget* button = widgetForAction(action);
        button->setObjectName(name + QLatin1Char('_') + key.key);
        button->setAccessibleName(key.word);
        buttons_.push_back({key, action});
        SetTip(key.key, key.tip);
    }
}

QAction* ToolBar::ActionOf(const QString& key) const {
    const int button = ButtonOfKey(key);
    return button == 0 ? nullptr : buttons_[static_cast<std::size_t>(button) - 1].action;
}

void ToolBar::EnableKey(const QString& key, bool enabled) {
    if (QAction* action = ActionOf(key)) {
        action->setEnabled(enabled);
    }
}

bool ToolBar::IsKeyEnabled(const QString& key) const {
    const QAction* action = ActionOf(key);
    return action != nullptr && action->isEnabled();
}

void ToolBar::ShowKey(const QString& key, bool shown) {
    if (QAction* action = ActionOf(key)) {
        action->setVisible(shown);
    }
}

bool ToolBar::IsKeyShown(const QString& key) const {
    const QAction* action = ActionOf(key);
    return action != nullptr && action->isVisible();
}

void ToolBar::EnableButton(int index, bool enabled) {
    EnableKey(KeyOfButton(index), enabled);
}

void ToolBar::EnableButtons(int from, int to, bool enabled) {
    for (int index = from; index <= to; ++index) {
        EnableButton(index, enabled);
    }
}

QString ToolBar::KeyOfButton(int index) const {
    return index < 1 || index > ButtonCount() ? QString()
                                              : buttons_[static_cast<std::size_t>(index) - 1].key.key;
}

int ToolBar::ButtonOfKey(const QString& key) const {
    for (int index = 1; index <= ButtonCount(); ++index) {
        if (!key.isEmpty() && KeyOfButton(index) == key) {
            return index;
        }
    }
    return 0;
}

void ToolBar::SetTip(const QString& key, const QString& tip) {
    const int index = ButtonOfKey(key);
    if (index == 0) {
        return;
    }
    Button& button = buttons_[static_cast<std::size_t>(index) - 1];
    button.key.tip = tip;
    button.action->setToolTip(TipOf(button.key));
    widgetForAction(button.action)->setAccessibleDescription(tip);
}

void ToolBar::ClearCaptions() {
    for (const Button& button : buttons_) {
        button.action->setIconText(QString());
    }
    setToolButtonStyle(Qt::ToolButtonIconOnly);
}

void ClearToolbarCaptions(ToolBar* toolbar) {
    toolbar->ClearCaptions();
}

}  // namespace kv
