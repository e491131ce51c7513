#include "screens/FRMdisEmp.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "base/format.h"
#include "base/text.h"
#include "clients/pick_query.h"
#include "screens/frmClient_controls.h"
#include "screens/frmPrint.h"
#include "screens/pair_grid.h"
#include "screens/pick_screen.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/quarter_chart.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

QuarterKind KindOf(Occupied by) {
    switch (by) {
        case Occupied::Unavailable:
            return QuarterKind::Unavailable;
        case Occupied::Assignment:
            return QuarterKind::Assignment;
        case Occupied::Visit:
            return QuarterKind::Busy;
        case Occupied::Nothing:
            break;
    }
    return QuarterKind::Free;
}

}  // namespace

FRMdisEmp::FRMdisEmp(Session& session, const std::string& emp_id, Date from, int days, QWidget* parent)
    : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("FRMdisEmp"));
    setWindowTitle(QStringLiteral("Display Caregiver's Schedules"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Pick = [this] { return PickEmployee(session_, this); };
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    Toolbar1 = new ToolBar(QStringLiteral("Toolbar1"),
                           {StandardKey(QStringLiteral("exit")), ToolSeparator(),
                            ToolKey{QStringLiteral("display"), tr("Display"), tr("Show the days"),
                                    QStringLiteral("refresh"), QKeySequence(QStringLiteral("F5"))},
                            StandardKey(QStringLiteral("print"), tr("Print these days"))},
                           this);
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("display"), [this] { RedoDisplay(); }},
        {QStringLiteral("print"), [this] { Preview(AvailabilityReport(shown_, session_.clock.Today())); }},
    };
    FG2 = new QuarterChart(QStringLiteral("FG2"), {{QStringLiteral("DOW"), 8}, {QStringLiteral("Date"), 12}},
                           this);
    FG2->setAccessibleName(tr("The caregiver's days"));
    FG2->SetEmptyText(tr("Choose a caregiver"));
    FG2->SetQuarterCursor(true);
    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    lower->setSpacing(theme::kUnit);
    auto* upper = new QHBoxLayout;
    upper->setSpacing(theme::kUnit);
    upper->addWidget(MakeCriteria());
    upper->addWidget(MakePeople(), 1);
    lower->addLayout(upper);
    lower->addWidget(FG2, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar1);
    all->addLayout(lower, 1);
    resize(150 * theme::kUnit, 86 * theme::kUnit);
    DTending->SetDate(from);
    TDBNumber1->SetNumber(days);
    Connect();
    ApplyGridColors(this, session.COLOR);
    TXTempid->EnterValue(Value(emp_id));
    Reported(session_, [this] {
        ShowCaregiver();
        if (!checkedId_.empty()) {
            RedoDisplay();
        }
    });
}

QWidget* FRMdisEmp::MakeCriteria() {
    auto* area = new QWidget(this);
    auto* form = new FieldForm(area);
    FieldForm* group = form->AddGroup(QStringLiteral("FRAMEdays"), tr("Days"));
    TXTempid = new TextBox(QStringLiteral("TXTempid"), tr("Caregiver &ID:"), 8, group);
    Command1 = MakeSmallButton(QStringLiteral("Command1"), QStringLiteral("find_person"),
                               tr("Show the Caregiver search screen."), group);
    DTending = new DateBox(QStringLiteral("DTending"), tr("&From:"), group);
    TDBNumber1 = new NumberBox(QStringLiteral("TDBNumber1"), QStringLiteral("Display for the &following"),
                               "#0", 5, group);
    group->AddField(*TXTempid);
    group->AddBehind(Command1);
    group->AddField(*DTending);
    group->AddField(*TDBNumber1);
    group->AddBehind(new QLabel(tr("days"), group));
    auto* legend = new QLabel(tr("Striped: unavailable.  \"Assignment\": its visit is not made yet.\n"
                                 "A name: a visit. Click on it for its details.\n"
                                 "A question mark: not all of the day is shown; its tip tells what."),
                              group);
    legend->setForegroundRole(QPalette::PlaceholderText);
    group->AddWide(legend);
    form->AddStretch();
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(form);
    return area;
}

QWidget* FRMdisEmp::MakePeople() {
    auto* area = new QWidget(this);
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](Grid*& grid, const char* name, const QString& words) {
        auto* box = new QGroupBox(words, area);
        grid = MakePairs(name, words, box);
        auto* inner = new QVBoxLayout(box);
        inner->setContentsMargins(theme::kHalfUnit, theme::kHalfUnit, theme::kHalfUnit, theme::kHalfUnit);
        inner->addWidget(grid);
        layout->addWidget(box, 1);
    };
    add(fgEMP, "fgEMP", tr("Caregiver"));
    add(FGsch, "FGsch", tr("Schedule"));
    add(FGcli, "FGcli", tr("Client"));
    constexpr int kLines = 14;
    area->setFixedHeight(kLines * fontMetrics().height());
    return area;
}

void FRMdisEmp::Connect() {
    connect(Toolbar1, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
    connect(TXTempid, &QLineEdit::textChanged, this, [this] { ClearOthersDays(); });
    connect(TXTempid, &QLineEdit::editingFinished, this,
            [this] { Reported(session_, [this] { ShowCaregiver(); }); });
    connect(Command1, &QToolButton::clicked, this, [this] { Reported(session_, [this] { PickKey(); }); });
    connect(TDBNumber1, &QLineEdit::editingFinished, this, [this] {
        if (TDBNumber1->Number() < 1) {
            TDBNumber1->SetNumber(1);
        }
    });
    connect(FG2, &QuarterChart::quarterPicked, this, [this](int row, int quarter) {
        Reported(session_, [this, row, quarter] { ShowQuarter(row, quarter); });
    });
}

/// The days of one caregiver never stand beside the id of another.
void FRMdisEmp::ClearOthersDays() {
    const std::string id = Trim(FromQt(TXTempid->Text()));
    if (EqualsNoCase(id, shown_.emp_id)) {
        return;
    }
    shown_ = {};
    FG2->SetRows({}, {});
    FG2->SetEmptyText(id.empty() ? tr("Choose a caregiver")
                                 : tr("Press Display (F5) to show the days of this caregiver"));
    for (Grid* grid : {fgEMP, FGsch, FGcli}) {
        grid->Clear();
    }
    Toolbar1->EnableKey(QStringLiteral("print"), false);
}

void FRMdisEmp::ShowCaregiver() {
    const std::string id = Trim(FromQt(TXTempid->Text()));
    const std::vector<LabelledText> rows =
        id.empty() ? std::vector<LabelledText>() : AvailabilityCaregiver(session_, id);
    checkedId_ = rows.empty() ? std::string() : rows.front().second;
    if (rows.empty() && !id.empty()) {
        FG2->SetEmptyText(tr("There is no caregiver with this id"));
    }
    ShowPairs(*fgEMP, rows);
    Toolbar1->EnableKey(QStringLiteral("display"), !rows.empty());
    Toolbar1->EnableKey(QStringLiteral("print"), !rows.empty() && shown_.emp_id == checkedId_);
}

void FRMdisEmp::RedoDisplay() {
    if (!DTending->Check() || !DTending->IsFilled() || !TDBNumber1->Check()) {
        session_.ShowMessageWindow("Please fill in the first day, and how many days to show.");
        return;
    }
    // The key leaves the box where it is: the id that was typed last counts.
    ShowCaregiver();
    if (checkedId_.empty()) {
        return;
    }
    const Hourglass hourglass(session_.progress);
    shown_ = LoadAvailability(session_, checkedId_, *DTending->DateValue(),
                              static_cast<int>(std::max(1.0, TDBNumber1->Number())));
    std::vector<ChartRow> rows;
    for (const AvailabilityDay& day : shown_.days) {
        ChartRow row;
        row.cells = {ToQt(day.day), ToQt(FormatDate(day.date, "MMM/DD/YYYY"))};
        if (!day.notes.empty()) {
            row.icon = QStringLiteral("question");
            row.tip = ToQt(Join(day.notes, "\n"));
        }
        for (std::size_t at = 0; at < row.quarters.size(); ++at) {
            row.quarters[at] = {KindOf(day.quarters[at].by), day.quarters[at].text};
        }
        rows.push_back(std::move(row));
    }
    FG2->SetRows(std::move(rows), [this](std::uint32_t text) { return ToQt(shown_.texts.Text(text)); });
    FG2->SetCurrentRow(0);
    FGcli->Clear();
    FGsch->Clear();
    Toolbar1->EnableKey(QStringLiteral("print"), true);
    FG2->setFocus();
}

void FRMdisEmp::ShowQuarter(int row, int quarter) {
    const AvailabilityDay& day = shown_.days[static_cast<std::size_t>(row)];
    const QuarterDetail detail = DetailOf(session_, day.quarters[static_cast<std::size_t>(quarter)]);
    ShowPairs(*FGsch, detail.schedule);
    ShowPairs(*FGcli, detail.client);
}

void FRMdisEmp::PickKey() {
    if (const std::string id = Pick(); id != kCancelled) {
        TXTempid->EnterValue(Value(id));
        ShowCaregiver();
        if (!checkedId_.empty()) {
            RedoDisplay();
        }
    }
}

}  // namespace kv
