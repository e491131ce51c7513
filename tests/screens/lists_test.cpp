#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "box_screen.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/outline_tree.h"
#include "support/qt_driver.h"

namespace kv {
namespace {

using qt_driver::Press;

GridRow RowOf(std::vector<Value> cells) {
    GridRow row;
    row.cells = std::move(cells);
    return row;
}

struct GridScreen : BoxScreen<Grid> {
    GridScreen()
        : BoxScreen("FGfind", std::vector<GridColumn>{{"ID", 0, "", {}, true},
                                                      {"Name", 20},
                                                      {"Phone", 0, "(###) ###-####"},
                                                      {"Date", 0, "MMM/DD/YYYY"},
                                                      {"Hours", 0, "##,##0.00"},
                                                      {"On", 0, "", {}, false, true}}) {
        box->SetRows({RowOf({"1", "bauer", "2125551234", Date::FromCivil(2026, 1, 31), 1234.5, true}),
                      RowOf({"2", "Adams", Value(), Value(), 7, false}),
                      RowOf({"3", "Ångström", "555", Date::FromCivil(2025, 1, 31), 70, false})});
    }
    QStringList Shown(int column) const {
        QStringList texts;
        for (int place = 0; place < box->RowCount(); ++place) {
            texts << box->model()->index(place, column).data().toString();
        }
        return texts;
    }
};

TEST(Grid, ShowsValuesByTheirColumnsFormat) {
    const GridScreen screen;
    EXPECT_EQ(screen.box->CellText(0, 2), "(212) 555-1234");
    EXPECT_EQ(screen.box->CellText(0, 3), "Jan/31/2026");
    EXPECT_EQ(screen.box->CellText(0, 4), "1,234.50");
    EXPECT_EQ(screen.box->CellText(1, 3), "");
    const auto alignment = [&](int column) {
        return screen.box->model()->index(0, column).data(Qt::TextAlignmentRole).toInt();
    };
    EXPECT_TRUE(alignment(4) & Qt::AlignRight);
    EXPECT_TRUE(alignment(1) & Qt::AlignLeft);
    EXPECT_TRUE(screen.box->isColumnHidden(0));
}

TEST(Grid, SortsByValueAndKeepsTheRowsNumbers) {
    const GridScreen screen;
    Grid& grid = *screen.box;
    const QAbstractItemModelTester tester(grid.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid.SetSortable(true);
    EXPECT_EQ(screen.Shown(1), (QStringList{"bauer", "Adams", "Ångström"}))
        << "as given, until a heading is clicked";
    grid.SetCurrentRow(0);
    grid.sortByColumn(4, Qt::AscendingOrder);
    EXPECT_EQ(screen.Shown(4), (QStringList{"7.00", "70.00", "1,234.50"}));
    EXPECT_EQ(grid.CurrentRow(), 0);
    EXPECT_EQ(grid.CellText(grid.CurrentRow(), 1), "bauer");
    grid.sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(screen.Shown(1), (QStringList{"bauer", "Ångström", "Adams"}));
    grid.RemoveRow(1);
    grid.AppendRow(RowOf({"4", "Zorn", "", Value(), 1, false}));
    EXPECT_EQ(grid.FindRow(1, "Ångström"), 1);
    EXPECT_EQ(grid.FindRow(0, "4"), 2);
    grid.SetCell(2, 1, "Zander");
    EXPECT_EQ(screen.Shown(1).last(), "Zander");
}

TEST(Grid, TellsTheOperatorsPicksFromTheRoutines) {
    const GridScreen screen;
    Grid& grid = *screen.box;
    QSignalSpy current(&grid, &Grid::currentRowChanged);
    QSignalSpy picked(&grid, &Grid::rowPicked);
    QSignalSpy activated(&grid, &Grid::rowActivated);
    grid.SetCurrentRow(1);
    EXPECT_EQ(current.count(), 1);
    EXPECT_EQ(picked.count(), 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(2, 1)).center());
    EXPECT_EQ(current.count(), 2);
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked[0][0].toInt(), 2);
    grid.setFocus();
    Press(grid, Qt::Key_Return);
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated[0][0].toInt(), 2);
    grid.SetRows({RowOf({"9", "Only"})});
    EXPECT_EQ(grid.CurrentRow(), -1);
    EXPECT_EQ(current.count(), 2) << "new rows are no pick";
}

TEST(Grid, TicksTurnByClickAndSpace) {
    const GridScreen screen;
    Grid& grid = *screen.box;
    QSignalSpy ticks(&grid, &Grid::tickToggled);
    grid.SetCurrentRow(1);
    grid.setFocus();
    Press(grid, Qt::Key_Space);
    ASSERT_EQ(ticks.count(), 1);
    EXPECT_EQ(ticks[0], (QList<QVariant>{1, 5, true}));
    EXPECT_EQ(grid.Cell(1, 5), Value(true));
    const QRect cell = grid.visualRect(grid.model()->index(0, 5));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 10, cell.center().y()));
    EXPECT_EQ(grid.Cell(0, 5), Value(false));
}

TEST(Grid, MarksRowsByMoreThanColour) {
    const GridScreen screen;
    GridRow row = RowOf({"1", "Struck"});
    row.struck = true;
    row.bold = true;
    row.marked = true;
    row.ground = QColor(192, 192, 255);
    row.icon = "warning";
    screen.box->SetRow(0, row);
    const QModelIndex cell = screen.box->model()->index(0, 1);
    EXPECT_TRUE(cell.data(Qt::FontRole).value<QFont>().strikeOut());
    EXPECT_TRUE(cell.data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(cell.data(Qt::DecorationRole).value<QIcon>().isNull()) << "on the first column that shows";
    EXPECT_EQ(cell.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(192, 192, 255));
    EXPECT_LT(cell.data(Qt::ForegroundRole).value<QBrush>().color().lightness(), 60);
    screen.box->SetCellGround(
        [](int, int column) { return column == 2 ? std::optional(QColor(Qt::red)) : std::nullopt; });
    EXPECT_EQ(screen.box->model()->index(0, 2).data(Qt::BackgroundRole).value<QBrush>().color(),
              QColor(Qt::red));
}

TEST(Grid, CopiesTheShownCellsOfTheCurrentRow) {
    const GridScreen screen;
    screen.box->SetColumnShown(5, false);
    screen.box->SetCurrentRow(0);
    screen.box->setFocus();
    Press(*screen.box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "bauer\t(212) 555-1234\tJan/31/2026\t1,234.50");
}

OutlineNode Leaf(const std::string& id, const QString& text) {
    OutlineNode node;
    node.id = id;
    node.text = text;
    return node;
}

struct TreeScreen : BoxScreen<OutlineTree> {
    TreeScreen() : BoxScreen("FGtree") { box->SetNodes(Nodes(), false); }
    static std::vector<OutlineNode> Nodes() {
        OutlineNode a = Leaf("", "A");
        a.children = {Leaf("100", "Adams, Ann (A)"), Leaf("101", "Azar, Bo (S)")};
        OutlineNode b = Leaf("", "B");
        b.children = {Leaf("102", "Bauer, Cy (A)")};
        return {a, b};
    }
};

TEST(OutlineTree, HighlightsById) {
    const TreeScreen screen;
    OutlineTree& tree = *screen.box;
    const QAbstractItemModelTester tester(tree.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy picked(&tree, &OutlineTree::rowPicked);
    EXPECT_EQ(tree.Ids(), (std::vector<std::string>{"100", "101", "102"}));
    EXPECT_FALSE(tree.isExpanded(tree.model()->index(0, 0)));
    EXPECT_TRUE(tree.Highlight("101"));
    EXPECT_TRUE(tree.isExpanded(tree.model()->index(0, 0))) << "its letter opens";
    const QModelIndex letter = tree.model()->index(0, 0);
    const QModelIndex azar = tree.model()->index(1, 0, letter);
    EXPECT_TRUE(azar.data(Qt::BackgroundRole).isValid());
    tree.Highlight("102");
    EXPECT_FALSE(azar.data(Qt::BackgroundRole).isValid()) << "the row before takes its own colours again";
    EXPECT_FALSE(tree.Highlight("999"));
    EXPECT_EQ(tree.HighlightedId(), "");
    EXPECT_EQ(picked.count(), 0);
}

TEST(OutlineTree, KeepsTheHighlightOverNewNodes) {
    const TreeScreen screen;
    screen.box->Highlight("102");
    screen.box->SetNodes({TreeScreen::Nodes()[1]}, false);
    EXPECT_EQ(screen.box->HighlightedId(), "102");
    EXPECT_EQ(screen.box->currentIndex().data().toString(), "Bauer, Cy (A)");
    screen.box->SetNodes({TreeScreen::Nodes()[0]}, true);
    EXPECT_EQ(screen.box->HighlightedId(), "");
    EXPECT_TRUE(screen.box->isExpanded(screen.box->model()->index(0, 0)));
}

TEST(OutlineTree, PicksRowsWithAnIdOnly) {
    const TreeScreen screen;
    OutlineTree& tree = *screen.box;
    tree.ExpandAll();
    std::vector<std::string> picked;
    QObject::connect(&tree, &OutlineTree::rowPicked, &tree,
                     [&](const std::string& id) { picked.push_back(id); });
    const QModelIndex letter = tree.model()->index(0, 0);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(letter).center());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      tree.visualRect(tree.model()->index(1, 0, letter)).center());
    tree.setFocus();
    Press(tree, Qt::Key_Down);
    EXPECT_EQ(picked, (std::vector<std::string>{"101"})) << "the cursor goes by without a pick";
    Press(tree, Qt::Key_Down);
    Press(tree, Qt::Key_Enter);
    EXPECT_EQ(picked, (std::vector<std::string>{"101", "102"}));
}

TEST(OutlineTree, ChangesOneRow) {
    const TreeScreen screen;
    OutlineTree& tree = *screen.box;
    const QModelIndex bauer = tree.model()->index(0, 0, tree.model()->index(1, 0));
    EXPECT_FALSE(bauer.data(Qt::ForegroundRole).isValid());
    tree.SetMarked("102", true);
    tree.SetText("102", "Bauer, Cy (C)");
    tree.SetIcon("102", "warning");
    EXPECT_TRUE(bauer.data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(tree.TextOf("102"), "Bauer, Cy (C)");
    EXPECT_FALSE(bauer.data(Qt::DecorationRole).value<QIcon>().isNull());
}

}  // namespace
}  // namespace kv
