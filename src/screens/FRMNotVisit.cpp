#include "screens/FRMNotVisit.h"

#include <QToolButton>
#include <QVBoxLayout>

#include "base/text.h"
#include "clients/banned_caregivers.h"
#include "clients/pick_query.h"
#include "screens/frmClient_controls.h"
#include "screens/pick_screen.h"
#include "screens/record_list.h"
#include "screens/screen_steps.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"

namespace kv {

FRMNotVisit::FRMNotVisit(Session& session, QWidget* parent) : SectionScreen(parent), session_(session) {
    setObjectName(QStringLiteral("FRMNotVisit"));
    setWindowTitle(QStringLiteral(" Caregiver's who should not visit this Client"));
    Pick = [this] { return PickEmployee(session_, this); };
    RecordRules rules;
    rules.key = "emp_id";
    rules.row = [](const Recordset& banned) {
        GridRow row;
        row.cells = {banned.Get("Emp_name"), banned.Get("emp_id")};
        return row;
    };
    rules.save = [this](Recordset& banned) { return SaveBannedCaregiver(session_, banned, clientId_); };
    rules.remove = [this](Recordset& banned) { return DeleteBannedCaregiver(session_, banned, clientId_); };
    rules.move = [this](Recordset& banned, ListMove move) {
        return MoveBannedCaregiver(session_, banned, move);
    };
    DBnoemp = new RecordList(session, QStringLiteral("Toolbar5"), QStringLiteral("FGsys"),
                             {{QStringLiteral("Caregiver Name"), 40}, {QStringLiteral("ID"), 12}},
                             std::move(rules), this);
    DBnoemp->List->setAccessibleName(tr("Caregivers who should not visit"));
    DBnoemp->List->SetEmptyText(tr("Every caregiver may visit this client"));

    FieldForm* form = DBnoemp->Form;
    TXTnoempid = new TextBox(QStringLiteral("TXTnoempid"), QStringLiteral("Caregiver &ID:"), 10, form);
    Command7 = MakeSmallButton(QStringLiteral("Command7"), QStringLiteral("find_person"),
                               QStringLiteral("Show the Caregiver search screen."), form);
    Text4 = new TextBox(QStringLiteral("Text4"), tr("Name:"), 40, form);
    Text4->setReadOnly(true);
    Text4->setFocusPolicy(Qt::ClickFocus);
    Text5 = new MemoBox(QStringLiteral("Text5"), tr("N&otes:"), 60, 5, form);
    Text5->setToolTip(QStringLiteral("The reason that this Caregiver should not visit this client anymore"));
    form->AddField(*TXTnoempid);
    form->AddBehind(Command7);
    form->AddField(*Text4);
    form->AddField(*Text5);
    DBnoemp->Source.Bind(*TXTnoempid, "emp_id");
    DBnoemp->Source.Bind(*Text4, "Emp_name");
    DBnoemp->Source.Bind(*Text5, "Notes");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(DBnoemp);

    connect(DBnoemp, &RecordList::rowAdded, TXTnoempid, [this] { TXTnoempid->setFocus(); });
    TXTnoempid->SetRule([this] { return CheckCaregiver(); });
    connect(Command7, &QToolButton::clicked, this, &FRMNotVisit::PickKey);
}

void FRMNotVisit::SetHiddenID(const std::string& id, ClientForm& /*mainScreen*/) {
    clientId_ = id;
    DBnoemp->SetRecords(OpenBannedCaregivers(session_, id));
}

bool FRMNotVisit::MayLeave() {
    return DBnoemp->Leave();
}

bool FRMNotVisit::CheckCaregiver() {
    const std::string id = FromQt(TXTnoempid->Text());
    if (Trim(id).empty()) {
        Text4->EnterValue(Value(""));
        return true;
    }
    bool found = false;
    Reported(session_, [&] {
        if (const std::optional<std::string> name = CaregiverName(session_, id)) {
            Text4->EnterValue(Value(*name));
            found = true;
            return;
        }
        session_.ShowMessageWindow("Caregiver was not found");
        TXTnoempid->EnterValue(Value(""));
        Text4->EnterValue(Value(""));
    });
    if (!found) {
        TXTnoempid->setFocus();
    }
    return found;
}

void FRMNotVisit::PickKey() {
    const std::string id = Pick();
    if (id != kCancelled && DBnoemp->Source.HasRow()) {
        TXTnoempid->EnterValue(Value(id));
        TXTnoempid->Finish();
    }
}

}  // namespace kv
