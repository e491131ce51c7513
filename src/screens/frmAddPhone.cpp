#include "screens/frmAddPhone.h"

#include <QVBoxLayout>

#include "screens/frmClient_controls.h"
#include "screens/record_list.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"

namespace kv {

frmAddPhone::frmAddPhone(Session& session, QWidget* parent) : SectionScreen(parent), session_(session) {
    setObjectName(QStringLiteral("frmAddPhone"));
    setWindowTitle(QStringLiteral(" Additional Telephony Phone Numbers"));
    RecordRules rules;
    rules.key = "phonenum";
    rules.row = [](const Recordset& phone) {
        GridRow row;
        row.cells = {phone.Get("phonenum")};
        return row;
    };
    rules.mayAdd = [this] { return MayAddPhone(session_, client_); };
    rules.save = [this](Recordset& phones) { return SavePhone(session_, phones, client_); };
    rules.remove = [this](Recordset& phones) { return DeletePhone(session_, phones); };
    rules.move = [this](Recordset& phones, ListMove move) { return MovePhone(session_, phones, move); };
    GridColumn number;
    number.heading = QStringLiteral("Phone #");
    number.format = "(###) ###-####";
    dbPhone = new RecordList(session, QStringLiteral("Toolbar1"), QStringLiteral("FGPhone"), {number},
                             std::move(rules), this);
    dbPhone->List->setAccessibleName(tr("Additional phone numbers"));
    dbPhone->List->SetEmptyText(tr("This client has no additional phone number"));
    txtId = new TextBox(QStringLiteral("txtId"), QStringLiteral("Client ID:"), 40, dbPhone->Form);
    txtId->setReadOnly(true);
    txtId->setFocusPolicy(Qt::NoFocus);
    mskPhone = MakePhone(QStringLiteral("mskPhone"), QStringLiteral("Phone &Number:"), dbPhone->Form);
    dbPhone->Form->AddField(*txtId);
    dbPhone->Form->AddField(*mskPhone);
    dbPhone->Source.Bind(*mskPhone, "phonenum");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(dbPhone);
    connect(dbPhone, &RecordList::rowAdded, mskPhone, [this] { mskPhone->setFocus(); });
}

void frmAddPhone::SetHiddenID(const std::string& id, ClientForm& mainScreen) {
    client_ = PhoneClientOf(id, mainScreen.Controls());
    txtId->SetValue(Value(id.empty() ? std::string() : id + ", " + client_.name));
    dbPhone->SetRecords(OpenClientPhones(session_, client_));
}

bool frmAddPhone::MayLeave() {
    return dbPhone->Leave();
}

}  // namespace kv
