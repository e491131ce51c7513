#include "screens/FRMmisc.h"

#include <QStatusBar>
#include <QVBoxLayout>

#include "base/text.h"
#include "screens/frmClient_controls.h"
#include "screens/frmPrint.h"
#include "screens/record_list.h"
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
    : QDialog(parent), session_(session), table_(table) {
    setObjectName(QStringLiteral("FRMmisc"));
    setWindowTitle(ToQt(PeopleTitle(table)));
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    RecordRules rules;
    rules.key = "id";
    rules.row = RowOf;
    rules.save = [this](Recordset& people) { return SavePerson(session_, people); };
    rules.remove = [this](Recordset& people) { return DeletePerson(session_, people); };
    rules.move = [this](Recordset& people, ListMove move) { return MovePerson(session_, people, move); };
    dbInfo = new RecordList(
        session, QStringLiteral("Toolbar1"), QStringLiteral("FGinfo"), Columns(), std::move(rules), this,
        {ToolSeparator(), StandardKey(QStringLiteral("print")), StandardKey(QStringLiteral("exit"))});
    Toolbar1 = dbInfo->Toolbar;
    Toolbar1->SetTip(QStringLiteral("new"), tr("Add New"));
    FGinfo = dbInfo->List;
    FGinfo->setAccessibleName(windowTitle());
    FGinfo->SetEmptyText(tr("Nobody is in this list yet: press New"));
    MakeBoxes();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(dbInfo);
    auto* status = new QStatusBar(this);
    status->setSizeGripEnabled(false);
    layout->addWidget(status);
    resize(115 * theme::kUnit, 75 * theme::kUnit);

    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) {
        if (key == QLatin1String("exit")) {
            reject();
        } else if (key == QLatin1String("print") && dbInfo->Leave()) {
            Preview(PeoplePrint(table_, dbInfo->Source.Rows()));
        }
    });
    connect(dbInfo, &RecordList::rowAdded, this,
            [this] { dbInfo->Source.Controls().front()->Widget()->setFocus(); });
    connect(dbInfo, &RecordList::rowChosen, this, [this] { picked_ = true; });
    connect(dbInfo, &RecordList::rowDeleted, this, [this] { picked_ = false; });
    try {
        Open(name);
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    }
}

void FRMmisc::MakeBoxes() {
    constexpr int kCharacters = 30;
    FieldForm* form = dbInfo->Form;
    auto* boxes = new FieldForm(form);
    std::size_t placed = 0;
    for (const PeopleColumn& column : PeopleColumns()) {
        if (placed++ == kBoxesInAColumn) {
            boxes->NextColumn();
        }
        const QString name = QStringLiteral("TXT") + ToQt(column.field);
        const QString caption = ToQt(column.heading) + QLatin1Char(':');
        BoundControl* box = nullptr;
        if (IsPhone(column.field)) {
            box = MakePhone(name, caption, boxes);
        } else {
            box = new TextBox(name, caption, kCharacters, boxes);
        }
        boxes->AddField(*box);
        dbInfo->Source.Bind(*box, std::string(column.field));
    }
    form->AddWide(boxes);
    auto* note = new MemoBox(QStringLiteral("TXTNote"), tr("Note:"), 2 * kCharacters, 4, form);
    form->AddField(*note);
    dbInfo->Source.Bind(*note, std::string(PeopleNoteField()));
}

void FRMmisc::Open(const std::string& name) {
    Recordset people = OpenPeople(session_, table_);
    try {
        picked_ = !Trim(name).empty() && FindPerson(people, name);
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    }
    dbInfo->SetRecords(std::move(people));
}

std::optional<std::string> FRMmisc::PickedName() const {
    if (!picked_ || !dbInfo->Source.HasRow()) {
        return std::nullopt;
    }
    return KeptName(dbInfo->Source.Rows().Text("Name"));
}

void FRMmisc::reject() {
    if (dbInfo->Leave()) {
        QDialog::reject();
    }
}

}  // namespace kv
