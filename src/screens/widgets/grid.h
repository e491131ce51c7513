#pragma once
#include <QColor>
#include <QTableView>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "datastore/value.h"
#include "screens/widgets/theme.h"

namespace kv {

struct GridColumn {
    QString heading;
    /// Wide as so many characters; 0 fits the heading and the first rows; the last shown column takes what is
    /// left.
    int characters = 0;
    /// How values show: a date or number pattern, or a pattern of # for texts; empty as they read.
    std::string format;
    /// Numbers stand right unless said otherwise, all else left.
    std::optional<Qt::Alignment> alignment;
    bool hidden = false;
    /// A boolean shown as a tick that a click or the space bar turns (tickToggled).
    bool tick = false;
};

/// A column whose values show by a pattern; without characters it fits what it holds.
GridColumn Patterned(const char* heading, int characters, const char* format);

struct GridRow {
    std::vector<Value> cells;
    bool struck = false;
    bool bold = false;
    /// The second colour; beside it should stand a word or an icon.
    bool marked = false;
    std::optional<QColor> ground;
    /// An icon's name, before the first shown cell.
    QString icon;
};

class GridModel;

/// A list of rows under headings. Rows are numbered from 0 as they were given, whatever order is shown. Name
/// it "FG..." for the session's colours.
class Grid : public QTableView {
    Q_OBJECT
  public:
    Grid(const QString& name, const std::vector<GridColumn>& columns, QWidget* parent);
    ~Grid() override;

    void SetColumns(const std::vector<GridColumn>& columns);
    void SetHeading(int column, const QString& heading);
    void SetColumnShown(int column, bool shown);
    int ColumnCount() const;

    /// Replaces all rows. The current row stays where its number still exists, else none is current. No
    /// signal of the operator's.
    void SetRows(std::vector<GridRow> rows);
    void AppendRow(GridRow row);
    void RemoveRow(int row);
    void Clear() { SetRows({}); }
    int RowCount() const;
    const GridRow& Row(int row) const;
    void SetRow(int row, GridRow content);
    void SetCell(int row, int column, const Value& value);
    const Value& Cell(int row, int column) const;
    /// As it shows.
    QString CellText(int row, int column) const;
    /// The first row whose cell has that text, or -1.
    int FindRow(int column, const std::string& text) const;

    /// -1 without one. Setting it scrolls the row into sight and sends no rowPicked.
    int CurrentRow() const;
    void SetCurrentRow(int row);

    /// A click on a heading sorts by it; off by default, for the rules fix most orders.
    void SetSortable(bool sortable);
    /// A click anywhere on a row turns its tick; off by default.
    void SetTickByRow(bool byRow) { tickByRow_ = byRow; }
    /// Grey words that stand in the list while it is empty.
    void SetEmptyText(const QString& text);
    /// Grounds of single cells, asked while they are painted.
    void SetCellGround(std::function<std::optional<QColor>(int row, int column)> ground);
    void SetSessionColors(const theme::GridColors& colors);

    QSize sizeHint() const override;

  signals:
    /// Another row became the current one, by the operator or a routine; -1 for none.
    void currentRowChanged(int row);
    /// A click on a row.
    void rowPicked(int row);
    /// A double click, or Enter.
    void rowActivated(int row);
    void tickToggled(int row, int column, bool ticked);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void FitRows();
    void FitColumns();
    void CopyRow() const;

    GridModel* model_ = nullptr;
    QString emptyText_;
    std::optional<QColor> ground_;
    /// The shown column of ticks, or -1.
    int TickColumn() const;

    bool quiet_ = false;
    bool tickByRow_ = false;
};

}  // namespace kv
