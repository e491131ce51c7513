#pragma once
#include <QPlainTextEdit>

#include "screens/widgets/line_box.h"

namespace kv {

/// One line of text. Native calls such as setMaxLength, setReadOnly and setText hold too; setText counts as a
/// change.
class TextBox : public LineBox {
    Q_OBJECT
  public:
    TextBox(const QString& name, const QString& caption, int characters, QWidget* parent);

    kv::Value Value() const override;
    QString Text() const override { return text(); }
    /// Letters are folded to upper case as they are typed.
    void SetUpperCase(bool upper);

  protected:
    void Show(const kv::Value& value) override;
};

/// Several lines of text. Tab leaves it.
class MemoBox : public QPlainTextEdit, public BoundControl {
    Q_OBJECT
  public:
    /// As wide and as high as so many characters and lines; it grows with its layout.
    MemoBox(const QString& name, const QString& caption, int characters, int lines, QWidget* parent);

    kv::Value Value() const override;
    QString Text() const override { return toPlainText(); }
    /// 0 for no limit. What is typed or pasted beyond is cut off.
    void SetMaxLength(int length);
    int MaxLength() const { return maxLength_; }
    void SetText(const QString& text) { setPlainText(text); }
    void SetCharacters(int characters) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void Show(const kv::Value& value) override;

  private:
    void CutToLength();

    int characters_;
    int lines_;
    int maxLength_ = 0;
    std::string loaded_;
    QString loadedShown_;
};

}  // namespace kv
