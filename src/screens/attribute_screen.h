#pragma once
#include <array>

#include "careplan/client_attributes.h"
#include "screens/section_screen.h"

class QPushButton;

namespace kv {

class Grid;

/// What makes one list of a client's attributes different from another on the screen.
struct AttributeScreenTexts {
    AttributeList list = AttributeList::Skills;
    const char* screen;
    const char* title;
    const char* grid;
    const char* add;
    const char* remove;
    QString addTip;
    QString removeTip;
    QString masterCaption;
    QString ownCaption;
    QString masterEmpty;
    QString ownEmpty;
};

/// The company's list with ticks on the left, the client's entries on the right; Add copies what is ticked,
/// Remove takes the current entry away. Nothing waits for a save.
class AttributeScreen : public SectionScreen {
    Q_OBJECT
  public:
    AttributeScreen(Session& session, const AttributeScreenTexts& texts, QWidget* parent);
    void SetHiddenID(const std::string& id, ClientForm& mainScreen) override;

    Grid* FGmaster = nullptr;
    Grid* FGown = nullptr;  ///< FGskills or FGcall
    QPushButton* CMDadd = nullptr;
    QPushButton* CMDremove = nullptr;
    std::array<QPushButton*, 2> IMGCommand{};  ///< tick all, clear all

    /// Asks for a call type that is in no list.
    AskCallType Ask;

  private:
    QWidget* MakeMaster(const AttributeScreenTexts& texts);
    QWidget* MakeOwn(const AttributeScreenTexts& texts);
    void FillMaster();
    void ShowEntries();
    void TickAll(bool ticked);
    void AddKey();
    void RemoveKey();

    Session& session_;
    AttributeList list_;
    std::vector<AttributeItem> items_;
    Recordset entries_;
    std::string client_;
    AttributeRights rights_;
};

}  // namespace kv
