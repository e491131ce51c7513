#pragma once
#include <QDialog>
#include <vector>

#include "scheduling/assignments.h"

class QPushButton;

namespace kv {

class Grid;

/// "Assignment Conflicts": what a new or changed assignment may run into. Exit goes on with the save; the
/// other way, Escape too, leads back to the boxes (rejected).
class frmDiscrep : public QDialog {
    Q_OBJECT
  public:
    explicit frmDiscrep(const std::vector<AssignmentConflict>& conflicts, QWidget* parent = nullptr);

    Grid* FGdiscrep = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* CMDback = nullptr;
};

}  // namespace kv
