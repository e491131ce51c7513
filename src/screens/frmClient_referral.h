#pragma once
#include <functional>
#include <string>

#include "clients/referrals.h"
#include "screens/frmClient_part.h"
#include "screens/screen_steps.h"
#include "session/session.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace kv {

class DateBox;
class FieldForm;
class Grid;
class OutlineTree;
class PlainCombo;
class TextBox;

/// The page of who sent the client, with the list of the sources and their contacts, and the dates of care
/// with the days between them.
class FRMreferral : public ClientPart {
    Q_OBJECT
  public:
    FRMreferral(Session& session, QWidget* parent);
    std::vector<Tie> Ties() const override;

    /// The counts of days behind their dates, as the header has them.
    void ShowDays(long days, long activeDays);
    /// The categories to choose from. Throws EngineError.
    void LoadCategories();
    /// Load_Referrals: the list by its limits, then the details of the client's source. Throws EngineError.
    void LoadSources();
    /// The details of the source and contact in the boxes. Throws EngineError.
    void RefreshDetails();

    DateBox* DTEFirstContact = nullptr;
    DateBox* DTEstartofcare = nullptr;
    DateBox* DTEendofcare = nullptr;
    PlainCombo* CMBref_group = nullptr;
    TextBox* TXTrefSource = nullptr;
    TextBox* TXTrefContact = nullptr;
    QPushButton* CMDsaveReferral = nullptr;
    QLabel* LBLdays = nullptr;
    QLabel* LBLactiveDays = nullptr;
    PlainCombo* CMBFindCategory = nullptr;
    PlainCombo* CMBfindStatus = nullptr;
    OutlineTree* FGreferralFind = nullptr;
    Grid* FGReferral = nullptr;
    Grid* FGcontact = nullptr;
    QListWidget* LSTgraph = nullptr;
    QPushButton* CMDgraph = nullptr;

    /// The group that the client list is limited to.
    std::function<std::string()> ListGroup;
    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    QWidget* MakeFind();
    QWidget* MakeClient();
    QWidget* MakeDetails();
    QWidget* MakeGraph();
    void MakeDates(FieldForm* form);
    void MakeSource(FieldForm* form);
    void PickRow(const std::string& id);
    void SaveKey();
    void GraphKey();

    Session& session_;
    std::vector<ReferralSource> sources_;
};

}  // namespace kv
