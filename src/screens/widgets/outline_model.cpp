#include "screens/widgets/outline_model.h"

#include <QApplication>
#include <QBrush>
#include <QFont>

namespace kv {

void OutlineModel::SetNodes(std::vector<OutlineNode> nodes) {
    beginResetModel();
    items_.clear();
    top_.clear();
    byId_.clear();
    Take(std::move(nodes), kNone);
    if (byId_.count(highlighted_) == 0) {
        highlighted_.clear();
    }
    endResetModel();
}

void OutlineModel::Take(std::vector<OutlineNode> nodes, int parent) {
    for (OutlineNode& node : nodes) {
        const int item = NodeCount();
        std::vector<OutlineNode> children = std::move(node.children);
        node.children.clear();
        if (!node.id.empty()) {
            byId_.emplace(node.id, item);
        }
        std::vector<int>& siblings =
            parent == kNone ? top_ : items_[static_cast<std::size_t>(parent)].children;
        const int row = static_cast<int>(siblings.size());
        siblings.push_back(item);
        items_.push_back({std::move(node), parent, row, {}});
        Take(std::move(children), item);
    }
}

QModelIndex OutlineModel::IndexAt(int item) const {
    return createIndex(items_[static_cast<std::size_t>(item)].row, 0, static_cast<quintptr>(item));
}

QModelIndex OutlineModel::IndexOf(const std::string& id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? QModelIndex() : IndexAt(found->second);
}

const std::string& OutlineModel::IdOf(const QModelIndex& index) const {
    return items_[index.internalId()].node.id;
}

OutlineNode* OutlineModel::NodeOf(const std::string& id) {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &items_[static_cast<std::size_t>(found->second)].node;
}

void OutlineModel::NoteNode(const std::string& id) {
    const QModelIndex index = IndexOf(id);
    if (index.isValid()) {
        emit dataChanged(index, index);
    }
}

bool OutlineModel::SetHighlighted(const std::string& id) {
    const std::string before = highlighted_;
    highlighted_ = byId_.count(id) == 0 ? std::string() : id;
    NoteNode(before);
    NoteNode(highlighted_);
    return !highlighted_.empty();
}

std::vector<std::string> OutlineModel::Ids() const {
    std::vector<std::string> ids;
    for (const Item& item : items_) {
        if (!item.node.id.empty()) {
            ids.push_back(item.node.id);
        }
    }
    return ids;
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const {
    const std::vector<int>& siblings = parent.isValid() ? items_[parent.internalId()].children : top_;
    if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= siblings.size()) {
        return {};
    }
    return createIndex(row, 0, static_cast<quintptr>(siblings[static_cast<std::size_t>(row)]));
}

QModelIndex OutlineModel::parent(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    const int parent = items_[index.internalId()].parent;
    return parent == kNone ? QModelIndex() : IndexAt(parent);
}

int OutlineModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>((parent.isValid() ? items_[parent.internalId()].children : top_).size());
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const OutlineNode& node = items_[index.internalId()].node;
    const bool current = !node.id.empty() && node.id == highlighted_;
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:  // what is cut off can be read all the same
            return node.text;
        case Qt::DecorationRole:
            return node.icon.isEmpty() ? QVariant() : QVariant(theme::Icon(node.icon));
        case Qt::FontRole: {
            QFont font;
            font.setBold(node.bold || current);
            return node.bold || current ? QVariant(font) : QVariant();
        }
        case Qt::ForegroundRole:
            return node.marked ? QVariant(QBrush(theme::ColorOf(theme::Ink::Marked, QApplication::palette())))
                               : QVariant();
        case Qt::BackgroundRole:
            return current ? QVariant(QBrush(theme::ColorOf(theme::Ink::Current, QApplication::palette())))
                           : QVariant();
        default:
            return {};
    }
}

}  // namespace kv
