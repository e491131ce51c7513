#include "screens/frmClient_referral.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "base/text.h"
#include "clients/client_changes.h"
#include "clients/client_texts.h"
#include "clients/lookups.h"
#include "screens/frmClient_controls.h"
#include "screens/frmPrint.h"
#include "screens/screen_steps.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr int kName = 30;
constexpr int kText = kName + 3;  ///< as wide as a combo with its arrow
constexpr int kDetailLines = 7;

QLabel* MakeCount(const QString& name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

}  // namespace

FRMreferral::FRMreferral(Session& session, QWidget* parent)
    : ClientPart(QStringLiteral("FRMreferral"), parent), session_(session) {
    ListGroup = [] { return std::string("ALL"); };
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    auto* split = new QSplitter(Qt::Horizontal, Frame());
    split->setChildrenCollapsible(false);
    split->addWidget(MakeFind());
    auto* right = new QWidget(split);
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(MakeClient());
    column->addWidget(MakeDetails());
    column->addWidget(MakeGraph(), 1);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    layout->addWidget(split);
    setTabOrder(CMDsaveReferral, FGReferral);
    ApplyGridColors(this, session.COLOR);
}

QWidget* FRMreferral::MakeFind() {
    auto* group = new QGroupBox(QStringLiteral("Limit Referral by:"), Frame());
    auto* form = new FieldForm(group);
    CMBFindCategory =
        new PlainCombo(QStringLiteral("CMBFindCategory"), tr("Category:"), PlainCombo::Style::List, 18, form);
    CMBfindStatus =
        new PlainCombo(QStringLiteral("CMBfindStatus"), tr("Status:"), PlainCombo::Style::List, 18, form);
    form->AddField(*CMBFindCategory);
    form->AddField(*CMBfindStatus);
    FillFixedList(*CMBfindStatus);
    CMBfindStatus->SetText(ToQt(FixedListOf("CMBfindStatus").text));
    FGreferralFind = new OutlineTree(QStringLiteral("FGreferralFind"), group);
    FGreferralFind->setAccessibleName(tr("Referral sources"));
    FGreferralFind->SetEmptyText(tr("No source meets the limits"));
    auto* layout = new QVBoxLayout(group);
    layout->addWidget(form);
    layout->addWidget(FGreferralFind, 1);
    for (PlainCombo* combo : {CMBFindCategory, CMBfindStatus}) {
        connect(combo, &QComboBox::activated, this,
                [this] { Reported(session_, [this] { LoadSources(); }); });
    }
    connect(FGreferralFind, &OutlineTree::rowPicked, this,
            [this](const std::string& id) { Reported(session_, [this, id] { PickRow(id); }); });
    return group;
}

QWidget* FRMreferral::MakeClient() {
    auto* form = new FieldForm(Frame());
    MakeDates(form->AddGroup(QStringLiteral("FRAMEdates"), tr("Dates of Care")));
    MakeSource(form->AddGroup(QStringLiteral("FRAMEsource"), tr("Referred by")));
    form->AddStretch();
    return form;
}

QWidget* FRMreferral::MakeDetails() {
    auto* area = new QWidget(Frame());
    const auto makeGrid = [&](const QString& name, const QString& title) {
        auto* grid = new Grid(name, {{title, 10}, {QString()}}, area);
        grid->setAccessibleName(title);
        grid->setFixedHeight(kDetailLines * grid->verticalHeader()->defaultSectionSize() +
                             grid->horizontalHeader()->sizeHint().height() + 2 * grid->frameWidth());
        return grid;
    };
    FGReferral = makeGrid(QStringLiteral("FGReferral"), tr("Source"));
    FGcontact = makeGrid(QStringLiteral("FGcontact"), tr("Contact"));
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(FGReferral);
    layout->addWidget(FGcontact);
    return area;
}

QWidget* FRMreferral::MakeGraph() {
    auto* group = new QGroupBox(tr("Graph of the Categories"), Frame());
    LSTgraph = new QListWidget(group);
    LSTgraph->setObjectName(QStringLiteral("LSTgraph"));
    LSTgraph->setAccessibleName(tr("Categories in the graph"));
    LSTgraph->setToolTip(tr("Tick the categories that the graph shall show; none ticked means all"));
    LSTgraph->setMinimumHeight(8 * theme::kUnit);
    CMDgraph = new QPushButton(tr("&Graph"), group);
    CMDgraph->setObjectName(QStringLiteral("CMDgraph"));
    CMDgraph->setToolTip(tr("Show how many clients each category sent"));
    auto* layout = new QHBoxLayout(group);
    layout->addWidget(LSTgraph, 1);
    layout->addWidget(CMDgraph, 0, Qt::AlignTop);
    connect(CMDgraph, &QPushButton::clicked, this, [this] { Reported(session_, [this] { GraphKey(); }); });
    return group;
}

void FRMreferral::MakeDates(FieldForm* form) {
    DTEFirstContact = new DateBox(QStringLiteral("DTEFirstContact"), tr("First Contact:"), form);
    DTEstartofcare = new DateBox(QStringLiteral("DTEstartofcare"), tr(kStartOfCare), form);
    DTEendofcare = new DateBox(QStringLiteral("DTEendofcare"), tr(kEndOfCare), form);
    DTEstartofcare->setToolTip(tr("Based on the earliest authorization 'From Date'"));
    DTEendofcare->setToolTip(tr("Based on the latest authorization 'To Date'"));
    LBLdays = MakeCount(QStringLiteral("LBLdays"), form);
    LBLactiveDays = MakeCount(QStringLiteral("LBLactiveDays"), form);

    form->AddField(*DTEFirstContact);
    form->AddField(*DTEstartofcare);
    form->AddBehind(LBLdays);
    form->AddField(*DTEendofcare);
    form->AddBehind(LBLactiveDays);
}

void FRMreferral::MakeSource(FieldForm* form) {
    CMBref_group = MakeOffering(QStringLiteral("CMBref_group"), tr("Category:"), kName, form);
    TXTrefSource = new TextBox(QStringLiteral("TXTrefSource"), tr("Source:"), kText, form);
    TXTrefContact = new TextBox(QStringLiteral("TXTrefContact"), tr("Contact:"), kText, form);
    form->AddField(*CMBref_group);
    form->AddField(*TXTrefSource);
    form->AddField(*TXTrefContact);
    CMDsaveReferral = new QPushButton(tr("Save as &New"), form);
    CMDsaveReferral->setObjectName(QStringLiteral("CMDsaveReferral"));
    CMDsaveReferral->setToolTip(
        QStringLiteral("Save the referral source or the referral contact to the referral system, as a NEW "
                       "source or contact."));
    form->AddBehind(CMDsaveReferral);
    connect(CMDsaveReferral, &QPushButton::clicked, this,
            [this] { Reported(session_, [this] { SaveKey(); }); });
}

void FRMreferral::LoadCategories() {
    const std::vector<std::string> categories = LoadDescriptions(session_, "Ref_group");
    CMBref_group->SetItems(categories);
    QStringList limits = {QStringLiteral("All")};
    LSTgraph->clear();
    for (const std::string& category : categories) {
        limits << ToQt(category);
        auto* item = new QListWidgetItem(ToQt(category), LSTgraph);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    CMBFindCategory->SetItems(limits);
    CMBFindCategory->SetText(QStringLiteral("All"));
}

void FRMreferral::LoadSources() {
    sources_ = LoadReferrals(session_, {FromQt(CMBFindCategory->Text()), FromQt(CMBfindStatus->Text())});
    std::vector<OutlineNode> nodes;
    for (std::size_t at = 0; at < sources_.size(); ++at) {
        OutlineNode node;
        node.text = ToQt(sources_[at].name);
        node.id = std::to_string(at);
        for (std::size_t contact = 0; contact < sources_[at].contacts.size(); ++contact) {
            OutlineNode child;
            child.text = ToQt(sources_[at].contacts[contact]);
            child.id = node.id + "~" + std::to_string(contact);
            node.children.push_back(std::move(child));
        }
        nodes.push_back(std::move(node));
    }
    FGreferralFind->SetNodes(std::move(nodes), false);
    RefreshDetails();
}

// "3" is the fourth source, "3~1" its second contact.
void FRMreferral::PickRow(const std::string& id) {
    const std::vector<std::string> places = Split(id, '~');
    const ReferralSource& source = sources_.at(std::stoul(places.front()));
    session_.FindCriteria = Sql("sequence = {}", source.sequence);
    TXTrefSource->EnterValue(Value(source.name));
    CMBref_group->EnterValue(Value(source.category));
    TXTrefContact->EnterValue(
        Value(places.size() > 1 ? source.contacts.at(std::stoul(places.back())) : std::string()));
    RefreshDetails();
}

void FRMreferral::RefreshDetails() {
    const auto show = [](Grid* grid, const ReferralDetails& details) {
        std::vector<GridRow> rows;
        for (const auto& [name, text] : details) {
            GridRow row;
            row.cells = {Value(name), Value(text)};
            rows.push_back(std::move(row));
        }
        grid->SetRows(std::move(rows));
    };
    const std::string source = FromQt(TXTrefSource->Text());
    FGReferral->SetEmptyText(source.empty() ? QString() : QStringLiteral("Not Found"));
    show(FGReferral, source.empty() ? ReferralDetails() : SourceDetails(session_, source));
    show(FGcontact, ContactDetails(session_, source, FromQt(TXTrefContact->Text())));
}

void FRMreferral::SaveKey() {
    ReferralEntry entry = {FromQt(TXTrefSource->Text()), FromQt(TXTrefContact->Text()),
                           FromQt(CMBref_group->Text())};
    SaveReferral(session_, entry);
    TXTrefSource->EnterValue(Value(entry.source));
    TXTrefContact->EnterValue(Value(entry.contact));
    LoadSources();
}

void FRMreferral::GraphKey() {
    std::vector<std::string> ticked;
    for (int row = 0; row < LSTgraph->count(); ++row) {
        if (LSTgraph->item(row)->checkState() == Qt::Checked) {
            ticked.push_back(FromQt(LSTgraph->item(row)->text()));
        }
    }
    Preview(ReferralGraph(session_, ticked, ListGroup()));
}

void FRMreferral::ShowDays(long days, long activeDays) {
    // A count from a date that is missing says nothing.
    LBLdays->setText(DTEFirstContact->IsFilled() && DTEstartofcare->IsFilled()
                         ? tr("%L1 days after the first contact").arg(days)
                         : QString());
    LBLactiveDays->setText(DTEstartofcare->IsFilled() ? tr("%L1 days in service").arg(activeDays)
                                                      : QString());
}

std::vector<ClientPart::Tie> FRMreferral::Ties() const {
    return {
        {DTEFirstContact, "First_contact"}, {DTEstartofcare, "STARTSERVC"}, {DTEendofcare, "CASEEXPDAT"},
        {CMBref_group, "ref_grouping"},     {TXTrefSource, "ref_source"},   {TXTrefContact, "Ref_name"},
    };
}

}  // namespace kv
