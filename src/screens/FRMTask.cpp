#include "screens/FRMTask.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/screen_steps.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

QPushButton* Key(int index, const QString& words, const QString& tip, QWidget* parent) {
    auto* key = new QPushButton(words, parent);
    key->setObjectName(IndexedName(QStringLiteral("CMDdoctor"), index));
    key->setToolTip(tip);
    key->setAutoDefault(false);
    return key;
}

}  // namespace

FRMTask::FRMTask(Session& session, long authorization, QWidget* parent)
    : QDialog(parent), session_(session), authorization_(authorization) {
    setObjectName(QStringLiteral("FRMTask"));
    setWindowTitle(QStringLiteral("Authorization Tasks Codes"));
    Toolbar1 = new ToolBar(QStringLiteral("Toolbar1"), {StandardKey(QStringLiteral("exit"))}, this);
    auto* lower = new QHBoxLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    lower->setSpacing(2 * theme::kUnit);
    lower->addWidget(MakeChoice(), 1);
    lower->addWidget(MakeTasks(), 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(Toolbar1);
    all->addLayout(lower, 1);
    resize(112 * theme::kUnit, 62 * theme::kUnit);

    connect(Toolbar1, &ToolBar::keyPressed, this, &QDialog::accept);
    connect(CHKtask, &QListWidget::itemChanged, this, &FRMTask::LimitTicks);
    connect(CMDdoctor[0], &QPushButton::clicked, this, [this] { Reported(session_, [this] { AddKey(); }); });
    connect(CMDdoctor[1], &QPushButton::clicked, this, [this] { ChangeCurrent(RemoveTask); });
    connect(CMDdoctor[2], &QPushButton::clicked, this, [this] { ChangeCurrent(EditTask); });
    connect(FGTasks, &Grid::rowActivated, this, [this] { ChangeCurrent(EditTask); });
    ApplyGridColors(this, session.COLOR);
    Reported(session_, [this] {
        codes_ = LoadTaskCodes(session_);
        for (const LookupItem& code : codes_) {
            auto* line = new QListWidgetItem(ToQt(code.code + " - " + code.description), CHKtask);
            line->setFlags(line->flags() | Qt::ItemIsUserCheckable);
            line->setCheckState(Qt::Unchecked);
        }
        ShowTasks();
    });
}

QWidget* FRMTask::MakeChoice() {
    auto* area = new QWidget(this);
    auto* days = new QGroupBox(tr("Days"), area);
    auto* column = new QVBoxLayout(days);
    for (std::size_t i = 0; i < TaskDays().size(); ++i) {
        auto* box = new QCheckBox(ToQt(TaskDays()[i]), days);
        box->setObjectName(IndexedName(QStringLiteral("CHKDay"), static_cast<int>(i)));
        column->addWidget(box);
        CHKDay.push_back(box);
    }
    column->addStretch(1);
    CHKDay.front()->setToolTip(QStringLiteral("Tasks that can be done on any day of the week"));
    CHKtask = new QListWidget(area);
    CHKtask->setObjectName(QStringLiteral("CHKtask"));
    CHKtask->setAccessibleName(tr("Task codes"));
    auto* caption = new QLabel(tr("&Task codes"), area);
    caption->setBuddy(CHKtask);
    CMDdoctor[0] =
        Key(0, tr("A&dd  →"), tr("Add the checked tasks on the checked days to this authorization"), area);
    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(theme::kUnit);
    layout->setVerticalSpacing(theme::kHalfUnit);
    layout->addWidget(days, 0, 0, 2, 1);
    layout->addWidget(caption, 0, 1);
    layout->addWidget(CHKtask, 1, 1);
    layout->addWidget(CMDdoctor[0], 2, 1, Qt::AlignRight);
    layout->setColumnStretch(1, 1);
    return area;
}

QWidget* FRMTask::MakeTasks() {
    auto* area = new QWidget(this);
    FGTasks = new Grid(
        QStringLiteral("FGTasks"),
        {{QStringLiteral("DOW"), 6}, {QStringLiteral("Task Description"), 28}, {QStringLiteral("Code"), 6}},
        area);
    FGTasks->SetEmptyText(tr("No task is authorized"));
    FGTasks->setAccessibleName(tr("Tasks of this authorization"));
    auto* caption = new QLabel(tr("Tasks of this a&uthorization"), area);
    caption->setBuddy(FGTasks);
    CMDdoctor[1] = Key(1, tr("&Remove"), tr("Remove the task from its day"), area);
    CMDdoctor[2] = Key(2, tr("&Edit"), QStringLiteral("Edit Task Code Description"), area);
    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(theme::kUnit);
    layout->setVerticalSpacing(theme::kHalfUnit);
    layout->addWidget(caption, 0, 0, 1, 3);
    layout->addWidget(FGTasks, 1, 0, 1, 3);
    layout->addWidget(CMDdoctor[1], 2, 1);
    layout->addWidget(CMDdoctor[2], 2, 2);
    layout->setColumnStretch(0, 1);
    return area;
}

void FRMTask::LimitTicks(QListWidgetItem* item) {
    if (item->checkState() != Qt::Checked) {
        return;
    }
    int ticked = 0;
    for (int row = 0; row < CHKtask->count(); ++row) {
        ticked += CHKtask->item(row)->checkState() == Qt::Checked ? 1 : 0;
    }
    if (ticked > kMostTasks) {
        item->setCheckState(Qt::Unchecked);
        session_.ShowMessageWindow("You Have reached the maximum number of tasks!");
    }
}

void FRMTask::ShowTasks() {
    tasks_ = LoadAuthorizationTasks(session_, authorization_);
    std::vector<GridRow> rows;
    for (const AuthorizationTask& task : tasks_) {
        GridRow row;
        row.cells = {Value(task.dow), Value(task.description), Value(task.task)};
        rows.push_back(std::move(row));
    }
    const int current = std::max(0, FGTasks->CurrentRow());
    FGTasks->SetRows(std::move(rows));
    FGTasks->SetCurrentRow(std::min(current, FGTasks->RowCount() - 1));
    CMDdoctor[1]->setEnabled(!tasks_.empty());
    CMDdoctor[2]->setEnabled(!tasks_.empty());
}

void FRMTask::AddKey() {
    std::vector<std::string> days;
    for (const QCheckBox* box : CHKDay) {
        if (box->isChecked()) {
            days.push_back(FromQt(box->text()));
        }
    }
    std::vector<std::string> codes;
    for (int row = 0; row < CHKtask->count(); ++row) {
        if (CHKtask->item(row)->checkState() == Qt::Checked) {
            codes.push_back(codes_[static_cast<std::size_t>(row)].code);
        }
    }
    if (days.empty() || codes.empty()) {
        session_.ShowMessageWindow("Please check the tasks, and the days on which they are to be done.");
        return;
    }
    AddTasks(session_, authorization_, days, codes);
    for (int row = 0; row < CHKtask->count(); ++row) {
        CHKtask->item(row)->setCheckState(Qt::Unchecked);
    }
    ShowTasks();
}

template <typename Change>
void FRMTask::ChangeCurrent(const Change& change) {
    const int row = FGTasks->CurrentRow();
    if (row < 0) {
        return;
    }
    Reported(session_, [&] {
        change(session_, authorization_, tasks_[static_cast<std::size_t>(row)]);
        ShowTasks();
    });
}

}  // namespace kv
