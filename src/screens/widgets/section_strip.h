#pragma once
#include <QWidget>
#include <vector>

class QLabel;
class QToolButton;

namespace kv {

struct SectionItem {
    QString icon;
    QString word;
    QString tip;
};

/// A strip of pictures with a word each, one of them open and marked with a check. Vertical for the sections
/// beside the client area, horizontal for the pages of one section. Hidden items leave no gap. Arrow keys go
/// along it.
class SectionStrip : public QWidget {
    Q_OBJECT
  public:
    /// Item i is named by `name` and i ("IMGCommand3"); the mark on the open one has `markName`.
    SectionStrip(const QString& name, const QString& markName, Qt::Orientation orientation,
                 const std::vector<SectionItem>& items, QWidget* parent);

    int Count() const { return static_cast<int>(buttons_.size()); }
    /// Moves the mark; -1 takes it away. Sends no signal.
    void SetOpen(int index);
    int Open() const { return open_; }
    void SetItemShown(int index, bool shown);
    bool IsItemShown(int index) const;
    void SetItemEnabled(int index, bool enabled);
    bool IsItemEnabled(int index) const;
    void SetTip(int index, const QString& tip);
    QToolButton* Button(int index) const;

  signals:
    /// The operator pressed an item; the screen decides whether it opens.
    void picked(int index);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Step(const QToolButton* from, int direction);
    void PlaceMark();

    std::vector<QToolButton*> buttons_;
    QLabel* mark_ = nullptr;
    Qt::Orientation orientation_;
    int open_ = -1;
};

}  // namespace kv
