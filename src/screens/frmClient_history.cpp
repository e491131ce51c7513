#include "screens/frmClient_history.h"

#include <QPlainTextEdit>
#include <QSplitter>
#include <QVBoxLayout>

#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMhistory::FRMhistory(QWidget* parent) : ClientPart(QStringLiteral("FRMhistory"), parent) {
    auto* split = new QSplitter(Qt::Vertical, Frame());
    split->setChildrenCollapsible(false);
    FGedit = new Grid(QStringLiteral("FGedit"),
                      {{tr("Date"), 12}, {tr("Time"), 12}, {tr("User"), 20}, {tr("Status"), 20}}, split);
    FGedit->setAccessibleName(tr("Changes made on this client"));
    FGedit->SetEmptyText(tr("Nothing was changed on this client"));
    TXTreason = new QPlainTextEdit(split);
    TXTreason->setObjectName(QStringLiteral("TXTreason"));
    TXTreason->setAccessibleName(tr("What was changed"));
    TXTreason->setReadOnly(true);
    TXTreason->setTabChangesFocus(true);
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kUnit, theme::kUnit);
    layout->addWidget(split);

    connect(FGedit, &Grid::currentRowChanged, this, &FRMhistory::ShowReason);
}

void FRMhistory::ShowHistory(std::vector<HistoryRow> history) {
    history_ = std::move(history);
    std::vector<GridRow> rows;
    rows.reserve(history_.size());
    for (const HistoryRow& each : history_) {
        GridRow row;
        row.cells = {Value(each.date), Value(each.time), Value(each.user), Value(each.status)};
        rows.push_back(std::move(row));
    }
    FGedit->SetRows(std::move(rows));
    FGedit->SetCurrentRow(history_.empty() ? -1 : 0);
    ShowReason(FGedit->CurrentRow());
}

void FRMhistory::ShowReason(int row) {
    const auto at = static_cast<std::size_t>(row);
    TXTreason->setPlainText(at < history_.size() ? ToQt(history_[at].reason) : QString());
}

}  // namespace kv
