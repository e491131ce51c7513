#pragma once
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QScopedValueRollback>
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "clients/screen_controls.h"
#include "datastore/value.h"

class QAbstractButton;
class QWidget;

namespace kv {

/// Carries the signals of a BoundControl, which is a plain interface beside its Qt base class.
class ControlNotifier : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

  signals:
    /// The content changed other than by SetValue: typed, picked, pasted, or entered by a routine.
    void changed();
    /// Fault() became another one, mostly as the operator left the box.
    void faultChanged();
};

/// Everything that holds one value and can be tied to a field. Implemented by the boxes below, each of which
/// is also its Qt widget; its objectName is the control's system name.
class BoundControl {
  public:
    virtual ~BoundControl();
    BoundControl(const BoundControl&) = delete;
    BoundControl& operator=(const BoundControl&) = delete;

    QWidget* Widget() const { return widget_; }
    ControlNotifier* Notifier() const { return notifier_; }
    /// A time box counts as Date, an option as CheckBox.
    ControlKind Kind() const { return kind_; }
    QString Name() const;

    /// The field that BoundSource ties it to; empty for a free control.
    const std::string& DataField() const { return dataField_; }
    void SetDataField(const std::string& field) { dataField_ = field; }

    /// Free words that steer routines: "NOTCLIENT" (kept out of change detection), "DEFAULT" (remembered per
    /// user).
    const QString& Tag() const { return tag_; }
    void SetTag(const QString& tag) { tag_ = tag; }

    /// The content as it would be stored: Null where a number, date, time or mask is unfilled; the empty text
    /// of a text box; the bound text of a look-up combo; a mask's characters without the literals. Where
    /// Fault() is not empty it is what was last good.
    virtual kv::Value Value() const = 0;
    /// What the control shows, unfilled marks included ("__/__/____").
    virtual QString Text() const = 0;
    /// Loads a content: shown as it is held, the changed mark cleared, no signal.
    void SetValue(const kv::Value& value);
    /// Puts a content in as the operator would: the mark is set and changed() sent where it differs from what
    /// is shown.
    void EnterValue(const kv::Value& value);

    /// Set by every change other than SetValue; cleared by SetValue.
    bool IsDataChanged() const { return dataChanged_; }
    void SetDataChanged(bool changed) { dataChanged_ = changed; }

    /// Why the present entry can't be stored ("Not a date"), or empty.
    const QString& Fault() const { return fault_; }
    virtual bool CanFault() const { return false; }
    /// Judges the entry now, as leaving the control does; false when it can't be stored.
    virtual bool Check() { return true; }
    /// The screen's own rule for what is entered in this box, beside Check(): looks it up, fills what follows
    /// from it, and answers false where it refused it, having told the operator why. It runs once for each
    /// entry: when the operator leaves the box, or before a save.
    void SetRule(std::function<bool()> rule) { rule_ = std::move(rule); }
    /// The entry is complete: Check() and the rule judge it. False where one of them refuses it.
    bool Finish();

    bool IsEnabled() const;
    virtual void SetEnabled(bool enabled);
    /// Shows or hides the control with its label.
    void SetShown(bool shown);

    /// The label's words without mnemonic and required mark ("Last Name:"). SetCaption may hold a mnemonic
    /// ("&Last Name:"); it also names the control for assistive tools.
    QString Caption() const;
    void SetCaption(const QString& caption);
    /// The label, made with the control and named "LBL" and its name. It stays hidden until it is placed.
    QLabel* Label() const { return label_; }
    /// The label for a layout, shown from now on where it has a caption; nullptr for a control that bears its
    /// caption itself. FieldForm does this.
    QLabel* PlaceLabel();
    /// A star behind the caption and the word "Required" for assistive tools.
    void SetRequired(bool required);
    bool IsRequired() const { return required_; }
    /// Words beside the box for Fault(), hidden while there is none, for a layout; FieldForm places it behind
    /// boxes that can be at fault. Where it is not placed a tip tells the fault.
    QLabel* PlaceFaultLabel();

    /// As wide as so many characters of the font.
    virtual void SetCharacters(int characters);

  protected:
    BoundControl(QWidget* widget, ControlKind kind);
    /// Called by the constructors of the boxes once the widget has its parent.
    void SetUp(const QString& name, const QString& caption);
    /// Shows the value; called inside SetValue and EnterValue.
    virtual void Show(const kv::Value& value) = 0;
    /// To be called at each change of the widget's content, loads included: those are told apart here.
    void NoteChange();
    /// Runs something that alters what is shown without counting as a change.
    template <typename Change>
    void Quietly(Change change) {
        const QScopedValueRollback<bool> loading(loading_, true);
        change();
    }
    bool IsLoading() const { return loading_; }
    void SetFault(const QString& fault);
    /// To be called as the operator leaves the box.
    void RunRule();

  private:
    void ShowFault();
    void ShowCaption();
    QAbstractButton* AsButton() const;

    QWidget* widget_ = nullptr;
    ControlNotifier* notifier_ = nullptr;
    ControlKind kind_;
    std::string dataField_;
    QString tag_;
    QString caption_;
    QString fault_;
    QPointer<QLabel> label_;
    QPointer<QLabel> faultLabel_;
    bool required_ = false;
    bool labelPlaced_ = false;
    std::function<bool()> rule_;
    bool judged_ = true;    ///< the rule has passed the present entry
    bool judging_ = false;  ///< a message of the rule is up, which takes the focus once more
    bool dataChanged_ = false;
    bool loading_ = false;
};

/// The bound controls below a widget in the order in which they read (the tab order), hidden ones included.
std::vector<BoundControl*> BoundControlsOf(const QWidget* screen);
/// The one of that name below the widget, or nullptr.
BoundControl* FindBoundControl(const QWidget* screen, const QString& name);
/// The control's widget as a BoundControl, or nullptr.
BoundControl* AsBoundControl(QWidget* widget);

/// The control as the rules see it.
ScreenControl DescribeControl(const BoundControl& control);
/// All of BoundControlsOf as the rules see them.
ScreenControls DescribeControls(const QWidget* screen);

/// Tab goes through the widgets as they are listed.
void SetTabOrderOf(const std::vector<QWidget*>& widgets);

}  // namespace kv
