#include "screens/FRMupdatesch.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>

#include "base/format.h"
#include "screens/screen_steps.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

std::vector<GridColumn> Columns() {
    std::vector<GridColumn> columns = {Patterned("Change", 8, ""),
                                       Patterned("Caregiver Name", 24, ""),
                                       Patterned("DOW", 6, "DDD"),
                                       Patterned("Date", 12, "DD-MMM-YY"),
                                       Patterned("Start Time", 11, "HH:NN AM/PM"),
                                       Patterned("End Time", 11, "HH:NN AM/PM"),
                                       Patterned("Sch Hrs", 8, "#0.00"),
                                       Patterned("Call Description", 0, "")};
    columns.front().tick = true;
    return columns;
}

}  // namespace

FRMupdatesch::FRMupdatesch(Session& session, ScheduleUpdate update, QWidget* parent)
    : QDialog(parent), session_(session), update_(std::move(update)) {
    setObjectName(QStringLiteral("FRMupdatesch"));
    setWindowTitle(tr("Update Schedules"));
    auto* form = new FieldForm(this);
    DTEstart = new DateBox(QStringLiteral("DTEstart"), tr("&Starting Date:"), form);
    DTEstart->SetDate(session.clock.Today());
    form->AddField(*DTEstart);
    auto* title = new QLabel(
        QStringLiteral(
            "Click on any schedule that you do not want to change.  This will remove the Check mark."),
        this);
    FGchg_Sch = new Grid(QStringLiteral("FGchg_Sch"), Columns(), this);
    FGchg_Sch->setAccessibleName(tr("Schedules of this assignment"));
    FGchg_Sch->SetEmptyText(tr("This assignment has no schedule from that date on"));
    FGchg_Sch->setContextMenuPolicy(Qt::CustomContextMenu);
    FGchg_Sch->SetTickByRow(true);
    title->setBuddy(FGchg_Sch);
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAccessibleName(tr("Results"));
    List1->setFixedHeight(14 * theme::kUnit);
    CMDprocess = new QPushButton(tr("&Change Schedules"), this);
    CMDprocess->setObjectName(QStringLiteral("CMDprocess"));
    CMDexit = new QPushButton(QStringLiteral("E&xit"), this);
    CMDexit->setObjectName(QStringLiteral("CMDexit"));
    for (QPushButton* key : {CMDprocess, CMDexit}) {
        key->setAutoDefault(false);
    }
    auto* layout = new QGridLayout(this);
    layout->setVerticalSpacing(theme::kHalfUnit);
    layout->addWidget(form, 0, 0, 1, 3);
    layout->addWidget(title, 1, 0, 1, 3);
    layout->addWidget(FGchg_Sch, 2, 0, 1, 3);
    layout->addWidget(new QLabel(tr("Results:"), this), 3, 0, 1, 3);
    layout->addWidget(List1, 4, 0, 1, 3);
    layout->addWidget(CMDprocess, 5, 1);
    layout->addWidget(CMDexit, 5, 2);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(2, 1);
    resize(116 * theme::kUnit, 70 * theme::kUnit);

    connect(CMDprocess, &QPushButton::clicked, this, [this] { Reported(session_, [this] { Process(); }); });
    connect(CMDexit, &QPushButton::clicked, this, &QDialog::accept);
    connect(DTEstart->Notifier(), &ControlNotifier::changed, this,
            [this] { Reported(session_, [this] { Load(); }); });
    connect(FGchg_Sch, &Grid::tickToggled, this, [this](int row, int /*column*/, bool ticked) {
        lines_[static_cast<std::size_t>(row)].checked = ticked;
    });
    connect(FGchg_Sch, &QWidget::customContextMenuRequested, this, &FRMupdatesch::OpenMenu);
    ApplyGridColors(this, session.COLOR);
    Reported(session_, [this] { Load(); });
    FGchg_Sch->setFocus();
}

void FRMupdatesch::Load() {
    const std::optional<Date> from = DTEstart->DateValue();
    if (!from) {
        return;
    }
    from_ = *from;
    std::vector<std::string> results;
    lines_ = LoadScheduleLines(session_, update_, from_, results);
    std::vector<GridRow> rows;
    for (const ScheduleLine& line : lines_) {
        GridRow row;
        row.cells = {Value(line.checked), Value(line.caregiver), Value(line.date),  Value(line.date),
                     Value(line.start),   Value(line.end),       Value(line.hours), Value(line.description)};
        rows.push_back(std::move(row));
    }
    FGchg_Sch->SetRows(std::move(rows));
    List1->clear();
    ShowResults(results);
    CMDprocess->setEnabled(!lines_.empty());
}

void FRMupdatesch::Process() {
    if (!DTEstart->Check() || !DTEstart->IsFilled()) {
        DTEstart->setFocus();
        return;
    }
    if (DTEstart->DateValue() != from_) {
        // The box took its form as it was left: the list must be that of its day before anything changes.
        Load();
        return;
    }
    const Hourglass hourglass(session_.progress);
    std::vector<std::string> results;
    ProcessScheduleLines(session_, update_, lines_, from_, results);
    // What was moved would move once more.
    CMDprocess->setEnabled(false);
    FGchg_Sch->setEnabled(false);
    DTEstart->SetEnabled(false);
    ShowResults(results);
    CMDexit->setFocus();
}

void FRMupdatesch::OpenMenu(const QPoint& at) {
    const int row = FGchg_Sch->CurrentRow();
    if (row < 0) {
        return;
    }
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("Mnupopup"));
    QAction* hide = menu.addAction(QStringLiteral("&Hide This schedule"));
    hide->setObjectName(QStringLiteral("mnuhide"));
    menu.addAction(QStringLiteral("&Cancel Menu"))->setObjectName(QStringLiteral("mnucancel"));
    if (menu.exec(FGchg_Sch->viewport()->mapToGlobal(at)) == hide) {
        Hide(row);
    }
}

void FRMupdatesch::Hide(int row) {
    lines_.erase(lines_.begin() + row);
    FGchg_Sch->RemoveRow(row);
}

void FRMupdatesch::ShowResults(const std::vector<std::string>& results) {
    for (const std::string& line : results) {
        List1->addItem(ToQt(line));
    }
    List1->scrollToBottom();
}

}  // namespace kv
