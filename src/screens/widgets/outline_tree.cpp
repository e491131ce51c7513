#include "screens/widgets/outline_tree.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "screens/widgets/list_paint.h"
#include "screens/widgets/outline_model.h"

namespace kv {

OutlineTree::OutlineTree(const QString& name, QWidget* parent)
    : QTreeView(parent), model_(new OutlineModel(this)) {
    setObjectName(name);
    setModel(model_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(true);
    setIndentation(2 * theme::kUnit);
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (!model_->IdOf(index).empty()) {
            emit rowPicked(model_->IdOf(index));
        }
    });
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!model_->IdOf(index).empty()) {
            emit rowActivated(model_->IdOf(index));
        }
    });
}

OutlineTree::~OutlineTree() = default;

void OutlineTree::SetNodes(std::vector<OutlineNode> nodes, bool expanded) {
    model_->SetNodes(std::move(nodes));
    if (expanded) {
        expandAll();
    }
    const std::string shown = HighlightedId();
    if (!shown.empty()) {
        Highlight(shown);
    }
}

void OutlineTree::ExpandAll() {
    expandAll();
}

void OutlineTree::CollapseAll() {
    collapseAll();
}

int OutlineTree::NodeCount() const {
    return model_->NodeCount();
}

bool OutlineTree::Highlight(const std::string& id) {
    if (!model_->SetHighlighted(id)) {
        return false;
    }
    const QModelIndex index = model_->IndexOf(id);
    setCurrentIndex(index);
    scrollTo(index);
    return true;
}

const std::string& OutlineTree::HighlightedId() const {
    return model_->Highlighted();
}

bool OutlineTree::Contains(const std::string& id) const {
    return model_->IndexOf(id).isValid();
}

QString OutlineTree::TextOf(const std::string& id) const {
    const OutlineNode* node = model_->NodeOf(id);
    return node == nullptr ? QString() : node->text;
}

void OutlineTree::SetText(const std::string& id, const QString& text) {
    if (OutlineNode* node = model_->NodeOf(id)) {
        node->text = text;
        model_->NoteNode(id);
    }
}

void OutlineTree::SetIcon(const std::string& id, const QString& icon) {
    if (OutlineNode* node = model_->NodeOf(id)) {
        node->icon = icon;
        model_->NoteNode(id);
    }
}

void OutlineTree::SetMarked(const std::string& id, bool marked) {
    if (OutlineNode* node = model_->NodeOf(id)) {
        node->marked = marked;
        model_->NoteNode(id);
    }
}

std::vector<std::string> OutlineTree::Ids() const {
    return model_->Ids();
}

void OutlineTree::SetEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void OutlineTree::SetSessionColors(const theme::GridColors& colors) {
    ground_ = colors.ground;
    setStyleSheet(QStringLiteral("QTreeView { border: 1px solid %1; }").arg(colors.border.name()));
}

QSize OutlineTree::sizeHint() const {
    return {theme::CharactersWide(*this, 32) + 4 * theme::kUnit, 12 * fontMetrics().lineSpacing()};
}

void OutlineTree::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    QModelIndex last = model_->index(model_->rowCount() - 1, 0);
    while (last.isValid() && isExpanded(last) && model_->rowCount(last) > 0) {
        last = model_->index(model_->rowCount(last) - 1, 0, last);
    }
    const int bottom = last.isValid() ? visualRect(last).bottom() + 1 : 0;
    PaintListGround(*viewport(), bottom, ground_, last.isValid() ? QString() : emptyText_);
}

void OutlineTree::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QModelIndex current = currentIndex();
    if (enter && current.isValid()) {
        const std::string id = model_->IdOf(current);
        if (id.empty()) {
            setExpanded(current, !isExpanded(current));
        } else {
            emit rowPicked(id);
        }
        return;
    }
    QTreeView::keyPressEvent(event);
}

}  // namespace kv
