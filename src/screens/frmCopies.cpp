#include "screens/frmCopies.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include "screens/widgets/bound_control.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kMostCopies = 99;
const QColor kClosedGround(0xC0, 0xC0, 0xC0);

QSpinBox* MakeNumber(const QString& name, const QString& meaning, int most, int value, QWidget* parent) {
    auto* box = new QSpinBox(parent);
    box->setObjectName(name);
    box->setAccessibleName(meaning);
    box->setRange(1, most);
    box->setValue(value);
    QPalette palette = box->palette();
    palette.setColor(QPalette::Disabled, QPalette::Base, kClosedGround);
    box->setPalette(palette);
    return box;
}

QRadioButton* MakeOption(const QString& name, const QString& caption, QWidget* parent) {
    auto* option = new QRadioButton(caption, parent);
    option->setObjectName(name);
    return option;
}

}  // namespace

frmCopies::frmCopies(Session& session, int pageCount, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("frmCopies"));
    setWindowTitle(tr("Print"));
    session_.Reply = "NOGO";

    auto* pages = new QGroupBox(tr("Pages"), this);
    optAll = MakeOption(QStringLiteral("optAll"), QStringLiteral("&All Pages From "), pages);
    Label2 = new QLabel(QStringLiteral("All %L1 Pages").arg(pageCount), pages);
    Label2->setObjectName(QStringLiteral("Label2"));
    optFrom = MakeOption(QStringLiteral("optFrom"), tr("Pages &From:"), pages);
    numFrom = MakeNumber(QStringLiteral("numFrom"), tr("First page"), pageCount, 1, pages);
    auto* to = new QLabel(tr("&To:"), pages);
    numTo = MakeNumber(QStringLiteral("numTo"), tr("Last page"), pageCount, pageCount, pages);
    to->setBuddy(numTo);
    optSelect = MakeOption(QStringLiteral("optSelect"), tr("&Current Page"), pages);
    auto* range = new QGridLayout(pages);
    range->addWidget(optAll, 0, 0);
    range->addWidget(Label2, 0, 1, 1, 3);
    range->addWidget(optFrom, 1, 0);
    range->addWidget(numFrom, 1, 1);
    range->addWidget(to, 1, 2);
    range->addWidget(numTo, 1, 3);
    range->addWidget(optSelect, 2, 0);
    range->setColumnStretch(4, 1);

    auto* copies = new QLabel(tr("&Number of Copies:"), this);
    Numnum = MakeNumber(QStringLiteral("Numnum"), tr("Number of copies"), kMostCopies, 1, this);
    copies->setBuddy(Numnum);
    chkCollate = new QCheckBox(tr("C&ollate"), this);
    chkCollate->setObjectName(QStringLiteral("chkCollate"));
    chkCollate->setToolTip(tr("Whole copies one after the other"));
    CMDok[0] = new QPushButton(tr("Cance&l"), this);
    CMDok[0]->setObjectName(IndexedName(QStringLiteral("CMDok"), 0));
    CMDok[1] = new QPushButton(tr("&Print"), this);
    CMDok[1]->setObjectName(IndexedName(QStringLiteral("CMDok"), 1));
    CMDok[1]->setDefault(true);

    auto* count = new QHBoxLayout;
    count->addWidget(copies);
    count->addWidget(Numnum);
    count->addSpacing(2 * theme::kUnit);
    count->addWidget(chkCollate);
    count->addStretch(1);
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMDok[1]);
    keys->addWidget(CMDok[0]);
    auto* all = new QVBoxLayout(this);
    all->addWidget(pages);
    all->addLayout(count);
    all->addStretch(1);
    all->addLayout(keys);
    SetTabOrderOf({optAll, optFrom, optSelect, numFrom, numTo, Numnum, chkCollate, CMDok[1], CMDok[0]});

    connect(optFrom, &QRadioButton::toggled, this, &frmCopies::EnableRange);
    // A range that runs backwards prints nothing: the other end gives way.
    connect(numFrom, &QSpinBox::valueChanged, this, [this](int page) {
        if (numTo->value() < page) {
            numTo->setValue(page);
        }
    });
    connect(numTo, &QSpinBox::valueChanged, this, [this](int page) {
        if (numFrom->value() > page) {
            numFrom->setValue(page);
        }
    });
    connect(CMDok[0], &QPushButton::clicked, this, &frmCopies::reject);
    connect(CMDok[1], &QPushButton::clicked, this, &frmCopies::accept);
    optAll->setChecked(true);
    EnableRange(false);
}

frmCopies::Pages frmCopies::Which() const {
    if (optFrom->isChecked()) {
        return Pages::FromTo;
    }
    return optSelect->isChecked() ? Pages::Current : Pages::All;
}

void frmCopies::EnableRange(bool enabled) {
    numFrom->setEnabled(enabled);
    numTo->setEnabled(enabled);
}

void frmCopies::accept() {
    session_.Reply = "GO";
    QDialog::accept();
}

void frmCopies::reject() {
    session_.Reply = "NOGO";
    QDialog::reject();
}

}  // namespace kv
