#pragma once
#include <functional>

#include "screens/widgets/line_box.h"

namespace kv {

namespace mask {
inline constexpr const char* kSocial = "999-99-9999";
inline constexpr const char* kSocialCanada = "999-999-999";
inline constexpr const char* kPhone = "(999) 999-9999";
inline constexpr const char* kZip = "99999-9999";
}  // namespace mask

/// A line with a mask: 9 takes a digit, L a letter, A either; every other character stands for itself. Places
/// that are not filled show "_". Value() is the characters without the literals, Null when there
/// are none. A content that the mask can't hold whole is shown as far as it goes and stays as it is in its
/// row until the operator changes it.
class MaskedBox : public LineBox {
    Q_OBJECT
  public:
    MaskedBox(const QString& name, const QString& caption, const QString& mask, QWidget* parent);

    kv::Value Value() const override;
    QString Text() const override { return displayText(); }
    /// The present characters are kept as far as the new mask takes them.
    void SetMask(const QString& mask);
    const QString& Mask() const { return mask_; }
    /// True when every place is filled.
    bool IsComplete() const;
    /// What a paste puts in the box instead of the clipboard's text (the phones keep ten digits of it).
    /// Without one a paste takes the clipboard's characters that the mask allows: they replace everything
    /// when they fill the whole mask.
    void SetPasteRule(std::function<QString(const QString&)> rule) { pasteRule_ = std::move(rule); }
    /// As the paste key does.
    void Paste(const QString& text);

  protected:
    void Show(const kv::Value& value) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    QString Characters() const;
    QString Taken(const QString& text) const;
    QString Filled(const QString& characters) const;
    int Places() const;

    QString mask_;
    std::function<QString(const QString&)> pasteRule_;
};

}  // namespace kv
