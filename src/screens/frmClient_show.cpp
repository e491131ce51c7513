// What the main screen shows of a client, and the screen as the rules of a save see it.
#include <QGroupBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <algorithm>
#include <memory>
#include <utility>

#include "clients/change_history.h"
#include "clients/client_list.h"
#include "clients/notes_text.h"
#include "screens/frmClient.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_history.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_notes.h"
#include "screens/frmClient_referral.h"
#include "screens/frmClient_required.h"
#include "screens/notices.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/notes_box.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/section_strip.h"
#include "screens/widgets/status_bar.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

namespace {

constexpr int kReferralPart = 5;
constexpr int kHistoryPart = 6;
constexpr int kLastKeyOfClient = 10;  ///< Toolbar1's keys up to here act on the client

ScreenControl NotesControl(const char* name, const std::string& words, const std::string& notes) {
    ScreenControl control;
    control.name = name;
    control.text = words;
    control.value = notes;
    return control;
}

}  // namespace

ScreenControls frmClient::Controls() const {
    ScreenControls controls;
    for (const BoundControl* control : DbClient.Controls()) {
        controls.Add(DescribeControl(*control));
    }
    controls.Add(NotesControl("TXTedit", NotesText(notesReference_), notesReference_));
    return controls;
}

void frmClient::SetText(std::string_view control, const std::string& text) {
    if (control == "TXTedit") {
        notesReference_ = text;
        return;
    }
    for (BoundControl* box : DbClient.Controls()) {
        if (FromQt(box->Name()) == control) {
            const QScopedValueRollback<bool> setting(settingText_, true);
            box->EnterValue(Value(text));
        }
    }
}

void frmClient::EditRow() {
    DbClient.BeginEdit();
}

void frmClient::UpdateRow() {
    DbClient.Update();
}

void frmClient::RestoreRow() {
    DbClient.Restore();
}

void frmClient::RefreshClientList() {
    const Hourglass hourglass(session_.progress);
    const std::string shown = FromQt(Header->txtCliId->Text());
    ListPane->FillEmptyLimits();
    // Templates have neither section, so the rights are not asked for them.
    if (!ListPane->IsTemplateLimit()) {
        AskSectionRights(session_, rights_);
    }
    // What can fail comes first: until the new list stands, the old client stays with its own notes.
    ClientListData made = kv::RefreshClientList(session_, ListPane->Limits(), shown);
    DbClient.SetRecordset(std::move(made.list));
    ListPane->KeepLimits();
    LimitMiscLength();
    ListPane->SetTree(made.tree);
    ShowClientRecord();
}

void frmClient::LimitMiscLength() {
    const Recordset& list = List();
    General->TXTmisc->setMaxLength(list.Fields()[list.FieldIndex("MEDICAIDNO")].size);
}

void frmClient::ShowClientRecord() {
    const ClientView view = DescribeClient(session_, List(), rights_);
    if (DbClient.IsAdding() || !DbClient.HasRow()) {
        SetButtons(view, false);
        if (DbClient.Position() >= 0 && !DbClient.IsAdding()) {
            session_.ShowMessageWindow("Another user has deleted this client.");
        }
        return;
    }
    if (activeScreen_ != nullptr) {
        activeScreen_->SetHiddenID(view.id, *this);
    }
    ListPane->FGtree->Highlight(view.id);
    ShowStatusBar(view.statusBar);
    ShowDays(view.numDays, view.numActiveDays);
    Header->TXTStatus->SetValue(Value(view.statusWord));
    SetButtons(view, true);
    ShowSections(view.sections);
    if (ListPane->IsPotentialLimit()) {
        ListPane->CMBpotientalStatus->SetText(ToQt(view.potentialStatus));
    }
    ShowHistoryIfOpen();
    ShowReferralIfOpen();
}

void frmClient::ShowReferralIfOpen() {
    if (OpenPart() == kReferralPart && !ended_) {
        Handle([this] { Referral->LoadSources(); });
    }
}

void frmClient::SetButtons(const ClientView& view, bool hasClient) {
    if (activeScreen_ != nullptr) {
        // Its keys hold while the focus is in it.
        if (auto* list = activeScreen_->findChild<Grid*>()) {
            list->setFocus();
        }
    }
    const ToolbarButtons buttons = ClientToolbar(session_, DbClient.Count() > 0);
    for (std::size_t i = 1; i < buttons.size(); ++i) {
        const int index = static_cast<int>(i);
        const bool underSection = activeScreen_ != nullptr && index <= kLastKeyOfClient;
        Toolbar1->EnableButton(index, buttons[i] && !underSection);
    }
    Header->CMDchangeToActive->setVisible(view.potentialButtons);
    Header->CMDAnyCaregivers->setVisible(view.potentialButtons);
    Header->CMDpaste->setEnabled(hasClient);
    ListPane->ShowPotentialStatus();
    parts_->setEnabled(hasClient);
    if (!hasClient) {
        ListPane->FGtree->Highlight({});
        ShowStatusBar(view.statusBar);
        ShowDays(0, 0);
        Header->TXTStatus->SetValue(Value());
        ShowSections(view.sections);
        ShowHistoryIfOpen();
    }
}

void frmClient::ShowStatusBar(const StatusBarTexts& texts) {
    StatusBar1->SetPanel(1, ToQt(texts.lastChange));
    StatusBar1->SetPanel(2, ToQt(texts.dateTime));
    StatusBar1->SetPanel(3, ToQt(texts.position));
    StatusBar1->SetPanel(4, ToQt(texts.count));
}

void frmClient::ShowDays(long days, long activeDays) {
    Header->NUMdays->SetValue(Value(days));
    Header->NumactiveDays->SetValue(Value(activeDays));
    Referral->ShowDays(days, activeDays);
}

void frmClient::ShowSections(const ClientSections& sections) {
    for (std::size_t i = 0; i < kSectionCount; ++i) {
        const bool built = i == 0 || sections_[i].make != nullptr;
        IMGCommand->SetItemShown(static_cast<int>(i), built && sections.images[i]);
    }
    for (std::size_t i = 0; i < kPartCount; ++i) {
        CMDclient->SetItemEnabled(static_cast<int>(i), sections.parts[i]);
    }
    General->TXTmisc->SetEnabled(sections.accountBoxes);
    General->TXText->SetEnabled(sections.accountBoxes);
    RequiredInfo->FRAMEemerg->setEnabled(sections.accountBoxes);
    if (!sections.accountBoxes) {
        Header->CMDpaste->setEnabled(false);
    }
    if (!sections.parts[static_cast<std::size_t>(OpenPart())]) {
        ShowPart(0);
    }
    if (IMGCommand->Open() > 0 && !sections.images[static_cast<std::size_t>(IMGCommand->Open())]) {
        OpenSection(0);
    }
}

void frmClient::ShowRow() {
    Header->ShowName(RequiredInfo->TxtLastname->Text(), RequiredInfo->TxtFirstnam->Text());
    KeepNotes(DbClient.HasRow() ? List().Text("Comments") : std::string());
}

void frmClient::ShowFollowed(const std::vector<std::string>& fields) {
    TellFollowed(this, DbClient, fields, ToQt(List().Text("User_Id")));
    if (std::find(fields.begin(), fields.end(), "Comments") != fields.end()) {
        // The key that took the row is still on its way into the notes.
        followedNotes_ = List().Text("Comments");
        QMetaObject::invokeMethod(this, &frmClient::FollowNotes, Qt::QueuedConnection);
    }
    Header->ShowName(RequiredInfo->TxtLastname->Text(), RequiredInfo->TxtFirstnam->Text());
    const ClientView view = DescribeClient(session_, List(), rights_);
    ShowStatusBar(view.statusBar);
    ShowDays(view.numDays, view.numActiveDays);
    Header->TXTStatus->SetValue(Value(view.statusWord));
}

void frmClient::FollowNotes() {
    if (!followedNotes_) {
        return;
    }
    const std::string theirs = *std::exchange(followedNotes_, std::nullopt);
    if (Notes->TXTbox->IsDataChanged()) {
        // Other seats only add stamps: where one was edited or removed, something outside has been at the
        // notes, and the save of what was typed here is refused.
        if (!KeepsStamps(loadedNotes_, theirs)) {
            return;
        }
        Notes->TXTbox->EnterNotes(MergeNotes(loadedNotes_, Notes->TXTbox->Source(), theirs));
    }
    KeepNotes(theirs);
}

void frmClient::KeepNotes(const std::string& comments) {
    followedNotes_.reset();
    loadedNotes_ = comments;
    notesReference_ = comments;
}

int frmClient::OpenPart() const {
    return parts_->currentIndex();
}

void frmClient::ShowPart(int index) {
    parts_->setCurrentIndex(index);
    CMDclient->SetOpen(index);
    ShowHistoryIfOpen();
    ShowReferralIfOpen();
}

void frmClient::ShowHistoryIfOpen() {
    if (OpenPart() != kHistoryPart) {
        return;
    }
    Handle([this] {
        if (!DbClient.HasRow()) {
            return History->ShowHistory({}, {});
        }
        const std::string id = List().Text("CLIENT");
        History->ShowHistory(id, LoadHistory(*session_.dbMainWork, ClientHistoryStatement(id)));
    });
}

std::string frmClient::Filter() const {
    return FromQt(ListPane->CMBcliStatus->Text());
}

void frmClient::OpenSection(int index) {
    const auto at = static_cast<std::size_t>(index);
    const Hourglass hourglass(session_.progress);
    // A section that can't be opened leaves the one before as it stands.
    std::unique_ptr<SectionScreen> next;
    if (index != 0) {
        next.reset(sections_[at].make(session_, area_));
        connect(next.get(), &SectionScreen::clientChanged, this,
                [this] { Handle([this] { ShowClientRecord(); }); });
        next->SetHiddenID(FromQt(Header->txtCliId->Text()), *this);
    }
    FRMmain_Frame->setEnabled(index == 0);
    // The client can't be changed under a section.
    Header->CMDchangeToActive->setEnabled(index == 0);
    delete activeScreen_;
    activeScreen_ = next.release();
    IMGCommand->SetOpen(index);
    area_->setCurrentIndex(activeScreen_ == nullptr ? 0 : area_->addWidget(activeScreen_));
    if (activeScreen_ != nullptr) {
        // Its keys hold while the focus is in it.
        if (auto* list = activeScreen_->findChild<Grid*>()) {
            list->setFocus();
        }
    }
    const ToolbarButtons buttons = ClientToolbar(session_, DbClient.Count() > 0);
    for (int i = 1; i <= kLastKeyOfClient; ++i) {
        Toolbar1->EnableButton(i, index == 0 && buttons[static_cast<std::size_t>(i)]);
    }
}

}  // namespace kv
