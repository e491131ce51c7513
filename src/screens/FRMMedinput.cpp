#include "screens/FRMMedinput.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMMedinput::FRMMedinput(Session& session, const QString& caption, const QString& label,
                         const QString& initial, QWidget* parent)
    : QDialog(parent),
      LBLinput(new QLabel(label, this)),
      TXTinput(new QLineEdit(initial, this)),
      CMDinput(new QPushButton(QStringLiteral("&OK"), this)),
      CMDcancel(new QPushButton(QStringLiteral("&Cancel"), this)),
      session_(session) {
    constexpr int kMostCharacters = 60;
    setObjectName(QStringLiteral("FRMMedinput"));
    setWindowTitle(caption);
    LBLinput->setObjectName(QStringLiteral("LBLinput"));
    LBLinput->setTextFormat(Qt::PlainText);
    TXTinput->setObjectName(QStringLiteral("TXTinput"));
    TXTinput->setAccessibleName(label);
    TXTinput->setMaxLength(kMostCharacters);
    TXTinput->setMinimumWidth(theme::CharactersWide(*TXTinput, kMostCharacters));
    TXTinput->selectAll();
    CMDinput->setObjectName(QStringLiteral("CMDinput"));
    // Enter is the box's own: it presses the key where there is a text.
    CMDinput->setAutoDefault(false);
    CMDcancel->setObjectName(QStringLiteral("CMDcancel"));
    CMDcancel->setAutoDefault(false);
    auto* note = new QLabel(QStringLiteral("Maximum of 60 characters\nIf your information is larger than the "
                                           "input box, it may not print correctly."),
                            this);
    note->setForegroundRole(QPalette::PlaceholderText);

    auto* lower = new QHBoxLayout;
    lower->addStretch(1);
    lower->addWidget(CMDinput);
    lower->addWidget(CMDcancel);
    auto* all = new QVBoxLayout(this);
    all->addWidget(LBLinput);
    all->addWidget(TXTinput);
    all->addWidget(note);
    all->addStretch(1);
    all->addLayout(lower);
    connect(TXTinput, &QLineEdit::textChanged, this, [this] { CheckText(); });
    connect(TXTinput, &QLineEdit::returnPressed, this, [this] {
        if (!TXTinput->text().trimmed().isEmpty()) {
            InputKey();
        }
    });
    connect(CMDinput, &QPushButton::clicked, this, &FRMMedinput::InputKey);
    connect(CMDcancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool FRMMedinput::CheckText() {
    QString text = TXTinput->text();
    const auto before = text.size();
    text.remove(QLatin1Char(',')).remove(QLatin1Char('\''));
    if (text.size() == before) {
        return true;
    }
    TXTinput->setText(text);
    session_.ShowMessageWindow("You may not have a , or a ' in your description");
    return false;
}

void FRMMedinput::InputKey() {
    if (CheckText() && !TXTinput->text().trimmed().isEmpty()) {
        accept();
    }
}

QString FRMMedinput::Text() const {
    return TXTinput->text();
}

std::optional<std::string> AskMedinput(Session& session, const QString& caption, const QString& label,
                                       QWidget* parent, const QString& initial) {
    FRMMedinput input(session, caption, label, initial, parent);
    if (input.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return FromQt(input.Text());
}

}  // namespace kv
