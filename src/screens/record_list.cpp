#include "screens/record_list.h"

#include <QVBoxLayout>
#include <algorithm>

#include "clients/record_keys.h"
#include "screens/notices.h"
#include "screens/save_gate.h"
#include "screens/screen_steps.h"
#include "screens/widgets/bring_back.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

RecordList::RecordList(Session& session, const QString& toolbar, const QString& grid,
                       const std::vector<GridColumn>& columns, RecordRules rules, QWidget* parent,
                       const std::vector<ToolKey>& keys)
    : QWidget(parent),
      Source([this](const EngineError& error) { ReportEngineError(session_, error); }),
      session_(session),
      rules_(std::move(rules)) {
    std::vector<ToolKey> all = {StandardKey(QStringLiteral("first")),
                                StandardKey(QStringLiteral("previous")),
                                StandardKey(QStringLiteral("next")),
                                StandardKey(QStringLiteral("last")),
                                ToolSeparator(),
                                StandardKey(QStringLiteral("new")),
                                StandardKey(QStringLiteral("delete")),
                                StandardKey(QStringLiteral("save")),
                                StandardKey(QStringLiteral("discard"))};
    all.insert(all.end(), keys.begin(), keys.end());
    Toolbar = new ToolBar(toolbar, all, this);
    List = new Grid(grid, columns, this);
    Form = new FieldForm(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Toolbar);
    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, 0, theme::kUnit, theme::kUnit);
    lower->addWidget(List, 1);
    lower->addWidget(Form);
    layout->addLayout(lower, 1);

    keys_ = StepsOf({[this](ListMove move) { Move(move); }, [this] { NewKey(); }, [this] { DeleteKey(); },
                     [this] { SaveKey(); }, [this] { Source.Restore(); }});
    connect(Toolbar, &ToolBar::keyPressed, this, [this](const QString& key) {
        if (const auto step = keys_.find(key); step != keys_.end()) {
            Reported(session_, step->second);
        }
    });
    connect(List, &Grid::rowPicked, this,
            [this](int row) { Reported(session_, [this, row] { Pick(row); }); });
    AddBringBackKey(this, Source);
    connect(&Source, &BoundSource::typedSetAside, this, [this] { TellStatus(this, tr(kBringBackHint)); });
    connect(&Source, &BoundSource::rowFollowed, this,
            [this](const std::vector<std::string>& fields) { TellFollowed(this, Source, fields); });
    connect(&Source, &BoundSource::repositioned, this,
            [this] { List->SetCurrentRow(Source.IsAdding() ? -1 : static_cast<int>(Source.Position())); });
    ApplyGridColors(this, session.COLOR);
}

void RecordList::SetRecords(Recordset rows) {
    Source.SetRecordset(std::move(rows));
    FillList();
}

void RecordList::FillList() {
    std::vector<GridRow> rows;
    Recordset all = Source.Rows().Clone();
    if (all.RecordCount() > 0) {
        all.MoveFirst();
    }
    for (; !all.Eof(); all.MoveNext()) {
        rows.push_back(rules_.row(all));
    }
    List->SetRows(std::move(rows));
    List->SetCurrentRow(static_cast<int>(Source.Position()));
}

bool RecordList::HasTyped() const {
    const std::vector<BoundControl*> boxes = Source.Controls();
    // An entry that is refused is not in the box's value, and lost all the same.
    return !Source.ChangedControls().empty() ||
           std::any_of(boxes.begin(), boxes.end(),
                       [](BoundControl* box) { return box->IsDataChanged() && !box->Check(); });
}

bool RecordList::Leave() {
    if (!Source.IsEditing() && !Source.IsAdding()) {
        return true;
    }
    try {
        const SaveAnswer answer =
            HasTyped() ? session_.dialogs.AskToSave(kUnsavedPrompt) : SaveAnswer::Discard;
        if (answer == SaveAnswer::Save) {
            return SaveKey();
        }
        if (answer == SaveAnswer::Stay) {
            return false;
        }
        Source.Restore();
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
        return false;
    }
    return true;
}

void RecordList::NewKey() {
    if (Leave() && (!rules_.mayAdd || rules_.mayAdd())) {
        Source.AddRow();
        emit rowAdded();
    }
}

bool RecordList::SaveKey() {
    if (!PassesGate(session_, Form)) {
        return false;
    }
    if (Source.IsEditing() || Source.IsAdding()) {
        Source.WriteRow();
    }
    if (!rules_.save(Source.Rows())) {
        return false;
    }
    Source.ShowRow();
    FillList();
    emit rowChosen();
    return true;
}

void RecordList::DeleteKey() {
    if (Source.IsAdding()) {
        Source.Restore();
        return;
    }
    // What is to go is what the operator has looked at, not what another seat has made of it.
    const auto changed = [this] {
        if (!Source.FollowRow()) {
            return false;
        }
        FillList();
        session_.ShowMessageWindow(kChangedBeforeDelete);
        return true;
    };
    if (Source.IsEditing()) {
        Source.Restore();
    }
    if (changed()) {
        return;
    }
    if (rules_.remove(Source.Rows())) {
        Source.ShowRow();
        FillList();
        emit rowDeleted();
    }
}

void RecordList::Move(ListMove move) {
    if (Leave() && rules_.move(Source.Rows(), move)) {
        Source.ShowRow();
        emit rowChosen();
    }
}

Value RecordList::KeyAt(long row) const {
    Recordset rows = Source.Rows().Clone();
    if (row >= rows.RecordCount()) {
        return {};
    }
    rows.SetAbsolutePosition(row);
    return rows.Get(rules_.key);
}

void RecordList::Pick(int row) {
    const Value key = KeyAt(row);
    if (!Leave()) {
        return;
    }
    // Leaving may have saved, and moved the rows; where it did not, the place tells rows of one key apart.
    if (KeyAt(row) == key ? Source.MoveTo(row) : Source.FindFirst(Sql("[" + rules_.key + "] = {}", key))) {
        emit rowChosen();
    }
}

}  // namespace kv
