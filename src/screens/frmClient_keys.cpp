// What the keys of the main screen do.
#include <QApplication>
#include <QKeyEvent>
#include <filesystem>
#include <optional>

#include "base/text.h"
#include "clients/client_delete.h"
#include "clients/client_moves.h"
#include "clients/client_save.h"
#include "clients/client_sort.h"
#include "clients/potential_status.h"
#include "clients/quick_find.h"
#include "clients/record_keys.h"
#include "screens/FRMICD9.h"
#include "screens/FRMQuickFind.h"
#include "screens/FRMmisc.h"
#include "screens/FRMpotientalStatus.h"
#include "screens/FRMsort.h"
#include "screens/frmClient.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_notes.h"
#include "screens/frmClient_referral.h"
#include "screens/frmClient_required.h"
#include "screens/frmnew.h"
#include "screens/help.h"
#include "screens/pick_screen.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/notes_box.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/status_bar.h"
#include "screens/widgets/text_box.h"

namespace kv {

void frmClient::Move(ListMove move) {
    if (!MustStay() && MoveInClientList(session_, *this, move)) {
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::ShowFound(const std::string& id) {
    if (MoveToPickedClient(session_, *this, id)) {
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::NewKey() {
    if (MustStay() || !MayLeaveClient(session_, *this)) {
        return;
    }
    frmnew screen(session_, this);
    if (screen.exec() != QDialog::Accepted || ended_) {
        return;
    }
    const std::string id = session_.PickedEmployee;
    if (screen.IsTemplate()) {
        ListPane->SetStatus(QStringLiteral("TEMPLATES"));
    } else if (screen.IsPotential()) {
        ListPane->SetStatus(QStringLiteral("POTENTIAL"));
        ListPane->CMBpotientalStatus->SetText(QStringLiteral("Active"));
    } else {
        ListPane->SetStatus(QStringLiteral("ACTIVE"));
    }
    RefreshClientList();
    OpenSection(0);
    ShowFound(id);
}

void frmClient::DeleteKey() {
    // What is to go is what the operator has looked at, not what another seat has made of it.
    if (DbClient.FollowRow()) {
        if (DbClient.HasRow()) {
            session_.ShowMessageWindow(kChangedBeforeDelete);
        }
        ShowClientRecord();
        return;
    }
    if (!DeleteClient(session_, *this, FromQt(Header->TXTStatus->Text())) && !DbClient.IsEditing()) {
        ShowClientRecord();
    }
}

void frmClient::SortKey() {
    // The list is read anew: what was typed would be lost with it.
    if (MustStay() || !MayLeaveClient(session_, *this)) {
        return;
    }
    FRMsort screen(this);
    screen.exec();
    const ClientOrder order = screen.Order();
    if (order.columns.empty() || ended_) {
        return;
    }
    KeepClientOrder(session_, order);
    RefreshClientList();
    StatusBar1->SetPanel(kSortPanel, ToQt("Current Sort: " + order.description));
}

void frmClient::FindKey() {
    if (MustStay() || !MayLeaveClient(session_, *this)) {
        return;
    }
    const std::string id = PickClient(session_, this);
    if (id != kCancelled && !ended_) {
        ShowFound(id);
    }
}

void frmClient::SaveKey() {
    if (MustStay()) {
        return;
    }
    // A client at fault stays on the screen as typed; a failed save has restored it.
    if (SaveClient(session_, *this)) {
        DbClient.ShowRow();
        ShowClientRecord();
    } else if (!DbClient.IsEditing()) {
        ShowClientRecord();
    }
}

void frmClient::DiscardKey() {
    DiscardClient(session_, *this);
    ShowClientRecord();
}

void frmClient::ExitKey() {
    if (MustStay() || CheckRequiredInfo(session_, *this)) {
        return;
    }
    OpenSection(0);
    if (PromptToSaveClient(session_, *this) != PromptResult::Stayed) {
        RestoreRow();
        close();
    }
}

void frmClient::HelpKey() {
    StartHelp(session_, "client", OpenOutside);
}

void frmClient::PasteKey() {
    if (lastBox_.isNull() || !lastBox_->isVisible() || !lastBox_->isEnabled()) {
        session_.ShowMessageWindow("Please choose the box to paste into first.");
        return;
    }
    // As the paste key does it, so that each box pastes by its own rules.
    lastBox_->setFocus();
    QKeyEvent paste(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier);
    QApplication::sendEvent(lastBox_, &paste);
}

void frmClient::EmailKey() {
    const std::string address = Trim(FromQt(RequiredInfo->txtEmail->Text()));
    if (address.empty()) {
        session_.ShowMessageWindow("This client has no e-mail address.");
    } else if (!OpenOutside("mailto:" + address, {})) {
        session_.ShowMessageWindow("The desktop has no program for e-mail.");
    }
}

void frmClient::QuickFindKey() {
    const auto choose = [this](const std::vector<QuickFindRow>& hits) {
        FRMQuickFind screen(hits, this);
        return screen.exec() == QDialog::Accepted ? screen.ChosenId() : std::string();
    };
    if (!MustStay() && QuickFindClient(session_, *this, FromQt(ListPane->TXTquick->Text()), choose)) {
        ListPane->TXTquick->clear();
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::PickTreeClient(const std::string& id) {
    if (!MustStay() && MoveToTreeClient(session_, *this, id)) {
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::LimitsPicked(bool managerToo) {
    const std::string manager = session_.Manager;
    try {
        if (MustStay() || !MayLeaveClient(session_, *this)) {
            ListPane->RestoreLimits();
            return;
        }
        if (managerToo) {
            session_.Manager = ListPane->ManagerCode();
        }
        RefreshClientList();
    } catch (const EngineError&) {
        session_.Manager = manager;
        ListPane->RestoreLimits();
        throw;
    }
    OpenSection(0);
}

void frmClient::ChangeStatusKey() {
    if (MustStay()) {
        return;
    }
    // What was typed would be lost with the row's own change.
    if (PromptToSaveClient(session_, *this) == PromptResult::Stayed) {
        return;
    }
    FRMpotientalStatus screen(this);
    if (screen.exec() != QDialog::Accepted) {
        return;
    }
    switch (ChangePotentialStatus(session_, List(), screen.Choice())) {
        case PotentialResult::Unchanged:
            break;
        case PotentialResult::Changed:
            DbClient.ShowRow();
            ShowClientRecord();
            break;
        case PotentialResult::BecameActive:
            ListPane->SetStatus(QStringLiteral("ACTIVE"));
            try {
                RefreshClientList();
            } catch (const EngineError&) {
                ListPane->RestoreLimits();
                throw;
            }
            break;
    }
}

void frmClient::ViewPeople(PeopleTable table) {
    PlainCombo* combo = General->PeopleCombo(table);
    FRMmisc screen(session_, table, FromQt(combo->Text()), this);
    screen.exec();
    if (ended_) {
        return;
    }
    General->SetPeople(table, LoadPeople(session_, table));
    if (const std::optional<std::string> name = screen.PickedName()) {
        combo->SetText(ToQt(*name));
    }
}

void frmClient::DiagnosesKey() {
    if (!DbClient.HasRow()) {
        return;
    }
    const ScreenControls shown = Controls();
    FRMICD9 screen(session_,
                   {shown.Stored("txtCliId"),
                    Trim(Trim(shown.Stored("TxtFirstnam")) + " " + Trim(shown.Stored("TxtLastname"))),
                    FromQt(RequiredInfo->TxtPhone->Text())},
                   this);
    screen.exec();
    if (ended_) {
        return;
    }
    for (const AttributeItem& diagnosis : screen.Added()) {
        General->TakeDiagnosis(diagnosis.code, diagnosis.description);
    }
}

void frmClient::CheckNameOf(BoundControl& control) {
    if (!settingText_) {
        Handle([&] { CheckName(session_, *this, FromQt(control.Name())); });
    }
    Header->ShowName(RequiredInfo->TxtLastname->Text(), RequiredInfo->TxtFirstnam->Text());
}

void frmClient::RecountDays() {
    if (DbClient.HasRow() && Referral->DTEFirstContact->IsFilled()) {
        const long days = NumDays(Referral->DTEFirstContact->Value(), Referral->DTEstartofcare->Value());
        ShowDays(days, static_cast<long>(Header->NumactiveDays->Number()));
    }
}

PrintedClient frmClient::ClientForPrint() const {
    const ScreenControls shown = Controls();
    const auto text = [&](const char* control) { return shown.Stored(control); };
    return {text("txtCliId"),    text("TxtLastname"), text("TxtFirstnam"), text("txtStreet"),
            text("TXTaddress2"), text("TXTapt"),      text("TXTcity"),     text("TXTstate"),
            text("TXTzip"),      text("TxtPhone")};
}

void frmClient::PrintNotes() {
    Preview(NotesPrint(ClientForPrint(), Notes->TXTbox->Source()));
}

}  // namespace kv
