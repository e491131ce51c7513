#include "screens/frmClient_list.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/text.h"
#include "clients/client_texts.h"
#include "screens/frmClient_controls.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kLimitCharacters = 16;

PlainCombo* MakeLimit(const QString& name, const QString& caption, QWidget* parent) {
    auto* combo = new PlainCombo(name, caption, PlainCombo::Style::List, kLimitCharacters, parent);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return combo;
}

/// The items that never change, the first text picked.
void FillFixed(PlainCombo& combo) {
    FillFixedList(combo);
    combo.SetText(ToQt(FixedListOf(FromQt(combo.objectName())).text));
}

OutlineNode NodeOf(const ClientTreeNode& letter) {
    OutlineNode node;
    node.text = ToQt(letter.letter);
    node.bold = true;
    node.children.reserve(letter.rows.size());
    for (const ClientTreeRow& row : letter.rows) {
        OutlineNode child;
        child.text = ToQt(row.text);
        child.id = row.id;
        child.marked = row.marked;
        node.children.push_back(std::move(child));
    }
    return node;
}

}  // namespace

ClientListPane::ClientListPane(QWidget* parent) : QWidget(parent) {
    auto* limits = new FieldForm(this);
    form_ = limits->AddGroup(QStringLiteral("TDBFrame3D7"), tr("Limit Client by:"));
    TDBFrame3D7 = form_->GroupBox();
    CMBcliStatus = MakeLimit(QStringLiteral("CMBcliStatus"), tr("Status:"), form_);
    CMBpotientalStatus = MakeLimit(QStringLiteral("CMBpotientalStatus"), tr("Potential:"), form_);
    cmbDISGROUP = MakeLimit(QStringLiteral("cmbDISGROUP"), tr("Group:"), form_);
    CMBmanager = MakeLimit(QStringLiteral("CMBmanager"), tr("Manager:"), form_);
    for (PlainCombo* combo : {CMBcliStatus, CMBpotientalStatus, cmbDISGROUP, CMBmanager}) {
        form_->AddField(*combo);
    }
    FillFixed(*CMBcliStatus);
    FillFixed(*CMBpotientalStatus);
    CMBpotientalStatus->SetShown(false);
    CMBmanager->SetShown(false);

    FGtree = new OutlineTree(QStringLiteral("FGtree"), this);
    FGtree->setAccessibleName(tr("Clients"));
    FGtree->SetEmptyText(tr("No client meets these limits"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kHalfUnit, theme::kHalfUnit);
    layout->setSpacing(theme::kUnit);
    layout->addWidget(limits);
    layout->addWidget(MakeQuickFind());
    layout->addWidget(FGtree, 1);

    for (PlainCombo* combo : {CMBcliStatus, CMBpotientalStatus, cmbDISGROUP}) {
        connect(combo, &QComboBox::activated, this, &ClientListPane::limitsPicked);
    }
    connect(CMBmanager, &QComboBox::activated, this, &ClientListPane::managerPicked);
}

QWidget* ClientListPane::MakeQuickFind() {
    auto* row = new QWidget(this);
    TXTquick = new TextBox(QStringLiteral("TXTquick"), {}, kLimitCharacters, row);
    TXTquick->setAccessibleName(tr("Quick find"));
    TXTquick->setPlaceholderText(tr("Id, SSN or name"));
    TXTquick->setToolTip(tr("Find a client of this list by id, SSN or name (Ctrl+F)"));
    TXTquick->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    CMDquickFind = new QToolButton(row);
    CMDquickFind->setObjectName(QStringLiteral("CMDquickFind"));
    CMDquickFind->setIcon(theme::Icon(QStringLiteral("search")));
    CMDquickFind->setText(tr("Quick Find"));
    CMDquickFind->setToolTip(tr("Quick Find"));
    CMDquickFind->setFocusPolicy(Qt::StrongFocus);

    Command1 = new QToolButton(row);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setIcon(theme::Icon(QStringLiteral("find_person")));
    Command1->setText(tr("Search"));
    Command1->setToolTip(QStringLiteral("Show the client search screen. (Ctrl+Shift+F)"));
    Command1->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+F")));
    Command1->setAccessibleName(tr("Search all clients"));
    Command1->setFocusPolicy(Qt::StrongFocus);

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(TXTquick, 1);
    layout->addWidget(CMDquickFind);
    layout->addWidget(Command1);

    connect(TXTquick, &QLineEdit::returnPressed, this, &ClientListPane::quickFindPressed);
    connect(CMDquickFind, &QToolButton::clicked, this, &ClientListPane::quickFindPressed);
    connect(Command1, &QToolButton::clicked, this, &ClientListPane::searchPressed);
    return row;
}

ClientLimits ClientListPane::Limits() const {
    ClientLimits limits;
    limits.status = FromQt(CMBcliStatus->Text());
    limits.potentialStatus = FromQt(CMBpotientalStatus->Text());
    limits.group = FromQt(cmbDISGROUP->Text());
    return limits;
}

void ClientListPane::SetStatus(const QString& status) {
    CMBcliStatus->SetText(status);
}

void ClientListPane::FillEmptyLimits() {
    if (cmbDISGROUP->Text().isEmpty()) {
        cmbDISGROUP->SetText(QStringLiteral("ALL"));
    }
    if (CMBcliStatus->Text().isEmpty()) {
        SetStatus(QStringLiteral("ACTIVE"));
    }
}

bool ClientListPane::IsTemplateLimit() const {
    return CMBcliStatus->Text().compare(QLatin1String("TEMPLATES"), Qt::CaseInsensitive) == 0;
}

bool ClientListPane::IsPotentialLimit() const {
    return CMBcliStatus->Text().compare(QLatin1String("POTENTIAL"), Qt::CaseInsensitive) == 0;
}

void ClientListPane::ShowPotentialStatus() {
    CMBpotientalStatus->SetShown(IsPotentialLimit());
}

void ClientListPane::SetManagers(const ManagerList& managers) {
    CMBmanager->SetItems(managers.items);
    CMBmanager->SetTag(ToQt(managers.tag));
    CMBmanager->setCurrentIndex(static_cast<int>(managers.chosen));
    CMBmanager->SetShown(managers.items.size() > 1);
}

std::string ClientListPane::ManagerCode() const {
    const std::vector<std::string> codes = Split(FromQt(CMBmanager->Tag()), '~');
    const auto index = static_cast<std::size_t>(CMBmanager->currentIndex());
    return index < codes.size() ? codes[index] : "all";
}

void ClientListPane::SetTree(const ClientTree& tree) {
    std::vector<OutlineNode> nodes;
    nodes.reserve(tree.nodes.size());
    for (const ClientTreeNode& letter : tree.nodes) {
        nodes.push_back(NodeOf(letter));
    }
    FGtree->SetNodes(std::move(nodes), !tree.collapsed);
}

std::vector<PlainCombo*> ClientListPane::LimitCombos() const {
    return {CMBcliStatus, CMBpotientalStatus, cmbDISGROUP, CMBmanager};
}

void ClientListPane::KeepLimits() {
    kept_.clear();
    for (const PlainCombo* combo : LimitCombos()) {
        kept_.push_back(combo->currentIndex());
    }
}

void ClientListPane::RestoreLimits() {
    const std::vector<PlainCombo*> combos = LimitCombos();
    for (std::size_t i = 0; i < kept_.size(); ++i) {
        combos[i]->setCurrentIndex(kept_[i]);
    }
    ShowPotentialStatus();
}

}  // namespace kv
