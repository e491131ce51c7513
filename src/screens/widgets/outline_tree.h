#pragma once
#include <QColor>
#include <QTreeView>
#include <optional>
#include <string>
#include <vector>

#include "screens/widgets/theme.h"

namespace kv {

struct OutlineNode {
    QString text;
    /// The hidden id of the row; empty for a node that only groups.
    std::string id;
    /// Shown in the second colour.
    bool marked = false;
    bool bold = false;
    QString icon;
    std::vector<OutlineNode> children;
};

class OutlineModel;

/// An outline of nodes, with a hidden id per row. Two states are kept apart: the keyboard's place, and the
/// highlighted row, which is the record that the screen shows.
class OutlineTree : public QTreeView {
    Q_OBJECT
  public:
    OutlineTree(const QString& name, QWidget* parent);
    ~OutlineTree() override;

    /// Replaces all nodes. The highlight stays on its id where that still exists.
    void SetNodes(std::vector<OutlineNode> nodes, bool expanded);
    void Clear() { SetNodes({}, false); }
    void ExpandAll();
    void CollapseAll();
    int NodeCount() const;

    /// Highlights the row of the id, opens its parents and scrolls it into sight. The row highlighted before
    /// takes its own colours again. False where there is none: nothing is highlighted then. Sends no signal.
    bool Highlight(const std::string& id);
    const std::string& HighlightedId() const;
    bool Contains(const std::string& id) const;
    QString TextOf(const std::string& id) const;
    void SetText(const std::string& id, const QString& text);
    void SetIcon(const std::string& id, const QString& icon);
    void SetMarked(const std::string& id, bool marked);
    /// Ids in the order in which they stand.
    std::vector<std::string> Ids() const;

    void SetEmptyText(const QString& text);
    void SetSessionColors(const theme::GridColors& colors);
    QSize sizeHint() const override;

  signals:
    /// A click on a row with an id, or Enter on it.
    void rowPicked(const std::string& id);
    void rowActivated(const std::string& id);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    OutlineModel* model_ = nullptr;
    QString emptyText_;
    std::optional<QColor> ground_;
};

}  // namespace kv
