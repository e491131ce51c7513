#pragma once
#include <array>
#include <functional>

#include "billing/client_rates.h"
#include "screens/screen_steps.h"
#include "screens/section_screen.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace kv {

class FieldForm;
class NumberBox;
class RecordList;
class TextBox;
class TimeBox;

/// "Billing Rates": the client's own rates, and those of any payer to look at.
class FRMbillRates : public SectionScreen {
    Q_OBJECT
  public:
    FRMbillRates(Session& session, QWidget* parent);
    void SetHiddenID(const std::string& id, ClientForm& mainScreen) override;
    bool MayLeave() override;

    QComboBox* cmbPayor = nullptr;
    QLabel* LBLrates = nullptr;  ///< whose rates are shown
    RecordList* DBcliRate = nullptr;
    TextBox* txtVISitTYPE = nullptr;
    QToolButton* CMDvistype = nullptr;
    TextBox* TXTvisdesc = nullptr;
    TextBox* TXTmethod = nullptr;
    /// NUMrate1, Numrate2 to Numrate6, and Numrate7 for a live-in shift.
    std::array<NumberBox*, 7> Rates{};
    std::array<QLabel*, 6> Windows{};  ///< the clock window of each shift
    QLineEdit* TXTCli_Rates = nullptr;
    QToolButton* CMDcli_Find_Rates = nullptr;
    QPushButton* CMDsave_Rates = nullptr;
    QGroupBox* FRApaste = nullptr;

    /// Picks a client or a call type; the id or code, or kCancelled.
    std::function<std::string()> PickOther;
    std::function<std::string()> PickType;

  private:
    QWidget* MakePayer();
    void MakeBoxes(FieldForm* form);
    QWidget* MakePaste();
    void ShowRates();
    void ShowWindows();
    void CheckType();
    void PickTypeKey();
    void PasteKey();
    void CopyKey();
    void HistoryKey();
    bool IsOwn() const;

    Session& session_;
    std::string client_;
};

}  // namespace kv
