#include "screens/attribute_screen.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "base/text.h"
#include "screens/FRMMedinput.h"
#include "screens/screen_steps.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr int kTick = 0;

QLabel* Heading(const QString& words, Grid* grid, QWidget* parent) {
    auto* label = new QLabel(words, parent);
    label->setBuddy(grid);
    grid->setAccessibleName(QString(words).remove(QLatin1Char('&')));
    return label;
}

QPushButton* Key(const char* name, const QString& words, const QString& tip, QWidget* parent) {
    auto* key = new QPushButton(words, parent);
    key->setObjectName(QString::fromLatin1(name));
    key->setToolTip(tip);
    return key;
}

}  // namespace

AttributeScreen::AttributeScreen(Session& session, const AttributeScreenTexts& texts, QWidget* parent)
    : SectionScreen(parent), session_(session), list_(texts.list) {
    setObjectName(QString::fromLatin1(texts.screen));
    setWindowTitle(QString::fromLatin1(texts.title));
    Ask = [this] {
        return AskMedinput(session_, QStringLiteral("Add a New Extra Call Type"),
                           QStringLiteral("Description:"), this);
    };
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kUnit, theme::kUnit);
    layout->setSpacing(2 * theme::kUnit);
    layout->addWidget(MakeMaster(texts), 1);
    layout->addWidget(MakeOwn(texts), 1);

    connect(IMGCommand[0], &QPushButton::clicked, this, [this] { TickAll(true); });
    connect(IMGCommand[1], &QPushButton::clicked, this, [this] { TickAll(false); });
    connect(CMDadd, &QPushButton::clicked, this, [this] { Reported(session_, [this] { AddKey(); }); });
    connect(CMDremove, &QPushButton::clicked, this, [this] { Reported(session_, [this] { RemoveKey(); }); });
    ApplyGridColors(this, session.COLOR);
    // Where the rights can't be asked nothing can be changed.
    rights_ = {false, false};
    Reported(session_, [this] {
        items_ = LoadAttributeItems(session_, list_);
        FillMaster();
        rights_ = AskAttributeRights(session_, list_);
    });
    CMDadd->setEnabled(rights_.add);
}

QWidget* AttributeScreen::MakeMaster(const AttributeScreenTexts& texts) {
    auto* area = new QWidget(this);
    GridColumn tick;
    tick.tick = true;
    tick.characters = 4;
    GridColumn code;
    code.hidden = true;
    FGmaster = new Grid(QStringLiteral("FGmaster"), {tick, {QStringLiteral("Description")}, code}, area);
    FGmaster->SetEmptyText(texts.masterEmpty);
    FGmaster->SetTickByRow(true);
    IMGCommand = {Key("IMGCommand_0", tr("Select &All"), tr("Tick everything in this list"), area),
                  Key("IMGCommand_1", tr("&Clear All"), tr("Take all ticks away"), area)};
    CMDadd = Key(texts.add, tr("A&dd  →"), texts.addTip, area);
    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(Heading(texts.masterCaption, FGmaster, area), 0, 0, 1, 4);
    layout->addWidget(FGmaster, 1, 0, 1, 4);
    layout->addWidget(IMGCommand[0], 2, 0);
    layout->addWidget(IMGCommand[1], 2, 1);
    layout->addWidget(CMDadd, 2, 3);
    layout->setColumnStretch(2, 1);
    return area;
}

QWidget* AttributeScreen::MakeOwn(const AttributeScreenTexts& texts) {
    auto* area = new QWidget(this);
    FGown = new Grid(QString::fromLatin1(texts.grid), {{QStringLiteral("Description")}}, area);
    FGown->SetEmptyText(texts.ownEmpty);
    CMDremove = Key(texts.remove, tr("&Remove"), texts.removeTip, area);
    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(Heading(texts.ownCaption, FGown, area), 0, 0, 1, 2);
    layout->addWidget(FGown, 1, 0, 1, 2);
    layout->addWidget(CMDremove, 2, 1);
    layout->setColumnStretch(0, 1);
    return area;
}

void AttributeScreen::FillMaster() {
    std::vector<GridRow> rows;
    for (const AttributeItem& item : items_) {
        GridRow row;
        row.cells = {Value(false),
                     Value(item.critical ? item.description + "  (critical)" : item.description),
                     Value(item.code)};
        row.bold = item.critical;
        rows.push_back(std::move(row));
    }
    FGmaster->SetRows(std::move(rows));
}

void AttributeScreen::SetHiddenID(const std::string& id, ClientForm& /*mainScreen*/) {
    if (id != client_) {
        TickAll(false);
    }
    client_ = id;
    ShowEntries();
}

void AttributeScreen::ShowEntries() {
    entries_ = OpenAttributes(session_, list_, client_);
    std::vector<GridRow> rows;
    for (; !entries_.Eof(); entries_.MoveNext()) {
        const std::string code = entries_.Text("ID");
        const bool critical = std::any_of(items_.begin(), items_.end(), [&](const AttributeItem& item) {
            return item.critical && EqualsNoCase(item.code, code);
        });
        GridRow row;
        const std::string text = entries_.Text("Description");
        row.cells = {Value(critical ? text + "  (critical)" : text)};
        row.bold = critical;
        rows.push_back(std::move(row));
    }
    const bool any = !rows.empty();
    FGown->SetRows(std::move(rows));
    if (any) {
        FGown->SetCurrentRow(0);
    }
    CMDremove->setEnabled(any && rights_.remove);
}

void AttributeScreen::TickAll(bool ticked) {
    for (int row = 0; row < FGmaster->RowCount(); ++row) {
        FGmaster->SetCell(row, kTick, Value(ticked));
    }
}

void AttributeScreen::AddKey() {
    std::vector<AttributeItem> chosen;
    for (int row = 0; row < FGmaster->RowCount(); ++row) {
        if (FGmaster->Cell(row, kTick).ToBoolean()) {
            chosen.push_back(items_[static_cast<std::size_t>(row)]);
        }
    }
    if (chosen.empty()) {
        session_.ShowMessageWindow("Check items on the left first, then click Add");
        return;
    }
    AddAttributes(session_, list_, client_, chosen, Ask);
    TickAll(false);
    ShowEntries();
}

void AttributeScreen::RemoveKey() {
    if (FGown->CurrentRow() < 0) {
        return;
    }
    entries_.SetAbsolutePosition(FGown->CurrentRow());
    if (RemoveAttribute(session_, list_, entries_, client_)) {
        ShowEntries();
    }
}

}  // namespace kv
