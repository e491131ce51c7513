#pragma once
#include <QCheckBox>
#include <QRadioButton>

#include "screens/widgets/bound_control.h"

namespace kv {

/// A tick; its caption stands on the box itself. Value() is a boolean; Null shows unticked. Native setChecked
/// counts as a change.
class CheckBox : public QCheckBox, public BoundControl {
    Q_OBJECT
  public:
    CheckBox(const QString& name, const QString& caption, QWidget* parent);
    kv::Value Value() const override { return isChecked(); }
    /// "1" or "0".
    QString Text() const override { return isChecked() ? QStringLiteral("1") : QStringLiteral("0"); }

  protected:
    void Show(const kv::Value& value) override;
};

/// One of several options below one parent.
class OptionBox : public QRadioButton, public BoundControl {
    Q_OBJECT
  public:
    OptionBox(const QString& name, const QString& caption, QWidget* parent);
    kv::Value Value() const override { return isChecked(); }
    QString Text() const override { return isChecked() ? QStringLiteral("1") : QStringLiteral("0"); }

  protected:
    void Show(const kv::Value& value) override;
};

}  // namespace kv
