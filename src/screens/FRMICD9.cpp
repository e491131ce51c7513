#include "screens/FRMICD9.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/screen_steps.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/enter_box.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr AttributeList kList = AttributeList::Diagnoses;

QLineEdit* ReadOnly(const char* name, const QString& words, const std::string& text, int characters,
                    QWidget* parent) {
    auto* box = new QLineEdit(ToQt(text), parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(words);
    box->setReadOnly(true);
    box->setFocusPolicy(Qt::ClickFocus);
    box->setFixedWidth(theme::CharactersWide(*box, characters));
    return box;
}

}  // namespace

FRMICD9::FRMICD9(Session& session, const DiagnosisClient& client, QWidget* parent)
    : QDialog(parent), session_(session), client_(client.id) {
    setObjectName(QStringLiteral("FRMICD9"));
    setWindowTitle(QStringLiteral("Attach ICD9 Codes to Client"));
    Toolbar1 = new ToolBar(QStringLiteral("Toolbar1"), {StandardKey(QStringLiteral("exit"))}, this);
    LSTicd9 = new QListWidget(this);
    LSTicd9->setObjectName(QStringLiteral("LSTicd9"));
    LSTicd9->setAccessibleName(tr("ICD9 codes"));
    LSTicd9->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    LSTicd9->setUniformItemSizes(true);
    txtLOCATE = new EnterBox(this);
    txtLOCATE->setObjectName(QStringLiteral("txtLOCATE"));
    txtLOCATE->setPlaceholderText(tr("A piece of a code or of its text, then Enter"));
    auto* locate = new QLabel(tr("&Locate:"), this);
    locate->setBuddy(txtLOCATE);
    FGicd9 = new Grid(QStringLiteral("FGicd9"), {{tr("Code"), 8}, {QStringLiteral("Description")}}, this);
    FGicd9->setAccessibleName(tr("Codes of this client"));
    FGicd9->SetEmptyText(tr("This client has no ICD9 code"));
    auto* codes = new QLabel(tr("ICD9 &codes"), this);
    codes->setBuddy(LSTicd9);
    auto* own = new QLabel(tr("Codes of this cl&ient"), this);
    own->setBuddy(FGicd9);
    CMDadd = new QPushButton(tr("A&dd  →"), this);
    CMDadd->setObjectName(QStringLiteral("CMDadd"));
    CMDadd->setToolTip(QStringLiteral("Add ICD9 Codes to this client."));
    CMDdel = new QPushButton(tr("&Remove"), this);
    CMDdel->setObjectName(QStringLiteral("CMDdel"));
    CMDdel->setToolTip(QStringLiteral("Remove ICD9 Codes assigned to this client."));
    for (QPushButton* key : {CMDadd, CMDdel}) {
        key->setAutoDefault(false);
    }

    auto* lower = new QGridLayout;
    lower->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kUnit);
    lower->setHorizontalSpacing(theme::kUnit);
    lower->setVerticalSpacing(theme::kHalfUnit);
    lower->addWidget(MakeHeader(client), 0, 0, 1, 4);
    lower->addWidget(locate, 1, 0);
    lower->addWidget(txtLOCATE, 1, 1);
    lower->addWidget(codes, 2, 0, 1, 2);
    lower->addWidget(own, 2, 2, 1, 2);
    lower->addWidget(LSTicd9, 3, 0, 1, 2);
    lower->addWidget(FGicd9, 3, 2, 1, 2);
    lower->addWidget(CMDadd, 4, 1, Qt::AlignRight);
    lower->addWidget(CMDdel, 4, 3, Qt::AlignRight);
    lower->setColumnStretch(1, 1);
    lower->setColumnStretch(3, 1);
    lower->setRowStretch(3, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(Toolbar1);
    all->addLayout(lower, 1);
    resize(110 * theme::kUnit, 62 * theme::kUnit);
    SetTabOrderOf({txtLOCATE, LSTicd9, CMDadd, FGicd9, CMDdel});

    connect(Toolbar1, &ToolBar::keyPressed, this, &QDialog::accept);
    connect(txtLOCATE, &QLineEdit::returnPressed, this, &FRMICD9::Locate);
    connect(CMDadd, &QPushButton::clicked, this, [this] { Reported(session_, [this] { AddKey(); }); });
    connect(CMDdel, &QPushButton::clicked, this, [this] { Reported(session_, [this] { RemoveKey(); }); });
    ApplyGridColors(this, session.COLOR);
    Reported(session_, [this] {
        FillList();
        ShowEntries();
    });
    txtLOCATE->setFocus();
}

QWidget* FRMICD9::MakeHeader(const DiagnosisClient& client) {
    auto* area = new QWidget(this);
    txtCliId = ReadOnly("txtCliId", tr("Client ID"), client.id, 12, area);
    TXTcliname = ReadOnly("TXTcliname", tr("Client"), client.name, 36, area);
    TxtPhone = ReadOnly("TxtPhone", tr("Phone"), client.phone, 18, area);
    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(tr("Client:"), area));
    for (QLineEdit* box : {txtCliId, TXTcliname, TxtPhone}) {
        layout->addWidget(box);
    }
    layout->addStretch(1);
    return area;
}

void FRMICD9::FillList() {
    for (const AttributeItem& item : LoadAttributeItems(session_, kList)) {
        auto* line = new QListWidgetItem(ToQt(DiagnosisLine(item)), LSTicd9);
        line->setFlags(line->flags() | Qt::ItemIsUserCheckable);
        line->setCheckState(Qt::Unchecked);
    }
}

void FRMICD9::ShowEntries() {
    entries_ = OpenAttributes(session_, kList, client_);
    std::vector<GridRow> rows;
    for (; !entries_.Eof(); entries_.MoveNext()) {
        GridRow row;
        row.cells = {entries_.Get("ID"), entries_.Get("Description")};
        rows.push_back(std::move(row));
    }
    CMDdel->setEnabled(!rows.empty());
    FGicd9->SetRows(std::move(rows));
    if (FGicd9->RowCount() > 0) {
        FGicd9->SetCurrentRow(0);
    }
}

void FRMICD9::AddKey() {
    std::vector<AttributeItem> chosen;
    for (int row = 0; row < LSTicd9->count(); ++row) {
        QListWidgetItem* line = LSTicd9->item(row);
        if (line->checkState() == Qt::Checked) {
            chosen.push_back(DiagnosisOf(FromQt(line->text())));
        }
    }
    AddAttributes(session_, kList, client_, chosen);
    for (int row = 0; row < LSTicd9->count(); ++row) {
        LSTicd9->item(row)->setCheckState(Qt::Unchecked);
    }
    added_.insert(added_.end(), chosen.begin(), chosen.end());
    ShowEntries();
}

void FRMICD9::RemoveKey() {
    if (FGicd9->CurrentRow() < 0) {
        return;
    }
    entries_.SetAbsolutePosition(FGicd9->CurrentRow());
    if (RemoveAttribute(session_, kList, entries_, client_)) {
        ShowEntries();
    }
}

void FRMICD9::Locate() {
    const QString piece = txtLOCATE->text();
    if (piece.isEmpty()) {
        return;
    }
    for (int row = 0; row < LSTicd9->count(); ++row) {
        QListWidgetItem* line = LSTicd9->item(row);
        if (line->text().contains(piece, Qt::CaseInsensitive)) {
            LSTicd9->setCurrentItem(line);
            LSTicd9->scrollToItem(line);
            line->setCheckState(Qt::Checked);
            break;
        }
    }
    txtLOCATE->clear();
}

}  // namespace kv
