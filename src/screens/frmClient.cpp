#include "screens/frmClient.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/platform.h"
#include "base/text.h"
#include "clients/client_moves.h"
#include "clients/client_save.h"
#include "clients/potential_status.h"
#include "clients/quick_find.h"
#include "screens/FRMQuickFind.h"
#include "screens/FRMmisc.h"
#include "screens/FRMpotientalStatus.h"
#include "screens/frmClient_directions.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_history.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_notes.h"
#include "screens/frmClient_referral.h"
#include "screens/frmClient_required.h"
#include "screens/frmClient_third.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/section_strip.h"
#include "screens/widgets/status_bar.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "session/start.h"

namespace kv {

namespace {

struct PartFace {
    const char* icon;
    const char* word;
};

constexpr std::array<PartFace, kPartCount> kPartFaces = {{
    {"page_required", "Required"},
    {"page_general", "General"},
    {"page_directions", "Directions"},
    {"page_notes", "Notes"},
    {"page_billing", "Third Party"},
    {"page_referral", "Referral"},
    {"history", "History"},
}};

/// Keys of Toolbar1 that keep their button numbers while nothing stands behind them.
constexpr std::array kKeysToCome = {"new", "delete", "sort", "interface"};

}  // namespace

frmClient::frmClient(Session& session, const Sections& sections, QWidget* parent)
    : QMainWindow(parent),
      DbClient([this](const EngineError& error) { ReportEngineError(session_, error); }),
      OpenOutside(OpenWithDesktop),
      session_(session),
      sections_(sections) {
    setObjectName(QStringLiteral("frmClient"));
    setWindowTitle(tr("Clients"));
    setContextMenuPolicy(Qt::NoContextMenu);  // Qt's own one would hide the toolbar
    MakeToolbar();
    MakeStatusBar();

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setChildrenCollapsible(false);
    ListPane = new ClientListPane(split);
    split->addWidget(MakeClientArea());
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({31 * theme::kUnit, 129 * theme::kUnit});
    auto* whole = new QWidget(this);
    auto* layout = new QHBoxLayout(whole);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(split, 1);
    layout->addWidget(MakeSections());
    setCentralWidget(whole);

    resize(160 * theme::kUnit, 100 * theme::kUnit);
    ArrangeTabOrder();
    ConnectControls();
    AddKeys();
    OpenSection(0);
    ShowPart(0);
    SetButtons(ClientView{}, false);
}

frmClient::~frmClient() {
    // The controls go after the source that is tied to them; nothing of theirs may reach this object any
    // more.
    disconnect(qApp, nullptr, this, nullptr);
}

void frmClient::MakeToolbar() {
    Toolbar1 = new ToolBar(
        QStringLiteral("Toolbar1"),
        {StandardKey(QStringLiteral("exit"), tr("Exit to menu")), StandardKey(QStringLiteral("first")),
         StandardKey(QStringLiteral("previous")), StandardKey(QStringLiteral("next")),
         StandardKey(QStringLiteral("last")), ToolSeparator(),
         StandardKey(QStringLiteral("new"), tr("Add a new Client")), StandardKey(QStringLiteral("delete")),
         StandardKey(QStringLiteral("save")), StandardKey(QStringLiteral("discard")), ToolSeparator(),
         StandardKey(QStringLiteral("sort")), StandardKey(QStringLiteral("interface")),
         StandardKey(QStringLiteral("help"))},
        this);
    Toolbar1->setWindowTitle(tr("Client keys"));
    for (const char* key : kKeysToCome) {
        Toolbar1->ShowKey(QString::fromLatin1(key), false);
    }
    addToolBar(Toolbar1);
    keys_ = {
        {QStringLiteral("exit"), [this] { ExitKey(); }},
        {QStringLiteral("first"), [this] { Move(ListMove::First); }},
        {QStringLiteral("previous"), [this] { Move(ListMove::Previous); }},
        {QStringLiteral("next"), [this] { Move(ListMove::Next); }},
        {QStringLiteral("last"), [this] { Move(ListMove::Last); }},
        {QStringLiteral("save"), [this] { SaveKey(); }},
        {QStringLiteral("discard"), [this] { DiscardKey(); }},
        {QStringLiteral("help"), [this] { HelpKey(); }},
    };
}

void frmClient::MakeStatusBar() {
    StatusBar1 = new StatusBar(QStringLiteral("StatusBar1"),
                               {{tr("Who changed this client last"), 28},
                                {tr("When this client was changed last"), 28},
                                {tr("The client's place in the list"), 7},
                                {tr("Clients in the list"), 7},
                                {tr("The order of the list"), 20, true}},
                               this);
    setStatusBar(StatusBar1);
}

QWidget* frmClient::MakeClientArea() {
    auto* area = new QWidget(this);
    Header = new ClientHeader(area);
    area_ = new QStackedWidget(area);
    area_->addWidget(MakeParts());
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Header);
    layout->addWidget(area_, 1);
    return area;
}

QWidget* frmClient::MakeParts() {
    FRMmain_Frame = new QWidget(area_);
    FRMmain_Frame->setObjectName(QStringLiteral("FRMmain_Frame"));
    std::vector<SectionItem> items;
    for (std::size_t i = 0; i < kPartCount; ++i) {
        items.push_back({QString::fromLatin1(kPartFaces[i].icon), QString::fromLatin1(kPartFaces[i].word),
                         ToQt(kPartTips[i])});
    }
    CMDclient = new SectionStrip(QStringLiteral("CMDclient"), QStringLiteral("IMGselect"), Qt::Horizontal,
                                 items, FRMmain_Frame);
    parts_ = new QStackedWidget(FRMmain_Frame);
    parts_->addWidget(RequiredInfo = new FRMrequired_Info(parts_));
    parts_->addWidget(General = new FRMgeneral(parts_));
    parts_->addWidget(Directions = new FRMdirections(parts_));
    parts_->addWidget(Notes = new FRMnotes(parts_));
    parts_->addWidget(Third = new FRMthird(parts_));
    parts_->addWidget(Referral = new FRMreferral(parts_));
    parts_->addWidget(History = new FRMhistory(parts_));

    auto* layout = new QVBoxLayout(FRMmain_Frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(CMDclient);
    layout->addWidget(parts_, 1);
    return FRMmain_Frame;
}

QWidget* frmClient::MakeSections() {
    std::vector<SectionItem> items;
    for (std::size_t i = 0; i < kSectionCount; ++i) {
        items.push_back({QString::fromLatin1(sections_[i].icon), QString::fromLatin1(sections_[i].word),
                         ToQt(kSectionTips[i])});
    }
    IMGCommand =
        new SectionStrip(QStringLiteral("IMGCommand"), QStringLiteral("imgCHECK"), Qt::Vertical, items, this);
    return IMGCommand;
}

void frmClient::ArrangeTabOrder() {
    SetTabOrderOf({ListPane->CMBcliStatus, ListPane->CMBpotientalStatus, ListPane->cmbDISGROUP,
                   ListPane->CMBmanager, ListPane->TXTquick, ListPane->CMDquickFind, ListPane->FGtree});
}

void frmClient::ConnectControls() {
    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) { Handle(keys_.at(key)); });
    connect(CMDclient, &SectionStrip::picked, this, [this](int index) { ShowPart(index); });
    connect(IMGCommand, &SectionStrip::picked, this,
            [this](int index) { Handle([this, index] { OpenSection(index); }); });

    connect(ListPane, &ClientListPane::limitsPicked, this,
            [this] { Handle([this] { LimitsPicked(false); }); });
    connect(ListPane, &ClientListPane::managerPicked, this,
            [this] { Handle([this] { LimitsPicked(true); }); });
    connect(ListPane, &ClientListPane::quickFindPressed, this,
            [this] { Handle([this] { QuickFindKey(); }); });
    connect(ListPane->FGtree, &OutlineTree::rowPicked, this,
            [this](const std::string& id) { Handle([this, id] { PickTreeClient(id); }); });

    connect(Header->CMDchangeToActive, &QPushButton::clicked, this,
            [this] { Handle([this] { ChangeStatusKey(); }); });
    connect(Header->CMDpaste, &QPushButton::clicked, this, &frmClient::PasteKey);
    connect(RequiredInfo->CMDemail, &QToolButton::clicked, this, [this] { Handle([this] { EmailKey(); }); });
    connect(General->CMDviewDocs, &QToolButton::clicked, this,
            [this] { Handle([this] { ViewPeople(PeopleTable::doctors); }); });
    connect(General->CMDviewCase, &QToolButton::clicked, this,
            [this] { Handle([this] { ViewPeople(PeopleTable::casemgr); }); });
    connect(&DbClient, &BoundSource::repositioned, this, &frmClient::ShowRow);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        if (now != nullptr && parts_->isAncestorOf(now) && AsBoundControl(now) != nullptr) {
            lastBox_ = now;
        }
    });
}

void frmClient::AddKeys() {
    for (std::size_t i = 0; i < kPartCount; ++i) {
        const int index = static_cast<int>(i);
        auto* key = new QShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(index + 1)), this);
        connect(key, &QShortcut::activated, this, [this, index] {
            if (activeScreen_ == nullptr && CMDclient->IsItemEnabled(index)) {
                ShowPart(index);
                static_cast<ClientPart*>(parts_->currentWidget())->FocusFirst();
            }
        });
    }
    auto* find = new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), this);
    connect(find, &QShortcut::activated, this, [this] {
        ListPane->TXTquick->setFocus(Qt::ShortcutFocusReason);
        ListPane->TXTquick->selectAll();
    });
}

void frmClient::Handle(const Step& step) {
    try {
        step();
    } catch (const EngineError& error) {
        // What the end of the program overtook has nothing more to tell.
        if (!ended_) {
            ReportEngineError(session_, error);
        }
    } catch (const std::system_error& error) {
        if (!ended_) {
            session_.ShowMessageWindow(error.what());
        }
    }
}

bool frmClient::StopAtFaultyBox() {
    for (BoundControl* control : DbClient.Controls()) {
        if (!control->IsDataChanged() || control->Check()) {
            continue;
        }
        session_.ShowMessageWindow(FromQt(control->Caption() + QLatin1Char(' ') + control->Fault()));
        for (int part = 0; part < parts_->count(); ++part) {
            if (parts_->widget(part)->isAncestorOf(control->Widget())) {
                ShowPart(part);
            }
        }
        control->Widget()->setFocus();
        return true;
    }
    return false;
}

void frmClient::Move(ListMove move) {
    if (!StopAtFaultyBox() && MoveInClientList(session_, *this, move)) {
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::SaveKey() {
    if (StopAtFaultyBox()) {
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
    if (StopAtFaultyBox() || CheckRequiredInfo(session_, *this)) {
        return;
    }
    OpenSection(0);
    PromptToSaveClient(session_, *this);
    RestoreRow();
    close();
}

void frmClient::HelpKey() {
    const std::filesystem::path help = session_.DataFile("kvhelp.exe");
    std::error_code none;
    if (!std::filesystem::exists(help, none)) {
        session_.ShowMessageWindow("There is no help here: the file " + help.string() + " is missing.");
    } else if (!OpenOutside(help.string(), "client")) {
        session_.ShowMessageWindow("The help file " + help.string() + " can not be opened.");
    }
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
    if (!StopAtFaultyBox() && QuickFindClient(session_, *this, FromQt(ListPane->TXTquick->Text()), choose)) {
        ListPane->TXTquick->clear();
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::PickTreeClient(const std::string& id) {
    if (!StopAtFaultyBox() && MoveToTreeClient(session_, *this, id)) {
        DbClient.ShowRow();
        ShowClientRecord();
    }
}

void frmClient::LimitsPicked(bool managerToo) {
    const std::string manager = session_.Manager;
    try {
        if (StopAtFaultyBox() || !MayLeaveClient(session_, *this)) {
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
    if (StopAtFaultyBox()) {
        return;
    }
    // What was typed would be lost with the row's own change.
    PromptToSaveClient(session_, *this);
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

void frmClient::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && up_) {
        Handle([this] { ListPane->TXTquick->setText(ToQt(TakeHandedClient(session_))); });
    }
}

void frmClient::closeEvent(QCloseEvent* event) {
    Unload();
    QMainWindow::closeEvent(event);
}

}  // namespace kv
