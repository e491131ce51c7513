#pragma once
#include <QKeySequence>
#include <QString>
#include <QToolBar>
#include <vector>

namespace kv {

/// One button of a toolbar, by its key in small letters. An empty key is a separator, which takes a button
/// number like the others.
struct ToolKey {
    QString key;
    QString word;
    QString tip;
    QString icon;
    QKeySequence shortcut;
};

/// The key as most screens have it ("exit", "first", "previous", "next", "last", "new", "edit", "delete",
/// "save", "discard", "sort", "search", "select", "print", "setup", "export", "goto", "interface", "help");
/// another tip where one is given. An unknown key has its own name as word and no icon.
ToolKey StandardKey(const QString& key, const QString& tip = {});
ToolKey ToolSeparator();

/// A toolbar that dispatches on its buttons' keys. Shortcuts hold while the focus is inside `screen`. Tips
/// name the shortcut. Each button is named by the toolbar and the key ("Toolbar1_save").
class ToolBar : public QToolBar {
    Q_OBJECT
  public:
    ToolBar(const QString& name, const std::vector<ToolKey>& keys, QWidget* screen);

    void EnableKey(const QString& key, bool enabled);
    bool IsKeyEnabled(const QString& key) const;
    void ShowKey(const QString& key, bool shown);
    bool IsKeyShown(const QString& key) const;
    /// Buttons count from 1, separators included.
    void EnableButton(int index, bool enabled);
    void EnableButtons(int from, int to, bool enabled);
    int ButtonCount() const { return static_cast<int>(buttons_.size()); }
    QString KeyOfButton(int index) const;
    /// 0 for an unknown key.
    int ButtonOfKey(const QString& key) const;
    QAction* ActionOf(const QString& key) const;
    void SetTip(const QString& key, const QString& tip);
    /// Empties the buttons' words; the tips and the names for assistive tools stay.
    void ClearCaptions();

  signals:
    void keyPressed(const QString& key);

  private:
    struct Button {
        ToolKey key;
        QAction* action = nullptr;
    };
    std::vector<Button> buttons_;
};

/// Empties the caption of every button of a toolbar.
void ClearToolbarCaptions(ToolBar* toolbar);

}  // namespace kv
