#include "screens/widgets/section_strip.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kMarkSize = 2 * theme::kUnit;

// Keeps room for the mark behind its word.
class StripButton : public QToolButton {
  public:
    using QToolButton::QToolButton;
    QSize sizeHint() const override { return QToolButton::sizeHint() + QSize(kMarkSize, 0); }
};

}  // namespace

SectionStrip::SectionStrip(const QString& name, const QString& markName, Qt::Orientation orientation,
                           const std::vector<SectionItem>& items, QWidget* parent)
    : QWidget(parent), mark_(nullptr), orientation_(orientation) {
    setObjectName(name + QStringLiteral("Strip"));
    auto* layout =
        new QBoxLayout(orientation == Qt::Vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit / 2);
    for (const SectionItem& item : items) {
        auto* button = new StripButton(this);
        const int index = Count();
        button->setObjectName(IndexedName(name, index));
        button->setIcon(theme::Icon(item.icon));
        const int side = theme::IconSide(*button);
        button->setIconSize(QSize(side, side));
        button->setText(item.word);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(orientation == Qt::Vertical ? QSizePolicy::Expanding : QSizePolicy::Preferred,
                              QSizePolicy::Fixed);
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, [this, index] {
            SetOpen(open_);
            emit picked(index);
        });
        layout->addWidget(button);
        buttons_.push_back(button);
        SetTip(index, item.tip);
    }
    layout->addStretch(1);
    mark_ = new QLabel(this);
    mark_->setObjectName(markName);
    mark_->setAttribute(Qt::WA_TransparentForMouseEvents);
    mark_->hide();
}

void SectionStrip::SetOpen(int index) {
    open_ = index;
    for (int i = 0; i < Count(); ++i) {
        Button(i)->setChecked(i == index);
    }
    PlaceMark();
}

void SectionStrip::SetItemShown(int index, bool shown) {
    Button(index)->setVisible(shown);
    PlaceMark();
}

bool SectionStrip::IsItemShown(int index) const {
    return !Button(index)->isHidden();
}

void SectionStrip::SetItemEnabled(int index, bool enabled) {
    Button(index)->setEnabled(enabled);
}

bool SectionStrip::IsItemEnabled(int index) const {
    return Button(index)->isEnabled();
}

void SectionStrip::SetTip(int index, const QString& tip) {
    Button(index)->setToolTip(tip);
    Button(index)->setAccessibleDescription(tip);
}

QToolButton* SectionStrip::Button(int index) const {
    return buttons_.at(static_cast<std::size_t>(index));
}

bool SectionStrip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
        PlaceMark();
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool back = key == (orientation_ == Qt::Vertical ? Qt::Key_Up : Qt::Key_Left);
        const bool on = key == (orientation_ == Qt::Vertical ? Qt::Key_Down : Qt::Key_Right);
        if (back || on) {
            Step(static_cast<QToolButton*>(watched), on ? 1 : -1);
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            static_cast<QToolButton*>(watched)->click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SectionStrip::Step(const QToolButton* from, int direction) {
    int index = 0;
    while (Button(index) != from) {
        ++index;
    }
    for (index += direction; index >= 0 && index < Count(); index += direction) {
        if (IsItemShown(index) && IsItemEnabled(index)) {
            Button(index)->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void SectionStrip::PlaceMark() {
    if (mark_ == nullptr) {
        return;
    }
    const bool shown = open_ >= 0 && open_ < Count() && IsItemShown(open_);
    mark_->setVisible(shown);
    if (!shown) {
        return;
    }
    mark_->setPixmap(theme::Picture(QStringLiteral("check"), kMarkSize, this));
    mark_->resize(kMarkSize, kMarkSize);
    const QRect button = Button(open_)->geometry();
    mark_->move(button.right() - kMarkSize - theme::kHalfUnit / 2, button.center().y() - kMarkSize / 2);
    mark_->raise();
}

}  // namespace kv
