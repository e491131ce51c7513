#include "screens/FRMIdFind.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "clients/pick_query.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/window_tools.h"

namespace kv {

FRMIdFind::FRMIdFind(Session& session, std::vector<LookupItem> types, QWidget* parent)
    : QDialog(parent), types_(std::move(types)) {
    setObjectName(QStringLiteral("FRMIdFind"));
    setWindowTitle(QStringLiteral("Find Call Type"));
    FGfind = new Grid(QStringLiteral("FGfind"), {{tr("Code"), 10}, {tr("Description"), 40}}, this);
    FGfind->setAccessibleName(windowTitle());
    FGfind->SetEmptyText(QStringLiteral("There are no Call Types"));
    CMDselect = new QPushButton(tr("&Select"), this);
    CMDselect->setObjectName(QStringLiteral("CMDselect"));
    CMDselect->setDefault(true);
    Command1 = new QPushButton(tr("&Cancel"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMDselect);
    keys->addWidget(Command1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FGfind, 1);
    layout->addLayout(keys);
    resize(60 * theme::kUnit, 50 * theme::kUnit);

    connect(FGfind, &Grid::rowActivated, this, &QDialog::accept);
    connect(CMDselect, &QPushButton::clicked, this, &QDialog::accept);
    connect(Command1, &QPushButton::clicked, this, &QDialog::reject);
    ApplyGridColors(this, session.COLOR);
    std::vector<GridRow> rows;
    for (const LookupItem& type : types_) {
        GridRow row;
        row.cells = {Value(type.code), Value(type.description)};
        rows.push_back(std::move(row));
    }
    FGfind->SetRows(std::move(rows));
    FGfind->SetCurrentRow(types_.empty() ? -1 : 0);
    CMDselect->setEnabled(!types_.empty());
}

std::string FRMIdFind::Pick() {
    const bool taken = exec() == QDialog::Accepted;
    const auto row = static_cast<std::size_t>(FGfind->CurrentRow());
    return taken && row < types_.size() ? types_[row].code : kCancelled;
}

}  // namespace kv
