#include "screens/frmClient_header.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/widgets/bound_control.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kNameGrowth = 4;  ///< points that the name stands above the ordinary text

/// The boxes of the header only tell: they stand as plain words, take no part in the tab order, and can be
/// copied from.
void MakeTelling(QLineEdit& box) {
    box.setReadOnly(true);
    box.setFrame(false);
    box.setFocusPolicy(Qt::ClickFocus);
    box.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    box.setPalette(palette);
}

void AddTelling(QHBoxLayout& line, BoundControl& control) {
    line.addWidget(control.PlaceLabel());
    line.addWidget(control.Widget());
    line.addSpacing(theme::kUnit);
}

}  // namespace

ClientHeader::ClientHeader(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("FRMheader"));
    LBLname = new QLabel(this);
    LBLname->setObjectName(QStringLiteral("LBLname"));
    LBLname->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont large = LBLname->font();
    large.setPointSize(large.pointSize() + kNameGrowth);
    large.setBold(true);
    LBLname->setFont(large);

    txtCliId = new TextBox(QStringLiteral("txtCliId"), tr("Client ID:"), 8, this);
    TXTStatus = new TextBox(QStringLiteral("TXTStatus"), tr("Status:"), 10, this);
    NUMdays = new NumberBox(QStringLiteral("NUMdays"), tr("Days to Start:"), "##,##0", 6, this);
    NumactiveDays = new NumberBox(QStringLiteral("NumactiveDays"), tr("Days in Service:"), "##,##0", 6, this);
    NUMdays->setToolTip(tr("Days from the first contact to the start of care"));
    NumactiveDays->setToolTip(tr("Days from the start of care to its end, or to today when it has ended"));
    for (QLineEdit* box : std::initializer_list<QLineEdit*>{txtCliId, TXTStatus, NUMdays, NumactiveDays}) {
        MakeTelling(*box);
    }

    CMDAnyCaregivers = new QPushButton(tr("Find Caregivers"), this);
    CMDAnyCaregivers->setObjectName(QStringLiteral("CMDAnyCaregivers"));
    CMDAnyCaregivers->setToolTip(
        QStringLiteral("Use the caregiver suggestion, to see if we have any caregivers available"));
    CMDAnyCaregivers->hide();
    CMDchangeToActive = new QPushButton(tr("Change Status "), this);
    CMDchangeToActive->setObjectName(QStringLiteral("CMDchangeToActive"));
    CMDchangeToActive->setToolTip(tr("Change the status of this potential client"));
    CMDchangeToActive->hide();
    CMDpaste = new QPushButton(theme::Icon(QStringLiteral("paste")), tr("&Paste"), this);
    CMDpaste->setObjectName(QStringLiteral("CMDpaste"));
    CMDpaste->setToolTip(tr("Paste information from clipboard"));
    // The key pastes into the box that has the focus, so it must leave it there.
    CMDpaste->setFocusPolicy(Qt::NoFocus);

    auto* top = new QHBoxLayout;
    top->addWidget(LBLname, 1);
    top->addWidget(CMDAnyCaregivers);
    top->addWidget(CMDchangeToActive);
    top->addWidget(CMDpaste);
    auto* below = new QHBoxLayout;
    below->setSpacing(theme::kHalfUnit);
    AddTelling(*below, *txtCliId);
    AddTelling(*below, *TXTStatus);
    AddTelling(*below, *NUMdays);
    AddTelling(*below, *NumactiveDays);
    below->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kUnit, theme::kHalfUnit);
    layout->setSpacing(theme::kHalfUnit);
    layout->addLayout(top);
    layout->addLayout(below);
}

void ClientHeader::ShowName(const QString& last, const QString& first) {
    QStringList names{last.trimmed(), first.trimmed()};
    names.removeAll(QString());
    LBLname->setText(names.join(QStringLiteral(", ")));
}

}  // namespace kv
