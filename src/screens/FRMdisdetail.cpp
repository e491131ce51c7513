#include "screens/FRMdisdetail.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <stdexcept>

#include "clients/notes_text.h"
#include "clients/pick_query.h"
#include "screens/pair_grid.h"
#include "screens/pick_screen.h"
#include "screens/screen_steps.h"
#include "screens/user_defaults_of.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr const char* kModule = "KVSCH";
constexpr const char* kScreen = "FRMdisdetail";
constexpr const char* kMapQuest = "Map Quest";
constexpr const char* kGoogleMaps = "Google Maps";

OutlineNode NodeOf(const DetailNode& detail, bool isParent) {
    OutlineNode node;
    node.text = ToQt(detail.text);
    node.bold = isParent;
    node.marked = detail.expired;
    if (detail.expired && !isParent) {
        node.icon = QStringLiteral("warning");
    }
    for (const DetailNode& child : detail.children) {
        node.children.push_back(NodeOf(child, false));
    }
    return node;
}

QLineEdit* Box(const char* name, const QString& words, int characters, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(words);
    box->setPlaceholderText(words);
    box->setMinimumWidth(theme::CharactersWide(*box, characters));
    return box;
}

QPushButton* Button(const char* name, const QString& words, const QString& tip, QWidget* parent) {
    auto* button = new QPushButton(words, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

FRMdisdetail::FRMdisdetail(Session& session, const std::string& client, const std::string& emp_id,
                           QWidget* parent)
    : QDialog(parent),
      session_(session),
      client_(DescribeClient(session, client)),
      caregiver_(DescribeCaregiverInFull(session, emp_id)) {
    setObjectName(QString::fromLatin1(kScreen));
    setWindowTitle(QStringLiteral("Caregiver and Client Detail"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    PickTheClient = [this] { return PickClient(session_, this); };
    PickTheCaregiver = [this] { return PickEmployee(session_, this); };
    Visit = [this](WebVisit visit) {
        try {
            FRMweb(session_, std::move(visit), MakeWebView, this).exec();
        } catch (const std::runtime_error& error) {
            session_.ShowMessageWindow(error.what());
        }
    };
    Toolbar1 = new ToolBar(QStringLiteral("Toolbar1"), {StandardKey(QStringLiteral("exit"))}, this);
    auto* sides = new QHBoxLayout;
    sides->setSpacing(theme::kUnit);
    sides->addWidget(MakeSide(tr("Client"), client_,
                              {FGcli, TreeView1, TXTCliNotes, {"FGcli", "TreeView1", "TXTCliNotes"}}),
                     1);
    sides->addWidget(MakeSide(tr("Caregiver"), caregiver_,
                              {fgEMP, TreeView2, TXTEmpNotes, {"fgEMP", "TreeView2", "TXTEmpNotes"}}),
                     1);
    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    lower->setSpacing(theme::kHalfUnit);
    lower->addLayout(sides, 1);
    lower->addWidget(MakeDirections());
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar1);
    all->addLayout(lower, 1);
    resize(148 * theme::kUnit, 88 * theme::kUnit);
    connect(Toolbar1, &ToolBar::keyPressed, this, &QDialog::accept);
    ApplyGridColors(this, session.COLOR);
    StartAt(caregiver_);
    Reported(session_, [this] {
        LoadUserDefaults(session_, session_.User, kModule, kScreen, DefaultControlsOf(this));
    });
}

FRMdisdetail::~FRMdisdetail() {
    Reported(session_, [this] {
        SaveUserDefaults(session_, session_.User, kModule, kScreen, DefaultControlsOf(this));
    });
}

QWidget* FRMdisdetail::MakeSide(const QString& title, const PersonDetail& person, const Side& side) {
    auto* group = new QGroupBox(title, this);
    side.rows = MakePairs(side.names[0], title, group);
    const std::string id = person.id.empty() ? "NONE" : person.id;
    ShowPairs(*side.rows, person.rows.empty() ? std::vector<LabelledText>{{"ID", id}} : person.rows);
    side.tree = new OutlineTree(QString::fromLatin1(side.names[1]), group);
    side.tree->setAccessibleName(tr("%1, more information").arg(title));
    std::vector<OutlineNode> nodes;
    for (const DetailNode& node : person.tree) {
        nodes.push_back(NodeOf(node, true));
    }
    side.tree->SetNodes(std::move(nodes), true);
    side.notes = new QPlainTextEdit(ToQt(NotesText(person.notes)), group);
    side.notes->setObjectName(QString::fromLatin1(side.names[2]));
    side.notes->setAccessibleName(tr("%1, notes").arg(title));
    side.notes->setReadOnly(true);
    side.notes->setTabChangesFocus(true);
    auto* layout = new QGridLayout(group);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(side.rows, 0, 0);
    layout->addWidget(side.tree, 0, 1);
    layout->addWidget(side.notes, 1, 0, 1, 2);
    const QPixmap picture(person.picture.empty() ? QString() : ToQt(person.picture.string()));
    if (!picture.isNull()) {
        auto* image = new QLabel(group);
        image->setAccessibleName(tr("%1, picture").arg(title));
        image->setPixmap(picture.scaledToHeight(12 * theme::kUnit, Qt::SmoothTransformation));
        layout->addWidget(image, 1, 2);
    }
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(0, 3);
    layout->setRowStretch(1, 1);
    return group;
}

QWidget* FRMdisdetail::MakeDirections() {
    auto* group = new QGroupBox(tr("Directions to the Client"), this);
    LBLname = new QLabel(group);
    LBLname->setObjectName(QStringLiteral("LBLname"));
    TXTaddr = Box("TXTaddr", tr("Street"), 24, group);
    TXTcity = Box("TXTcity", tr("City"), 16, group);
    TXTstate = Box("TXTstate", tr("State"), 4, group);
    TXTzip = Box("TXTzip", tr("Zip"), 7, group);
    CMDclient = Button("CMDclient", tr("C&lient..."), QStringLiteral("Find a client's address"), group);
    CMDcaregiver =
        Button("CMDcaregiver", tr("Care&giver..."), QStringLiteral("Find a Caregiver's address"), group);
    CMBwhichMap =
        new PlainCombo(QStringLiteral("CMBwhichMap"), QString(), PlainCombo::Style::List, 12, group);
    CMBwhichMap->setAccessibleName(tr("Which map"));
    CMBwhichMap->SetItems(QStringList{QString::fromLatin1(kMapQuest), QString::fromLatin1(kGoogleMaps)});
    CMBwhichMap->SetText(QString::fromLatin1(kMapQuest));
    CMBwhichMap->SetTag(QStringLiteral("DEFAULT"));
    CMDdirections =
        Button("CMDdirections", tr("&Directions"), tr("The way from this address to the client"), group);
    auto* from = new QLabel(tr("&From:"), group);
    from->setBuddy(TXTaddr);
    auto* layout = new QHBoxLayout(group);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    layout->addWidget(from);
    layout->addWidget(LBLname);
    for (QLineEdit* box : {TXTaddr, TXTcity, TXTstate, TXTzip}) {
        layout->addWidget(box);
    }
    layout->addWidget(CMDclient);
    layout->addWidget(CMDcaregiver);
    layout->addStretch(1);
    layout->addWidget(CMBwhichMap);
    layout->addWidget(CMDdirections);
    CMDdirections->setEnabled(!client_.id.empty());
    const auto start = [this](const std::function<std::string()>& pick,
                              PersonDetail (*describe)(Session&, const std::string&)) {
        Reported(session_, [&] {
            if (const std::string id = pick(); id != kCancelled) {
                StartAt(describe(session_, id));
            }
        });
    };
    connect(CMDclient, &QPushButton::clicked, this, [this, start] { start(PickTheClient, DescribeClient); });
    connect(CMDcaregiver, &QPushButton::clicked, this,
            [this, start] { start(PickTheCaregiver, DescribeCaregiverInFull); });
    connect(CMDdirections, &QPushButton::clicked, this, &FRMdisdetail::FindDirections);
    return group;
}

void FRMdisdetail::StartAt(const PersonDetail& person) {
    LBLname->setText(ToQt(person.name));
    TXTaddr->setText(ToQt(person.address.street));
    TXTcity->setText(ToQt(person.address.city));
    TXTstate->setText(ToQt(person.address.state));
    TXTzip->setText(ToQt(person.address.zip));
}

void FRMdisdetail::FindDirections() {
    const MapServers servers = ReadMapServers(session_);
    const PostalAddress from = {FromQt(TXTaddr->text()), FromQt(TXTcity->text()), FromQt(TXTstate->text()),
                                FromQt(TXTzip->text())};
    WebVisit visit;
    visit.kind = WebVisit::Kind::Directions;
    visit.home = servers.home;
    if (CMBwhichMap->Text() == QLatin1String(kGoogleMaps)) {
        if (servers.directions.empty()) {
            session_.ShowMessageWindow(MapServerMissing(session_, "DirectionsServer"));
            return;
        }
        visit.address = VisitDirections(servers, from, client_.address);
    } else {
        // The operator types the two ends into the page of her choice.
        visit.address = servers.home.empty() ? "about:blank" : servers.home;
    }
    visit.note = VisitAddresses(from, client_.address);
    Visit(std::move(visit));
}

void ShowScheduleDetail(Session& session, const std::string& client, const std::string& emp_id,
                        QWidget* parent) {
    FRMdisdetail(session, client, emp_id, parent).exec();
}

}  // namespace kv
