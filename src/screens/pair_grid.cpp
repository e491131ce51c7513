#include "screens/pair_grid.h"

#include <QHeaderView>

#include "screens/widgets/grid.h"

namespace kv {

Grid* MakePairs(const char* name, const QString& words, QWidget* parent) {
    auto* grid = new Grid(QString::fromLatin1(name), {{QString(), 9}, {QString(), 1}}, parent);
    grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid->setAccessibleName(words);
    grid->horizontalHeader()->hide();
    return grid;
}

void ShowPairs(Grid& grid, const std::vector<LabelledText>& pairs, const std::set<std::string>& differing) {
    std::vector<GridRow> rows;
    for (const auto& [label, text] : pairs) {
        GridRow row;
        const bool differs = differing.count(label) != 0;
        row.cells = {Value(label), Value(differs ? text + "  (differs)" : text)};
        row.bold = differs;
        row.marked = differs;
        rows.push_back(std::move(row));
    }
    grid.SetRows(std::move(rows));
}

}  // namespace kv
