#pragma once
#include <QWidget>
#include <vector>

class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QLabel;

namespace kv {

class BoundControl;

/// Lays fields out: labels left of their boxes in aligned columns, several fields on one line where they
/// belong together, boxes as wide as what they hold. Tab goes through the fields as they were added.
class FieldForm : public QWidget {
    Q_OBJECT
  public:
    explicit FieldForm(QWidget* parent = nullptr);

    /// A line with one field, or several: the first one's label stands in the label column, the others'
    /// before their boxes.
    void AddField(BoundControl& control);
    void AddLine(const std::vector<BoundControl*>& controls);
    /// A line of any widgets, its label (may be empty) in the label column.
    void AddWidgets(const QString& caption, const std::vector<QWidget*>& widgets);
    /// A widget over label and box columns, which takes the height that is left when `grows`.
    void AddWide(QWidget* widget, bool grows = false);
    /// Puts a small widget (a button that belongs to it) behind the box that was added last.
    void AddBehind(QWidget* widget);
    /// A titled box over both columns with a form of its own.
    FieldForm* AddGroup(const QString& name, const QString& title);
    QGroupBox* GroupBox() const { return group_; }
    /// The following fields stand in a further pair of columns to the right, from the first line on.
    void NextColumn();
    /// Pushes the fields together at the top, and gives the groups among them one width of labels; the last
    /// call of a form.
    void AddStretch();
    /// Tab order begins at the first field and is continued by the caller from the last one.
    QWidget* FirstField() const { return first_; }
    QWidget* LastField() const { return last_; }

  private:
    void Chain(QWidget* widget);
    QHBoxLayout* NewLine(QLabel* label, bool tall);

    void NewGrid();
    int LabelWidth() const;

    QHBoxLayout* columns_ = nullptr;
    QGridLayout* grid_ = nullptr;
    QGroupBox* group_ = nullptr;
    std::vector<FieldForm*> groups_;  ///< those in it
    QHBoxLayout* line_ = nullptr;
    QWidget* first_ = nullptr;
    QWidget* last_ = nullptr;
    int row_ = 0;
};

}  // namespace kv
