#include "screens/frmClient.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
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
#include "datastore/try_step.h"
#include "screens/FRMedit.h"
#include "screens/FRMfindOpenEmployee.h"
#include "screens/frmClient_directions.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_history.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_notes.h"
#include "screens/frmClient_referral.h"
#include "screens/frmClient_required.h"
#include "screens/frmClient_third.h"
#include "screens/frmPrint.h"
#include "screens/notices.h"
#include "screens/save_gate.h"
#include "screens/widgets/bring_back.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/notes_box.h"
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
constexpr std::array kKeysToCome = {"interface"};

}  // namespace

frmClient::frmClient(Session& session, const Sections& sections, QWidget* parent)
    : QMainWindow(parent),
      DbClient([this](const EngineError& error) { ReportEngineError(session_, error); }),
      OpenOutside(OpenWithDesktop),
      session_(session),
      sections_(sections) {
    setObjectName(QStringLiteral("frmClient"));
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    setWindowTitle(tr("Clients"));
    setContextMenuPolicy(Qt::NoContextMenu);  // Qt's own one would hide the toolbar
    MakeToolbar();
    MakeMenu();
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
    keys_ = StepsOf({[this](ListMove move) { Move(move); }, [this] { NewKey(); }, [this] { DeleteKey(); },
                     [this] { SaveKey(); }, [this] { DiscardKey(); }});
    keys_.insert({
        {QStringLiteral("exit"), [this] { ExitKey(); }},
        {QStringLiteral("sort"), [this] { SortKey(); }},
        {QStringLiteral("help"), [this] { HelpKey(); }},
    });
}

void frmClient::MakeMenu() {
    QMenu* view = menuBar()->addMenu(tr("&View"));
    QAction* history = view->addAction(theme::Icon(QStringLiteral("history")), tr("View &History..."));
    history->setObjectName(QStringLiteral("MNUhistory"));
    connect(history, &QAction::triggered, this, [this] { FRMedit(session_, this).exec(); });
    QAction* bringBack =
        view->addAction(tr("&Bring Back What Was Typed\t%1").arg(QLatin1String(kBringBackKey)));
    bringBack->setObjectName(QStringLiteral("MNUbringBack"));
    connect(bringBack, &QAction::triggered, this, [this] { DbClient.BringBack(); });
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
    DbClient.SetKeyField("CLIENT");
    DbClient.Watch("CASESTATCD", tr("Status"));
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
    parts_->addWidget(Directions = new FRMdirections(session_, parts_));
    parts_->addWidget(Notes = new FRMnotes(session_, parts_));
    parts_->addWidget(Third = new FRMthird(parts_));
    parts_->addWidget(Referral = new FRMreferral(session_, parts_));
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
                   ListPane->CMBmanager, ListPane->TXTquick, ListPane->CMDquickFind, ListPane->Command1,
                   ListPane->FGtree});
}

void frmClient::ConnectControls() {
    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) { Handle(keys_.at(key)); });
    connect(CMDclient, &SectionStrip::picked, this, [this](int index) { ShowPart(index); });
    connect(IMGCommand, &SectionStrip::picked, this, [this](int index) {
        Handle([this, index] {
            if (activeScreen_ == nullptr || activeScreen_->MayLeave()) {
                OpenSection(index);
            } else {
                IMGCommand->SetOpen(IMGCommand->Open());
            }
        });
    });

    connect(ListPane, &ClientListPane::limitsPicked, this,
            [this] { Handle([this] { LimitsPicked(false); }); });
    connect(ListPane, &ClientListPane::managerPicked, this,
            [this] { Handle([this] { LimitsPicked(true); }); });
    connect(ListPane, &ClientListPane::quickFindPressed, this,
            [this] { Handle([this] { QuickFindKey(); }); });
    connect(ListPane, &ClientListPane::searchPressed, this, [this] { Handle([this] { FindKey(); }); });
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
    connect(Header->CMDAnyCaregivers, &QPushButton::clicked, this, [this] {
        Handle([this] { FRMfindOpenEmployee(session_, Controls().Stored("txtCliId"), this).exec(); });
    });
    connect(General->CMDicd9, &QToolButton::clicked, this, [this] { Handle([this] { DiagnosesKey(); }); });
    Directions->Client = [this] { return ClientForPrint(); };
    Notes->Print = [this] { Handle([this] { PrintNotes(); }); };
    Referral->ListGroup = [this] { return ListPane->Limits().group; };
    connect(&DbClient, &BoundSource::repositioned, this, &frmClient::ShowRow);
    connect(&DbClient, &BoundSource::rowFollowed, this,
            [this](const std::vector<std::string>& fields) { Handle([&] { ShowFollowed(fields); }); });
    connect(&DbClient, &BoundSource::typedSetAside, this, [this] { TellStatus(this, tr(kBringBackHint)); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        if (now != nullptr && parts_->isAncestorOf(now) && AsBoundControl(now) != nullptr) {
            lastBox_ = now;
        }
    });
}

void frmClient::AddKeys() {
    AddBringBackKey(FRMmain_Frame, DbClient);
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
        // What the end of the program overtook has nobody to tell.
        if (ended_) {
            LogSkipped(error);
        } else {
            ReportEngineError(session_, error);
        }
    } catch (const std::system_error& error) {
        if (!ended_) {
            session_.ShowMessageWindow(error.what());
        }
    }
}

bool frmClient::MustStay() {
    FollowNotes();
    if (activeScreen_ != nullptr && !activeScreen_->MayLeave()) {
        return true;
    }
    return !PassesGate(session_, DbClient.Controls(), [this](BoundControl& box) {
        for (int part = 0; part < parts_->count(); ++part) {
            if (parts_->widget(part)->isAncestorOf(box.Widget())) {
                ShowPart(part);
            }
        }
    });
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
