#pragma once
#include <QComboBox>
#include <QStringList>
#include <string>
#include <vector>

#include "clients/lookups.h"
#include "screens/widgets/bound_control.h"

namespace kv {

/// A list of texts; its value is the text. Editable: any text can be typed. Not editable: only items can be
/// picked, and a loaded text that is no item leaves nothing picked. Qt's activated(int) tells the operator's
/// own pick.
class PlainCombo : public QComboBox, public BoundControl {
    Q_OBJECT
  public:
    enum class Style { List, Editable };
    PlainCombo(const QString& name, const QString& caption, Style style, int characters, QWidget* parent);

    kv::Value Value() const override;
    QString Text() const override { return currentText(); }
    /// As a routine enters it: marks the change.
    void SetText(const QString& text);
    /// Replaces the list and keeps the text shown where it can; the changed mark stays as it was. `keys`,
    /// where given, stand beside the items one by one.
    void SetItems(const QStringList& items, const QStringList& keys = {});
    void SetItems(const std::vector<std::string>& items);
    QStringList Items() const;
    /// The key beside the picked item, or empty.
    QString Key() const;
    /// Picks the item with the key, or nothing; counts as a change. True when there is one.
    bool PickKey(const QString& key);
    /// Loads a content as SetValue does; of items that read alike it is the one with the key.
    void SetKeyed(const QString& text, const QString& key);
    void SetCharacters(int characters) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void Show(const kv::Value& value) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    int characters_;
};

/// The tip that lets a left double click empty a look-up combo.
inline constexpr const char* kDoubleClickToClear = "Double Click to clear";

/// A look-up list: shows descriptions, its value is the code of the one shown (the bound text). A text that
/// is in no item is kept as typed, is its own bound text, and is for the validation to name. A code without
/// an item shows as itself. Typing completes to the first item that begins alike.
class LookupCombo : public QComboBox, public BoundControl {
    Q_OBJECT
  public:
    LookupCombo(const QString& name, const QString& caption, int characters, QWidget* parent);

    /// The code, or the empty text.
    kv::Value Value() const override;
    /// The description as shown.
    QString Text() const override { return currentText(); }
    std::string BoundText() const;
    /// As a routine enters it: marks the change.
    void SetBoundText(const std::string& code);
    /// For lists that no validation looks at: an entry that is in no item can't be stored.
    void SetListOnly(bool listOnly) { listOnly_ = listOnly; }
    bool CanFault() const override { return listOnly_; }
    /// A code typed by hand shows its item.
    bool Check() override;
    /// True when the text is one of the list's (in any case).
    bool IsInList() const;
    /// Replaces the list, sizes the drop-down to it, keeps the bound text; the changed mark stays as it was.
    void SetItems(std::vector<LookupItem> items);
    const std::vector<LookupItem>& Items() const { return items_; }
    /// Empties it as the operator would.
    void Clear();
    void SetCharacters(int characters) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void Show(const kv::Value& value) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    std::vector<LookupItem> items_;
    int characters_;
    bool listOnly_ = false;
};

}  // namespace kv
