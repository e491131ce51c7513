#include "screens/widgets/grid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

#include "screens/widgets/grid_model.h"
#include "screens/widgets/list_paint.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

// Draws the ticks: the style takes their box from the ground and their mark from the row's ink, which on dark
// desktops and on grounds of the rules' own leaves one of them unseen.
class TickDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        if (!item.features.testFlag(QStyleOptionViewItem::HasCheckIndicator)) {
            return;
        }
        const QPalette& palette = option.palette;
        const QRect tick =
            item.widget->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, item.widget);
        painter->fillRect(tick, palette.base());
        painter->setPen(theme::ColorOf(theme::Ink::Hint, palette));
        painter->drawRect(tick.adjusted(0, 0, -1, -1));
        if (item.checkState == Qt::Checked) {
            check_.paint(painter, tick);
        }
    }

  private:
    QIcon check_ = theme::Icon(QStringLiteral("check"));
};

}  // namespace

GridColumn Patterned(const char* heading, int characters, const char* format) {
    GridColumn column;
    column.heading = QString::fromLatin1(heading);
    column.characters = characters;
    column.format = format;
    return column;
}

Grid::Grid(const QString& name, const std::vector<GridColumn>& columns, QWidget* parent)
    : QTableView(parent), model_(new GridModel(this)) {
    setObjectName(name);
    setModel(model_);
    setItemDelegate(new TickDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setResizeContentsPrecision(50);
    FitRows();
    SetColumns(columns);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!quiet_) {
            emit currentRowChanged(CurrentRow());
        }
    });
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
        const int row = model_->GivenAt(index.row());
        // The tick itself is turned by the delegate.
        if (const int tick = TickColumn(); tickByRow_ && tick >= 0 && index.column() != tick) {
            model_->ToggleTick(row, tick);
        }
        emit rowPicked(row);
    });
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { emit rowActivated(model_->GivenAt(index.row())); });
    connect(model_, &GridModel::tickToggled, this, &Grid::tickToggled);
}

Grid::~Grid() = default;

void Grid::SetColumns(const std::vector<GridColumn>& columns) {
    model_->SetColumns(columns);
    FitColumns();
}

void Grid::SetHeading(int column, const QString& heading) {
    model_->Columns().at(static_cast<std::size_t>(column)).heading = heading;
    emit model_->headerDataChanged(Qt::Horizontal, column, column);
}

void Grid::SetColumnShown(int column, bool shown) {
    model_->Columns().at(static_cast<std::size_t>(column)).hidden = !shown;
    setColumnHidden(column, !shown);
}

int Grid::ColumnCount() const {
    return model_->columnCount();
}

void Grid::SetRows(std::vector<GridRow> rows) {
    const int current = CurrentRow();
    quiet_ = true;
    const bool first = RowCount() == 0;
    model_->SetRows(std::move(rows));
    if (isSortingEnabled()) {
        model_->sort(horizontalHeader()->sortIndicatorSection(), horizontalHeader()->sortIndicatorOrder());
    }
    if (first) {
        FitColumns();
    }
    SetCurrentRow(current < RowCount() ? current : -1);
    quiet_ = false;
}

void Grid::AppendRow(GridRow row) {
    model_->AppendRow(std::move(row));
}

void Grid::RemoveRow(int row) {
    model_->RemoveGiven(row);
}

int Grid::RowCount() const {
    return model_->rowCount();
}

const GridRow& Grid::Row(int row) const {
    return model_->Given(row);
}

void Grid::SetRow(int row, GridRow content) {
    model_->SetGiven(row, std::move(content));
}

void Grid::SetCell(int row, int column, const Value& value) {
    model_->SetCell(row, column, value);
}

const Value& Grid::Cell(int row, int column) const {
    return Row(row).cells.at(static_cast<std::size_t>(column));
}

QString Grid::CellText(int row, int column) const {
    return model_->TextOf(row, column);
}

int Grid::FindRow(int column, const std::string& text) const {
    for (int row = 0; row < RowCount(); ++row) {
        if (Cell(row, column).ToText() == text) {
            return row;
        }
    }
    return -1;
}

int Grid::CurrentRow() const {
    const QModelIndex current = currentIndex();
    return current.isValid() ? model_->GivenAt(current.row()) : -1;
}

void Grid::SetCurrentRow(int row) {
    if (row < 0 || row >= RowCount()) {
        clearSelection();
        setCurrentIndex({});
        return;
    }
    int column = 0;
    while (isColumnHidden(column) && column + 1 < ColumnCount()) {
        ++column;
    }
    setCurrentIndex(model_->index(model_->PlaceOf(row), column));
}

void Grid::SetSortable(bool sortable) {
    if (sortable) {
        // As the rows were given, until a heading is clicked.
        horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    }
    setSortingEnabled(sortable);
}

void Grid::SetEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void Grid::SetCellGround(std::function<std::optional<QColor>(int row, int column)> ground) {
    model_->SetCellGround(std::move(ground));
}

void Grid::SetSessionColors(const theme::GridColors& colors) {
    ground_ = colors.ground;
    setStyleSheet(QStringLiteral("QTableView { gridline-color: %1; border: 1px solid %2; }")
                      .arg(colors.grid.name(), colors.border.name()));
}

QSize Grid::sizeHint() const {
    int width = 2 * frameWidth();
    for (int column = 0; column < ColumnCount(); ++column) {
        width += isColumnHidden(column) ? 0 : columnWidth(column);
    }
    return {width, horizontalHeader()->sizeHint().height() + 6 * verticalHeader()->defaultSectionSize()};
}

void Grid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    const int bottom = RowCount() == 0 ? 0 : rowViewportPosition(RowCount() - 1) + rowHeight(RowCount() - 1);
    PaintListGround(*viewport(), bottom, ground_, RowCount() == 0 ? emptyText_ : QString());
}

void Grid::keyPressEvent(QKeyEvent* event) {
    const int row = CurrentRow();
    if (event->matches(QKeySequence::Copy)) {
        CopyRow();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && row >= 0 &&
        !event->modifiers().testFlag(Qt::ControlModifier)) {
        emit rowActivated(row);
        return;
    }
    if (const int tick = TickColumn(); event->key() == Qt::Key_Space && row >= 0 && tick >= 0) {
        model_->ToggleTick(row, tick);
        return;
    }
    QTableView::keyPressEvent(event);
}

int Grid::TickColumn() const {
    const auto& columns = model_->Columns();
    const auto tick = std::find_if(columns.begin(), columns.end(),
                                   [](const GridColumn& each) { return each.tick && !each.hidden; });
    return tick == columns.end() ? -1 : static_cast<int>(tick - columns.begin());
}

void Grid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitRows();
        FitColumns();
    }
}

void Grid::FitRows() {
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + theme::kHalfUnit + 2);
}

void Grid::FitColumns() {
    const auto& columns = model_->Columns();
    for (int column = 0; column < ColumnCount(); ++column) {
        const GridColumn& shape = columns[static_cast<std::size_t>(column)];
        setColumnHidden(column, shape.hidden);
        if (shape.hidden) {
            continue;
        }
        if (shape.characters > 0) {
            setColumnWidth(column, theme::CharactersWide(*this, shape.characters) + theme::kUnit);
        } else {
            resizeColumnToContents(column);
        }
    }
}

void Grid::CopyRow() const {
    const int row = CurrentRow();
    if (row < 0) {
        return;
    }
    QStringList cells;
    for (int column = 0; column < ColumnCount(); ++column) {
        if (!isColumnHidden(column)) {
            cells << CellText(row, column);
        }
    }
    QApplication::clipboard()->setText(cells.join(QLatin1Char('\t')));
}

}  // namespace kv
