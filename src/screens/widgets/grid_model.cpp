#include "screens/widgets/grid_model.h"

#include <QApplication>
#include <QFont>
#include <algorithm>
#include <numeric>

#include "base/format.h"
#include "base/text.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

bool IsNumber(const Value& value) {
    return value.Type() == ValueType::Integer || value.Type() == ValueType::Double ||
           value.Type() == ValueType::Currency;
}

std::string Formatted(const Value& value, const std::string& format) {
    if (format.empty() || value.IsNull()) {
        return value.ToText();
    }
    if (value.Type() == ValueType::Date) {
        return FormatDate(value.ToDate(), format);
    }
    return IsNumber(value) ? FormatNumber(value.ToDouble(), format) : FormatText(value.ToText(), format);
}

/// Null first, numbers and dates by their size, texts as the store orders them.
int Compare(const Value& a, const Value& b) {
    if (a.IsNull() || b.IsNull()) {
        return static_cast<int>(b.IsNull()) - static_cast<int>(a.IsNull());
    }
    const auto size = [](const Value& value) {
        return value.Type() == ValueType::Date ? value.ToDate().Serial() : value.ToDouble();
    };
    if (a.IfText() == nullptr && b.IfText() == nullptr) {
        const double left = size(a);
        const double right = size(b);
        return left < right ? -1 : static_cast<int>(left > right);
    }
    return CompareText(a.ToText(), b.ToText());
}

}  // namespace

void GridModel::SetColumns(const std::vector<GridColumn>& columns) {
    beginResetModel();
    columns_ = columns;
    endResetModel();
}

void GridModel::SetRows(std::vector<GridRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), 0);
    endResetModel();
}

void GridModel::AppendRow(GridRow row) {
    const int place = rowCount();
    beginInsertRows({}, place, place);
    order_.push_back(static_cast<int>(rows_.size()));
    rows_.push_back(std::move(row));
    endInsertRows();
}

void GridModel::RemoveGiven(int given) {
    const int place = PlaceOf(given);
    beginRemoveRows({}, place, place);
    order_.erase(order_.begin() + place);
    for (int& each : order_) {
        each -= static_cast<int>(each > given);
    }
    rows_.erase(rows_.begin() + given);
    endRemoveRows();
}

void GridModel::SetGiven(int given, GridRow content) {
    rows_.at(static_cast<std::size_t>(given)) = std::move(content);
    NoteRow(given);
}

void GridModel::SetCell(int given, int column, const Value& value) {
    std::vector<Value>& cells = rows_.at(static_cast<std::size_t>(given)).cells;
    cells.resize(std::max(cells.size(), static_cast<std::size_t>(column) + 1));
    cells[static_cast<std::size_t>(column)] = value;
    NoteRow(given);
}

void GridModel::NoteRow(int given) {
    const int place = PlaceOf(given);
    emit dataChanged(index(place, 0), index(place, columnCount() - 1));
}

int GridModel::PlaceOf(int given) const {
    const auto found = std::find(order_.begin(), order_.end(), given);
    return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

const Value& GridModel::CellOf(int given, int column) const {
    static const Value kNull;
    const std::vector<Value>& cells = Given(given).cells;
    return static_cast<std::size_t>(column) < cells.size() ? cells[static_cast<std::size_t>(column)] : kNull;
}

QString GridModel::TextOf(int given, int column) const {
    return ToQt(Formatted(CellOf(given, column), columns_[static_cast<std::size_t>(column)].format));
}

void GridModel::SetCellGround(std::function<std::optional<QColor>(int, int)> ground) {
    ground_ = std::move(ground);
    if (!rows_.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

bool GridModel::ToggleTick(int given, int column) {
    const bool ticked = !CellOf(given, column).IsTrue();
    SetCell(given, column, ticked);
    emit tickToggled(given, column, ticked);
    return true;
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

int GridModel::FirstShownColumn() const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(), [](const GridColumn& each) { return !each.hidden; });
    return static_cast<int>(found - columns_.begin());
}

QVariant GridModel::Ground(const GridRow& row, int given, int column) const {
    const std::optional<QColor> cell = ground_ ? ground_(given, column) : std::nullopt;
    const std::optional<QColor>& ground = cell ? cell : row.ground;
    return ground ? QVariant(QBrush(*ground)) : QVariant();
}

QVariant GridModel::Ink(const GridRow& row, int given, int column) const {
    const QVariant ground = Ground(row, given, column);
    if (ground.isValid()) {
        // A ground of the rules' own keeps its colour on dark desktops too, so the ink follows it.
        return QBrush(ground.value<QBrush>().color().lightness() > 127 ? Qt::black : Qt::white);
    }
    return row.marked ? QVariant(QBrush(theme::ColorOf(theme::Ink::Marked, QApplication::palette())))
                      : QVariant();
}

Qt::Alignment GridModel::AlignmentOf(int given, int column) const {
    const bool number = given >= 0 && IsNumber(CellOf(given, column));
    const GridColumn& shape = columns_[static_cast<std::size_t>(column)];
    return shape.alignment.value_or(number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const int given = GivenAt(index.row());
    const GridRow& row = Given(given);
    const GridColumn& column = columns_[static_cast<std::size_t>(index.column())];
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:  // what is cut off can be read all the same
            return column.tick ? QVariant() : QVariant(TextOf(given, index.column()));
        case Qt::CheckStateRole:
            return column.tick
                       ? QVariant(CellOf(given, index.column()).IsTrue() ? Qt::Checked : Qt::Unchecked)
                       : QVariant();
        case Qt::TextAlignmentRole:
            return QVariant(static_cast<int>(AlignmentOf(given, index.column())));
        case Qt::DecorationRole:
            return row.icon.isEmpty() || index.column() != FirstShownColumn()
                       ? QVariant()
                       : QVariant(theme::Icon(row.icon));
        case Qt::FontRole: {
            if (!row.bold && !row.struck) {
                return {};
            }
            QFont font;
            font.setBold(row.bold);
            font.setStrikeOut(row.struck);
            return font;
        }
        case Qt::ForegroundRole:
            return Ink(row, given, index.column());
        case Qt::BackgroundRole:
            return Ground(row, given, index.column());
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    const GridColumn& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return column.heading;
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(static_cast<int>(AlignmentOf(rows_.empty() ? -1 : 0, section)));
    }
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return columns_[static_cast<std::size_t>(index.column())].tick ? flags | Qt::ItemIsUserCheckable : flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& /*value*/, int role) {
    return role == Qt::CheckStateRole && ToggleTick(GivenAt(index.row()), index.column());
}

void GridModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount()) {
        return;
    }
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> givens;
    for (const QModelIndex& each : before) {
        givens.push_back(GivenAt(each.row()));
    }
    std::stable_sort(order_.begin(), order_.end(), [&](int a, int b) {
        const int way = Compare(CellOf(a, column), CellOf(b, column));
        return order == Qt::AscendingOrder ? way < 0 : way > 0;
    });
    std::vector<int> places(order_.size());
    for (std::size_t place = 0; place < order_.size(); ++place) {
        places[static_cast<std::size_t>(order_[place])] = static_cast<int>(place);
    }
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i) {
        after << index(places[static_cast<std::size_t>(givens[static_cast<std::size_t>(i)])],
                       before[i].column());
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

}  // namespace kv
