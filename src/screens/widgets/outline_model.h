#pragma once
#include <QAbstractItemModel>
#include <string>
#include <unordered_map>
#include <vector>

#include "screens/widgets/outline_tree.h"

namespace kv {

/// The nodes of an OutlineTree, flat in reading order; an index's internal id is the node's place there.
class OutlineModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    using QAbstractItemModel::QAbstractItemModel;

    void SetNodes(std::vector<OutlineNode> nodes);
    int NodeCount() const { return static_cast<int>(items_.size()); }
    /// The index of an id, or an invalid one.
    QModelIndex IndexOf(const std::string& id) const;
    const std::string& IdOf(const QModelIndex& index) const;
    OutlineNode* NodeOf(const std::string& id);
    /// Repaints the row of the id.
    void NoteNode(const std::string& id);
    bool SetHighlighted(const std::string& id);
    const std::string& Highlighted() const { return highlighted_; }
    std::vector<std::string> Ids() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& /*parent*/ = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    static constexpr int kNone = -1;
    struct Item {
        OutlineNode node;  // its children are items of their own
        int parent = kNone;
        int row = 0;
        std::vector<int> children;
    };
    void Take(std::vector<OutlineNode> nodes, int parent);
    QModelIndex IndexAt(int item) const;

    std::vector<Item> items_;
    std::vector<int> top_;
    std::unordered_map<std::string, int> byId_;
    std::string highlighted_;
};

}  // namespace kv
