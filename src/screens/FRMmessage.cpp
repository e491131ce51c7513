#include "screens/FRMmessage.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "base/text.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kPictures = 10;
constexpr int kPictureSize = 6 * theme::kUnit;

QLabel* NewLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

}  // namespace

FRMmessage::Countdown FRMmessage::CountdownOf(const QString& message) {
    struct Step {
        int above;
        Countdown countdown;
    };
    static constexpr Step kSteps[] = {{120, {14, 14}}, {70, {8, 8}}, {55, {5, 6}}, {-1, {3, 4}}};
    // Blanks alone do not count; a line end does.
    const auto length = static_cast<int>(Length(TrimView(FromQt(message))));
    const Step* step = kSteps;
    while (length <= step->above) {
        ++step;
    }
    return step->countdown;
}

FRMmessage::FRMmessage(QWidget* parent)
    : QDialog(parent),
      Label1(NewLabel(QStringLiteral("Label1"), {}, this)),
      Label2(NewLabel(QStringLiteral("Label2"), QStringLiteral("Press any key to continue"), this)),
      LBLcount(NewLabel(QStringLiteral("LBLcount"), {}, this)),
      Image1(NewLabel(QStringLiteral("Image1"), {}, this)),
      TXTnotes(NewLabel(QStringLiteral("TXTnotes"), {}, this)),
      Check1(new QCheckBox(QStringLiteral("Use Timer"), this)),
      Pbar(new QProgressBar(this)),
      Command1(new QPushButton(QStringLiteral("Continuing in 4"), this)),
      Timer1(new QTimer(this)),
      Timer2(new QTimer(this)) {
    setObjectName(QStringLiteral("FRMmessage"));
    setWindowTitle(QStringLiteral("System Message"));
    Check1->setObjectName(QStringLiteral("Check1"));
    Pbar->setObjectName(QStringLiteral("Pbar"));
    Pbar->setAccessibleName(QStringLiteral("Progress"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    Label1->setMinimumWidth(theme::CharactersWide(*Label1, 48));
    for (QWidget* hidden :
         {static_cast<QWidget*>(Label2), static_cast<QWidget*>(TXTnotes), static_cast<QWidget*>(Pbar)}) {
        hidden->hide();
    }

    auto* words = new QVBoxLayout;
    words->setSpacing(theme::kUnit);
    words->addWidget(Label1, 1);
    words->addWidget(TXTnotes);
    words->addWidget(Pbar);
    words->addWidget(Label2);
    words->addWidget(LBLcount);
    auto* upper = new QHBoxLayout;
    upper->setSpacing(2 * theme::kUnit);
    upper->addWidget(Image1, 0, Qt::AlignTop);
    upper->addLayout(words, 1);
    auto* lower = new QHBoxLayout;
    lower->setSpacing(theme::kUnit);
    lower->addWidget(Check1);
    lower->addStretch(1);
    lower->addWidget(Command1);
    auto* all = new QVBoxLayout(this);
    all->setSpacing(2 * theme::kUnit);
    all->addLayout(upper, 1);
    all->addLayout(lower);

    // The one key that does not close the window; without it the timer could not be stopped from the
    // keyboard.
    Check1->setShortcut(Qt::ALT | Qt::Key_U);
    Check1->setToolTip(QStringLiteral("Alt+U"));
    Check1->setChecked(true);
    Command1->setFocus();
    for (QWidget* child : {static_cast<QWidget*>(Check1), static_cast<QWidget*>(Command1)}) {
        child->installEventFilter(this);
    }
    connect(Check1, &QCheckBox::toggled, this, &FRMmessage::UseTimer);
    connect(Command1, &QPushButton::clicked, this, &FRMmessage::ClosePressed);
    Timer1->setInterval(1000);
    connect(Timer1, &QTimer::timeout, this, &FRMmessage::Tick);
    Timer2->setInterval(150);
    connect(Timer2, &QTimer::timeout, this, &FRMmessage::NextPicture);
    SetMessage({});
}

void FRMmessage::SetMessage(const QString& message) {
    Label1->setText(message);
    Label1->setAccessibleName(message);
    const Countdown countdown = CountdownOf(message);
    count_ = countdown.seconds;
    ShowCount(countdown.firstShown);
}

void FRMmessage::SetNotes(const QString& notes) {
    TXTnotes->setText(notes);
    TXTnotes->setVisible(!notes.isEmpty());
}

void FRMmessage::SetProgress(int value, int steps) {
    Pbar->setVisible(steps > 0);
    Pbar->setMaximum(steps);
    Pbar->setValue(value);
}

void FRMmessage::ShowCount(int number) {
    LBLcount->setText(QStringLiteral("System Message will close in %1").arg(number));
    if (Check1->isChecked()) {
        Command1->setText(QStringLiteral("Continuing in %1").arg(number));
    }
}

void FRMmessage::Tick() {
    --count_;
    ShowCount(count_);
    if (count_ < 1) {
        Timer1->stop();
        accept();
    }
}

void FRMmessage::NextPicture() {
    picture_ = (picture_ + 1) % kPictures;
    Image1->setPixmap(theme::Picture(QStringLiteral("message_%1").arg(picture_), kPictureSize, this));
}

void FRMmessage::UseTimer(bool use) {
    Label2->setVisible(!use);
    LBLcount->setVisible(use);
    if (use) {
        ShowCount(count_);
        Timer1->start();
    } else {
        Timer1->stop();
        Command1->setText(QStringLiteral("Continue"));
    }
}

void FRMmessage::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    picture_ = kPictures - 1;
    NextPicture();
    Timer2->start();
    if (Check1->isChecked()) {
        Timer1->start();
    }
}

void FRMmessage::hideEvent(QHideEvent* event) {
    Timer1->stop();
    Timer2->stop();
    QDialog::hideEvent(event);
}

bool FRMmessage::CloseByKey(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_CapsLock:
            return false;
        default:
            break;
    }
    // A key that was held down as the message came up has not answered it.
    if (event.isAutoRepeat()) {
        return false;
    }
    ClosePressed();
    return true;
}

void FRMmessage::keyPressEvent(QKeyEvent* event) {
    CloseByKey(*event);
}

void FRMmessage::mousePressEvent(QMouseEvent* /*event*/) {
    ClosePressed();
}

bool FRMmessage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        return CloseByKey(*static_cast<QKeyEvent*>(event));
    }
    return QDialog::eventFilter(watched, event);
}

void FRMmessage::ClosePressed() {
    Command1->setProperty("tag", QStringLiteral("Pressed"));
    accept();
}

}  // namespace kv
