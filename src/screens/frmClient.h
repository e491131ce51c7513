#pragma once
#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <optional>
#include <string>

#include "clients/client_form.h"
#include "clients/client_record.h"
#include "clients/client_rights.h"
#include "clients/notes_text.h"
#include "clients/people_list.h"
#include "screens/screen_steps.h"
#include "screens/section_screen.h"
#include "screens/widgets/bound_source.h"
#include "session/session.h"

class QStackedWidget;

namespace kv {

class ClientHeader;
class ClientListPane;
class ClientPart;
class FRMdirections;
class FRMgeneral;
class FRMhistory;
class FRMnotes;
class FRMreferral;
class FRMrequired_Info;
class FRMthird;
class SectionStrip;
class StatusBar;
class ToolBar;

/// The main screen: one client at a time out of the limited list. Loading it is the start of the program, and
/// closing it the end. The rules of a save see it as their ClientForm.
class frmClient : public QMainWindow, public ClientForm {
    Q_OBJECT
  public:
    /// Builds the screen; nothing is read yet.
    explicit frmClient(Session& session, const Sections& sections = ClientSectionScreens(),
                       QWidget* parent = nullptr);
    ~frmClient() override;

    /// The start, up to the first client on the screen; the caller then shows the window. The menu program's
    /// STARTED is the caller's to ask, before any window. Throws EngineError where a database of the session
    /// can't be opened; what else fails is told, and the start goes on.
    void Start();
    /// The end: lets the row go, closes the session's data and tells the menu program. Asks nothing. Runs
    /// once.
    void Unload();

    // ClientForm
    Recordset& List() override { return DbClient.Rows(); }
    ScreenControls Controls() const override;
    std::string Filter() const override;
    std::string LoadedNotes() const override { return loadedNotes_; }
    void SetText(std::string_view control, const std::string& text) override;
    void EditRow() override;
    void UpdateRow() override;
    void RestoreRow() override;
    void RefreshClientList() override;

    /// Loads the current row's view into the screen beside the bound controls.
    void ShowClientRecord();
    /// The pages of section 0, counted from 0.
    void ShowPart(int index);
    int OpenPart() const;
    /// Section 0 is the main screen's own; any other one fills the client area.
    void OpenSection(int index);

    BoundSource DbClient;
    ToolBar* Toolbar1 = nullptr;
    StatusBar* StatusBar1 = nullptr;
    SectionStrip* IMGCommand = nullptr;
    SectionStrip* CMDclient = nullptr;
    ClientListPane* ListPane = nullptr;
    ClientHeader* Header = nullptr;
    QWidget* FRMmain_Frame = nullptr;
    FRMrequired_Info* RequiredInfo = nullptr;
    FRMgeneral* General = nullptr;
    FRMdirections* Directions = nullptr;
    FRMnotes* Notes = nullptr;
    FRMthird* Third = nullptr;
    FRMreferral* Referral = nullptr;
    FRMhistory* History = nullptr;

    /// Opens a file or an address with the desktop's own program.
    std::function<bool(const std::string& target, const std::string& argument)> OpenOutside;
    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    static constexpr int kSortPanel = 5;  ///< of StatusBar1

    // frmClient.cpp: the frame
    void MakeToolbar();
    void MakeMenu();
    void MakeStatusBar();
    QWidget* MakeClientArea();
    QWidget* MakeParts();
    QWidget* MakeSections();
    void ArrangeTabOrder();
    void ConnectControls();
    void AddKeys();
    /// Runs what an event asked for; an engine's error ends here.
    void Handle(const Step& step);
    /// Before a step away from the client: tells of a box whose entry can't be stored and goes to it, or lets
    /// the open section ask about what was typed in it. True where the step is not taken.
    bool MustStay();

    // frmClient_keys.cpp: what the keys do
    void Move(ListMove move);
    void NewKey();
    void DeleteKey();
    void SaveKey();
    void DiscardKey();
    void SortKey();
    void ExitKey();
    void FindKey();
    /// Shows a client of the list, or tells that the limits leave it out.
    void ShowFound(const std::string& id);
    void HelpKey();
    void PasteKey();
    void EmailKey();
    void QuickFindKey();
    void PickTreeClient(const std::string& id);
    void LimitsPicked(bool managerToo);
    void ChangeStatusKey();
    void ViewPeople(PeopleTable table);
    void DiagnosesKey();
    void CheckNameOf(BoundControl& control);
    void RecountDays();
    PrintedClient ClientForPrint() const;
    void PrintNotes();

    // frmClient_show.cpp: what is shown of a client
    void ShowRow();
    /// Another seat had changed the client since they were shown.
    void ShowFollowed(const std::vector<std::string>& fields);
    /// Another seat has changed the notes since they were shown: what was typed here is put into theirs.
    void FollowNotes();
    /// The row's notes, against which those in the box are compared.
    void KeepNotes(const std::string& comments);
    void SetButtons(const ClientView& view, bool hasClient);
    void ShowStatusBar(const StatusBarTexts& texts);
    void ShowSections(const ClientSections& sections);
    void ShowDays(long days, long activeDays);
    void ShowHistoryIfOpen();
    void ShowReferralIfOpen();
    void LimitMiscLength();

    // frmClient_start.cpp: the steps of the start
    void Try(const Step& step);
    void OrderByClientId();
    void OpenData();
    void ShowCountry();
    void FillTextLists();
    void ShowCaption();
    void AskRights();
    void BindSources();
    void LimitToManager();
    void FillLookupLists();
    void ShowFirstClient();

    Session& session_;
    Sections sections_;
    ClientRights rights_;
    KeySteps keys_;
    QStackedWidget* area_ = nullptr;  ///< the parts, or the section screen that is open
    QStackedWidget* parts_ = nullptr;
    SectionScreen* activeScreen_ = nullptr;  ///< nullptr while section 0 is current
    QPointer<QWidget> lastBox_;              ///< the box that had the focus last
    /// The notes with the marks of rich text: as they were loaded, and TXTedit, against which TXTbox is
    /// compared.
    std::string loadedNotes_;
    std::string notesReference_;
    std::optional<std::string> followedNotes_;  ///< another seat's, which FollowNotes has not looked at yet
    bool settingText_ = false;
    bool up_ = false;
    bool ended_ = false;
};

}  // namespace kv
