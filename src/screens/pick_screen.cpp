#include "screens/pick_screen.h"

#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "screens/widgets/bound_control.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

QComboBox* MakeList(const QString& name, const std::vector<std::string>& items, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    for (const std::string& item : items) {
        list->addItem(ToQt(item));
    }
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return list;
}

}  // namespace

PickScreen::PickScreen(Session& session, PickScreenTexts texts, QWidget* parent)
    : QDialog(parent), session_(session), texts_(std::move(texts)) {
    setObjectName(texts_.name);
    setWindowTitle(texts_.title);
    MakeToolbar();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, theme::kUnit);
    all->addWidget(Toolbar3);
    all->addWidget(MakeCriteria());
    FGfind = new Grid(QStringLiteral("FGfind"), texts_.columns, this);
    FGfind->setAccessibleName(texts_.title);
    FGfind->SetEmptyText(tr("Nobody was found"));
    auto* lower = new QVBoxLayout;
    lower->setContentsMargins(theme::kUnit, 0, theme::kUnit, 0);
    lower->addWidget(FGfind);
    all->addLayout(lower, 1);
    resize(95 * theme::kUnit, 70 * theme::kUnit);
    SetTabOrderOf({Text1, Combo1, Combo2, cmbDISGROUP, FGfind});

    connect(Text1, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty() && texts_.emptyTextResetsGroup) {
            const QSignalBlocker quiet(cmbDISGROUP);
            cmbDISGROUP->setCurrentIndex(0);
        }
        Search();
    });
    connect(Combo1, &QComboBox::currentTextChanged, this, [this](const QString& field) {
        LBLtext->setText(texts_.label(FromQt(field)));
        Search();
        Text1->setFocus();
    });
    connect(Combo2, &QComboBox::currentTextChanged, this, &PickScreen::Search);
    connect(cmbDISGROUP, &QComboBox::currentTextChanged, this, &PickScreen::Search);
    connect(FGfind, &Grid::rowActivated, this, [this](int /*row*/) { Take(); });
    Text1->installEventFilter(this);
    ApplyGridColors(this, session.COLOR);
    Search();
    Text1->setFocus();
}

void PickScreen::MakeToolbar() {
    Toolbar3 = new ToolBar(
        QStringLiteral("Toolbar3"),
        {StandardKey(QStringLiteral("select")), StandardKey(QStringLiteral("exit"), texts_.exitTip),
         ToolSeparator(), StandardKey(QStringLiteral("first")), StandardKey(QStringLiteral("previous")),
         StandardKey(QStringLiteral("next")), StandardKey(QStringLiteral("last"))},
        this);
    keys_ = {
        {QStringLiteral("select"), [this] { Take(); }},
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("first"), [this] { MoveTo(0); }},
        {QStringLiteral("previous"), [this] { MoveTo(FGfind->CurrentRow() - 1); }},
        {QStringLiteral("next"), [this] { MoveTo(FGfind->CurrentRow() + 1); }},
        {QStringLiteral("last"), [this] { MoveTo(static_cast<int>(rows_.size()) - 1); }},
    };
    connect(Toolbar3, &ToolBar::keyPressed, this, [this](const QString& key) { keys_.at(key)(); });
}

QWidget* PickScreen::MakeCriteria() {
    auto* area = new QWidget(this);
    Combo1 = MakeList(QStringLiteral("Combo1"), texts_.fields, area);
    Combo2 = MakeList(QStringLiteral("Combo2"), texts_.statuses, area);
    Combo2->setCurrentText(ToQt(texts_.status));
    cmbDISGROUP = MakeList(QStringLiteral("cmbDISGROUP"), {"ALL"}, area);
    for (const std::string& group : texts_.groups) {
        cmbDISGROUP->addItem(ToQt(group));
    }
    Text1 = new QLineEdit(area);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setClearButtonEnabled(true);
    LBLtext = new QLabel(texts_.label(FromQt(Combo1->currentText())), area);
    LBLtext->setObjectName(QStringLiteral("LBLtext"));
    LBLtext->setBuddy(Text1);

    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    const auto labelled = [&](const QString& caption, QComboBox* list, int column) {
        auto* label = new QLabel(caption, area);
        label->setBuddy(list);
        layout->addWidget(label, 0, column);
        layout->addWidget(list, 1, column);
    };
    layout->addWidget(LBLtext, 0, 0);
    layout->addWidget(Text1, 1, 0);
    labelled(tr("Which &Field:"), Combo1, 1);
    labelled(tr("Which S&tatus:"), Combo2, 2);
    labelled(tr("Which &Group:"), cmbDISGROUP, 3);
    layout->setColumnStretch(0, 1);
    return area;
}

void PickScreen::Search() {
    PickQuery query;
    query.field = FromQt(Combo1->currentText());
    query.status = FromQt(Combo2->currentText());
    query.group = FromQt(cmbDISGROUP->currentText());
    query.text = FromQt(Text1->text());
    try {
        rows_ = texts_.search(query);
    } catch (const EngineError& error) {
        // Nothing that was found before may be taken for this.
        rows_.clear();
        ReportEngineError(session_, error);
    }
    std::vector<GridRow> shown;
    shown.reserve(rows_.size());
    for (const std::vector<Value>& cells : rows_) {
        GridRow row;
        row.cells = cells;
        shown.push_back(std::move(row));
    }
    FGfind->SetRows(std::move(shown));
    FGfind->SetCurrentRow(rows_.empty() ? -1 : 0);
}

void PickScreen::Take() {
    const auto row = static_cast<std::size_t>(FGfind->CurrentRow());
    if (row >= rows_.size()) {
        session_.ShowMessageWindow("There are no records to move to");
        return;
    }
    picked_ = rows_[row].front().ToText();
    accept();
}

void PickScreen::MoveTo(int row) {
    const int count = static_cast<int>(rows_.size());
    if (count == 0) {
        session_.ShowMessageWindow("There are no records to move to");
    } else if (row >= count) {
        session_.ShowMessageWindow("End of the file!");
    } else if (row < 0) {
        session_.ShowMessageWindow("Start of File!");
    } else {
        FGfind->SetCurrentRow(row);
    }
}

std::string PickScreen::Pick() {
    picked_ = kCancelled;
    exec();
    return picked_.empty() ? kCancelled : picked_;
}

bool PickScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Text1 && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Take();
            return true;
        }
        // The list moves while the hand stays at the text.
        if (key == Qt::Key_Down || key == Qt::Key_Up) {
            MoveTo(FGfind->CurrentRow() + (key == Qt::Key_Down ? 1 : -1));
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace kv
