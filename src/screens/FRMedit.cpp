#include "screens/FRMedit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "screens/frmPrint.h"
#include "screens/history_view.h"
#include "screens/screen_steps.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/time_box.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr const char* kNoRecords = "There are no records to move to.";

QPushButton* MakeButton(const QString& name, const QString& word, const QString& icon, QWidget* parent) {
    auto* button = new QPushButton(theme::Icon(icon), word, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

FRMedit::FRMedit(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("FRMedit"));
    setWindowTitle(QStringLiteral("View History"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    MakeToolbar();
    View = new HistoryView(tr("No changes were found"), this);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, theme::kUnit);
    all->addWidget(Toolbar1);
    all->addWidget(MakeCriteria());
    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, 0, theme::kUnit, 0);
    lower->addWidget(View, 1);
    lower->addWidget(MakeFind());
    all->addLayout(lower, 1);
    resize(110 * theme::kUnit, 85 * theme::kUnit);

    connect(View->FGedit, &Grid::currentRowChanged, this, [this](int row) {
        if (!searching_ && row >= 0) {
            list_.at = static_cast<std::size_t>(row);
        }
    });
    connect(CMDlook, &QPushButton::clicked, this, [this] { Reported(session_, [this] { LookKey(); }); });
    connect(CMDfind, &QPushButton::clicked, this, [this] { Reported(session_, [this] { FindKey(); }); });
    connect(TXTfind, &QLineEdit::textEdited, this, [this] { CMDfind->setText(QStringLiteral("Find")); });

    ApplyGridColors(this, session.COLOR);
    ClearToolbarCaptions(Toolbar1);
    TXTStartdate->SetDate(session.clock.Today());
    TXTEndDate->SetDate(session.clock.Today());
    OPTtime[1]->setEnabled(!session.settings.GetBoolean("Setting", "OFF_LINE"));
    Reported(session_, [this] { OpenFile(false); });
    TXTuser->setFocus();
}

void FRMedit::MakeToolbar() {
    Toolbar1 = new ToolBar(
        QStringLiteral("Toolbar1"),
        {StandardKey(QStringLiteral("exit")), ToolSeparator(), StandardKey(QStringLiteral("first")),
         StandardKey(QStringLiteral("previous")), StandardKey(QStringLiteral("next")),
         StandardKey(QStringLiteral("last")), ToolSeparator(),
         ToolKey{QStringLiteral("user"), tr("My Changes"), tr("What I changed myself"),
                 QStringLiteral("user"), QKeySequence(QStringLiteral("Ctrl+U"))},
         StandardKey(QStringLiteral("delete"), tr("What was deleted in the chosen area")),
         StandardKey(QStringLiteral("print"))},
        this);
    const auto rows = [this] { return static_cast<long>(list_.rows.size()); };
    const auto at = [this] { return static_cast<long>(list_.at); };
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("first"), [this] { MoveTo(0, ""); }},
        {QStringLiteral("previous"),
         [this, at] { MoveTo(at() - 1, "Beginning of file, moving to the first record."); }},
        {QStringLiteral("next"), [this, at] { MoveTo(at() + 1, "End of file, moving to the last record."); }},
        {QStringLiteral("last"), [this, rows] { MoveTo(rows() - 1, ""); }},
        {QStringLiteral("user"), [this] { UserKey(); }},
        {QStringLiteral("delete"), [this] { DeleteKey(); }},
        {QStringLiteral("print"), [this] { Preview(HistoryPrint(list_.rows, session_.clock.Now())); }},
    };
    connect(Toolbar1, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
}

QWidget* FRMedit::MakeCriteria() {
    auto* area = new QWidget(this);
    auto* form = new FieldForm(area);
    TXTuser = new TextBox(QStringLiteral("TXTuser"), tr("&User:"), 14, form);
    TXTarea = new PlainCombo(QStringLiteral("TXTarea"), tr("&Area:"), PlainCombo::Style::List, 22, form);
    QStringList areas;
    for (const std::string_view label : ChangeAreas()) {
        areas << ToQt(label);
    }
    TXTarea->SetItems(areas);
    txtId = new TextBox(QStringLiteral("txtId"), QStringLiteral("Unique &ID"), 14, form);
    TXTStartdate = new DateBox(QStringLiteral("TXTStartdate"), tr("&From:"), form);
    TXTEndDate = new DateBox(QStringLiteral("TXTEndDate"), tr("&To:"), form);
    TDBstart = new TimeBox(QStringLiteral("TDBstart"), tr("From Ti&me:"), form);
    OPTtime[0] = new QRadioButton(tr("&Current File"), form);
    OPTtime[1] = new QRadioButton(tr("Archi&ved File"), form);
    for (int i = 0; i < 2; ++i) {
        OPTtime[i]->setObjectName(IndexedName(QStringLiteral("OPTtime"), i));
        connect(OPTtime[i], &QRadioButton::clicked, this,
                [this, i] { Reported(session_, [this, i] { OpenFile(i == 1); }); });
    }
    OPTtime[0]->setChecked(true);
    CMDlook = MakeButton(QStringLiteral("CMDlook"), tr("&Search"), QStringLiteral("search"), form);
    CMDlook->setDefault(true);

    form->AddField(*TXTuser);
    form->AddLine({TXTarea, txtId});
    form->AddWidgets({}, {OPTtime[0], OPTtime[1]});
    form->NextColumn();
    form->AddField(*TXTStartdate);
    form->AddField(*TXTEndDate);
    form->AddLine({TDBstart});
    form->AddBehind(CMDlook);
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, 0);
    layout->addWidget(form);
    layout->addStretch(1);
    return area;
}

QWidget* FRMedit::MakeFind() {
    auto* area = new QWidget(this);
    auto* caption = new QLabel(tr("Te&xt:"), area);
    TXTfind = new QLineEdit(area);
    TXTfind->setObjectName(QStringLiteral("TXTfind"));
    TXTfind->setPlaceholderText(tr("Words to look for in the changes shown"));
    TXTfind->setMinimumWidth(theme::CharactersWide(*TXTfind, 36));
    caption->setBuddy(TXTfind);
    CMDfind = MakeButton(QStringLiteral("CMDfind"), QStringLiteral("Find"), QStringLiteral("next"), area);
    LBLmessage = new QLabel(area);
    LBLmessage->setObjectName(QStringLiteral("LBLmessage"));
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(TXTfind);
    layout->addWidget(CMDfind);
    layout->addWidget(LBLmessage, 1);
    return area;
}

void FRMedit::OpenFile(bool archived) {
    const bool wasArchived = dbEdits_ && !archived;
    try {
        dbEdits_ = session_.OpenData(archived ? "archive.mdb" : "kestrava.mdb");
    } catch (const EngineError&) {
        OPTtime[wasArchived ? 1 : 0]->setChecked(true);
        throw;
    }
    list_ = {};
    View->SetRows({});
}

ChangeCriteria FRMedit::Criteria() const {
    ChangeCriteria criteria;
    criteria.user = FromQt(TXTuser->Text());
    criteria.area = FromQt(TXTarea->Text());
    criteria.id = FromQt(txtId->Text());
    criteria.from = TXTStartdate->DateValue();
    criteria.to = TXTEndDate->DateValue();
    criteria.time = TDBstart->IsFilled() ? FromQt(TDBstart->Text()) : std::string();
    return criteria;
}

void FRMedit::Show(const std::string& statement) {
    if (!dbEdits_) {
        OpenFile(OPTtime[1]->isChecked());
    }
    const Hourglass hourglass(session_.progress);
    list_ = {};
    list_.rows = LoadHistory(*dbEdits_, statement);
    CMDfind->setText(QStringLiteral("Find"));
    View->SetRows(list_.rows);
}

void FRMedit::ShowRecord(const QString& caption, const std::string& area, const std::string& id,
                         const std::string& statement) {
    for (const QString& label : TXTarea->Items()) {
        if (AreaCode(FromQt(label)) == area) {
            TXTarea->SetText(label);
        }
    }
    txtId->SetCaption(caption);
    txtId->setText(ToQt(id));
    TXTStartdate->SetDate({});
    TXTEndDate->SetDate({});
    Reported(session_, [&] { Show(statement); });
}

void FRMedit::LookKey() {
    txtId->SetCaption(QStringLiteral("Unique &ID"));
    Show(ChangeSearchStatement(Criteria()));
}

void FRMedit::UserKey() {
    TXTuser->setText(ToQt(session_.User));
    LookKey();
}

void FRMedit::DeleteKey() {
    const std::string area = FromQt(TXTarea->Text());
    TXTStartdate->SetDate({});
    TXTEndDate->SetDate({});
    TXTuser->clear();
    TDBstart->SetTime({});
    TXTarea->SetText({});
    txtId->clear();
    txtId->SetCaption(QStringLiteral("Unique &ID"));
    if (!area.empty()) {
        Show(DeletedStatement(area));
    }
}

void FRMedit::MoveTo(long row, const char* beyond) {
    const long count = static_cast<long>(list_.rows.size());
    if (count == 0) {
        session_.ShowMessageWindow(kNoRecords);
        return;
    }
    if (row < 0 || row >= count) {
        session_.ShowMessageWindow(beyond);
        row = row < 0 ? 0 : count - 1;
    }
    list_.at = static_cast<std::size_t>(row);
    View->SetCurrentRow(static_cast<int>(row));
}

void FRMedit::FindKey() {
    if (list_.rows.empty() || searching_ || TXTfind->text().isEmpty()) {
        return;
    }
    const bool behind = CMDfind->text() == QLatin1String("Next");
    SetSearching(true);
    const bool found = FindInReasons(session_.progress, list_, FromQt(TXTfind->text()), behind);
    SetSearching(false);
    CMDfind->setText(found ? QStringLiteral("Next") : QStringLiteral("Find"));
    View->SetCurrentRow(static_cast<int>(list_.at));
}

// Only the Last key stays: it takes the walk to the end.
void FRMedit::SetSearching(bool searching) {
    searching_ = searching;
    for (int button = 1; button <= Toolbar1->ButtonCount(); ++button) {
        if (Toolbar1->KeyOfButton(button) != QLatin1String("last")) {
            Toolbar1->EnableButton(button, !searching);
        }
    }
    View->FGedit->setEnabled(!searching);
    CMDlook->setEnabled(!searching);
    CMDfind->setEnabled(!searching);
    LBLmessage->setText(searching ? QStringLiteral("Press the 'Last' Button to Stop Search.") : QString());
    if (searching) {
        CMDfind->setText(QStringLiteral("looking"));
    }
}

void FRMedit::reject() {
    if (!searching_) {
        QDialog::reject();
    }
}

}  // namespace kv
