#include "screens/widgets/bound_control.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QToolTip>
#include <QWidget>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

QString WithoutMnemonic(QString text) {
    text.replace(QLatin1String("&&"), QString(QChar(0)));
    text.remove(QLatin1Char('&'));
    return text.replace(QChar(0), QLatin1Char('&'));
}

}  // namespace

BoundControl::BoundControl(QWidget* widget, ControlKind kind)
    : widget_(widget), notifier_(new ControlNotifier(widget)), kind_(kind) {}

BoundControl::~BoundControl() {
    delete label_;
    delete faultLabel_;
}

void BoundControl::SetUp(const QString& name, const QString& caption) {
    widget_->setObjectName(name);
    if (AsButton() == nullptr) {
        label_ = new QLabel(widget_->parentWidget());
        label_->setObjectName(QStringLiteral("LBL") + name);
        label_->setBuddy(widget_);
        label_->hide();
    }
    SetCaption(caption);
}

QString BoundControl::Name() const {
    return widget_->objectName();
}

QAbstractButton* BoundControl::AsButton() const {
    return qobject_cast<QAbstractButton*>(widget_);
}

void BoundControl::SetValue(const kv::Value& value) {
    Quietly([&] { Show(value); });
    dataChanged_ = false;
    judged_ = true;
    SetFault({});
}

bool BoundControl::Finish() {
    if (dataChanged_ && !Check()) {
        return false;
    }
    if (!rule_ || judged_ || judging_) {
        return true;
    }
    const QScopedValueRollback<bool> judging(judging_, true);
    // Before the rule runs: where it enters something else that is judged again, unless it is passed too.
    judged_ = true;
    const bool passed = rule_();
    judged_ = passed;
    return passed;
}

void BoundControl::RunRule() {
    if (rule_ && dataChanged_ && fault_.isEmpty()) {
        Finish();
    }
}

void BoundControl::EnterValue(const kv::Value& value) {
    const kv::Value before = Value();
    const QString shown = Text();
    Quietly([&] { Show(value); });
    SetFault({});
    if (Value() != before || Text() != shown) {
        NoteChange();
    }
}

void BoundControl::NoteChange() {
    if (loading_) {
        return;
    }
    dataChanged_ = true;
    judged_ = false;
    emit notifier_->changed();
}

bool BoundControl::IsEnabled() const {
    return widget_->isEnabled();
}

void BoundControl::SetEnabled(bool enabled) {
    widget_->setEnabled(enabled);
    if (label_ != nullptr) {
        label_->setEnabled(enabled);
    }
}

void BoundControl::SetShown(bool shown) {
    widget_->setVisible(shown);
    ShowCaption();
    ShowFault();
}

QString BoundControl::Caption() const {
    return WithoutMnemonic(caption_);
}

void BoundControl::SetCaption(const QString& caption) {
    caption_ = caption;
    QString name = Caption().trimmed();
    if (name.endsWith(QLatin1Char(':'))) {
        name.chop(1);
    }
    widget_->setAccessibleName(name);
    ShowCaption();
}

void BoundControl::SetRequired(bool required) {
    required_ = required;
    ShowCaption();
    ShowFault();
}

QLabel* BoundControl::PlaceLabel() {
    labelPlaced_ = true;
    ShowCaption();
    return label_;
}

QLabel* BoundControl::PlaceFaultLabel() {
    if (faultLabel_ == nullptr) {
        faultLabel_ = new QLabel(widget_->parentWidget());
        faultLabel_->setObjectName(QStringLiteral("FLT") + Name());
        faultLabel_->setTextFormat(Qt::RichText);
        faultLabel_->hide();
    }
    return faultLabel_;
}

void BoundControl::ShowCaption() {
    const QString star = required_ && !caption_.isEmpty() ? QStringLiteral(" *") : QString();
    if (QAbstractButton* button = AsButton()) {
        button->setText(caption_ + star);
    }
    if (label_ != nullptr) {
        label_->setText(caption_ + star);
        label_->setToolTip(required_ ? QStringLiteral("Required") : QString());
        label_->setVisible(labelPlaced_ && !caption_.isEmpty() && !widget_->isHidden());
    }
}

void BoundControl::SetFault(const QString& fault) {
    if (fault == fault_) {
        return;
    }
    fault_ = fault;
    ShowFault();
    emit notifier_->faultChanged();
}

void BoundControl::ShowFault() {
    const QString required = required_ ? QStringLiteral("Required") : QString();
    widget_->setAccessibleDescription(fault_.isEmpty() ? required : fault_);
    if (faultLabel_ != nullptr) {
        const QColor ink = theme::ColorOf(theme::Ink::Fault, widget_->palette());
        faultLabel_->setText(QStringLiteral("<span style='color:%1'>\u26a0 %2</span>")
                                 .arg(ink.name(), fault_.toHtmlEscaped()));
        faultLabel_->setVisible(!fault_.isEmpty() && !widget_->isHidden());
    } else if (!fault_.isEmpty() && widget_->isVisible()) {
        QToolTip::showText(widget_->mapToGlobal(QPoint(0, widget_->height())), fault_, widget_);
    }
    if (!fault_.isEmpty()) {
        QAccessibleEvent event(widget_, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void BoundControl::SetCharacters(int characters) {
    widget_->setMinimumWidth(theme::CharactersWide(*widget_, characters));
}

BoundControl* AsBoundControl(QWidget* widget) {
    return dynamic_cast<BoundControl*>(widget);
}

std::vector<BoundControl*> BoundControlsOf(const QWidget* screen) {
    std::vector<BoundControl*> controls;
    for (QWidget* widget = screen->nextInFocusChain(); widget != screen;
         widget = widget->nextInFocusChain()) {
        BoundControl* control = screen->isAncestorOf(widget) ? AsBoundControl(widget) : nullptr;
        if (control != nullptr) {
            controls.push_back(control);
        }
    }
    return controls;
}

BoundControl* FindBoundControl(const QWidget* screen, const QString& name) {
    return AsBoundControl(screen->findChild<QWidget*>(name));
}

ScreenControl DescribeControl(const BoundControl& control) {
    return {FromQt(control.Name()), control.DataField(), FromQt(control.Caption()), control.Kind(),
            FromQt(control.Text()), control.Value(),     control.IsDataChanged(),   FromQt(control.Tag())};
}

ScreenControls DescribeControls(const QWidget* screen) {
    ScreenControls described;
    for (const BoundControl* control : BoundControlsOf(screen)) {
        described.Add(DescribeControl(*control));
    }
    return described;
}

void SetTabOrderOf(const std::vector<QWidget*>& widgets) {
    for (std::size_t i = 1; i < widgets.size(); ++i) {
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
    }
}

}  // namespace kv
