#include "screens/frmClient_history.h"

#include <QLabel>
#include <QVBoxLayout>

#include "screens/history_view.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMhistory::FRMhistory(QWidget* parent) : ClientPart(QStringLiteral("FRMhistory"), parent) {
    Label1 = new QLabel(Frame());
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setTextFormat(Qt::PlainText);
    View = new HistoryView(tr("Nothing was changed on this client"), Frame());
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kUnit, theme::kUnit);
    layout->addWidget(Label1);
    layout->addWidget(View, 1);
}

void FRMhistory::ShowHistory(const std::string& clientId, const std::vector<HistoryRow>& history) {
    Label1->setText(clientId.empty() ? QString() : QStringLiteral("Client ID: ") + ToQt(clientId));
    View->SetRows(history);
}

}  // namespace kv
