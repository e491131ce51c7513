#pragma once
#include <QDialog>
#include <string>
#include <vector>

#include "clients/client_moves.h"

class QLabel;
class QPushButton;

namespace kv {

class Grid;

/// "Multiple Records found in Quick Find": lets the operator choose one of several hits.
class FRMQuickFind : public QDialog {
    Q_OBJECT
  public:
    explicit FRMQuickFind(const std::vector<QuickFindRow>& hits, QWidget* parent = nullptr);
    /// The id of the highlighted row.
    std::string ChosenId() const;

    QLabel* LBLtext = nullptr;
    Grid* FG1 = nullptr;
    QPushButton* CMDselect = nullptr;
    QPushButton* CMDcancel = nullptr;
};

}  // namespace kv
