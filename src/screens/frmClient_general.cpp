#include "screens/frmClient_general.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <algorithm>

#include "base/text.h"
#include "screens/frmClient_controls.h"
#include "screens/widgets/check_box.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kLookup = 26;
constexpr int kText = kLookup + 3;  ///< as wide as a combo with its arrow
constexpr int kNoteLines = 7;

void CopyNote(const std::vector<NamedNote>& people, int index, MemoBox& note) {
    const auto at = static_cast<std::size_t>(index);
    if (at < people.size()) {
        note.EnterValue(Value(people[at].note));
    }
}

}  // namespace

FRMgeneral::FRMgeneral(QWidget* parent) : ClientPart(QStringLiteral("FRMgeneral"), parent) {
    auto* left = new FieldForm(Frame());
    auto* right = new FieldForm(Frame());
    MakeNursing(left->AddGroup(QStringLiteral("FRAMEnursing"), tr("Nursing")));
    MakeDiagnoses(left->AddGroup(QStringLiteral("FRAMEdiagnoses"), tr("Diagnoses")));
    MakeAccounts(left->AddGroup(QStringLiteral("FRAMEaccounts"), tr("Accounting and Telephony")));
    left->AddStretch();
    MakeCaseManager(right->AddGroup(QStringLiteral("FRAMEcase"), tr("Case Manager")));
    MakeDoctor(right->AddGroup(QStringLiteral("FRAMEdoctor"), tr("Doctor")));
    right->AddStretch();

    auto* layout = new QHBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    layout->setSpacing(theme::kUnit);
    layout->addWidget(left, 1);
    layout->addWidget(right, 1);

    connect(CMBcase, &QComboBox::activated, this,
            [this](int index) { CopyNote(caseManagers_, index, *Text2); });
    connect(CMBdoctor, &QComboBox::activated, this, [this](int index) { CopyNote(doctors_, index, *Text3); });
}

void FRMgeneral::MakeNursing(FieldForm* form) {
    TDBCombo9 = new LookupCombo(QStringLiteral("TDBCombo9"), tr("Nurse:"), kLookup, form);
    TDBCombo19 = new LookupCombo(QStringLiteral("TDBCombo19"), tr("Nurse Visit:"), kLookup, form);
    DteNurlasvis = new DateBox(QStringLiteral("DteNurlasvis"), tr("Last Visit:"), form);
    form->AddField(*TDBCombo9);
    form->AddField(*TDBCombo19);
    form->AddField(*DteNurlasvis);
}

void FRMgeneral::MakeDiagnoses(FieldForm* form) {
    TDBCombo26 = MakeClearable(QStringLiteral("TDBCombo26"), tr("Diagnosis 1:"), kLookup, form);
    TDBCombo27 = MakeClearable(QStringLiteral("TDBCombo27"), tr("Diagnosis 2:"), kLookup, form);
    TDBCombo28 = MakeClearable(QStringLiteral("TDBCombo28"), tr("Diagnosis 3:"), kLookup, form);
    Combo1 = new TextBox(QStringLiteral("Combo1"), tr("Other:"), kText, form);
    for (LookupCombo* combo : {TDBCombo9, TDBCombo19, TDBCombo26, TDBCombo27, TDBCombo28}) {
        combo->SetListOnly(true);
    }
    CMDicd9 = MakeSmallButton(QStringLiteral("CMDicd9"), QStringLiteral("add"),
                              tr("Attach ICD9 codes to this client"), form);
    form->AddField(*TDBCombo26);
    form->AddBehind(CMDicd9);
    form->AddField(*TDBCombo27);
    form->AddField(*TDBCombo28);
    form->AddField(*Combo1);
}

void FRMgeneral::TakeDiagnosis(const std::string& code, const std::string& description) {
    const std::vector<LookupCombo*> combos = {TDBCombo26, TDBCombo27, TDBCombo28};
    const std::vector<LookupItem>& items = TDBCombo26->Items();
    const bool isListed = std::any_of(items.begin(), items.end(),
                                      [&](const LookupItem& item) { return EqualsNoCase(item.code, code); });
    const std::string words = Trim(code + " " + description);
    if (!isListed) {
        if (Combo1->Text().trimmed().isEmpty()) {
            Combo1->EnterValue(Value(words));
        }
        return;
    }
    for (LookupCombo* combo : combos) {
        if (EqualsNoCase(combo->BoundText(), code)) {
            return;
        }
    }
    for (LookupCombo* combo : combos) {
        if (combo->BoundText().empty()) {
            combo->SetBoundText(code);
            return;
        }
    }
}

void FRMgeneral::MakeAccounts(FieldForm* form) {
    CMBqbclass = MakeOffering(QStringLiteral("CMBqbclass"), tr("QuickBooks Class:"), kLookup, form);
    TXText = new TextBox(QStringLiteral("TXText"), tr("Accounting ID:"), kText, form);
    TXTexternal2 = new TextBox(QStringLiteral("TXTexternal2"), tr("Accounting ID 2:"), kText, form);
    TXTexternal3 = new TextBox(QStringLiteral("TXTexternal3"), tr("Accounting ID 3:"), kText, form);
    TXTmisc = new TextBox(QStringLiteral("TXTmisc"), tr("Misc:"), kText, form);
    Check2 = new CheckBox(QStringLiteral("Check2"), tr("Telephony Client"), form);
    form->AddField(*CMBqbclass);
    for (TextBox* box : {TXText, TXTexternal2, TXTexternal3, TXTmisc}) {
        form->AddField(*box);
    }
    form->AddField(*Check2);
}

void FRMgeneral::MakeCaseManager(FieldForm* form) {
    CMBcase = MakeOffering(QStringLiteral("CMBcase"), tr("Name:"), kLookup, form);
    CMDviewCase = MakeSmallButton(QStringLiteral("CMDviewCase"), QStringLiteral("edit"),
                                  tr("Add/Change/View Case Managers"), form);
    Text2 = new MemoBox(QStringLiteral("Text2"), tr("Note:"), kLookup, kNoteLines, form);
    form->AddField(*CMBcase);
    form->AddBehind(CMDviewCase);
    form->AddField(*Text2);
}

void FRMgeneral::MakeDoctor(FieldForm* form) {
    CMBdoctor = MakeOffering(QStringLiteral("CMBdoctor"), tr("Name:"), kLookup, form);
    CMDviewDocs = MakeSmallButton(QStringLiteral("CMDviewDocs"), QStringLiteral("edit"),
                                  tr("Add/Change/View Doctors"), form);
    Text3 = new MemoBox(QStringLiteral("Text3"), tr("Note:"), kLookup, kNoteLines, form);
    form->AddField(*CMBdoctor);
    form->AddBehind(CMDviewDocs);
    form->AddField(*Text3);
}

PlainCombo* FRMgeneral::PeopleCombo(PeopleTable table) const {
    return table == PeopleTable::doctors ? CMBdoctor : CMBcase;
}

void FRMgeneral::SetPeople(PeopleTable table, std::vector<NamedNote> people) {
    std::vector<std::string> names;
    names.reserve(people.size());
    for (const NamedNote& person : people) {
        names.push_back(person.name);
    }
    PeopleCombo(table)->SetItems(names);
    (table == PeopleTable::doctors ? doctors_ : caseManagers_) = std::move(people);
}

std::vector<ClientPart::Tie> FRMgeneral::Ties() const {
    return {
        {TDBCombo9, "NURSE"},
        {TDBCombo19, "NURLVCODE"},
        {DteNurlasvis, "NURLASTVIS"},
        {TDBCombo26, "DIAGNOSIS"},
        {TDBCombo27, "DIAGNOSIS2"},
        {TDBCombo28, "DIAGNOSIS3"},
        {Combo1, "diagnosis4"},
        {CMBqbclass, "qbclass"},
        {TXText, "external_id"},
        {TXTexternal2, "External_id2"},
        {TXTexternal3, "External_id3"},
        {TXTmisc, "MEDICAIDNO"},
        {Check2, "istelephony"},
        {CMBcase, "CASE_NAME"},
        {Text2, "CASE_NOTE"},
        {CMBdoctor, "DOC_NAME"},
        {Text3, "DOC_NOTE"},
    };
}

}  // namespace kv
