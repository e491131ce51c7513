#include "screens/frmDiscrep.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/widgets/bound_control.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/theme.h"

namespace kv {

frmDiscrep::frmDiscrep(const std::vector<AssignmentConflict>& conflicts, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmDiscrep"));
    setWindowTitle(QStringLiteral("Assignment Conflicts"));
    FGdiscrep = new Grid(QStringLiteral("FGdiscrep"),
                         {Patterned("Start Date", 0, "MM/DD/YYYY"),
                          Patterned("End Date", 0, "MM/DD/YYYY"),
                          Patterned("Start Time", 0, "HH:NN AM/PM"),
                          Patterned("Hours", 0, "###.00"),
                          {QStringLiteral("Conflicting Assignments"), 30},
                          {QStringLiteral("Day"), 8},
                          {QStringLiteral("Frequency")}},
                         this);
    std::vector<GridRow> rows;
    for (const AssignmentConflict& conflict : conflicts) {
        GridRow row;
        row.cells = {Value(conflict.from),
                     Value(conflict.to),
                     Value(conflict.start),
                     Value(conflict.hours),
                     Value(conflict.with),
                     Value(conflict.day),
                     Value(static_cast<std::int64_t>(conflict.howoften))};
        rows.push_back(std::move(row));
    }
    FGdiscrep->SetRows(std::move(rows));
    auto* caption = new QLabel(QStringLiteral("Possible Conflicting Assignments"), this);
    caption->setBuddy(FGdiscrep);
    FGdiscrep->setAccessibleName(caption->text());
    Command1 = new QPushButton(QStringLiteral("E&xit"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setToolTip(tr("Save the assignment as it stands"));
    CMDback = new QPushButton(tr("&Back to the Boxes"), this);
    CMDback->setObjectName(QStringLiteral("CMDback"));
    CMDback->setToolTip(tr("Change the assignment before it is saved (Escape)"));
    auto* told = new QLabel(tr("Exit saves the assignment as it stands, with these conflicts."), this);
    told->setObjectName(QStringLiteral("LBLtold"));
    auto* keys = new QHBoxLayout;
    keys->addWidget(told, 1);
    keys->addWidget(CMDback);
    keys->addWidget(Command1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(FGdiscrep, 1);
    layout->addLayout(keys);
    resize(100 * theme::kUnit, 44 * theme::kUnit);
    SetTabOrderOf({FGdiscrep, CMDback, Command1});
    CMDback->setDefault(true);
    CMDback->setFocus();
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
    connect(CMDback, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace kv
