#pragma once
#include <QAbstractScrollArea>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace kv {

inline constexpr int kChartQuarters = 96;

/// A column of words before the hours.
struct ChartColumn {
    QString heading;
    int characters = 0;
    bool right = false;  ///< numbers stand right
};

/// What a quarter of an hour is, told by its ground and its pattern; its text tells it in words.
enum class QuarterKind : std::uint8_t { Free, Busy, Unavailable, Assignment };

struct ChartQuarter {
    QuarterKind kind = QuarterKind::Free;
    std::uint32_t text = 0;  ///< the number of its text; neighbours with one number are one bar
};

struct ChartRow {
    std::vector<QString> cells;
    QString icon;  ///< before the first cell: a name, or empty
    QString mark;  ///< a second icon behind it
    QString tip;   ///< of the cells: what the icons mean, also for those who can't see them
    std::array<ChartQuarter, kChartQuarters> quarters{};
};

/// Days as rows, each with some words and its 96 quarters of an hour drawn as bars; hours above. Only the
/// rows in sight are drawn, so that thousands scroll as smoothly as ten. Name it "FG...".
class QuarterChart : public QAbstractScrollArea {
    Q_OBJECT
  public:
    QuarterChart(const QString& name, const std::vector<ChartColumn>& columns, QWidget* parent);

    /// Replaces all rows; `texts` gives the words of a text number. No row is current then. Sends no signal.
    void SetRows(std::vector<ChartRow> rows, std::function<QString(std::uint32_t)> texts);
    int RowCount() const { return static_cast<int>(rows_.size()); }
    const ChartRow& Row(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    QString TextAt(int row, int quarter) const;
    void SetColumnShown(int column, bool shown);

    /// -1 without one. Setting it scrolls it into sight and sends no signal.
    int CurrentRow() const { return current_; }
    void SetCurrentRow(int row);
    int TopRow() const;
    void SetTopRow(int row);

    /// The block that is asked for: drawn over all rows, and filled where the current row is free in it. A
    /// negative start shows none.
    void SetRequested(int firstQuarter, int quarters);
    /// Quarters can be chosen one by one: by a click, or with Left, Right and the space bar.
    void SetQuarterCursor(bool on) { hasCursor_ = on; }
    void SetEmptyText(const QString& text);

    QSize sizeHint() const override;

  signals:
    /// The operator made another row current.
    void currentRowChanged(int row);
    /// A double click, or Enter.
    void rowActivated(int row);
    void quarterPicked(int row, int quarter);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    int RowHeight() const;
    int HeaderHeight() const;
    int ColumnWidth(const ChartColumn& column) const;
    int LeadsWidth() const;
    /// Where a quarter begins, in pixels of the viewport.
    int QuarterLeft(int quarter) const;
    int QuarterAt(int x) const;
    int RowAt(int y) const;
    void FitScrollBar();
    void MakeCurrent(int row);
    void TellEmpty();
    void PaintHeader(QPainter& painter) const;
    void PaintRow(QPainter& painter, int row, int top) const;
    void PaintBars(QPainter& painter, const ChartRow& row, int top, bool isCurrent) const;
    QString TipAt(const QPoint& at) const;

    std::vector<ChartColumn> columns_;
    std::vector<bool> shown_;
    std::vector<ChartRow> rows_;
    std::function<QString(std::uint32_t)> texts_;
    QString emptyText_;
    int current_ = -1;
    int quarter_ = 0;
    int requestedFirst_ = -1;
    int requestedCount_ = 0;
    bool hasCursor_ = false;
};

}  // namespace kv
