#include "screens/frmnew.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <system_error>

#include "base/text.h"
#include "clients/call_types.h"
#include "clients/client_id.h"
#include "clients/pick_query.h"
#include "screens/pick_screen.h"
#include "screens/screen_steps.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

namespace {

constexpr const char* kCancel = "Cancel";
constexpr int kIdLength = 10;  // the column's

QComboBox* MakeList(const QString& name, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->setMinimumWidth(theme::CharactersWide(*list, 30));
    list->addItem(QString());
    return list;
}

}  // namespace

frmnew::frmnew(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("frmnew"));
    setWindowTitle(QStringLiteral("New Client ID"));
    PickPattern = [this] { return PickClient(session_, this); };
    session_.PickedEmployee = kCancel;
    MakeToolbar();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, theme::kUnit);
    all->addWidget(Toolbar1);
    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, 0);
    lower->addWidget(MakeClient());
    lower->addWidget(MakePattern(), 1);
    lower->addWidget(MakeAuthorization());
    all->addLayout(lower, 1);
    resize(72 * theme::kUnit, 66 * theme::kUnit);
    Reported(session_, [this] { Fill(); });
    Toolbar1->EnableKey(QStringLiteral("save"), false);
    TDBText1->setFocus();
}

void frmnew::MakeToolbar() {
    Toolbar1 = new ToolBar(QStringLiteral("Toolbar1"),
                           {StandardKey(QStringLiteral("exit"), tr("Exit without a new client")),
                            StandardKey(QStringLiteral("save"), tr("Make the new client")), ToolSeparator(),
                            StandardKey(QStringLiteral("generate"))},
                           this);
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("save"), [this] { SaveKey(); }},
        {QStringLiteral("generate"), [this] { GenerateKey(); }},
    };
    connect(Toolbar1, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
}

QWidget* frmnew::MakeClient() {
    auto* form = new FieldForm(this);
    TDBText1 = new QLineEdit(form);
    TDBText1->setObjectName(QStringLiteral("TDBText1"));
    TDBText1->setMaxLength(kIdLength);
    TDBText1->setFixedWidth(theme::CharactersWide(*TDBText1, kIdLength + 4));
    LBLresult = new QLabel(form);
    LBLresult->setObjectName(QStringLiteral("LBLresult"));
    LBLresult->setTextFormat(Qt::PlainText);
    TXTstdate = new DateBox(QStringLiteral("TXTstdate"), tr("&Starting Date:"), form);
    TXTstdate->SetDate(session_.clock.Today());
    CHKnew_Template = new QCheckBox(QStringLiteral("Create This Client as a New &Template"), form);
    CHKnew_Template->setObjectName(QStringLiteral("CHKnew_Template"));
    CHKPotential = new QCheckBox(QStringLiteral("Create as a '&Potential' Client"), form);
    CHKPotential->setObjectName(QStringLiteral("CHKPotential"));
    form->AddWidgets(tr("New Client &ID:"), {TDBText1, LBLresult});
    form->AddField(*TXTstdate);
    form->AddWidgets({}, {CHKnew_Template});
    form->AddWidgets({}, {CHKPotential});

    connect(TDBText1, &QLineEdit::editingFinished, this,
            [this] { Reported(session_, [this] { CheckId(); }); });
    connect(TDBText1, &QLineEdit::textEdited, this, [this](const QString& text) {
        const bool enough = Length(FromQt(text.trimmed())) >= kLeastIdLength;
        LBLresult->setText(enough ? QStringLiteral("Press the 'TAB' key to check ID.")
                                  : QStringLiteral("Client Id must be atleast 5 Characters."));
        Toolbar1->EnableKey(QStringLiteral("save"), false);
    });
    connect(CHKnew_Template, &QCheckBox::toggled, this, [this] {
        TDBText1->clear();
        LBLresult->clear();
        Toolbar1->EnableKey(QStringLiteral("save"), false);
        OptionsChanged();
    });
    connect(CHKPotential, &QCheckBox::toggled, this, [this] { OptionsChanged(); });
    return form;
}

QWidget* frmnew::MakePattern() {
    auto* group = new QGroupBox(tr("Start from the Plan of Care, Information and Rates of"), this);
    LSTtemplate = new QListWidget(group);
    LSTtemplate->setObjectName(QStringLiteral("LSTtemplate"));
    LSTtemplate->setAccessibleName(group->title());
    auto* layout = new QVBoxLayout(group);
    layout->addWidget(LSTtemplate);
    connect(LSTtemplate, &QListWidget::itemChanged, this,
            [this](QListWidgetItem* item) { Reported(session_, [this, item] { TemplateTicked(item); }); });
    return group;
}

QWidget* frmnew::MakeAuthorization() {
    FRAauth = new QGroupBox(QStringLiteral("Create Authorization and Billing Rate"), this);
    FRAauth->setObjectName(QStringLiteral("FRAauth"));
    cmbPayor = MakeList(QStringLiteral("cmbPayor"), FRAauth);
    cmbVisType = MakeList(QStringLiteral("cmbVisType"), FRAauth);
    TXTviscode = new QLineEdit(FRAauth);
    TXTviscode->setObjectName(QStringLiteral("TXTviscode"));
    TXTviscode->setAccessibleName(tr("Call type code"));
    TXTviscode->setReadOnly(true);
    TXTviscode->setFocusPolicy(Qt::NoFocus);
    TXTviscode->setFixedWidth(theme::CharactersWide(*TXTviscode, 10));
    auto* type = new QHBoxLayout;
    type->addWidget(cmbVisType);
    type->addWidget(TXTviscode);
    type->addStretch(1);
    auto* layout = new QFormLayout(FRAauth);
    layout->addRow(tr("Pa&yer:"), cmbPayor);
    auto* label = new QLabel(QStringLiteral("&Call Type Desc:"), FRAauth);
    label->setBuddy(cmbVisType);
    layout->addRow(label, type);
    connect(cmbVisType, &QComboBox::currentIndexChanged, this,
            [this] { TXTviscode->setText(cmbVisType->currentData().toString()); });
    return FRAauth;
}

void frmnew::Fill() {
    templates_ = LoadTemplates(session_);
    for (const TemplateRow& row : templates_) {
        auto* item = new QListWidgetItem(ToQt(row.isTemplate ? row.text + "  (" + row.id + ")" : row.text));
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        const QSignalBlocker quiet(LSTtemplate);
        LSTtemplate->addItem(item);
    }
    payers_ = LoadPayers(session_);
    for (const PayerItem& payer : payers_) {
        cmbPayor->addItem(ToQt(payer.name));
    }
    for (const LookupItem& type : LoadCallTypes(session_)) {
        cmbVisType->addItem(ToQt(type.description), ToQt(type.code));
    }
}

bool frmnew::IsTemplate() const {
    return CHKnew_Template->isChecked();
}

bool frmnew::IsPotential() const {
    return CHKPotential->isChecked();
}

void frmnew::OptionsChanged() {
    CHKPotential->setEnabled(!IsTemplate());
    if (IsTemplate()) {
        CHKPotential->setChecked(false);
    }
    FRAauth->setHidden(IsTemplate() || IsPotential());
}

void frmnew::CheckId() {
    TDBText1->setText(TDBText1->text().trimmed());
    const IdState state = CheckNewId(session_, FromQt(TDBText1->text()));
    LBLresult->setText(ToQt(IdStateText(state)));
    Toolbar1->EnableKey(QStringLiteral("save"), state == IdState::Free);
}

void frmnew::GenerateKey() {
    const std::optional<std::string> id = GenerateClientId(session_, IsTemplate());
    if (!id) {
        Toolbar1->EnableKey(QStringLiteral("save"), false);
        session_.ShowMessageWindow(IsTemplate() ? "All the IDs of templates are used."
                                                : "All the IDs of clients are used.");
        return;
    }
    TDBText1->setText(ToQt(*id));
    CheckId();
}

void frmnew::TemplateTicked(QListWidgetItem* item) {
    if (item->checkState() != Qt::Checked) {
        return;
    }
    const QSignalBlocker quiet(LSTtemplate);
    for (int row = 0; row < LSTtemplate->count(); ++row) {
        if (LSTtemplate->item(row) != item) {
            LSTtemplate->item(row)->setCheckState(Qt::Unchecked);
        }
    }
    TemplateRow& ticked = templates_[static_cast<std::size_t>(LSTtemplate->row(item))];
    if (ticked.isTemplate) {
        return;
    }
    const std::string id = PickPattern();
    if (id == kCancelled) {
        item->setCheckState(Qt::Unchecked);
        return;
    }
    ticked.id = id;
    ticked.text = TemplateName(session_, id);
    item->setText(ToQt(ticked.text + "  (" + id + ")"));
}

std::string frmnew::Pattern() const {
    for (int row = 0; row < LSTtemplate->count(); ++row) {
        if (LSTtemplate->item(row)->checkState() == Qt::Checked) {
            return templates_[static_cast<std::size_t>(row)].id;
        }
    }
    return {};
}

void frmnew::SaveKey() {
    if (!TXTstdate->Check() || !TXTstdate->IsFilled()) {
        session_.ShowMessageWindow("Please fill in the starting date.");
        TXTstdate->setFocus();
        return;
    }
    NewClient client;
    client.id = FromQt(TDBText1->text().trimmed());
    client.start = *TXTstdate->DateValue();
    client.asTemplate = IsTemplate();
    client.potential = IsPotential();
    client.pattern = Pattern();
    if (!FRAauth->isHidden()) {
        if (cmbPayor->currentIndex() > 0) {
            client.payer = payers_[static_cast<std::size_t>(cmbPayor->currentIndex()) - 1];
        }
        client.visitType = FromQt(TXTviscode->text());
        client.visitDescription = FromQt(cmbVisType->currentText());
    }
    const Hourglass hourglass(session_.progress);
    const NewClientAnswer answer = SaveNewClient(session_, client);
    if (answer.result == NewClientResult::Saved) {
        QDialog::accept();
        return;
    }
    if (!answer.words.empty()) {
        LBLresult->setText(ToQt(answer.words));
    }
    if (answer.result == NewClientResult::IdUsed) {
        TDBText1->clear();
        Toolbar1->EnableKey(QStringLiteral("save"), false);
    }
}

// Enter in a box is no wish to save.
void frmnew::accept() {}

void frmnew::reject() {
    session_.PickedEmployee = kCancel;
    QDialog::reject();
}

}  // namespace kv
