#pragma once
#include <QDialog>
#include <vector>

#include "scheduling/assignments.h"

class QPushButton;

namespace kv {

class Grid;

/// Picks an authorization of the client whose assignments are copied.
class FRMcopyAssign : public QDialog {
    Q_OBJECT
  public:
    FRMcopyAssign(Session& session, const AssignmentParent& parentRow, QWidget* parent = nullptr);
    /// The authorization's sequence, 0 when none was picked.
    long Pick();

    Grid* FGauth = nullptr;
    QPushButton* CMDok = nullptr;
    QPushButton* Command1 = nullptr;

  private:
    std::vector<CopySource> sources_;
};

}  // namespace kv
