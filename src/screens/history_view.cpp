#include "screens/history_view.h"

#include <QPlainTextEdit>
#include <QSplitter>
#include <QVBoxLayout>

#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"

namespace kv {

HistoryView::HistoryView(const QString& emptyText, QWidget* parent) : QWidget(parent) {
    auto* split = new QSplitter(Qt::Vertical, this);
    split->setChildrenCollapsible(false);
    FGedit = new Grid(
        QStringLiteral("FGedit"),
        {{tr("Date"), 12}, {tr("Time"), 12}, {tr("ID"), 10}, {tr("User"), 20}, {tr("Status"), 20}}, split);
    FGedit->setAccessibleName(tr("Changes"));
    FGedit->SetEmptyText(emptyText);
    Text2 = new QPlainTextEdit(split);
    Text2->setObjectName(QStringLiteral("Text2"));
    Text2->setAccessibleName(tr("What was changed"));
    Text2->setReadOnly(true);
    Text2->setTabChangesFocus(true);
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(split);
    connect(FGedit, &Grid::currentRowChanged, this, &HistoryView::ShowWords);
}

void HistoryView::SetRows(const std::vector<HistoryRow>& rows) {
    std::vector<GridRow> shown;
    shown.reserve(rows.size());
    words_.clear();
    for (const HistoryRow& each : rows) {
        GridRow row;
        row.cells = {Value(each.date), Value(each.time), Value(each.area), Value(each.user),
                     Value(each.status)};
        shown.push_back(std::move(row));
        words_.push_back(each.area + "\n" + each.reason);
    }
    FGedit->SetRows(std::move(shown));
    FGedit->SetCurrentRow(words_.empty() ? -1 : 0);
    ShowWords(FGedit->CurrentRow());
}

int HistoryView::CurrentRow() const {
    return FGedit->CurrentRow();
}

void HistoryView::SetCurrentRow(int row) {
    FGedit->SetCurrentRow(row);
}

void HistoryView::ShowWords(int row) {
    const auto at = static_cast<std::size_t>(row);
    Text2->setPlainText(at < words_.size() ? ToQt(words_[at]) : QString());
}

}  // namespace kv
