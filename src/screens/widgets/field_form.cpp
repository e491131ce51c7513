#include "screens/widgets/field_form.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <algorithm>

#include "screens/widgets/bound_control.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

bool Grows(const QWidget* widget) {
    return widget->sizePolicy().expandingDirections().testFlag(Qt::Horizontal);
}

}  // namespace

FieldForm::FieldForm(QWidget* parent) : QWidget(parent), columns_(new QHBoxLayout(this)) {
    columns_->setContentsMargins(0, 0, 0, 0);
    // Some air between the columns, so that a label is not read with the box to its left.
    columns_->setSpacing(3 * theme::kUnit);
    NewGrid();
}

void FieldForm::NewGrid() {
    grid_ = new QGridLayout;
    grid_->setHorizontalSpacing(theme::kUnit);
    grid_->setVerticalSpacing(theme::kHalfUnit);
    grid_->setColumnStretch(1, 1);
    columns_->addLayout(grid_, 1);
    row_ = 0;
    line_ = nullptr;
}

QHBoxLayout* FieldForm::NewLine(QLabel* label, bool tall) {
    if (label != nullptr) {
        grid_->addWidget(label, row_, 0, tall ? Qt::AlignTop : Qt::AlignVCenter);
    }
    line_ = new QHBoxLayout;
    line_->setSpacing(theme::kUnit);
    grid_->addLayout(line_, row_, 1);
    ++row_;
    return line_;
}

void FieldForm::AddField(BoundControl& control) {
    AddLine({&control});
}

void FieldForm::AddLine(const std::vector<BoundControl*>& controls) {
    bool grows = false;
    for (BoundControl* control : controls) {
        QLabel* label = control->PlaceLabel();
        const bool tall = qobject_cast<QPlainTextEdit*>(control->Widget()) != nullptr;
        if (control == controls.front()) {
            NewLine(label, tall);
        } else if (label != nullptr) {
            line_->addWidget(label);
        }
        // Lines of check boxes are as high as lines of boxes, so that neighbouring columns stay level; a line
        // whose boxes are hidden takes no room.
        control->Widget()->setMinimumHeight(
            std::max(control->Widget()->minimumHeight(), fontMetrics().height() + theme::kUnit));
        line_->addWidget(control->Widget());
        if (control->CanFault()) {
            line_->addWidget(control->PlaceFaultLabel());
        }
        grows = grows || Grows(control->Widget());
        Chain(control->Widget());
    }
    if (!grows) {
        line_->addStretch(1);
    }
}

void FieldForm::AddWidgets(const QString& caption, const std::vector<QWidget*>& widgets) {
    QLabel* label = caption.isEmpty() ? nullptr : new QLabel(caption, this);
    NewLine(label, false);
    bool grows = false;
    for (QWidget* widget : widgets) {
        line_->addWidget(widget);
        grows = grows || Grows(widget);
        Chain(widget);
    }
    if (label != nullptr && !widgets.empty()) {
        label->setBuddy(widgets.front());
    }
    if (!grows) {
        line_->addStretch(1);
    }
}

void FieldForm::AddWide(QWidget* widget, bool grows) {
    grid_->addWidget(widget, row_, 0, 1, 2);
    if (grows) {
        grid_->setRowStretch(row_, 1);
    }
    ++row_;
    line_ = nullptr;
    Chain(widget);
}

void FieldForm::AddBehind(QWidget* widget) {
    const int last = line_->count() - 1;
    const bool stretchLast = last >= 0 && line_->itemAt(last)->spacerItem() != nullptr;
    line_->insertWidget(stretchLast ? last : last + 1, widget);
    Chain(widget);
}

FieldForm* FieldForm::AddGroup(const QString& name, const QString& title) {
    auto* box = new QGroupBox(title, this);
    box->setObjectName(name);
    auto* inner = new FieldForm(box);
    inner->group_ = box;
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    layout->addWidget(inner);
    grid_->addWidget(box, row_, 0, 1, 2);
    ++row_;
    line_ = nullptr;
    groups_.push_back(inner);
    return inner;
}

void FieldForm::NextColumn() {
    grid_->setRowStretch(row_, 1);
    NewGrid();
}

void FieldForm::AddStretch() {
    grid_->setRowStretch(row_, 1);
    int widest = 0;
    for (const FieldForm* group : groups_) {
        widest = std::max(widest, group->LabelWidth());
    }
    for (FieldForm* group : groups_) {
        group->grid_->setColumnMinimumWidth(0, widest);
    }
}

int FieldForm::LabelWidth() const {
    int widest = 0;
    for (int row = 0; row < row_; ++row) {
        const QLayoutItem* item = grid_->itemAtPosition(row, 0);
        if (item != nullptr && qobject_cast<QLabel*>(item->widget()) != nullptr &&
            grid_->itemAtPosition(row, 1) != item) {
            widest = std::max(widest, item->widget()->sizeHint().width());
        }
    }
    return widest;
}

void FieldForm::Chain(QWidget* widget) {
    if (first_ == nullptr) {
        first_ = widget;
    } else {
        setTabOrder(last_, widget);
    }
    last_ = widget;
}

}  // namespace kv
