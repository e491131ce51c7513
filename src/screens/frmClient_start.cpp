// The start and the end of the program.
#include <QApplication>
#include <QToolButton>
#include <QVersionNumber>
#include <array>
#include <system_error>
#include <vector>

#include "clients/client_texts.h"
#include "clients/lookups.h"
#include "screens/FRMload.h"
#include "screens/frmClient.h"
#include "screens/frmClient_directions.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_history.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_notes.h"
#include "screens/frmClient_referral.h"
#include "screens/frmClient_required.h"
#include "screens/frmClient_third.h"
#include "screens/user_defaults_of.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/status_bar.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"
#include "session/login_limits.h"
#include "session/start.h"

namespace kv {

namespace {

// Under what the user's remembered contents are kept.
constexpr const char* kModule = "KVCLI";
constexpr const char* kScreen = "frmClient";

struct LookupFill {
    LookupSource source;
    std::vector<LookupCombo*> combos;
};

/// The look-up lists in the order in which they fill.
std::vector<LookupFill> LookupFills(const FRMrequired_Info& required, const FRMgeneral& general) {
    return {
        {LookupSource::dbLanguage, {required.TDBCombo1}},
        {LookupSource::dbSex, {required.TDBGender}},
        {LookupSource::dbProvidersSex, {required.TDBCombo3}},
        {LookupSource::dbManager, {required.TDBCombo4}},
        {LookupSource::dbFsl, {required.TDBCombo5}},
        {LookupSource::dbEthnic, {required.TDBCombo6}},
        {LookupSource::dbDiet, {required.TDBCombo8}},
        {LookupSource::dbNurse, {general.TDBCombo9}},
        {LookupSource::DBDistrict, {required.TDBCombo29}},
        {LookupSource::DbVisit, {general.TDBCombo19}},
        {LookupSource::dbOrder_Discipline, {required.TDBCombo20}},
        {LookupSource::dbColor, {required.TDBCombo25}},
        {LookupSource::dbdiagnosis, {general.TDBCombo26, general.TDBCombo27, general.TDBCombo28}},
    };
}

}  // namespace

void frmClient::Start() {
    ReadLogin(session_);
    CheckLogin(session_);
    DisableCloseMenu(this);
    ShowCountry();
    OpenData();
    ReadTempPath(session_);
    Try([this] { FillTextLists(); });
    ShowCaption();
    Try([this] { AskRights(); });
    Try([this] { BindSources(); });
    Try([this] { Referral->LoadSources(); });
    StatusBar1->SetPanel(kSortPanel, ToQt(ReadClientSort(session_)));
    Try([this] { LoadUserDefaults(session_, session_.User, kModule, kScreen, DefaultControlsOf(this)); });
    Try([this] { LimitToManager(); });
    Try([this] { RefreshClientList(); });
    if (!List().IsOpen()) {
        OrderByClientId();
    }
    session_.progress.Yield();
    Try([this] { AnnounceUp(session_); });
    session_.progress.Yield();
    Try([this] { FillLookupLists(); });
    Try([this] { ShowFirstClient(); });
    ApplyGridColors(this, session_.COLOR);
    up_ = true;
}

/// An order in the settings that the store refuses must not keep the operator from the clients.
void frmClient::OrderByClientId() {
    session_.ClientSort = "client";
    StatusBar1->SetPanel(kSortPanel, tr("Current Sort: Client ID"));
    Try([this] { RefreshClientList(); });
}

void frmClient::Try(const Step& step) {
    try {
        step();
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    } catch (const std::system_error& error) {
        session_.ShowMessageWindow(error.what());
    }
}

void frmClient::OpenData() {
    try {
        OpenSessionData(session_);
    } catch (const EngineError& error) {
        if (session_.dbMainWork == nullptr || session_.dbMainCode == nullptr) {
            throw;
        }
        ReportEngineError(session_, error);
    }
}

void frmClient::ShowCountry() {
    ReadCountry(session_);
    for (const CountryText& text : CountryTexts(session_.Canada)) {
        BoundControl* control = FindBoundControl(FRMmain_Frame, ToQt(text.control));
        control->SetCaption(ToQt(text.caption));
        if (auto* masked = qobject_cast<MaskedBox*>(control->Widget()); masked && !text.mask.empty()) {
            masked->SetMask(ToQt(text.mask));
        }
    }
}

void frmClient::FillTextLists() {
    General->CMBqbclass->SetItems(LoadDescriptions(session_, "qbclass"));
    std::vector<std::string> groups = LoadDescriptions(session_, "cli_group");
    RequiredInfo->cmbGroup->SetItems(groups);
    groups.insert(groups.begin(), "ALL");
    ListPane->cmbDISGROUP->SetItems(groups);
    ListPane->cmbDISGROUP->SetText(QStringLiteral("ALL"));
    Referral->LoadCategories();
    for (const PeopleTable table : {PeopleTable::doctors, PeopleTable::casemgr}) {
        General->SetPeople(table, LoadPeople(session_, table));
    }
}

void frmClient::ShowCaption() {
    const QVersionNumber version = QVersionNumber::fromString(QApplication::applicationVersion());
    setWindowTitle(QStringLiteral("Clients - %1.%2.%3")
                       .arg(version.majorVersion())
                       .arg(version.minorVersion())
                       .arg(version.microVersion(), 3, 10, QLatin1Char('0')));
}

void frmClient::AskRights() {
    // Where the rights can't be asked, what only some may see stays out of sight.
    rights_.ssn = false;
    rights_.birthDate = false;
    Try([this] { rights_ = AskClientRights(session_); });
    RequiredInfo->txtSsn->SetShown(rights_.ssn);
    RequiredInfo->TxtB_date->SetShown(rights_.birthDate);
    RequiredInfo->cmbGroup->SetEnabled(rights_.changeGroup);
    General->CMDviewDocs->setEnabled(!session_.OffLine);
    General->CMDviewCase->setEnabled(!session_.OffLine);
}

void frmClient::BindSources() {
    DbClient.Bind(*Header->txtCliId, "CLIENT");
    for (const ClientPart* part : std::initializer_list<const ClientPart*>{RequiredInfo, General, Directions,
                                                                           Notes, Third, Referral, History}) {
        part->BindTo(DbClient);
    }
    for (TextBox* box : {RequiredInfo->TxtLastname, RequiredInfo->TxtFirstnam}) {
        connect(box->Notifier(), &ControlNotifier::changed, this, [this, box] { CheckNameOf(*box); });
    }
    connect(Referral->DTEFirstContact->Notifier(), &ControlNotifier::changed, this, &frmClient::RecountDays);
    // An agency that keeps no ethnic groups does without the box.
    RequiredInfo->TDBCombo6->SetShown(!LoadLookup(session_, LookupSource::dbEthnic).empty());
}

void frmClient::LimitToManager() {
    ListPane->SetManagers(LoadManagerList(session_));
}

void frmClient::FillLookupLists() {
    constexpr int kStepOfAList = 5;
    const std::vector<LookupFill> fills = LookupFills(*RequiredInfo, *General);
    int most = 0;
    for (const LookupFill& fill : fills) {
        most += kStepOfAList * static_cast<int>(fill.combos.size());
    }
    FRMload load(this);
    load.show();
    int done = 0;
    for (const LookupFill& fill : fills) {
        std::vector<LookupItem> items;
        Try([&] { items = LoadLookup(session_, fill.source); });
        for (LookupCombo* combo : fill.combos) {
            combo->SetItems(items);
            load.SetValue(done += kStepOfAList, most);
        }
    }
}

void frmClient::ShowFirstClient() {
    if (DbClient.MoveFirst()) {
        ShowClientRecord();
    }
    ListPane->TXTquick->setFocus();
}

void frmClient::Unload() {
    if (ended_) {
        return;
    }
    ended_ = true;
    up_ = false;
    if (session_.dbMainWork) {
        Try([this] { SaveUserDefaults(session_, session_.User, kModule, kScreen, DefaultControlsOf(this)); });
    }
    DbClient.Close();
    Try([this] { AnnounceEnded(session_); });
}

}  // namespace kv
