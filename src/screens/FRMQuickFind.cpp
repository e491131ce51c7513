#include "screens/FRMQuickFind.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/widgets/grid.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kIdColumn = 0;

std::vector<GridColumn> Columns() {
    return {{FRMQuickFind::tr("Client ID"), 9},
            {FRMQuickFind::tr("Last Name"), 20},
            {FRMQuickFind::tr("First Name"), 20}};
}

}  // namespace

FRMQuickFind::FRMQuickFind(const std::vector<QuickFindRow>& hits, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FRMQuickFind"));
    setWindowTitle(tr("Multiple Records found in Quick Find"));
    LBLtext = new QLabel(tr("Quick Find has found multiple records for the information entered.  Please "
                            "click on the record you wish to view."),
                         this);
    LBLtext->setWordWrap(true);
    FG1 = new Grid(QStringLiteral("FG1"), Columns(), this);
    FG1->setAccessibleName(tr("Clients found"));
    std::vector<GridRow> rows;
    for (const QuickFindRow& hit : hits) {
        GridRow row;
        row.cells = {Value(hit.id), Value(hit.lastName), Value(hit.firstName)};
        rows.push_back(std::move(row));
    }
    FG1->SetRows(std::move(rows));
    FG1->SetCurrentRow(0);

    auto* buttons = new QDialogButtonBox(this);
    CMDselect = buttons->addButton(tr("&Return Highlighted Name"), QDialogButtonBox::AcceptRole);
    CMDselect->setObjectName(QStringLiteral("CMDselect"));
    CMDcancel = buttons->addButton(QDialogButtonBox::Cancel);
    CMDcancel->setObjectName(QStringLiteral("CMDcancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(FG1, &Grid::rowActivated, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit);
    layout->setSpacing(theme::kUnit);
    layout->addWidget(LBLtext);
    layout->addWidget(FG1, 1);
    layout->addWidget(buttons);
    resize(60 * theme::kUnit, 45 * theme::kUnit);
    FG1->setFocus();
}

std::string FRMQuickFind::ChosenId() const {
    const int row = FG1->CurrentRow();
    return row < 0 ? std::string() : FG1->Cell(row, kIdColumn).ToText();
}

}  // namespace kv
