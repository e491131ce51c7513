#include "screens/FRMcopyAssign.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/widgets/grid.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/window_tools.h"

namespace kv {

FRMcopyAssign::FRMcopyAssign(Session& session, const AssignmentParent& parentRow, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("FRMcopyAssign"));
    setWindowTitle(QStringLiteral("Copy assignments from a previous authorization to this one"));
    FGauth = new Grid(QStringLiteral("FGauth"),
                      {Patterned("To Date", 0, "MMM/DD/YY"),
                       Patterned("From Date", 0, "MMM/DD/YY"),
                       {QStringLiteral("Status"), 7},
                       {QStringLiteral("Call Description"), 26},
                       {QStringLiteral("Payer Name")}},
                      this);
    FGauth->SetEmptyText(tr("This client has no other authorization"));
    auto* caption = new QLabel(tr("&Authorizations of this client"), this);
    caption->setBuddy(FGauth);
    FGauth->setAccessibleName(tr("Authorizations of this client"));
    CMDok = new QPushButton(tr("&Copy"), this);
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDok->setDefault(true);
    Command1 = new QPushButton(tr("Ca&ncel"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMDok);
    keys->addWidget(Command1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(FGauth, 1);
    layout->addLayout(keys);
    resize(92 * theme::kUnit, 44 * theme::kUnit);
    ApplyGridColors(this, session.COLOR);

    connect(CMDok, &QPushButton::clicked, this, &QDialog::accept);
    connect(FGauth, &Grid::rowActivated, this, &QDialog::accept);
    connect(Command1, &QPushButton::clicked, this, &QDialog::reject);
    try {
        sources_ = CopySources(session, parentRow);
    } catch (const EngineError& error) {
        ReportEngineError(session, error);
    }
    std::vector<GridRow> rows;
    for (const CopySource& source : sources_) {
        GridRow row;
        row.cells = {source.to, source.from, Value(source.status), Value(source.description),
                     Value(source.payer)};
        rows.push_back(std::move(row));
    }
    FGauth->SetRows(std::move(rows));
    FGauth->SetCurrentRow(sources_.empty() ? -1 : 0);
    CMDok->setEnabled(!sources_.empty());
}

long FRMcopyAssign::Pick() {
    const bool taken = exec() == QDialog::Accepted;
    const int row = FGauth->CurrentRow();
    return taken && row >= 0 ? sources_[static_cast<std::size_t>(row)].authorization : 0;
}

}  // namespace kv
