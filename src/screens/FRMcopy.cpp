#include "screens/FRMcopy.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "billing/client_rates.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/window_tools.h"

namespace kv {

FRMcopy::FRMcopy(Session& session, const std::string& client, const std::vector<LookupItem>& rates,
                 const std::string& from, QWidget* parent)
    : QDialog(parent), session_(session), client_(client), rates_(rates) {
    setObjectName(QStringLiteral("FRMcopy"));
    setWindowTitle(QStringLiteral("Copy Billing Rates from one Call Type to another"));
    TXTvistype = new QComboBox(this);
    TXTvistype->setObjectName(QStringLiteral("TXTvistype"));
    for (const LookupItem& rate : rates_) {
        TXTvistype->addItem(ToQt(rate.code + " - " + rate.description), ToQt(rate.code));
    }
    TXTvistype->setCurrentIndex(std::max(0, TXTvistype->findData(ToQt(from))));
    auto* caption = new QLabel(tr("&From:"), this);
    caption->setBuddy(TXTvistype);
    LST1 = new QListWidget(this);
    LST1->setObjectName(QStringLiteral("LST1"));
    LST1->setAccessibleName(tr("To these call types"));
    const auto button = [this](const char* name, const QString& word) {
        auto* key = new QPushButton(word, this);
        key->setObjectName(QString::fromLatin1(name));
        return key;
    };
    Command1 = button("Command1", tr("Select &All"));
    Command2 = button("Command2", tr("Select &None"));
    CMDsave = button("CMDsave", tr("&Copy"));
    CMDexit = button("CMDexit", tr("E&xit"));

    auto* line = new QHBoxLayout;
    line->addWidget(caption);
    line->addWidget(TXTvistype, 1);
    auto* keys = new QHBoxLayout;
    keys->addWidget(Command1);
    keys->addWidget(Command2);
    keys->addStretch(1);
    keys->addWidget(CMDsave);
    keys->addWidget(CMDexit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(line);
    layout->addWidget(new QLabel(tr("To these call types, which have no rates yet:"), this));
    layout->addWidget(LST1, 1);
    layout->addLayout(keys);
    resize(64 * theme::kUnit, 56 * theme::kUnit);

    connect(Command1, &QPushButton::clicked, this, [this] { TickAll(true); });
    connect(Command2, &QPushButton::clicked, this, [this] { TickAll(false); });
    connect(CMDsave, &QPushButton::clicked, this, &FRMcopy::SaveKey);
    connect(CMDexit, &QPushButton::clicked, this, &QDialog::reject);
    try {
        types_ = CallTypesWithoutRate(session, client);
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    }
    for (const LookupItem& type : types_) {
        auto* item = new QListWidgetItem(ToQt(type.code + "  " + type.description), LST1);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    if (types_.empty()) {
        auto* item = new QListWidgetItem(QStringLiteral("There are no Call types"), LST1);
        item->setFlags(Qt::NoItemFlags);
    }
    CMDsave->setEnabled(!types_.empty() && !rates_.empty());
}

void FRMcopy::TickAll(bool ticked) {
    for (std::size_t row = 0; row < types_.size(); ++row) {
        LST1->item(static_cast<int>(row))->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    }
}

void FRMcopy::SaveKey() {
    std::vector<LookupItem> chosen;
    for (std::size_t row = 0; row < types_.size(); ++row) {
        if (LST1->item(static_cast<int>(row))->checkState() == Qt::Checked) {
            chosen.push_back(types_[row]);
        }
    }
    try {
        CopyRate(session_, client_, FromQt(TXTvistype->currentData().toString()), chosen);
        accept();
    } catch (const EngineError& error) {
        ReportEngineError(session_, error);
    }
}

}  // namespace kv
