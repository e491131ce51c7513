#include "screens/FRMmoveAssign.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/format.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

QString Words(const char* way, int days) {
    return QStringLiteral("Move Schedules %1 %2 days")
        .arg(QString::fromLatin1(way), ToQt(FormatNumber(days, "#0")));
}

}  // namespace

FRMmoveAssign::FRMmoveAssign(int forward, int back, QWidget* parent)
    : QDialog(parent),
      LBLtitle(new QLabel(QStringLiteral("Please select your starting date for the schedule move"), this)),
      OPTdate{new QRadioButton(Words("forward", forward), this), new QRadioButton(Words("back", back), this)},
      CMDok(new QPushButton(QStringLiteral("&OK"), this)),
      CMDexit(new QPushButton(QStringLiteral("&Cancel"), this)),
      forward_(forward),
      back_(back) {
    setObjectName(QStringLiteral("FRMmoveAssign"));
    setWindowTitle(QStringLiteral("Move Assignment Day"));
    LBLtitle->setObjectName(QStringLiteral("LBLtitle"));
    for (int i = 0; i < 2; ++i) {
        OPTdate[static_cast<std::size_t>(i)]->setObjectName(IndexedName(QStringLiteral("OPTdate"), i));
    }
    OPTdate[0]->setChecked(true);
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDok->setDefault(true);
    CMDexit->setObjectName(QStringLiteral("CMDexit"));
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMDok);
    keys->addWidget(CMDexit);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit);
    layout->setSpacing(theme::kUnit);
    layout->addWidget(LBLtitle);
    for (QRadioButton* option : OPTdate) {
        layout->addWidget(option);
    }
    layout->addStretch(1);
    layout->addLayout(keys);
    connect(CMDok, &QPushButton::clicked, this, &QDialog::accept);
    connect(CMDexit, &QPushButton::clicked, this, &QDialog::reject);
}

std::optional<int> FRMmoveAssign::Ask() {
    if (exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return OPTdate[0]->isChecked() ? forward_ : -back_;
}

}  // namespace kv
