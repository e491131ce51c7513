#pragma once
#include <QAbstractTableModel>
#include <vector>

#include "screens/widgets/grid.h"

namespace kv {

/// The rows of a Grid and the order in which they show. Its own rows are the places in that order; the
/// functions that speak of rows as they were given are named so.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetColumns(const std::vector<GridColumn>& columns);
    std::vector<GridColumn>& Columns() { return columns_; }
    const std::vector<GridColumn>& Columns() const { return columns_; }
    void SetRows(std::vector<GridRow> rows);
    void AppendRow(GridRow row);
    void RemoveGiven(int given);
    void SetGiven(int given, GridRow content);
    void SetCell(int given, int column, const Value& value);
    const GridRow& Given(int given) const { return rows_.at(static_cast<std::size_t>(given)); }
    QString TextOf(int given, int column) const;
    int GivenAt(int place) const { return order_[static_cast<std::size_t>(place)]; }
    int PlaceOf(int given) const;
    void SetCellGround(std::function<std::optional<QColor>(int, int)> ground);
    bool ToggleTick(int given, int column);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    void sort(int column, Qt::SortOrder order) override;

  signals:
    void tickToggled(int given, int column, bool ticked);

  private:
    const Value& CellOf(int given, int column) const;
    int FirstShownColumn() const;
    QVariant Ground(const GridRow& row, int given, int column) const;
    Qt::Alignment AlignmentOf(int given, int column) const;
    QVariant Ink(const GridRow& row, int given, int column) const;
    void NoteRow(int given);

    std::vector<GridColumn> columns_;
    std::vector<GridRow> rows_;
    std::vector<int> order_;  // the given row at each place
    std::function<std::optional<QColor>(int, int)> ground_;
};

}  // namespace kv
