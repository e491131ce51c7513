#pragma once
#include <QDialog>
#include <vector>

#include "scheduling/assignments.h"

class QPushButton;

namespace kv {

class Grid;

/// "Assignment Conflicts": what a new or changed assignment may run into. It only tells.
class frmDiscrep : public QDialog {
    Q_OBJECT
  public:
    explicit frmDiscrep(const std::vector<AssignmentConflict>& conflicts, QWidget* parent = nullptr);

    Grid* FGdiscrep = nullptr;
    QPushButton* Command1 = nullptr;
};

}  // namespace kv
