#include "screens/FRmassign.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "base/text.h"
#include "clients/pick_query.h"
#include "clients/record_history.h"
#include "clients/record_keys.h"
#include "scheduling/pattern_gap.h"
#include "screens/FRMcopyAssign.h"
#include "screens/FRMedit.h"
#include "screens/FRMfindOpenEmployee.h"
#include "screens/FRMmoveAssign.h"
#include "screens/FRMupdatesch.h"
#include "screens/frmClient_controls.h"
#include "screens/frmDiscrep.h"
#include "screens/frmPrint.h"
#include "screens/help.h"
#include "screens/notices.h"
#include "screens/pick_screen.h"
#include "screens/save_gate.h"
#include "screens/screen_steps.h"
#include "screens/widgets/bring_back.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/time_box.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"
#include "session/rights.h"

namespace kv {

namespace {

constexpr RecordTexts kMoves = {"There are no records to move to.", "This is the first Assignment",
                                "This is the Last Assignment", "There are no records to delete.", ""};
constexpr std::array kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};

/// A grid of one line: headings over what is known of somebody.
Grid* MakeLine(const char* name, const QString& words, const std::vector<GridColumn>& columns,
               QWidget* parent) {
    auto* grid = new Grid(QString::fromLatin1(name), columns, parent);
    grid->setAccessibleName(words);
    grid->setSelectionMode(QAbstractItemView::NoSelection);
    grid->setFocusPolicy(Qt::NoFocus);
    grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid->setFixedHeight(grid->horizontalHeader()->sizeHint().height() +
                         grid->verticalHeader()->defaultSectionSize() + 2 * grid->frameWidth());
    return grid;
}

std::vector<GridColumn> AuthorizationColumns() {
    return {Patterned("From Date", 12, "MMM/DD/YYYY"),
            Patterned("To Date", 12, "MMM/DD/YYYY"),
            Patterned("Payer", 26, ""),
            Patterned("Call Type", 10, ""),
            Patterned("Description", 30, ""),
            Patterned("Auth Hours", 11, "##,##0.00"),
            Patterned("Per", 0, "")};
}

std::vector<GridColumn> PersonColumns() {
    return {Patterned("ID", 7, ""),     Patterned("Name", 19, ""),  Patterned("Address", 22, ""),
            Patterned("City", 11, ""),  Patterned("State", 5, ""),  Patterned("Zip", 6, ""),
            Patterned("Phone", 13, ""), Patterned("Group", 11, ""), Patterned("Pager", 10, ""),
            Patterned("Cell", 13, ""),  Patterned("Fax", 0, "")};
}

void ShowLine(Grid& grid, const DetailLine& details) {
    if (details.empty()) {
        grid.Clear();
        return;
    }
    GridRow row;
    for (const auto& [heading, text] : details) {
        row.cells.emplace_back(text);
    }
    grid.SetRows({row});
}

}  // namespace

FRmassign::FRmassign(Session& session, AssignmentParent parentRow, QWidget* parent)
    : QDialog(parent),
      DBassign([this](const EngineError& error) { ReportEngineError(session_, error); }),
      session_(session),
      parentRow_(std::move(parentRow)) {
    setObjectName(QStringLiteral("FRmassign"));
    setWindowTitle(QStringLiteral("Add/Change Client Assignments"));
    Pick = [this] { return PickEmployee(session_, this); };
    Suggest = [this](const SuggestionRequest& request) {
        FRMfindOpenEmployee screen(session_, request.client, this);
        screen.DTEStart->SetDate(request.day);
        screen.DTEtime->SetTime(request.time);
        screen.NUMhours->SetNumber(request.hours);
        screen.CMBlivein->SetText(request.liveIn ? QStringLiteral("Y") : QStringLiteral("N"));
        screen.OpenedFrom = request.openedFrom;
        screen.exec();
        return screen.Chosen;
    };
    PickSource = [this] { return FRMcopyAssign(session_, parentRow_, this).Pick(); };
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    Asks.showConflicts = [this](const std::vector<AssignmentConflict>& conflicts) {
        return frmDiscrep(conflicts, this).exec() == QDialog::Accepted;
    };
    Asks.askMove = [this](int forward, int back) { return FRMmoveAssign(forward, back, this).Ask(); };
    Asks.updateSchedules = [this](const ScheduleUpdate& update) {
        FRMupdatesch(session_, update, this).exec();
    };

    MakeToolbar();
    auto* lower = new QGridLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    lower->setSpacing(theme::kUnit);
    lower->addWidget(MakeInformation(), 0, 0, 1, 2);
    lower->addWidget(MakeTree(), 1, 0);
    lower->addWidget(MakeBoxes(), 1, 1);
    lower->setColumnStretch(0, 3);
    lower->setColumnStretch(1, 4);
    lower->setRowStretch(1, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar2);
    all->addLayout(lower, 1);
    auto* status = new QStatusBar(this);
    status->setSizeGripEnabled(false);
    all->addWidget(status);
    resize(146 * theme::kUnit, 84 * theme::kUnit);

    DBassign.SetKeyField("sequence");
    DBassign.Bind(*TXTsttime, "St_time");
    DBassign.Bind(*ENDtime, "END_TIME");
    DBassign.Bind(*NUMhrs, "HRS");
    DBassign.Bind(*NUMhowoften, "howoften");
    DBassign.Bind(*TXTempid, "emp_id");
    DBassign.Accompany(*TDBlastdate);
    DBassign.Watch("Day", tr("Day"));
    DBassign.Watch("Last_date", tr("Schedule Creation Date"));
    Connect();
    ApplyGridColors(this, session.COLOR);
    Reported(session_, [this] {
        mayAdd_ = CheckScreenAccess(session_, "ASSA");
        mayEdit_ = CheckScreenAccess(session_, "ASSE");
        mayDelete_ = CheckScreenAccess(session_, "ASSD");
        ShowInformation();
        Load(0);
    });
    FGtree->setFocus();
}

void FRmassign::MakeToolbar() {
    const auto extra = [](const char* key, const QString& word, const char* tip, const char* icon) {
        return ToolKey{
            QString::fromLatin1(key), word, QString::fromLatin1(tip), QString::fromLatin1(icon), {}};
    };
    Toolbar2 = new ToolBar(
        QStringLiteral("Toolbar2"),
        {StandardKey(QStringLiteral("exit")), ToolSeparator(), StandardKey(QStringLiteral("first")),
         StandardKey(QStringLiteral("previous")), StandardKey(QStringLiteral("next")),
         StandardKey(QStringLiteral("last")), ToolSeparator(),
         StandardKey(QStringLiteral("new"), tr("Add an assignment")), StandardKey(QStringLiteral("delete")),
         StandardKey(QStringLiteral("save")), StandardKey(QStringLiteral("discard")), ToolSeparator(),
         extra("copy", tr("Copy"), "Copy assignments from a previous authorization to this one", "paste"),
         extra("history", tr("History"), "View all changes made to this assignment.", "history"),
         StandardKey(QStringLiteral("help"))},
        this);
    keys_ = StepsOf({[this](ListMove move) { Move(move); }, [this] { NewKey(); }, [this] { DeleteKey(); },
                     [this] { SaveKey(); }, [this] { DiscardKey(); }});
    keys_.insert({
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("copy"), [this] { CopyKey(); }},
        {QStringLiteral("history"), [this] { HistoryKey(); }},
        {QStringLiteral("help"), [this] { StartHelp(session_, "client~6"); }},
    });
}

QWidget* FRmassign::MakeInformation() {
    auto* area = new QWidget(this);
    FGauth = MakeLine("FGauth", tr("Authorization"), AuthorizationColumns(), area);
    FGcli = MakeLine("FGcli", tr("Client"), PersonColumns(), area);
    fgEMP = MakeLine("fgEMP", tr("Caregiver"), PersonColumns(), area);
    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(theme::kUnit);
    layout->setVerticalSpacing(theme::kHalfUnit);
    int line = 0;
    for (Grid* grid : {FGauth, FGcli, fgEMP}) {
        layout->addWidget(new QLabel(grid->accessibleName() + QLatin1Char(':'), area), line, 0);
        layout->addWidget(grid, line++, 1);
    }
    layout->setColumnStretch(1, 1);
    return area;
}

QWidget* FRmassign::MakeTree() {
    auto* area = new QWidget(this);
    FGtree = new OutlineTree(QStringLiteral("FGtree"), area);
    FGtree->SetEmptyText(tr("This authorization has no assignment"));
    auto* caption = new QLabel(QStringLiteral("All Assignments for this Authorization"), area);
    caption->setBuddy(FGtree);
    FGtree->setAccessibleName(caption->text());
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(caption);
    layout->addWidget(FGtree, 1);
    return area;
}

QWidget* FRmassign::MakeBoxes() {
    auto* form = new FieldForm(this);
    MakeDays(form->AddGroup(QStringLiteral("FRAMEdays"), tr("Days")));
    MakeTimes(form->AddGroup(QStringLiteral("FRAMEtimes"), tr("Visits")));
    MakeCaregiver(form->AddGroup(QStringLiteral("FRAMEcaregiver"), tr("Caregiver")));
    form->AddStretch();
    theme::KeepReadable(*form);
    return form;
}

void FRmassign::MakeDays(FieldForm* form) {
    auto* line = new QWidget(form);
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < kDaysOfWeek; ++i) {
        const auto at = static_cast<std::size_t>(i);
        OPTday[at] = new QCheckBox(QString::fromLatin1(kDayNames[at]), line);
        OPTday[at]->setObjectName(IndexedName(QStringLiteral("OPTday"), i));
        OPTday[at]->setToolTip(
            QStringLiteral("On a new assignment you can choose multiple days for quick entry."));
        layout->addWidget(OPTday[at]);
    }
    layout->addStretch(1);
    form->AddWide(line);
}

void FRmassign::MakeTimes(FieldForm* form) {
    TXTsttime = new TimeBox(QStringLiteral("TXTsttime"), tr("&Start Time:"), form);
    CHKmil = new QCheckBox(QStringLiteral("Use &Military Time"), form);
    CHKmil->setObjectName(QStringLiteral("CHKmil"));
    NUMhrs = new NumberBox(QStringLiteral("NUMhrs"), tr("&Hours:"), "#0.00", 8, form);
    NUMhrs->setToolTip(QStringLiteral("Number of hours to assign to the client per visit."));
    NUMhrs->SetLimits(0, 24);
    ENDtime = new TimeBox(QStringLiteral("ENDtime"), tr("E&nd Time:"), form);
    CHKend = new QCheckBox(QStringLiteral("&Use End Time"), form);
    CHKend->setObjectName(QStringLiteral("CHKend"));
    NUMhowoften =
        new NumberBox(QStringLiteral("NUMhowoften"), QStringLiteral("How &Often?  Every:"), "#0", 4, form);
    NUMhowoften->setToolTip(QStringLiteral("1 means schedule each week.  2 means every second week etc."));
    NUMhowoften->SetLimits(0, 99);
    TDBlastdate = new DateBox(QStringLiteral("TDBlastdate"), tr("Next Schedule Creation Date"), form);
    TDBlastdate->setToolTip(QStringLiteral("Last week that the schedules were created"));
    TXTsttime->SetRequired(true);
    NUMhrs->SetRequired(true);
    form->AddField(*TXTsttime);
    form->AddBehind(CHKmil);
    form->AddField(*NUMhrs);
    form->AddField(*ENDtime);
    form->AddBehind(CHKend);
    form->AddField(*NUMhowoften);
    form->AddBehind(new QLabel(tr("week(s)"), form));
    form->AddField(*TDBlastdate);
    TDBlastdate->Label()->setObjectName(QStringLiteral("LBLsch_create"));
}

void FRmassign::MakeCaregiver(FieldForm* form) {
    TXTempid = new TextBox(QStringLiteral("TXTempid"), QStringLiteral("Caregiver &ID:"), 10, form);
    TXTempid->setToolTip(QStringLiteral("Which Caregiver will see this client (optional)"));
    CMDempfind = MakeSmallButton(QStringLiteral("CMDempfind"), QStringLiteral("find_person"),
                                 tr("Show the Caregiver search screen."), form);
    Text1 = new QLineEdit(form);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setAccessibleName(tr("Caregiver's name"));
    Text1->setReadOnly(true);
    Text1->setFocusPolicy(Qt::ClickFocus);
    Text1->setFixedWidth(theme::CharactersWide(*Text1, 32));
    Label2 = new QLabel(form);
    Label2->setObjectName(QStringLiteral("Label2"));
    QPalette ink = Label2->palette();
    ink.setColor(QPalette::WindowText, theme::ColorOf(theme::Ink::Fault, ink));
    Label2->setPalette(ink);
    LblHours = new QLabel(form);
    LblHours->setObjectName(QStringLiteral("LblHours"));
    CMDsuggestion = MakeSmallButton(QStringLiteral("CMDsuggestion"), QStringLiteral("select"),
                                    tr("Find a caregiver who fits and is free"), form);
    form->AddField(*TXTempid);
    form->AddBehind(CMDempfind);
    form->AddBehind(CMDsuggestion);
    form->AddBehind(Text1);
    form->AddWidgets(QString(), {Label2});
    form->AddWidgets(QString(), {LblHours});
}

void FRmassign::Connect() {
    connect(Toolbar2, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
    connect(FGtree, &OutlineTree::rowPicked, this, [this](const std::string& id) {
        Reported(session_, [this, &id] {
            if (!IsWriting() && DBassign.FindFirst(Sql("sequence = {}", std::stol(id)))) {
                ShowRow();
            }
        });
    });
    for (int day = 0; day < kDaysOfWeek; ++day) {
        connect(OPTday[static_cast<std::size_t>(day)], &QCheckBox::clicked, this,
                [this, day] { DayClicked(day); });
    }
    for (BoundControl* box : std::initializer_list<BoundControl*>{TXTsttime, NUMhrs, ENDtime}) {
        connect(box->Notifier(), &ControlNotifier::changed, this, &FRmassign::DeriveTimes);
    }
    TXTsttime->SetRule([this] { return CheckStart(); });
    NUMhowoften->SetRule([this] {
        CheckHowOften();
        return true;
    });
    connect(TDBlastdate->Notifier(), &ControlNotifier::changed, this, &FRmassign::BeginEdit);
    TDBlastdate->SetRule([this] {
        LimitCreation();
        return true;
    });
    connect(CHKend, &QCheckBox::toggled, this, [this] {
        SetButtons();
        DeriveTimes();
    });
    connect(CHKmil, &QCheckBox::toggled, this, [this](bool military) {
        TXTsttime->SetMilitary(military);
        ENDtime->SetMilitary(military);
    });
    TXTempid->SetRule([this] {
        bool accepted = false;
        Reported(session_, [&] { accepted = CheckCaregiverBox(); });
        return accepted;
    });
    connect(CMDempfind, &QToolButton::clicked, this, [this] { Reported(session_, [this] { PickKey(); }); });
    connect(CMDsuggestion, &QToolButton::clicked, this,
            [this] { Reported(session_, [this] { SuggestKey(); }); });
    connect(&DBassign, &BoundSource::modeChanged, this, &FRmassign::SetButtons);
    AddBringBackKey(this, DBassign);
    connect(&DBassign, &BoundSource::typedSetAside, this, [this] { TellStatus(this, tr(kBringBackHint)); });
    connect(&DBassign, &BoundSource::rowFollowed, this, [this](const std::vector<std::string>& fields) {
        TellFollowed(this, DBassign, fields);
        Reported(session_, [this] { FollowRow(); });
    });
}

void FRmassign::ShowInformation() {
    GridRow row;
    row.cells = {Value(parentRow_.from),
                 Value(parentRow_.to),
                 Value(parentRow_.payer),
                 Value(parentRow_.visitType),
                 Value(parentRow_.visitDescription),
                 Value(parentRow_.hours),
                 Value(parentRow_.per)};
    FGauth->SetRows({row});
    ShowLine(*FGcli, ClientDetails(session_, parentRow_.client));
}

void FRmassign::Load(long sequence) {
    DBassign.SetRecordset(OpenAssignments(session_, parentRow_.authorization));
    if (sequence == 0 || !DBassign.FindFirst(Sql("sequence = {}", sequence))) {
        DBassign.MoveFirst();
    }
    Dis_Tree();
    ShowRow();
}

void FRmassign::Dis_Tree() {
    std::vector<OutlineNode> nodes;
    for (const AssignmentLine& line : AssignmentTree(DBassign.Rows())) {
        const QString day =
            line.day < 0 ? tr("Other") : QString::fromLatin1(kDayNames[static_cast<std::size_t>(line.day)]);
        if (nodes.empty() || nodes.back().text != day) {
            OutlineNode node;
            node.text = day;
            node.bold = true;
            nodes.push_back(std::move(node));
        }
        OutlineNode assignment;
        assignment.text = ToQt(line.text);
        assignment.id = std::to_string(line.sequence);
        nodes.back().children.push_back(std::move(assignment));
    }
    FGtree->SetNodes(std::move(nodes), true);
}

void FRmassign::ShowRow() {
    const QScopedValueRollback<bool> showing(showing_, true);
    const bool hasRow = DBassign.HasRow();
    const bool adding = DBassign.IsAdding();
    ShowDay(hasRow && !adding ? DayIndex(DBassign.Rows().Text("Day")) : -1);
    TDBlastdate->SetCaption(adding ? QStringLiteral("First Schedule Creation Date")
                                   : QStringLiteral("Next Schedule Creation Date"));
    ShowCreation();
    warnedOften_ = NUMhowoften->Number();
    checkedId_ = FromQt(TXTempid->Text());
    ShowCaregiver(checkedId_.empty() ? CaregiverCheck()
                                     : DescribeCaregiver(session_, checkedId_, parentRow_));
    if (hasRow && !adding) {
        if (Text1->text().isEmpty()) {
            Text1->setText(ToQt(DBassign.Rows().Text("emp_name")));
        }
        FGtree->Highlight(std::to_string(DBassign.Rows().Get("sequence").ToInteger()));
    } else {
        FGtree->Highlight({});
    }
    SetButtons();
}

void FRmassign::ShowDay(int day) {
    shownDay_ = day;
    for (int i = 0; i < kDaysOfWeek; ++i) {
        OPTday[static_cast<std::size_t>(i)]->setChecked(i == day);
    }
}

void FRmassign::ShowCreation() {
    if (DBassign.IsAdding()) {
        TDBlastdate->SetValue(Value(FirstCreationDate(parentRow_.from, session_.clock.Today())));
    } else if (DBassign.HasRow() && !DBassign.Rows().Get("Last_date").IsNull()) {
        TDBlastdate->SetValue(Value(
            LimitCreationDate(NextCreationDate(DBassign.Rows()), session_.clock.Today(), parentRow_.to)));
    } else {
        TDBlastdate->SetValue(Value());
    }
}

/// What is bound to no field takes what another seat has written, where the operator has not touched it.
void FRmassign::FollowRow() {
    const QScopedValueRollback<bool> showing(showing_, true);
    const bool dayPicked = [this] {
        for (int day = 0; day < kDaysOfWeek; ++day) {
            if (OPTday[static_cast<std::size_t>(day)]->isChecked() != (day == shownDay_)) {
                return true;
            }
        }
        return false;
    }();
    if (!dayPicked) {
        ShowDay(DayIndex(DBassign.Rows().Text("Day")));
    }
    if (!TDBlastdate->IsDataChanged()) {
        ShowCreation();
    }
    if (!TXTempid->IsDataChanged()) {
        checkedId_ = FromQt(TXTempid->Text());
        ShowCaregiver(checkedId_.empty() ? CaregiverCheck()
                                         : DescribeCaregiver(session_, checkedId_, parentRow_));
    }
}

void FRmassign::ShowCaregiver(const CaregiverCheck& caregiver) {
    Text1->setText(ToQt(caregiver.name));
    Label2->setText(ToQt(caregiver.discipline));
    Label2->setVisible(!caregiver.discipline.empty());
    LblHours->setText(ToQt(caregiver.hours));
    ShowLine(*fgEMP, caregiver.details);
}

void FRmassign::SetButtons() {
    const bool writing = IsWriting();
    const bool rows = DBassign.Count() > 0;
    const bool boxes = DBassign.IsAdding() || (DBassign.HasRow() && mayEdit_);
    for (BoundControl* box : BoundControlsOf(this)) {
        box->SetEnabled(boxes);
    }
    NUMhrs->SetEnabled(boxes && !CHKend->isChecked());
    ENDtime->SetEnabled(boxes && CHKend->isChecked());
    for (QCheckBox* day : OPTday) {
        day->setEnabled(boxes);
    }
    CMDempfind->setEnabled(boxes);
    CMDsuggestion->setEnabled(boxes);
    FGtree->setEnabled(!writing);
    const auto enable = [this](const char* key, bool on) {
        Toolbar2->EnableKey(QString::fromLatin1(key), on);
    };
    for (const char* key : {"first", "previous", "next", "last", "history"}) {
        enable(key, !writing && rows);
    }
    enable("new", !writing && mayAdd_);
    enable("copy", !writing && mayAdd_);
    enable("delete", !writing && rows && mayDelete_);
    enable("save", writing);
    enable("discard", writing);
}

void FRmassign::BeginEdit() {
    if (!showing_ && DBassign.HasRow()) {
        Reported(session_, [this] { DBassign.BeginEdit(); });
    }
}

AssignmentEntry FRmassign::Entry() const {
    AssignmentEntry entry;
    for (std::size_t i = 0; i < OPTday.size(); ++i) {
        entry.days[i] = OPTday[i]->isChecked();
    }
    entry.start = TXTsttime->TimeValue().value_or(Date());
    entry.hours = NUMhrs->Number();
    entry.howoften = static_cast<long>(NUMhowoften->Number());
    entry.creation =
        TDBlastdate->DateValue().value_or(FirstCreationDate(parentRow_.from, session_.clock.Today()));
    entry.emp_id = Trim(FromQt(TXTempid->Text()));
    return entry;
}

void FRmassign::DayClicked(int day) {
    // A saved row has one day; on a new one several stay checked.
    if (!DBassign.IsAdding() && OPTday[static_cast<std::size_t>(day)]->isChecked()) {
        for (int other = 0; other < kDaysOfWeek; ++other) {
            OPTday[static_cast<std::size_t>(other)]->setChecked(other == day);
        }
    }
    BeginEdit();
    if (!IsWriting()) {
        ShowRow();  // another seat has the row: what it holds is shown again
    }
}

void FRmassign::DeriveTimes() {
    if (showing_ || !TXTsttime->IsFilled()) {
        return;
    }
    // What is set here sends its own change.
    const QScopedValueRollback<bool> deriving(showing_, true);
    const Date start = *TXTsttime->TimeValue();
    if (CHKend->isChecked()) {
        if (ENDtime->IsFilled()) {
            NUMhrs->SetNumber(HoursOfVisit(start, *ENDtime->TimeValue()));
        }
    } else if (NUMhrs->Number() > 0) {
        ENDtime->SetTime(EndOfVisit(start, NUMhrs->Number()));
    }
}

bool FRmassign::CheckStart() {
    if (!IsWriting() || !TXTsttime->IsFilled() || IsQuarterHour(*TXTsttime->TimeValue())) {
        return true;
    }
    session_.ShowMessageWindow("Assignments may only start every 15 minutes");
    TXTsttime->setFocus();
    return false;
}

void FRmassign::CheckHowOften() {
    const double often = NUMhowoften->Number();
    if (often == warnedOften_) {
        return;
    }
    warnedOften_ = often;
    if (often > 1) {
        session_.ShowMessageWindow(
            "This assignment will only create a schedule once every " + FromQt(NUMhowoften->Text()) +
            " weeks!!!   It is not used to tell the system how many weeks to schedule!");
    }
}

void FRmassign::LimitCreation() {
    if (const std::optional<Date> date = TDBlastdate->DateValue()) {
        const Date limited = LimitCreationDate(*date, session_.clock.Today(), parentRow_.to);
        if (limited != *date) {
            TDBlastdate->SetDate(limited);
        }
    }
}

bool FRmassign::CheckCaregiverBox() {
    const std::string id = Trim(FromQt(TXTempid->Text()));
    if (id == checkedId_) {
        return true;
    }
    if (id.empty()) {
        checkedId_.clear();
        ShowCaregiver({});
        return true;
    }
    CaregiverCheck caregiver = CheckCaregiver(session_, id, parentRow_, Entry().creation);
    const bool accepted = caregiver.accepted;
    checkedId_ = accepted ? id : std::string();
    if (!accepted) {
        TXTempid->EnterValue(Value(""));
        TXTempid->setFocus();
        // Why she was not taken stays to be read.
        const std::string discipline = caregiver.discipline;
        caregiver = CaregiverCheck();
        caregiver.discipline = discipline;
    }
    ShowCaregiver(caregiver);
    return accepted;
}

bool FRmassign::CheckBoxes() {
    if (!PassesGate(session_, this)) {
        return false;
    }
    if (!TXTsttime->IsFilled()) {
        session_.ShowMessageWindow("Please fill in the start time.");
        TXTsttime->setFocus();
        return false;
    }
    return true;
}

void FRmassign::FocusFirstFault() {
    const AssignmentEntry entry = Entry();
    if (std::none_of(entry.days.begin(), entry.days.end(), [](bool day) { return day; })) {
        OPTday.front()->setFocus();
    } else if (entry.hours <= 0) {
        (CHKend->isChecked() ? static_cast<QWidget*>(ENDtime) : NUMhrs)->setFocus();
    } else {
        NUMhowoften->setFocus();
    }
}

void FRmassign::NewKey() {
    constexpr double kEightOClock = 8.0 / 24;
    DBassign.Rows().AddNew();
    DBassign.Rows().Set("St_time", Date(kEightOClock));
    DBassign.Rows().Set("howoften", 1);
    CHKend->setChecked(false);
    DBassign.ShowRow();
    ShowRow();
    OPTday.front()->setFocus();
}

bool FRmassign::SaveKey() {
    if (!CheckBoxes()) {
        return false;
    }
    AssignmentSaved saved;
    try {
        const Hourglass hourglass(session_.progress);
        saved = SaveAssignment(session_, DBassign.Rows(), Entry(), parentRow_, Asks);
    } catch (const EngineError&) {
        if (!IsWriting()) {
            // Another seat took the row meanwhile, or what was carried to its visits stopped on the way: it
            // is shown as it stands.
            DBassign.Restore();
            Load(0);
        }
        throw;
    }
    if (!saved.saved) {
        // Told what is missing, or back from the conflicts to the boxes.
        FocusFirstFault();
        return false;
    }
    Load(saved.sequences.front());
    FGtree->setFocus();
    if (!saved.removed.empty()) {
        Preview(RemovedVisitsReport(saved.removed, session_.clock.Today()));
    }
    if (saved.conflicts) {
        Preview(*saved.conflicts);
    }
    return true;
}

void FRmassign::DiscardKey() {
    DBassign.Restore();
    if (!DBassign.HasRow()) {
        DBassign.MoveFirst();
    }
    ShowRow();
    FGtree->setFocus();
}

void FRmassign::DeleteKey() {
    if (DBassign.FollowRow()) {
        Load(DBassign.HasRow() ? static_cast<long>(DBassign.Rows().Get("sequence").ToInteger()) : 0);
        session_.ShowMessageWindow(kChangedBeforeDelete);
        return;
    }
    if (DeleteAssignment(session_, DBassign.Rows(), parentRow_)) {
        DBassign.ShowRow();
        Dis_Tree();
        ShowRow();
        Label2->hide();
    }
}

void FRmassign::Move(ListMove move) {
    if (MoveInRecords(session_, DBassign.Rows(), move, kMoves)) {
        DBassign.ShowRow();
        ShowRow();
    }
}

void FRmassign::CopyKey() {
    const long source = PickSource();
    if (source <= 0) {
        return;
    }
    std::vector<RemovedVisit> removed;
    const auto show = [&] {
        Load(0);
        if (!removed.empty()) {
            Preview(RemovedVisitsReport(removed, session_.clock.Today()));
        }
    };
    try {
        const Hourglass hourglass(session_.progress);
        CopyPattern(session_, source, parentRow_, removed);
    } catch (const EngineError&) {
        show();
        throw;
    }
    show();
}

void FRmassign::HistoryKey() {
    const long sequence = static_cast<long>(DBassign.Rows().Get("sequence").ToInteger());
    FRMedit history(session_, this);
    history.ShowRecord(QStringLiteral("Assignment ID:"), "ASN", std::to_string(sequence),
                       RecordHistoryStatement("ASN", sequence));
    history.exec();
}

void FRmassign::PickKey() {
    const std::string id = Pick();
    if (id != kCancelled) {
        TakeCaregiver(id);
    }
}

void FRmassign::SuggestKey() {
    const AssignmentEntry entry = Entry();
    SuggestionRequest request;
    request.client = parentRow_.client;
    request.day = FirstVisitDay(entry, session_.clock.Today());
    request.time = entry.start;
    request.hours = entry.hours;
    request.liveIn = parentRow_.liveIn;
    request.openedFrom = parentRow_.authorization;
    if (const std::string id = Suggest(request); !id.empty()) {
        TakeCaregiver(id);
    }
}

void FRmassign::TakeCaregiver(const std::string& id) {
    if (DBassign.HasRow()) {
        TXTempid->EnterValue(Value(id));
        TXTempid->Finish();
    }
}

void FRmassign::reject() {
    bool leaves = !IsWriting();
    if (!leaves) {
        Reported(session_, [this, &leaves] {
            const SaveAnswer answer = session_.dialogs.AskToSave(kUnsavedPrompt);
            if (answer == SaveAnswer::Save) {
                leaves = SaveKey();
            } else if (answer == SaveAnswer::Discard) {
                DBassign.Restore();
                leaves = true;
            }
        });
    }
    if (leaves) {
        QDialog::reject();
    }
}

}  // namespace kv
