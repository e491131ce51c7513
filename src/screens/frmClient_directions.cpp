#include "screens/frmClient_directions.h"

#include <QVBoxLayout>

#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMdirections::FRMdirections(QWidget* parent) : ClientPart(QStringLiteral("FRMdirections"), parent) {
    TXTdirections =
        new MemoBox(QStringLiteral("TXTdirections"), tr("Directions to the client:"), 60, 12, Frame());
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kUnit, theme::kUnit);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(TXTdirections->PlaceLabel());
    layout->addWidget(TXTdirections, 1);
}

std::vector<ClientPart::Tie> FRMdirections::Ties() const {
    return {{TXTdirections, "directions"}};
}

}  // namespace kv
