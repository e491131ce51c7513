#pragma once
#include <QWidget>

#include "clients/client_list.h"
#include "session/start.h"

class QGroupBox;
class QToolButton;

namespace kv {

class FieldForm;
class OutlineTree;
class PlainCombo;
class TextBox;

/// The left side of the main screen: the limits of the client list, the quick find, and the tree of the
/// clients.
class ClientListPane : public QWidget {
    Q_OBJECT
  public:
    explicit ClientListPane(QWidget* parent);

    ClientLimits Limits() const;
    void SetStatus(const QString& status);
    bool IsPotentialLimit() const;
    bool IsTemplateLimit() const;
    /// An empty group becomes "ALL", an empty status "ACTIVE".
    void FillEmptyLimits();
    /// CMBpotientalStatus is there only for potential clients.
    void ShowPotentialStatus();
    /// Where no manager is known CMBmanager would offer no choice, and stays away.
    void SetManagers(const ManagerList& managers);
    /// The code of the item picked in CMBmanager, "all" for no limit.
    std::string ManagerCode() const;
    void SetTree(const ClientTree& tree);
    /// Takes the limits as they stand for the ones that the list shows.
    void KeepLimits();
    /// Puts the combos back to the limits that the list shows, after a pick that came to nothing.
    void RestoreLimits();

    QGroupBox* TDBFrame3D7 = nullptr;
    PlainCombo* CMBcliStatus = nullptr;
    PlainCombo* cmbDISGROUP = nullptr;
    PlainCombo* CMBmanager = nullptr;
    PlainCombo* CMBpotientalStatus = nullptr;
    TextBox* TXTquick = nullptr;
    QToolButton* CMDquickFind = nullptr;
    QToolButton* Command1 = nullptr;  ///< the client search screen
    OutlineTree* FGtree = nullptr;

  signals:
    /// The operator picked another status, group or potential status.
    void limitsPicked();
    void managerPicked();
    void quickFindPressed();
    void searchPressed();

  private:
    QWidget* MakeQuickFind();
    std::vector<PlainCombo*> LimitCombos() const;

    FieldForm* form_ = nullptr;
    std::vector<int> kept_;  ///< the picked items, in the order of LimitCombos
};

}  // namespace kv
