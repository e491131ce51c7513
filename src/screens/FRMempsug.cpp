#include "screens/FRMempsug.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "base/format.h"
#include "base/text.h"
#include "clients/lookups.h"
#include "clients/notes_text.h"
#include "matching/suggestion_prints.h"
#include "matching/why_not.h"
#include "screens/FRMdisEmp.h"
#include "screens/FRMdisdetail.h"
#include "screens/frmPrint.h"
#include "screens/pair_grid.h"
#include "screens/user_defaults_of.h"
#include "screens/widgets/check_box.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/enter_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/quarter_chart.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/time_box.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr const char* kModule = "KVSCH";
constexpr const char* kScreen = "FRMempsug";
constexpr int kSkillsColumn = 2;
constexpr int kQuartersOfHour = 4;
constexpr int kMinutesOfQuarter = 15;
constexpr int kMinutesOfHour = 60;
constexpr int kDaysShown = 15;
constexpr int kUpperLines = 21;  ///< of text: the chart takes what is left
constexpr int kPanelWidth = 24;  ///< characters of a person's panel

QLabel* MakeWarning(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    QPalette ink = label->palette();
    ink.setColor(QPalette::WindowText, theme::ColorOf(theme::Ink::Fault, ink));
    label->setPalette(ink);
    label->hide();
    return label;
}

void ShowWarning(QLabel& label, const std::string& words) {
    label.setText(ToQt(words));
    label.setVisible(!words.empty());
}

/// Why a caregiver may be less free than shown, a line each; so many of them at most.
QString ReasonsText(const std::vector<std::string>& reasons,
                    std::size_t most = std::numeric_limits<std::size_t>::max()) {
    QString text = QObject::tr("May be less free than shown:");
    for (std::size_t i = 0; i < std::min(most, reasons.size()); ++i) {
        text += QLatin1Char('\n') + ToQt(reasons[i]);
    }
    if (reasons.size() > most) {
        text += QLatin1Char('\n') + QObject::tr("and %1 more, see the tip").arg(reasons.size() - most);
    }
    return text;
}

OutlineNode Parent(const char* words) {
    OutlineNode node;
    node.text = QString::fromLatin1(words);
    node.bold = true;
    return node;
}

OutlineNode Child(const std::string& text, const std::string& id, const char* icon) {
    OutlineNode node;
    node.text = ToQt(text);
    node.id = id;
    node.icon = QString::fromLatin1(icon);
    return node;
}

}  // namespace

FRMempsug::FRMempsug(Session& session, const SuggestionRequest& request, QWidget* parent)
    : QDialog(parent), session_(session), request_(request) {
    setObjectName(QString::fromLatin1(kScreen));
    setWindowTitle(QStringLiteral("Caregiver Suggestion"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    MakeToolbar();
    // Made first, so that Tab begins in it.
    QWidget* criteria = MakeCriteria();
    auto* people = new QWidget(this);
    people->setFixedHeight(kUpperLines * fontMetrics().height());
    auto* upper = new QHBoxLayout(people);
    upper->setContentsMargins(0, 0, 0, 0);
    upper->setSpacing(theme::kUnit);
    upper->addWidget(MakeClient(), 1);
    upper->addWidget(MakeCaregiver(), 1);
    auto* right = new QVBoxLayout;
    right->setSpacing(theme::kHalfUnit);
    right->addWidget(people);
    right->addWidget(MakeResult(), 1);
    auto* lower = new QHBoxLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    lower->setSpacing(theme::kUnit);
    lower->addWidget(criteria);
    lower->addLayout(right, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar1);
    all->addLayout(lower, 1);
    resize(156 * theme::kUnit, 92 * theme::kUnit);

    Reported(session_, [this] {
        working_ = WorkingCopy::Make(session_, "Tempcal.mdb");
        if (!working_) {
            session_.ShowMessageWindow(
                "The Caregiver Suggestion is being used by the schedule module.  Please exit it, then try "
                "again");
            return;
        }
        burdens_ = Burdens(session_);
        std::vector<std::string> groups = LoadDescriptions(session_, "emp_group");
        groups.insert(groups.begin(), "ALL");
        CMBempgroup->SetItems(groups);
        CMBempgroup->SetText(QStringLiteral("ALL"));
        LoadUserDefaults(session_, session_.User, kModule, kScreen, DefaultControlsOf(this));
    });
    Numgross->setToolTip(ToQt(MarginTip(burdens_)));
    DTending->SetDate(request.day);
    TXTtime->SetTime(request.time);
    NUMhours->SetNumber(request.hours);
    Connect();
    ApplyGridColors(this, session.COLOR);
    if (working_) {
        Reported(session_, [this] { Activate(); });
    }
    FG2->setFocus();
}

FRMempsug::~FRMempsug() {
    if (working_) {
        Reported(session_, [this] {
            SaveUserDefaults(session_, session_.User, kModule, kScreen, DefaultControlsOf(this));
        });
    }
}

void FRMempsug::MakeToolbar() {
    Toolbar1 = new ToolBar(
        QStringLiteral("Toolbar1"),
        {StandardKey(QStringLiteral("exit")), ToolSeparator(), StandardKey(QStringLiteral("first")),
         StandardKey(QStringLiteral("previous")), StandardKey(QStringLiteral("next")),
         StandardKey(QStringLiteral("last")), ToolSeparator(),
         StandardKey(QStringLiteral("search"), tr("Search with the boxes as they are now")),
         StandardKey(QStringLiteral("select"), tr("Choose this caregiver")), ToolSeparator(),
         ToolKey{QStringLiteral("info"), tr("Detail"), tr("All about this client and this caregiver"),
                 QStringLiteral("info"), QKeySequence(QStringLiteral("Ctrl+I"))},
         StandardKey(QStringLiteral("print"), tr("Print the caregivers found")),
         ToolKey{QStringLiteral("notdisplayed"),
                 tr("Rejected"),
                 tr("Print the caregivers who are busy then"),
                 QStringLiteral("section_not_visit"),
                 {}}},
        this);
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("first"), [this] { Move(ListMove::First); }},
        {QStringLiteral("previous"), [this] { Move(ListMove::Previous); }},
        {QStringLiteral("next"), [this] { Move(ListMove::Next); }},
        {QStringLiteral("last"), [this] { Move(ListMove::Last); }},
        {QStringLiteral("search"), [this] { redo_Search(); }},
        {QStringLiteral("select"), [this] { SelectKey(); }},
        {QStringLiteral("info"),
         [this] {
             const int row = FG2->CurrentRow();
             ShowScheduleDetail(session_, needs_.client,
                                row < 0 ? std::string() : found_.rows[static_cast<std::size_t>(row)].emp_id,
                                this);
         }},
        {QStringLiteral("print"),
         [this] { Preview(SuggestionReport(found_, CHKskills->isChecked(), session_.clock.Today())); }},
        {QStringLiteral("notdisplayed"), [this] { Preview(RejectedReport(session_)); }},
    };
}

void FRMempsug::AddOption(CheckBox*& box, const char* name, const char* caption, FieldForm* form) {
    box = new CheckBox(QString::fromLatin1(name), QString::fromLatin1(caption), form);
    box->SetTag(QStringLiteral("DEFAULT"));
    form->AddWide(box);
}

QWidget* FRMempsug::MakeCriteria() {
    auto* area = new QWidget(this);
    auto* form = new FieldForm(area);
    FieldForm* when = form->AddGroup(QStringLiteral("FRAMEwhen"), tr("When"));
    DTending = new DateBox(QStringLiteral("DTending"), tr("&Date:"), when);
    TXTtime = new TimeBox(QStringLiteral("TXTtime"), tr("Start &Time:"), when);
    NUMhours = new NumberBox(QStringLiteral("NUMhours"), tr("&Hours:"), "#0.00", 6, when);
    NUMhours->SetLimits(0, 24);
    CMBempgroup = new PlainCombo(QStringLiteral("CMBempgroup"), QStringLiteral("Care &Group:"),
                                 PlainCombo::Style::List, 10, when);
    CMBempgroup->SetTag(QStringLiteral("DEFAULT"));
    Command1 = new QPushButton(QStringLiteral("&Show"), when);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    when->AddField(*DTending);
    when->AddField(*TXTtime);
    when->AddField(*NUMhours);
    when->AddField(*CMBempgroup);
    when->AddWide(Command1);
    FieldForm* who = form->AddGroup(QStringLiteral("FRAMEwho"), tr("Employee Requirements"));
    AddOption(CHKWillWork, "CHKWillWork", "Areas the Caregiver will Work", who);
    AddOption(CHKPotential, "CHKPotential", "Try 'Potential' Only", who);
    AddOption(CHKLanguage, "CHKLanguage", "Language", who);
    AddOption(CHKgender, "CHKgender", "Requested Gender", who);
    AddOption(CHKDiscipline, "CHKDiscipline", "Discipline", who);
    AddOption(CHKtype, "CHKtype", "Caregiver Type", who);
    AddOption(CHKskills, "CHKskills", "Show Skills Percent", who);
    AddOption(CHKcritical, "CHKcritical", "Has Critical Skills", who);
    AddOption(CHKtime, "CHKtime", "Ignore Unavailable Time", who);
    AddOption(CHKignore_Times, "CHKignore_Times", "Ignore Start Time", who);
    CHKignore_Times->setToolTip(QStringLiteral(
        "Ignore the start time, and only show caregivers with a open block of time equal to the hours."));
    CHKDiscipline->setToolTip(tr("Exactly the required discipline level; unticked, at least that level"));
    form->AddStretch();
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(form);
    layout->addWidget(MakeNotes(), 1);
    return area;
}

QWidget* FRMempsug::MakeNotes() {
    Frame1 = new QGroupBox(QStringLiteral("Caregiver Notes"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Label1 = MakeWarning("Label1", Frame1);
    Sugtxt = new QPlainTextEdit(Frame1);
    Sugtxt->setObjectName(QStringLiteral("Sugtxt"));
    Sugtxt->setAccessibleName(tr("Notes"));
    Sugtxt->setReadOnly(true);
    Sugtxt->setTabChangesFocus(true);
    Sugtxt->setMinimumHeight(5 * theme::kUnit);
    auto* layout = new QVBoxLayout(Frame1);
    layout->setContentsMargins(theme::kHalfUnit, theme::kHalfUnit, theme::kHalfUnit, theme::kHalfUnit);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(Label1);
    layout->addWidget(Sugtxt, 1);
    return Frame1;
}

QWidget* FRMempsug::MakeClient() {
    TDBFrame3D5 = new QGroupBox(QStringLiteral("Client Information"), this);
    TDBFrame3D5->setObjectName(QStringLiteral("TDBFrame3D5"));
    FGcli = MakePairs("FGcli", tr("Client Information"), TDBFrame3D5);
    FGcli->setMinimumWidth(theme::CharactersWide(*FGcli, kPanelWidth));
    TreeView1 = new OutlineTree(QStringLiteral("TreeView1"), TDBFrame3D5);
    TreeView1->setAccessibleName(tr("What the client needs, and who was there"));
    LBLbillrate = MakeWarning("LBLbillrate", TDBFrame3D5);
    LBLbillreason = new QLabel(TDBFrame3D5);
    LBLbillreason->setObjectName(QStringLiteral("LBLbillreason"));
    LBLbillreason->setWordWrap(true);
    LBLbillreason->hide();
    auto* layout = new QGridLayout(TDBFrame3D5);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    layout->addWidget(FGcli, 0, 0);
    layout->addWidget(LBLbillrate, 1, 0);
    layout->addWidget(LBLbillreason, 2, 0);
    layout->addWidget(TreeView1, 0, 1, 3, 1);
    layout->setColumnStretch(0, 5);
    layout->setColumnStretch(1, 6);
    return TDBFrame3D5;
}

QWidget* FRMempsug::MakeCaregiver() {
    TDBFrame3D2 = new QGroupBox(QStringLiteral("Caregiver Information"), this);
    TDBFrame3D2->setObjectName(QStringLiteral("TDBFrame3D2"));
    fgEMP = MakePairs("fgEMP", tr("Caregiver Information"), TDBFrame3D2);
    fgEMP->setMinimumWidth(theme::CharactersWide(*fgEMP, kPanelWidth));
    TreeView2 = new OutlineTree(QStringLiteral("TreeView2"), TDBFrame3D2);
    TreeView2->setAccessibleName(tr("What the caregiver brings"));
    LBLpayrate = MakeWarning("LBLpayrate", TDBFrame3D2);
    Numgross = new QLabel(TDBFrame3D2);
    Numgross->setObjectName(QStringLiteral("Numgross"));
    LBLweek = new QLabel(TDBFrame3D2);
    LBLweek->setObjectName(QStringLiteral("LBLweek"));
    LBLweek->setWordWrap(true);
    LBLfree = MakeWarning("LBLfree", TDBFrame3D2);
    LBLfree->setWordWrap(true);
    Image1 = new QLabel(TDBFrame3D2);
    Image1->setObjectName(QStringLiteral("Image1"));
    Image1->hide();
    auto* left = new QVBoxLayout;
    left->addWidget(fgEMP, 1);
    left->addWidget(Image1);
    left->addWidget(LBLpayrate);
    left->addWidget(Numgross);
    left->addWidget(LBLweek);
    left->addWidget(LBLfree);
    auto* layout = new QHBoxLayout(TDBFrame3D2);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    layout->addLayout(left, 5);
    layout->addWidget(TreeView2, 6);
    return TDBFrame3D2;
}

QWidget* FRMempsug::MakeResult() {
    auto* area = new QWidget(this);
    FG2 = new QuarterChart(QStringLiteral("FG2"),
                           {{QStringLiteral("Caregiver Name"), 20},
                            {QStringLiteral("Avail Hrs"), 9, true},
                            {QStringLiteral("Skills %"), 8, true}},
                           area);
    FG2->setAccessibleName(tr("Caregivers found, most hours left first"));
    FG2->SetEmptyText(tr("No caregiver fits and is free. Type a name below to see why."));
    LBLRecordCount = new QLabel(area);
    LBLRecordCount->setObjectName(QStringLiteral("LBLRecordCount"));
    auto* order = new QLabel(tr("Most hours left this week first, then by name"), area);
    order->setForegroundRole(QPalette::PlaceholderText);
    TXTwhy = new EnterBox(area);
    TXTwhy->setObjectName(QStringLiteral("TXTwhy"));
    TXTwhy->setPlaceholderText(tr("Last, First or ID, then Enter"));
    TXTwhy->setFixedWidth(theme::CharactersWide(*TXTwhy, 28));
    auto* caption = new QLabel(tr("&Why not:"), area);
    caption->setBuddy(TXTwhy);
    LBLwhy = new QLabel(area);
    LBLwhy->setObjectName(QStringLiteral("LBLwhy"));
    LBLwhy->setWordWrap(true);
    LBLwhy->setTextInteractionFlags(Qt::TextSelectableByMouse);
    CMDshowWeek = new QPushButton(QStringLiteral("Show Wee&k"), area);
    CMDshowWeek->setObjectName(QStringLiteral("CMDshowWeek"));
    CMDshowWeek->setToolTip(tr("The coming days of this caregiver"));
    CMDshowWeek->setAutoDefault(false);
    auto* line = new QHBoxLayout;
    line->addWidget(LBLRecordCount);
    line->addSpacing(2 * theme::kUnit);
    line->addWidget(order);
    line->addStretch(1);
    line->addWidget(CMDshowWeek);
    auto* below = new QHBoxLayout;
    below->addWidget(caption);
    below->addWidget(TXTwhy);
    below->addWidget(LBLwhy, 1);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addLayout(line);
    layout->addWidget(FG2, 1);
    layout->addLayout(below);
    return area;
}

void FRMempsug::Connect() {
    connect(Toolbar1, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
    connect(Command1, &QPushButton::clicked, this, [this] { Reported(session_, [this] { redo_Search(); }); });
    connect(FG2, &QuarterChart::currentRowChanged, this,
            [this] { Reported(session_, [this] { ShowCaregiverPanel(); }); });
    connect(FG2, &QuarterChart::rowActivated, this, [this] { Reported(session_, [this] { SelectKey(); }); });
    connect(TreeView1, &OutlineTree::rowPicked, this,
            [this](const std::string& tag) { Reported(session_, [this, tag] { NodePicked(tag); }); });
    connect(CHKignore_Times, &QCheckBox::toggled, this, [this](bool on) { TXTtime->SetEnabled(!on); });
    connect(CMDshowWeek, &QPushButton::clicked, this, [this] {
        const int row = FG2->CurrentRow();
        if (row >= 0) {
            FRMdisEmp(session_, found_.rows[static_cast<std::size_t>(row)].emp_id, request_.day, kDaysShown,
                      this)
                .exec();
        }
    });
    connect(TXTwhy, &QLineEdit::returnPressed, this, [this] { Reported(session_, [this] { Why(); }); });
    TXTtime->SetEnabled(!CHKignore_Times->isChecked());
}

void FRMempsug::Activate() {
    FillClient();
    redo_Search();
}

void FRMempsug::FillClient() {
    needs_ = PrepareClient(session_, request_);
    amounts_ = std::make_unique<VisitAmounts>(session_);
    ShowBill();
    TDBFrame3D5->setTitle(needs_.liveIn ? QStringLiteral("Client Information - 24 Hour Authorization")
                                        : QStringLiteral("Client Information"));
    OutlineNode critical = Parent("Critical Skills Needed by Client");
    OutlineNode regular = Parent("Regular Skills Needed by Client");
    for (const SkillNeed& skill : needs_.skills) {
        OutlineNode& parent = skill.critical ? critical : regular;
        parent.children.push_back(
            Child(skill.description, (skill.critical ? "X" : "S") + skill.code, "stop"));
    }
    OutlineNode visited = Parent("Caregivers who HAVE Visited");
    for (const KnownCaregiver& known : needs_.visited) {
        visited.children.push_back(Child(known.text, "E" + known.emp_id, "user"));
    }
    OutlineNode banned = Parent("Caregivers who Should NOT Visit");
    for (const KnownCaregiver& known : needs_.banned) {
        banned.children.push_back(Child(known.text, "N" + known.emp_id, "user"));
    }
    TreeView1->SetNodes({std::move(critical), std::move(regular), std::move(visited), std::move(banned)},
                        true);
}

void FRMempsug::ShowBill() {
    ShowPairs(*FGcli, needs_.panel);
    ShowWarning(*LBLbillrate, needs_.billFault);
    ShowWarning(*LBLbillreason, needs_.billReason);
}

SuggestionOptions FRMempsug::Options() const {
    SuggestionOptions options;
    options.areas = CHKWillWork->isChecked();
    options.potential = CHKPotential->isChecked();
    options.language = CHKLanguage->isChecked();
    options.gender = CHKgender->isChecked();
    options.discipline = CHKDiscipline->isChecked();
    options.type = CHKtype->isChecked();
    options.skillsPercent = CHKskills->isChecked();
    options.critical = CHKcritical->isChecked();
    options.ignoreUnavailable = CHKtime->isChecked();
    options.ignoreStart = CHKignore_Times->isChecked();
    options.group = FromQt(CMBempgroup->Text());
    return options;
}

void FRMempsug::redo_Search() {
    for (BoundControl* box : std::initializer_list<BoundControl*>{DTending, TXTtime, NUMhours}) {
        if (!box->Check() || (box == DTending && !DTending->IsFilled())) {
            session_.ShowMessageWindow(
                FromQt(box->Caption() + QLatin1Char(' ') +
                       (box->Fault().isEmpty() ? tr("Please fill it in") : box->Fault())));
            box->Widget()->setFocus();
            return;
        }
    }
    const Hourglass hourglass(session_.progress);
    const int topRow = FG2->TopRow();
    Toolbar1->setEnabled(false);
    FG2->setEnabled(false);
    request_.day = *DTending->DateValue();
    request_.time = TXTtime->TimeValue().value_or(Date());
    request_.hours = NUMhours->Number();
    // After a failure nobody of the search before may stand there.
    found_ = Suggestion();
    Reported(session_, [this] {
        // The client's side stays; the bill follows the day and the hours.
        const ClientNeeds now = PrepareClient(session_, request_);
        needs_.bill = now.bill;
        needs_.billFault = now.billFault;
        needs_.billReason = now.billReason;
        needs_.panel = now.panel;
        ShowBill();
        options_ = Options();
        found_ = SearchCaregivers(session_, needs_, request_, options_);
        WriteAssignHead(working_->Data(), found_, request_);
    });
    Toolbar1->setEnabled(true);
    FG2->setEnabled(true);
    FillSuggestionGrid(topRow);
}

void FRMempsug::FillSuggestionGrid(int topRow) {
    std::vector<ChartRow> rows;
    rows.reserve(found_.rows.size());
    std::set<std::string> shown;
    int unsure = 0;
    for (const SuggestedCaregiver& found : found_.rows) {
        ChartRow row;
        row.cells = {ToQt(found.emp_name), ToQt(FormatNumber(found.max_hours, "##0.##")),
                     QString::number(found.skills)};
        if (found.banned) {
            row.icon = QStringLiteral("warning");
            row.tip = tr("This caregiver should not visit this client");
        } else if (found.hasVisited) {
            row.icon = QStringLiteral("check");
            row.tip = tr("This caregiver has visited this client");
        }
        if (!found.warnings.empty()) {
            row.mark = QStringLiteral("question");
            row.tip += (row.tip.isEmpty() ? QString() : QStringLiteral("\n")) + ReasonsText(found.warnings);
        }
        unsure += found.warnings.empty() ? 0 : 1;
        for (std::size_t quarter = 0; quarter < row.quarters.size(); ++quarter) {
            const std::uint32_t text = found.quarters[quarter];
            const bool away = text != 0 && found_.texts->Text(text) == "UnAvailable";
            row.quarters[quarter] = {text == 0 ? QuarterKind::Free
                                     : away    ? QuarterKind::Unavailable
                                               : QuarterKind::Busy,
                                     text};
        }
        shown.insert(Upper(found.emp_id));
        rows.push_back(std::move(row));
    }
    FG2->SetColumnShown(kSkillsColumn, CHKskills->isChecked());
    FG2->SetRows(std::move(rows),
                 [texts = found_.texts](std::uint32_t text) { return ToQt(texts->Text(text)); });
    const int minute = MinuteOfDay(request_.time);
    const int inHour = minute % kMinutesOfHour;
    // A start between two quarters is shown from its hour on.
    const int first = minute / kMinutesOfHour * kQuartersOfHour +
                      (inHour % kMinutesOfQuarter == 0 ? inHour / kMinutesOfQuarter : 0);
    FG2->SetRequested(first, static_cast<int>(std::ceil(request_.hours * kQuartersOfHour)));
    for (const KnownCaregiver& known : needs_.visited) {
        const bool isShown = shown.count(Upper(known.emp_id)) != 0;
        const bool isBanned =
            std::any_of(needs_.banned.begin(), needs_.banned.end(),
                        [&](const KnownCaregiver& each) { return EqualsNoCase(each.emp_id, known.emp_id); });
        TreeView1->SetIcon("E" + known.emp_id, QString::fromLatin1(!isShown   ? "user"
                                                                   : isBanned ? "warning"
                                                                              : "select"));
    }
    for (const KnownCaregiver& known : needs_.banned) {
        TreeView1->SetIcon("N" + known.emp_id,
                           QString::fromLatin1(shown.count(Upper(known.emp_id)) != 0 ? "warning" : "user"));
    }
    const bool any = !found_.rows.empty();
    CMDshowWeek->setVisible(any);
    LBLRecordCount->setText(ToQt("Count: " + FormatNumber(static_cast<double>(found_.rows.size()), "#,##0")) +
                            (unsure > 0 ? tr(" (%1 may be less free than shown)").arg(unsure) : QString()) +
                            (found_.brokenOff ? tr(" (the search was broken off)") : QString()));
    LBLwhy->clear();
    for (const char* key : {"first", "previous", "next", "last"}) {
        Toolbar1->EnableKey(QString::fromLatin1(key), any);
    }
    Toolbar1->EnableKey(QStringLiteral("select"), false);
    if (any) {
        FG2->SetCurrentRow(0);
        FG2->SetTopRow(topRow);
        ShowCaregiverPanel();
    } else {
        Frame1->setTitle(QStringLiteral("Caregiver Notes"));
        fgEMP->Clear();
        TreeView2->Clear();
        Sugtxt->clear();
        Numgross->clear();
        LBLweek->clear();
        ShowReasons({});
        ShowWarning(*Label1, "");
        ShowWarning(*LBLpayrate, "");
        ShowPicture({});
    }
}

void FRMempsug::ShowCaregiverPanel() {
    const int row = FG2->CurrentRow();
    if (row < 0) {
        return;
    }
    const SuggestedCaregiver& found = found_.rows[static_cast<std::size_t>(row)];
    const CaregiverPanel panel =
        DescribeCaregiverForVisit(session_, needs_, request_, options_, found.emp_id, *amounts_);
    ShowPairs(*fgEMP, panel.rows, panel.differing);
    ShowPairs(*FGcli, needs_.panel, panel.differing);
    ShowTrees(panel);
    ShowMargin(panel);
    ShowReasons(found.warnings);
    ShowPicture(panel.picture);
    Sugtxt->setPlainText(ToQt(NotesText(panel.notes)));
    Frame1->setTitle(ToQt(panel.notesTitle));
    ShowWarning(*Label1, panel.banned ? "This Caregiver Should not be Selected" : "");
    TDBFrame3D2->setTitle(CHKPotential->isChecked() ? QStringLiteral("Potential Caregiver Information")
                                                    : QStringLiteral("Caregiver Information"));
    Toolbar1->EnableKey(QStringLiteral("select"), panel.maySelect);
}

void FRMempsug::ShowTrees(const CaregiverPanel& panel) {
    for (const SkillNeed& skill : needs_.skills) {
        const bool has = panel.skillCodes.count(Upper(skill.code)) != 0;
        TreeView1->SetIcon((skill.critical ? "X" : "S") + skill.code,
                           QString::fromLatin1(has ? "check" : "stop"));
    }
    std::vector<OutlineNode> nodes;
    if (!panel.expired.empty()) {
        OutlineNode expired = Parent("Expired Information");
        expired.marked = true;
        for (const std::string& line : panel.expired) {
            expired.children.push_back(Child(line, "", "warning"));
        }
        nodes.push_back(std::move(expired));
    }
    const auto add = [&nodes](const char* words, const std::vector<PanelItem>& items) {
        OutlineNode parent = Parent(words);
        for (const PanelItem& item : items) {
            parent.children.push_back(Child(item.text, "", item.matches ? "check" : ""));
        }
        nodes.push_back(std::move(parent));
    };
    add("Districts Caregiver will work", panel.areas);
    add("Languages the Caregiver Speaks", panel.languages);
    add("Skills Caregiver Has", panel.skills);
    TreeView2->SetNodes(std::move(nodes), true);
}

void FRMempsug::ShowMargin(const CaregiverPanel& panel) {
    ShowWarning(*LBLpayrate, panel.payFault);
    // Where a rate is missing the margin of before stays, under the word that tells which one is missing.
    if (panel.margin) {
        Numgross->setText(ToQt("Gross Margin: " + FormatNumber(*panel.margin, "##0.00") + " %"));
    }
    LBLweek->setText(ToQt("This week: " + FormatNumber(panel.weekHours, "##0.00") + " hours, " +
                          FormatNumber(panel.weekHoursAfter, "##0.00") +
                          " with this visit. Visits to this client: " + std::to_string(panel.visits) + "."));
}

void FRMempsug::ShowReasons(const std::vector<std::string>& reasons) {
    constexpr std::size_t kFitting = 2;
    LBLfree->setText(reasons.empty() ? QString() : ReasonsText(reasons, kFitting));
    LBLfree->setToolTip(reasons.empty() ? QString() : ReasonsText(reasons));
    LBLfree->setVisible(!reasons.empty());
}

void FRMempsug::ShowPicture(const std::filesystem::path& file) {
    const QPixmap picture(file.empty() ? QString() : ToQt(file.string()));
    Image1->setVisible(!picture.isNull());
    if (!picture.isNull()) {
        Image1->setPixmap(picture.scaledToHeight(9 * theme::kUnit, Qt::SmoothTransformation));
    }
}

void FRMempsug::Move(ListMove move) {
    const int last = FG2->RowCount() - 1;
    const int row = FG2->CurrentRow();
    const int to = move == ListMove::First      ? 0
                   : move == ListMove::Last     ? last
                   : move == ListMove::Previous ? std::max(0, row - 1)
                                                : std::min(last, row + 1);
    FG2->SetCurrentRow(to);
    ShowCaregiverPanel();
}

void FRMempsug::SelectKey() {
    const int row = FG2->CurrentRow();
    if (row < 0 || !Toolbar1->IsKeyEnabled(QStringLiteral("select"))) {
        return;
    }
    const SuggestedCaregiver& found = found_.rows[static_cast<std::size_t>(row)];
    if (session_.dialogs.AskQuestion("Are you sure you wish to schedule Caregiver: " + found.emp_name)) {
        chosen_ = found.emp_id;
        accept();
    }
}

void FRMempsug::NodePicked(const std::string& tag) {
    if (found_.rows.empty() || (tag[0] != 'E' && tag[0] != 'N')) {
        return;
    }
    const auto same = [id = tag.substr(1)](const SuggestedCaregiver& row) {
        return EqualsNoCase(row.emp_id, id);
    };
    const auto at = std::find_if(found_.rows.begin(), found_.rows.end(), same);
    // One who is not in the result leads to the first who is.
    FG2->SetCurrentRow(at == found_.rows.end() ? 0 : static_cast<int>(at - found_.rows.begin()));
    ShowCaregiverPanel();
}

void FRMempsug::Why() {
    const std::string id = CaregiverOfWords(session_, FromQt(TXTwhy->text()));
    if (id.empty()) {
        LBLwhy->setText(QStringLiteral("Caregiver was not found"));
        return;
    }
    const WhyNot why = ExplainCaregiver(session_, needs_, request_, options_, id);
    const QString name = ToQt(why.emp_name + " (" + why.emp_id + "): ");
    const bool isListed =
        std::any_of(found_.rows.begin(), found_.rows.end(),
                    [&](const SuggestedCaregiver& row) { return EqualsNoCase(row.emp_id, id); });
    if (why.shown) {
        LBLwhy->setText(name +
                        (isListed ? tr("is in the list.") : tr("would be found now. Please search again.")));
        if (isListed) {
            NodePicked("E" + id);
        }
        return;
    }
    LBLwhy->setText(name + ToQt(Trim(why.reason + " " + why.change)));
}

}  // namespace kv
