#pragma once
#include <functional>

#include "screens/section_screen.h"

class QToolButton;

namespace kv {

class MemoBox;
class RecordList;
class TextBox;

/// " Caregiver's who should not visit this Client".
class FRMNotVisit : public SectionScreen {
    Q_OBJECT
  public:
    FRMNotVisit(Session& session, QWidget* parent);
    void SetHiddenID(const std::string& id, ClientForm& mainScreen) override;
    bool MayLeave() override;

    RecordList* DBnoemp = nullptr;
    TextBox* TXTnoempid = nullptr;
    TextBox* Text4 = nullptr;  ///< the caregiver's name
    MemoBox* Text5 = nullptr;  ///< the reason
    QToolButton* Command7 = nullptr;

    /// Picks a caregiver; the id, or kCancelled.
    std::function<std::string()> Pick;

  private:
    /// Shows the name of the caregiver entered; one that there is not is told, and the box emptied: false
    /// then.
    bool CheckCaregiver();
    void PickKey();

    Session& session_;
    std::string clientId_;
};

}  // namespace kv
