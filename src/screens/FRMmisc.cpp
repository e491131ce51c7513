#include "screens/FRMmisc.h"

#include <QVBoxLayout>

#include "base/text.h"
#include "screens/frmClient_controls.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr std::size_t kBoxesInAColumn = 5;
constexpr const char* kPhonePattern = "(###) ###-####";

bool IsPhone(std::string_view field) {
    return field == "Phone" || field == "Fax";
}

std::vector<GridColumn> Columns() {
    std::vector<GridColumn> columns;
    for (const PeopleColumn& column : PeopleColumns()) {
        GridColumn shown;
        shown.heading = ToQt(column.heading);
        shown.format = IsPhone(column.field) ? kPhonePattern : "";
        columns.push_back(shown);
    }
    return columns;
}

GridRow RowOf(const Recordset& people) {
    GridRow row;
    for (const PeopleColumn& column : PeopleColumns()) {
        row.cells.push_back(people.Get(column.field));
    }
    return row;
}

}  // namespace

FRMmisc::FRMmisc(Session& session, PeopleTable table, const std::string& name, QWidget* parent)
    : QDialog(parent),
      dbInfo([this](const EngineError& error) { ReportEngineError(session_, error); }),
      session_(session),
      table_(table) {
    setObjectName(QStringLiteral("FRMmisc"));
    setWindowTitle(ToQt(PeopleTitle(table)));
    MakeToolbar();
    FGinfo = new Grid(QStringLiteral("FGinfo"), Columns(), this);
    FGinfo->setAccessibleName(windowTitle());
    FGinfo->SetEmptyText(tr("Nobody is in this list yet: press New"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, theme::kUnit);
    layout->addWidget(Toolbar1);
    layout->addWidget(FGinfo, 1);
    layout->addWidget(MakeBoxes());
    resize(115 * theme::kUnit, 75 * theme::kUnit);

    connect(FGinfo, &Grid::rowPicked, this, [this](int row) {
        Handle([this, row] {
            // Leaving may save and move the rows: the person picked is known by the id, not by the place.
            const Value id = PersonId(dbInfo.Rows(), row);
            LeaveRow();
            picked_ = FindPersonById(dbInfo.Rows(), id);
            dbInfo.ShowRow();
        });
    });
    connect(&dbInfo, &BoundSource::repositioned, this,
            [this] { FGinfo->SetCurrentRow(dbInfo.IsAdding() ? -1 : static_cast<int>(dbInfo.Position())); });
    Handle([&] { Open(name); });
    ApplyGridColors(this, session_.COLOR);
}

void FRMmisc::MakeToolbar() {
    Toolbar1 = new ToolBar(
        QStringLiteral("Toolbar1"),
        {StandardKey(QStringLiteral("exit")), ToolSeparator(), StandardKey(QStringLiteral("first")),
         StandardKey(QStringLiteral("previous")), StandardKey(QStringLiteral("next")),
         StandardKey(QStringLiteral("last")), ToolSeparator(),
         StandardKey(QStringLiteral("new"), tr("Add New")), StandardKey(QStringLiteral("delete")),
         StandardKey(QStringLiteral("save")), StandardKey(QStringLiteral("discard"))},
        this);
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("first"), [this] { Move(ListMove::First); }},
        {QStringLiteral("previous"), [this] { Move(ListMove::Previous); }},
        {QStringLiteral("next"), [this] { Move(ListMove::Next); }},
        {QStringLiteral("last"), [this] { Move(ListMove::Last); }},
        {QStringLiteral("new"), [this] { NewKey(); }},
        {QStringLiteral("delete"), [this] { DeleteKey(); }},
        {QStringLiteral("save"), [this] { SaveKey(); }},
        {QStringLiteral("discard"), [this] { dbInfo.Restore(); }},
    };
    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) { Handle(keys_.at(key)); });
}

QWidget* FRMmisc::MakeBoxes() {
    constexpr int kCharacters = 30;
    auto* area = new QWidget(this);
    auto* form = new FieldForm(area);
    std::size_t placed = 0;
    for (const PeopleColumn& column : PeopleColumns()) {
        if (placed++ == kBoxesInAColumn) {
            form->NextColumn();
        }
        const QString name = QStringLiteral("TXT") + ToQt(column.field);
        const QString caption = ToQt(column.heading) + QLatin1Char(':');
        BoundControl* box = nullptr;
        if (IsPhone(column.field)) {
            box = MakePhone(name, caption, form);
        } else {
            box = new TextBox(name, caption, kCharacters, form);
        }
        form->AddField(*box);
        dbInfo.Bind(*box, std::string(column.field));
    }
    auto* notes = new FieldForm(area);
    auto* note = new MemoBox(QStringLiteral("TXTNote"), tr("Note:"), 2 * kCharacters, 4, notes);
    notes->AddField(*note);
    dbInfo.Bind(*note, std::string(PeopleNoteField()));

    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(theme::kUnit, 0, theme::kUnit, 0);
    layout->addWidget(form);
    layout->addWidget(notes);
    return area;
}

void FRMmisc::Open(const std::string& name) {
    Recordset people = OpenPeople(session_, table_);
    try {
        picked_ = !Trim(name).empty() && FindPerson(people, name);
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    }
    dbInfo.SetRecordset(std::move(people));
    FillGrid();
}

void FRMmisc::Handle(const Step& step) {
    try {
        step();
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    }
}

void FRMmisc::FillGrid() {
    std::vector<GridRow> rows;
    Recordset people = dbInfo.Rows().Clone();
    if (people.RecordCount() > 0) {
        people.MoveFirst();
    }
    for (; !people.Eof(); people.MoveNext()) {
        rows.push_back(RowOf(people));
    }
    FGinfo->SetRows(std::move(rows));
    FGinfo->SetCurrentRow(static_cast<int>(dbInfo.Position()));
}

void FRMmisc::LeaveRow() {
    const bool save =
        !dbInfo.ChangedControls().empty() &&
        session_.dialogs.AskQuestion("Some information has changed, and is not saved.  Do you wish to save?");
    if (save) {
        SaveKey();
    } else {
        dbInfo.Restore();
    }
}

void FRMmisc::NewKey() {
    LeaveRow();
    dbInfo.AddRow();
    dbInfo.Controls().front()->Widget()->setFocus();
}

void FRMmisc::SaveKey() {
    if (dbInfo.IsEditing() || dbInfo.IsAdding()) {
        dbInfo.WriteRow();
    }
    if (SavePerson(session_, dbInfo.Rows())) {
        picked_ = true;
        dbInfo.ShowRow();
        FillGrid();
    }
}

void FRMmisc::DeleteKey() {
    if (dbInfo.IsAdding()) {
        dbInfo.Restore();
        return;
    }
    if (DeletePerson(session_, dbInfo.Rows())) {
        picked_ = false;
        dbInfo.ShowRow();
        FillGrid();
    }
}

void FRMmisc::Move(ListMove move) {
    LeaveRow();
    if (MovePerson(session_, dbInfo.Rows(), move)) {
        picked_ = true;
        dbInfo.ShowRow();
    }
}

std::optional<std::string> FRMmisc::PickedName() const {
    if (!picked_ || !dbInfo.HasRow()) {
        return std::nullopt;
    }
    return KeptName(dbInfo.Rows().Text("Name"));
}

void FRMmisc::reject() {
    Handle([this] {
        LeaveRow();
        QDialog::reject();
    });
}

}  // namespace kv
