#pragma once
#include "clients/client_phones.h"
#include "screens/section_screen.h"

namespace kv {

class MaskedBox;
class RecordList;
class TextBox;

/// " Additional Telephony Phone Numbers": the client's numbers beside the main one.
class frmAddPhone : public SectionScreen {
    Q_OBJECT
  public:
    frmAddPhone(Session& session, QWidget* parent);
    void SetHiddenID(const std::string& id, ClientForm& mainScreen) override;
    bool MayLeave() override;

    RecordList* dbPhone = nullptr;
    TextBox* txtId = nullptr;
    MaskedBox* mskPhone = nullptr;

  private:
    Session& session_;
    PhoneClient client_;
};

}  // namespace kv
