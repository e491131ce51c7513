#include "screens/FRMsort.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

QListWidget* MakeList(const QString& name, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setMinimumWidth(theme::CharactersWide(*list, 24));
    return list;
}

QPushButton* MakeButton(const QString& name, const QString& word, QWidget* parent) {
    auto* button = new QPushButton(word, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

FRMsort::FRMsort(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FRMsort"));
    setWindowTitle(QStringLiteral("Sort Options for Client"));
    lstData = MakeList(QStringLiteral("lstData"), this);
    lstSort = MakeList(QStringLiteral("lstSort"), this);
    auto* available = new QLabel(QStringLiteral("A&vailable Fields"), this);
    available->setBuddy(lstData);
    auto* chosen = new QLabel(QStringLiteral("C&hosen Fields"), this);
    chosen->setBuddy(lstSort);
    CMDadd = MakeButton(QStringLiteral("CMDadd"), tr("&Add >"), this);
    cmdRemove = MakeButton(QStringLiteral("cmdRemove"), tr("< &Remove"), this);
    Check1 = new QCheckBox(QStringLiteral("= &Descending order"), this);
    Check1->setObjectName(QStringLiteral("Check1"));
    Check1->setToolTip(tr("For the field that was chosen last"));
    CMDok = MakeButton(QStringLiteral("CMDok"), tr("&OK"), this);
    CMDok->setDefault(true);
    CMDcancel = MakeButton(QStringLiteral("CMDcancel"), tr("&Cancel"), this);

    auto* moves = new QVBoxLayout;
    moves->addStretch(1);
    moves->addWidget(CMDadd);
    moves->addWidget(cmdRemove);
    moves->addStretch(1);
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMDok);
    keys->addWidget(CMDcancel);
    auto* layout = new QGridLayout(this);
    layout->addWidget(available, 0, 0);
    layout->addWidget(chosen, 0, 2);
    layout->addWidget(lstData, 1, 0);
    layout->addLayout(moves, 1, 1);
    layout->addWidget(lstSort, 1, 2);
    layout->addWidget(Check1, 2, 2);
    layout->addLayout(keys, 3, 0, 1, 3);
    for (const std::string_view field : ClientSortFields()) {
        lstData->addItem(ToQt(field));
    }
    lstData->setCurrentRow(0);

    connect(CMDadd, &QPushButton::clicked, this, &FRMsort::Add);
    connect(lstData, &QListWidget::itemDoubleClicked, this, &FRMsort::Add);
    connect(cmdRemove, &QPushButton::clicked, this, &FRMsort::Remove);
    connect(lstSort, &QListWidget::itemDoubleClicked, this, &FRMsort::Remove);
    connect(Check1, &QCheckBox::clicked, this, &FRMsort::MarkLast);
    connect(CMDok, &QPushButton::clicked, this, &QDialog::accept);
    connect(CMDcancel, &QPushButton::clicked, this, &QDialog::reject);
    ShowState();
}

void FRMsort::Add() {
    const int row = lstData->currentRow();
    if (row >= 0) {
        const std::unique_ptr<QListWidgetItem> taken(lstData->takeItem(row));
        chosen_.push_back({FromQt(taken->text()), false});
        ShowState();
    }
}

void FRMsort::Remove() {
    const int row = lstSort->currentRow() >= 0 ? lstSort->currentRow() : lstSort->count() - 1;
    if (row >= 0) {
        lstData->addItem(ToQt(chosen_[static_cast<std::size_t>(row)].name));
        chosen_.erase(chosen_.begin() + row);
        ShowState();
    }
}

void FRMsort::MarkLast(bool descending) {
    if (!chosen_.empty()) {
        chosen_.back().descending = descending;
        ShowState();
    }
}

void FRMsort::ShowState() {
    lstSort->clear();
    for (const SortField& field : chosen_) {
        lstSort->addItem(ToQt(field.name) + (field.descending ? QStringLiteral(" DESC") : QString()));
    }
    Check1->setEnabled(!chosen_.empty());
    Check1->setChecked(!chosen_.empty() && chosen_.back().descending);
    CMDadd->setEnabled(lstData->count() > 0);
    cmdRemove->setEnabled(!chosen_.empty());
}

ClientOrder FRMsort::Order() const {
    return result() == QDialog::Accepted ? OrderOf(chosen_) : ClientOrder();
}

}  // namespace kv
