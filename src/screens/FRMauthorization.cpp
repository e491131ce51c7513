#include "screens/FRMauthorization.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text.h"
#include "billing/authorizations.h"
#include "billing/client_status.h"
#include "clients/record_history.h"
#include "clients/record_keys.h"
#include "screens/FRMTask.h"
#include "screens/FRMcalc_percent.h"
#include "screens/FRMedit.h"
#include "screens/FRMimportant.h"
#include "screens/FRmassign.h"
#include "screens/frmClient_controls.h"
#include "screens/frmPrint.h"
#include "screens/help.h"
#include "screens/notices.h"
#include "screens/save_gate.h"
#include "screens/screen_steps.h"
#include "screens/use_strip.h"
#include "screens/widgets/bring_back.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"
#include "session/rights.h"

namespace kv {

namespace {

constexpr double kMigrationDays = 7;
constexpr const char* kAuthorizationCheck = "Authorization Check";
/// The list of the bulk tool.
constexpr const char* kMigrationCheck = "Migration Check";

Value TextOf(std::string_view text) {
    return Value(std::string(text));
}

/// The keys of what hangs from an authorization; without one their tips say so.
struct KeyTip {
    const char* key;
    const char* word;
    const char* tip;
    const char* icon;
};
constexpr std::array<KeyTip, 3> kAuthorizationKeys = {
    {{"assign", "Assign", "Create an assignment for this authorization.", "assign"},
     {"tasks", "Tasks", "Add task that need to be performed for this authorization.", "check"},
     {"history", "History", "Show the history of changes made to this authorization.", "history"}}};

ToolKey Extra(const KeyTip& key) {
    return {QString::fromLatin1(key.key),
            QString::fromLatin1(key.word),
            QString::fromLatin1(key.tip),
            QString::fromLatin1(key.icon),
            {}};
}

template <std::size_t N>
QStringList ListOf(const std::array<std::string_view, N>& items) {
    QStringList list;
    for (const std::string_view item : items) {
        list << ToQt(item);
    }
    return list;
}

template <std::size_t N>
PlainCombo* MakeChoice(const char* name, const QString& caption, const std::array<std::string_view, N>& items,
                       int characters, FieldForm* form) {
    auto* combo =
        new PlainCombo(QString::fromLatin1(name), caption, PlainCombo::Style::List, characters, form);
    combo->SetItems(ListOf(items));
    return combo;
}

}  // namespace

FRMauthorization::FRMauthorization(Session& session, QWidget* parent)
    : SectionScreen(parent),
      Dbauthor([this](const EngineError& error) { ReportEngineError(session_, error); }),
      session_(session) {
    setObjectName(QStringLiteral("FRMauthorization"));
    setWindowTitle(QStringLiteral("Authorizations"));
    Ask = [this](long authorization) { return FRMimportant(authorization, this).Answer(); };
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    MakeToolbar();
    auto* boxes = new QWidget(this);
    auto* left = new FieldForm(boxes);
    auto* right = new FieldForm(boxes);
    MakePayer(left->AddGroup(QStringLiteral("FRAMEpayer"), tr("Payer and Call Type")));
    MakeDates(left->AddGroup(QStringLiteral("FRAMEdates"), tr("Dates and State")));
    left->AddStretch();
    MakeHours(right->AddGroup(QStringLiteral("FRAMEhours"), tr("Hours")));
    MakeCobilling(right->AddGroup(QStringLiteral("Frame2"), tr("Co-Billing")));
    right->AddStretch();
    TXTauthmemo =
        new MemoBox(QStringLiteral("TXTauthmemo"), QStringLiteral("Authorization Notes"), 60, 3, boxes);
    auto* below = new FieldForm(boxes);
    below->AddField(*TXTauthmemo);
    auto* columns = new QGridLayout(boxes);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(left, 0, 0);
    columns->addWidget(right, 0, 1);
    columns->addWidget(below, 1, 0, 1, 2);
    columns->setColumnStretch(0, 1);
    columns->setColumnStretch(1, 1);

    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, 0, theme::kUnit, theme::kHalfUnit);
    lower->setSpacing(theme::kHalfUnit);
    lower->addWidget(MakeMigration());
    lower->addWidget(MakeList(), 1);
    lower->addWidget(boxes);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar3);
    all->addLayout(lower, 1);

    theme::KeepReadable(*boxes);
    Dbauthor.SetKeyField("sequence");
    Dbauthor.Bind(*txtCODE, "Payer_Auth_ID");
    Dbauthor.Bind(*TDBDate2, "from_date");
    Dbauthor.Bind(*TDBDate3, "to_DATE");
    Dbauthor.Bind(*NUMhrs, "HRS");
    Dbauthor.Bind(*TXTweek, "WEEKORMONTH");
    Dbauthor.Bind(*CMBtype, "EMP_Type");
    Dbauthor.Bind(*CMByes, "Live_in");
    Dbauthor.Bind(*NUMmin_hours, "Min_Sch_Hours");
    Dbauthor.Bind(*NUMmax_hours, "Max_Sch_Hours");
    Dbauthor.Bind(*TXTauthmemo, "NOTES");
    for (BoundControl* box :
         std::initializer_list<BoundControl*>{cmbPayor, cmbVisType, CMBAuthStatus, cmbHourCode, CMBcoBilling,
                                              NUMcoBilling, CMBwhen_Cobilling}) {
        Dbauthor.Accompany(*box);
    }
    const std::initializer_list<std::pair<const char*, QString>> shownBeside = {
        {"bill_code", tr("Payer")},         {"visit_type", tr("Call Type")},
        {"status_code", tr("Status")},      {"sch_type", tr("Hour Code")},
        {"SHIFT_CODE", tr("Shift")},        {"cobilling_type", tr("Co-Billing")},
        {"cobilling_amount", tr("Amount")}, {"COBilling_HowOften", tr("Period")}};
    for (const auto& [field, name] : shownBeside) {
        Dbauthor.Watch(field, name);
    }
    Connect();
    ApplyGridColors(this, session.COLOR);
    Reported(session_, [this] {
        QStringList names;
        QStringList codes;
        for (const PayerItem& payer : LoadPayers(session_)) {
            names << ToQt(payer.name);
            codes << QString::number(payer.billCode);
        }
        cmbPayor->SetItems(names, codes);
    });
}

void FRMauthorization::MakeToolbar() {
    Toolbar3 = new ToolBar(
        QStringLiteral("Toolbar3"),
        {StandardKey(QStringLiteral("edit"), tr("Change this authorization")),
         StandardKey(QStringLiteral("first")), StandardKey(QStringLiteral("previous")),
         StandardKey(QStringLiteral("next")), StandardKey(QStringLiteral("last")), ToolSeparator(),
         StandardKey(QStringLiteral("new"), tr("Add an authorization")),
         StandardKey(QStringLiteral("delete")), StandardKey(QStringLiteral("save")),
         StandardKey(QStringLiteral("discard")), ToolSeparator(), Extra(kAuthorizationKeys[0]),
         Extra(kAuthorizationKeys[1]), Extra(kAuthorizationKeys[2]), StandardKey(QStringLiteral("help"))},
        this);
    keys_ = StepsOf({[this](ListMove move) { Move(move); }, [this] { NewKey(); }, [this] { DeleteKey(); },
                     [this] { SaveKey(); }, [this] { DiscardKey(); }});
    keys_.insert({
        {QStringLiteral("edit"), [this] { EditKey(); }},
        {QStringLiteral("assign"), [this] { AssignKey(); }},
        {QStringLiteral("tasks"), [this] { TasksKey(); }},
        {QStringLiteral("history"), [this] { HistoryKey(); }},
        {QStringLiteral("help"), [this] { StartHelp(session_, "client~5"); }},
    });
}

QWidget* FRMauthorization::MakeList() {
    auto* area = new QWidget(this);
    FGauth = new Grid(QStringLiteral("FGauth"),
                      {Patterned("To Date", 0, "MMM/DD/YY"),
                       Patterned("From Date", 0, "MMM/DD/YY"),
                       {QStringLiteral("Status"), 10},
                       {QStringLiteral("Call Description")}},
                      area);
    FGauth->setAccessibleName(tr("Authorizations"));
    FGauth->SetEmptyText(tr("This client has no authorization"));
    FGauth->setMinimumHeight(11 * theme::kUnit);
    CHKActive_auth = new QCheckBox(QStringLiteral("&Only Active"), area);
    CHKActive_auth->setObjectName(QStringLiteral("CHKActive_auth"));
    Use = new UseStrip(area);
    auto* strip = new QHBoxLayout;
    strip->addWidget(Use, 1);
    strip->addWidget(CHKActive_auth, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(FGauth, 1);
    layout->addLayout(strip);
    return area;
}

QWidget* FRMauthorization::MakeMigration() {
    Migration = new QWidget(this);
    auto* form = new FieldForm(Migration);
    TDBAbove = new DateBox(QStringLiteral("TDBAbove"), tr("Not active, ending after:"), form);
    TDBMigration = new DateBox(QStringLiteral("TDBMigration"), tr("New 'To Date':"), form);
    CMDmigration = new QPushButton(QStringLiteral("Update All  'To Date'  To:"), form);
    CMDmigration->setObjectName(QStringLiteral("CMDmigration"));
    TDBAbove->setToolTip(
        tr("The list shows the authorizations that are not Active and end after this date. Empty it to see "
           "all."));
    form->AddLine({TDBAbove, TDBMigration});
    form->AddBehind(CMDmigration);
    auto* layout = new QHBoxLayout(Migration);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(form);
    layout->addStretch(1);
    return Migration;
}

void FRMauthorization::MakePayer(FieldForm* form) {
    cmbPayor = new PlainCombo(QStringLiteral("cmbPayor"), tr("&Payer:"), PlainCombo::Style::List, 30, form);
    txtCODE = new TextBox(QStringLiteral("txtCODE"), tr("Authorization #:"), 20, form);
    cmbVisType = new PlainCombo(QStringLiteral("cmbVisType"), tr("Call T&ype:"), PlainCombo::Style::Editable,
                                30, form);
    txtVisName = new TextBox(QStringLiteral("txtVisName"), tr("Code:"), 8, form);
    txtVisName->setReadOnly(true);
    txtVisName->setFocusPolicy(Qt::NoFocus);
    cmbHourCode = MakeChoice("cmbHourCode", tr("Hour Code:"), kHourCodes, 10, form);
    for (BoundControl* control : std::initializer_list<BoundControl*>{cmbPayor, cmbVisType}) {
        control->SetRequired(true);
    }
    form->AddField(*cmbPayor);
    form->AddField(*txtCODE);
    form->AddField(*cmbVisType);
    form->AddLine({txtVisName, cmbHourCode});
}

void FRMauthorization::MakeDates(FieldForm* form) {
    TDBDate2 = new DateBox(QStringLiteral("TDBDate2"), tr("&From:"), form);
    TDBDate3 = new DateBox(QStringLiteral("TDBDate3"), tr("T&o:"), form);
    IMGtoday = MakeSmallButton(QStringLiteral("IMGtoday"), QStringLiteral("paste"),
                               QStringLiteral("Paste todays date into the 'To Date' field"), form);
    CMBAuthStatus = MakeChoice("CMBAuthStatus", tr("Stat&us:"), kAuthorizationStates, 12, form);
    CMBAuthStatus->SetText(ToQt(kAuthorizationStates.front()));
    TDBDate2->SetRequired(true);
    TDBDate3->SetRequired(true);
    form->AddField(*TDBDate2);
    form->AddField(*TDBDate3);
    form->AddBehind(IMGtoday);
    form->AddField(*CMBAuthStatus);
}

void FRMauthorization::MakeHours(FieldForm* form) {
    NUMhrs = new NumberBox(QStringLiteral("NUMhrs"), tr("&Hours:"), "##,##0.00", 8, form);
    TXTweek = new TextBox(QStringLiteral("TXTweek"), tr("per Week or Month:"), 2, form);
    TXTweek->SetUpperCase(true);
    TXTweek->setMaxLength(1);
    TXTweek->setToolTip(tr("W for hours in a week, M for hours in a month"));
    NUMmin_hours = new NumberBox(QStringLiteral("NUMmin_hours"), tr("Schedule, least:"), "##0.00", 8, form);
    NUMmin_hours->setToolTip(QStringLiteral(
        "What is the minimal and maximum number of hours that a schedule can be for this authorization."));
    NUMmax_hours = new NumberBox(QStringLiteral("NUMmax_hours"), tr("most:"), "##0.00", 8, form);
    NUMmax_hours->setToolTip(QStringLiteral("Maximum hours schedules should be. Zero Hours = Disabled"));
    for (NumberBox* box : {NUMhrs, NUMmin_hours, NUMmax_hours}) {
        box->SetLimits(0, std::nullopt);
    }
    CMBtype = MakeChoice("CMBtype", tr("Caregivers:"), kCaregiverTypes, 10, form);
    constexpr std::array<std::string_view, 2> kYesNo = {"Y", "N"};
    CMByes = MakeChoice("CMByes", tr("Live in:"), kYesNo, 3, form);
    CMByes->setToolTip(QStringLiteral("If Y, we will use the live-in pay and bill rates"));
    std::vector<QWidget*> shifts;
    for (int i = 0; i < 3; ++i) {
        Optshift[i] = new QRadioButton(QString::number(i + 1), form);
        Optshift[i]->setObjectName(IndexedName(QStringLiteral("Optshift"), i));
        Optshift[i]->setAccessibleName(tr("Shift %1").arg(i + 1));
        shifts.push_back(Optshift[i]);
    }
    form->AddLine({NUMhrs, TXTweek});
    form->AddLine({NUMmin_hours, NUMmax_hours});
    form->AddLine({CMBtype, CMByes});
    form->AddWidgets(tr("Shift:"), shifts);
}

void FRMauthorization::MakeCobilling(FieldForm* form) {
    Frame2 = form->GroupBox();
    CMBcoBilling =
        new PlainCombo(QStringLiteral("CMBcoBilling"), QString(), PlainCombo::Style::List, 42, form);
    QStringList texts;
    QStringList keys;
    for (const CobillingType& type : CobillingTypes()) {
        keys << QString::number(texts.size());
        texts << ToQt(type.text);
    }
    CMBcoBilling->SetItems(texts, keys);
    CMBcoBilling->setAccessibleName(tr("How client and payer share the bill"));
    NUMcoBilling = new NumberBox(QStringLiteral("NUMcoBilling"), tr("Amount:"), "##,##0.00", 10, form);
    CMBwhen_Cobilling = MakeChoice("CMBwhen_Cobilling", QString(), kCobillingPeriods, 10, form);
    CMBwhen_Cobilling->setAccessibleName(tr("In which time"));
    CMDcalc_Percentage = new QPushButton(tr("Calc&ulate"), form);
    CMDcalc_Percentage->setObjectName(QStringLiteral("CMDcalc_Percentage"));
    CMDcalc_Percentage->setToolTip(
        QStringLiteral("Calculate the percentage, based on maximum bill amount, and payers portion."));
    form->AddWide(CMBcoBilling);
    form->AddLine({NUMcoBilling, CMBwhen_Cobilling});
    form->AddBehind(CMDcalc_Percentage);
}

void FRMauthorization::Connect() {
    connect(Toolbar3, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
    connect(FGauth, &Grid::rowPicked, this, [this](int row) {
        Reported(session_, [this, row] {
            Dbauthor.MoveTo(row);
            ShowAuthorizationRow();
        });
    });
    connect(CHKActive_auth, &QCheckBox::clicked, this, [this] {
        Reported(session_, [this] {
            RequeryAuthorizations();
            LoadAuthorizationScreen();
        });
    });
    connect(cmbPayor, &QComboBox::activated, this, [this] { Reported(session_, [this] { ShowPayer(); }); });
    connect(cmbVisType, &QComboBox::activated, this,
            [this] { Reported(session_, [this] { PickCallType(); }); });
    cmbVisType->SetRule([this] {
        bool valid = false;
        Reported(session_, [&] { valid = LeaveCallType(); });
        return valid;
    });
    // What is typed over a refused call type is judged again by the save itself.
    connect(cmbVisType->Notifier(), &ControlNotifier::changed, this, [this] {
        if (IsWriting() && !validCallType_) {
            validCallType_ = true;
            Toolbar3->EnableKey(QStringLiteral("save"), true);
        }
    });
    connect(CMBcoBilling, &QComboBox::activated, this, [this](int type) {
        SetCoBillingInput(type);
        // What was an amount of dollars may be no percentage.
        NUMcoBilling->SetDataChanged(true);
        NUMcoBilling->Check();
    });
    AddBringBackKey(this, Dbauthor);
    connect(&Dbauthor, &BoundSource::typedSetAside, this, [this] { TellStatus(this, tr(kBringBackHint)); });
    connect(&Dbauthor, &BoundSource::rowFollowed, this,
            [this](const std::vector<std::string>& fields) { TellFollowed(this, Dbauthor, fields); });
    connect(CMBAuthStatus, &QComboBox::activated, this, [this] {
        if (IsWriting()) {
            RemindOfEndDate(session_, FromQt(CMBAuthStatus->Text()), TDBDate3->Value());
        }
    });
    connect(IMGtoday, &QToolButton::clicked, this, [this] { TDBDate3->SetDate(session_.clock.Today()); });
    connect(CMDcalc_Percentage, &QPushButton::clicked, this, [this] { CalcKey(); });
    connect(CMDmigration, &QPushButton::clicked, this,
            [this] { Reported(session_, [this] { MigrationKey(); }); });
    connect(TDBAbove->Notifier(), &ControlNotifier::changed, this, [this] {
        Reported(session_, [this] {
            RequeryAuthorizations();
            LoadAuthorizationScreen();
        });
    });
}

void FRMauthorization::CheckRights() {
    mayAdd_ = CheckScreenAccess(session_, "AUTA");
    mayEdit_ = CheckScreenAccess(session_, "AUTE");
    mayDelete_ = CheckScreenAccess(session_, "AUTD");
    mayAssign_ = CheckScreenAccess(session_, "ASSV");
}

void FRMauthorization::SetHiddenID(const std::string& id, ClientForm& mainScreen) {
    form_ = &mainScreen;
    if (id == client_ && IsWriting()) {
        return;
    }
    if (id != client_) {
        sequence_ = 0;
        CheckRights();
    }
    const bool check = mainScreen.Filter() == kAuthorizationCheck;
    if (check && (id != client_ || Migration->isHidden())) {
        const QSignalBlocker quiet(TDBAbove->Notifier());
        TDBAbove->SetDate(session_.clock.Today().AddDays(kMigrationDays));
    }
    Migration->setVisible(check);
    client_ = id;
    RequeryAuthorizations();
    LoadAuthorizationScreen();
}

void FRMauthorization::RequeryAuthorizations() {
    AuthorizationLimit limit = {client_, CHKActive_auth->isChecked(), form_->Filter(), {}};
    const bool check = limit.filter == kAuthorizationCheck;
    CHKActive_auth->setVisible(!check);
    // The bulk tool works on what the list shows. An empty date shows the client's authorizations as ever.
    if (check && TDBAbove->DateValue()) {
        limit.filter = kMigrationCheck;
        limit.above = *TDBAbove->DateValue();
    }
    Dbauthor.SetRecordset(OpenAuthorizations(session_, limit));
}

void FRMauthorization::LoadAuthorizationScreen() {
    if (IsWriting()) {
        return;
    }
    if (sequence_ != 0) {
        MoveToAuthorization(Dbauthor.Rows(), sequence_);
    } else {
        MoveToAuthorizationInForce(session_, Dbauthor.Rows());
    }
    Dbauthor.ShowRow();
    FillList();
    ShowAuthorizationRow();
    SetWriting(false);
}

void FRMauthorization::FillList() {
    std::vector<GridRow> rows;
    Recordset all = Dbauthor.Rows().Clone();
    if (all.RecordCount() > 0) {
        all.MoveFirst();
    }
    for (; !all.Eof(); all.MoveNext()) {
        GridRow row;
        const std::string_view state = ItemOfLetter(kAuthorizationStates, all.Text("status_code"));
        row.cells = {all.Get("to_DATE"), all.Get("from_date"), Value(std::string(state)),
                     all.Get("vis_desc")};
        rows.push_back(std::move(row));
    }
    FGauth->SetRows(std::move(rows));
}

void FRMauthorization::ShowAuthorizationRow() {
    if (!HasRows()) {
        sequence_ = 0;
        for (PlainCombo* combo : {cmbPayor, cmbHourCode, CMBAuthStatus}) {
            combo->SetValue(Value(""));
        }
        cmbVisType->SetItems(QStringList());
        cmbVisType->SetValue(Value(""));
        txtVisName->setText({});
        Frame2->hide();
        Use->ShowUse(std::nullopt);
        return;
    }
    const Recordset& row = Dbauthor.Rows();
    sequence_ = static_cast<long>(row.Get("sequence").ToInteger());
    FGauth->SetCurrentRow(static_cast<int>(Dbauthor.Position()));
    cmbPayor->SetKeyed(ToQt(row.Text("bill_name")),
                       QString::number(row.Get("bill_code").NumberOr(0), 'f', 0));
    ShowPayer();
    const std::string code = row.Text("visit_type");
    txtVisName->setText(ToQt(code));
    cmbVisType->SetValue(Value(code + " - " + row.Text("vis_desc")));
    cmbHourCode->SetValue(TextOf(ItemOfLetter(kHourCodes, row.Text("sch_type"))));
    CMBAuthStatus->SetValue(TextOf(ItemOfLetter(kAuthorizationStates, row.Text("status_code"))));
    ShowShift(row.Text("SHIFT_CODE"));
    const auto type = static_cast<int>(row.Get("cobilling_type").NumberOr(0));
    CMBcoBilling->SetValue(
        TextOf(CobillingTypes().at(static_cast<std::size_t>(std::clamp(type, 0, 6))).text));
    SetCoBillingInput(type);
    NUMcoBilling->SetValue(Value(row.Get("cobilling_amount").NumberOr(0)));
    // The row's own, and none where it has none: not that of the row before.
    const std::string often = row.Text("COBilling_HowOften");
    CMBwhen_Cobilling->SetValue(Value(""));
    for (const std::string_view period : kCobillingPeriods) {
        if (PeriodLetter(period) == often) {
            CMBwhen_Cobilling->SetValue(TextOf(period));
        }
    }
    Use->ShowUse(UseOfAuthorization(session_, sequence_));
}

void FRMauthorization::ShowShift(const std::string& shift) {
    for (int i = 0; i < 3; ++i) {
        Optshift[i]->setAutoExclusive(false);
        Optshift[i]->setChecked(shift == std::to_string(i + 1));
        Optshift[i]->setAutoExclusive(true);
    }
}

void FRMauthorization::SetCoBillingInput(int type) {
    const CobillingType& kind = CobillingTypes().at(static_cast<std::size_t>(std::clamp(type, 0, 6)));
    const bool hasAmount = !kind.caption.empty();
    NUMcoBilling->SetShown(hasAmount);
    CMBwhen_Cobilling->SetShown(kind.perPeriod);
    CMDcalc_Percentage->setVisible(kind.percentage);
    if (hasAmount) {
        NUMcoBilling->SetCaption(ToQt(kind.caption));
        NUMcoBilling->SetDisplayFormat(std::string(kind.format));
        NUMcoBilling->SetLimits(0, kind.largest);
    }
}

PayerItem FRMauthorization::Payer() const {
    PayerItem payer = {FromQt(cmbPayor->Text()), cmbPayor->Key().toLong()};
    // A payer who is in no list any more is the row's own as long as no other one is picked.
    if (payer.billCode == 0 && HasRows() && !Dbauthor.IsAdding() &&
        payer.name == Dbauthor.Rows().Text("bill_name")) {
        payer.billCode = static_cast<long>(Dbauthor.Rows().Get("bill_code").NumberOr(0));
    }
    return payer;
}

void FRMauthorization::ShowPayer() {
    const PayerItem payer = Payer();
    if (Trim(payer.name).empty()) {
        return;
    }
    const bool client = payer.name == kClientPays;
    txtCODE->SetShown(!client);
    Frame2->setVisible(!client);
    FillCallTypes(payer);
}

void FRMauthorization::FillCallTypes(const PayerItem& payer) {
    QStringList texts;
    QStringList keys;
    for (const LookupItem& type : CallTypesOfPayer(session_, payer, client_)) {
        texts << ToQt(type.description);
        keys << ToQt(type.code);
    }
    cmbVisType->SetItems(texts, keys);
}

void FRMauthorization::PickCallType() {
    const CallType type = CallTypeOfCode(session_, FromQt(cmbVisType->Key()));
    txtVisName->setText(ToQt(type.code));
    if (!type.code.empty()) {
        cmbHourCode->SetText(ToQt(type.hourCode));
    }
    validCallType_ = !type.code.empty();
    SetWriting(IsWriting());
}

bool FRMauthorization::LeaveCallType() {
    const std::string text = FromQt(cmbVisType->Text());
    if (!IsWriting() || Trim(text).empty()) {
        return true;
    }
    // Two call types may bear one description: the one that was picked stays.
    const CallType picked = CallTypeOfCode(session_, FromQt(cmbVisType->Key()));
    const CallType type = picked.code.empty() ? CallTypeOfDescription(session_, text) : picked;
    txtVisName->setText(ToQt(type.code));
    validCallType_ = !type.code.empty();
    if (!validCallType_) {
        session_.ShowMessageWindow("Invalid Call Description.  Please try again");
    }
    SetWriting(true);
    return validCallType_;
}

void FRMauthorization::SetWriting(bool writing) {
    for (BoundControl* control : BoundControlsOf(this)) {
        if (control->Widget() != TDBAbove && control->Widget() != TDBMigration) {
            control->SetEnabled(writing);
        }
    }
    for (QWidget* widget : std::initializer_list<QWidget*>{Optshift[0], Optshift[1], Optshift[2], IMGtoday,
                                                           CMDcalc_Percentage}) {
        widget->setEnabled(writing);
    }
    FGauth->setEnabled(!writing);
    CHKActive_auth->setEnabled(!writing);
    CMDmigration->setEnabled(!writing && mayEdit_ && HasRows() && TDBAbove->DateValue());
    const bool rows = HasRows();
    const auto enable = [this](const char* key, bool on) {
        Toolbar3->EnableKey(QString::fromLatin1(key), on);
    };
    for (const char* key : {"first", "previous", "next", "last", "tasks", "history"}) {
        enable(key, !writing && rows);
    }
    enable("assign", !writing && rows && mayAssign_);
    for (const KeyTip& key : kAuthorizationKeys) {
        Toolbar3->SetTip(QString::fromLatin1(key.key),
                         QString::fromLatin1(rows ? key.tip : "You must add an authorization first"));
    }
    enable("edit", !writing && rows && mayEdit_);
    enable("new", !writing && mayAdd_);
    enable("delete", !writing && rows && mayDelete_);
    enable("save", writing && validCallType_);
    enable("discard", writing);
}

AuthorizationEntry FRMauthorization::Entry() const {
    AuthorizationEntry entry;
    const PayerItem payer = Payer();
    entry.payer = payer.name;
    entry.billCode = payer.billCode;
    entry.visitType = FromQt(txtVisName->Text());
    entry.visitDescription = FromQt(cmbVisType->Text());
    entry.state = FromQt(CMBAuthStatus->Text());
    entry.hourCode = FromQt(cmbHourCode->Text());
    for (int i = 0; i < 3; ++i) {
        if (Optshift[i]->isChecked()) {
            entry.shift = std::to_string(i + 1);
        }
    }
    entry.cobillingType = CMBcoBilling->Key().toInt();
    entry.cobillingAmount = NUMcoBilling->Number();
    entry.cobillingPeriod = FromQt(CMBwhen_Cobilling->Text());
    return entry;
}

void FRMauthorization::NewKey() {
    Dbauthor.AddRow();
    FillNewAuthorization(session_, Dbauthor.Rows());
    // The defaults are loaded: what is changed in them counts.
    Dbauthor.ShowRow();
    cmbPayor->SetValue(Value(""));
    cmbVisType->SetItems(QStringList());
    cmbVisType->SetValue(Value(""));
    txtVisName->setText({});
    cmbHourCode->SetValue(TextOf(kHourCodes.front()));
    CMBAuthStatus->SetValue(TextOf(kAuthorizationStates.front()));
    CMBcoBilling->SetValue(TextOf(CobillingTypes().front().text));
    SetCoBillingInput(0);
    NUMcoBilling->SetValue(Value(0));
    CMBwhen_Cobilling->SetValue(TextOf(kCobillingPeriods[1]));
    ShowShift({});
    Frame2->hide();
    validCallType_ = true;
    Use->ShowUse(std::nullopt);
    FGauth->SetCurrentRow(-1);
    SetWriting(true);
    TDBDate2->setFocus();
}

void FRMauthorization::EditKey() {
    Dbauthor.BeginEdit();
    ShowAuthorizationRow();  // what another seat has written meanwhile
    // While it is written the box holds the description alone. The stored code counts until another one is
    // picked or typed: the lists of imported data may word it otherwise.
    cmbVisType->SetValue(Value(Dbauthor.Rows().Text("vis_desc")));
    validCallType_ = true;
    SetWriting(true);
    TDBDate2->setFocus();
}

bool FRMauthorization::SaveKey() {
    if (!PassesGate(session_, this) || !validCallType_) {
        return false;
    }
    const Hourglass hourglass(session_.progress);
    Dbauthor.WriteRow();
    AuthorizationSaved saved;
    try {
        saved = SaveAuthorization(session_, Dbauthor.Rows(), Entry(), client_, *form_, Ask);
    } catch (const EngineError&) {
        if (!IsWriting()) {
            // Another seat took the row meanwhile: it is shown as it stands there.
            Dbauthor.Restore();
            RequeryAuthorizations();
            LoadAuthorizationScreen();
        }
        throw;
    }
    if (saved.givenUp) {
        DiscardKey();
    }
    if (!saved.saved) {
        return false;
    }
    sequence_ = saved.sequence;
    RequeryAuthorizations();
    LoadAuthorizationScreen();
    FGauth->setFocus();
    emit clientChanged();
    if (!saved.removed.empty()) {
        Preview(RemovedVisitsReport(saved.removed, session_.clock.Today()));
    }
    return true;
}

void FRMauthorization::DiscardKey() {
    Dbauthor.Restore();
    LoadAuthorizationScreen();
    // The box that had the focus is out of use, and keys would reach nobody.
    FGauth->setFocus();
}

void FRMauthorization::DeleteKey() {
    if (Dbauthor.FollowRow()) {
        LoadAuthorizationScreen();
        session_.ShowMessageWindow(kChangedBeforeDelete);
        return;
    }
    if (DeleteAuthorization(session_, Dbauthor.Rows())) {
        sequence_ = HasRows() ? static_cast<long>(Dbauthor.Rows().Get("sequence").ToInteger()) : 0;
        LoadAuthorizationScreen();
    }
}

void FRMauthorization::Move(ListMove move) {
    const bool inside = move == ListMove::First      ? Dbauthor.MoveFirst()
                        : move == ListMove::Last     ? Dbauthor.MoveLast()
                        : move == ListMove::Previous ? Dbauthor.MovePrevious()
                                                     : Dbauthor.MoveNext();
    if (!HasRows()) {
        session_.ShowMessageWindow("There are no records to move to.");
        return;
    }
    if (!inside) {
        session_.ShowMessageWindow(move == ListMove::Next
                                       ? "This is the Last Authorization for this Client"
                                       : "This is the first Authorization for this Client");
    }
    ShowAuthorizationRow();
}

void FRMauthorization::HistoryKey() {
    if (!HasRows()) {
        session_.ShowMessageWindow("You must add an authorization first");
        return;
    }
    FRMedit history(session_, this);
    history.ShowRecord(QStringLiteral("Authorization ID:"), "AUT", std::to_string(sequence_),
                       RecordHistoryStatement("AUT", sequence_));
    history.exec();
}

void FRMauthorization::AssignKey() {
    if (session_.OffLine) {
        session_.ShowMessageWindow("You may not do any work on Assignments, while 'On the Road'");
        return;
    }
    if (const auto parentRow = ParentOf(session_, sequence_)) {
        FRmassign(session_, *parentRow, this).exec();
        Use->ShowUse(UseOfAuthorization(session_, sequence_));
    }
}

void FRMauthorization::TasksKey() {
    FRMTask(session_, sequence_, this).exec();
}

void FRMauthorization::CalcKey() {
    FRMcalc_percent calculator(session_, this);
    if (calculator.exec() == QDialog::Accepted) {
        NUMcoBilling->SetNumber(calculator.Percentage());
    }
}

void FRMauthorization::MigrationKey() {
    if (!HasRows()) {
        return;
    }
    if (!TDBMigration->Check() || !TDBMigration->IsFilled()) {
        session_.ShowMessageWindow("Please fill in the new 'To Date'.");
        TDBMigration->setFocus();
        return;
    }
    const Hourglass hourglass(session_.progress);
    RequeryAuthorizations();
    if (!MoveAllEnds(session_, Dbauthor.Rows(), *TDBMigration->DateValue(),
                     [this] { UpdateClientStatus(session_, *form_, client_); })) {
        return;
    }
    RequeryAuthorizations();
    LoadAuthorizationScreen();
    emit clientChanged();
}

bool FRMauthorization::MayLeave() {
    if (!IsWriting()) {
        return true;
    }
    bool saved = true;
    Reported(session_, [this, &saved] {
        saved = false;
        const SaveAnswer answer = session_.dialogs.AskToSave(kUnsavedPrompt);
        if (answer == SaveAnswer::Save) {
            saved = SaveKey();
        } else if (answer == SaveAnswer::Discard) {
            DiscardKey();
            saved = true;
        }
    });
    return saved;
}

}  // namespace kv
