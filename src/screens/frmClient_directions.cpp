#include "screens/frmClient_directions.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <stdexcept>
#include <system_error>

#include "base/platform.h"
#include "clients/client_texts.h"
#include "screens/frmClient_controls.h"
#include "screens/frmPrint.h"
#include "screens/page_fetcher.h"
#include "screens/screen_steps.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

FRMdirections::FRMdirections(Session& session, QWidget* parent)
    : ClientPart(QStringLiteral("FRMdirections"), parent), session_(session) {
    Preview = [this](const Document& document) { ShowPreview(session_, document, this); };
    Fetch = FetchPage;
    MakeView = MakeWebView;
    Toolbar7 = new ToolBar(QStringLiteral("Toolbar7"),
                           {ToolKey{QStringLiteral("find_dir"),
                                    tr("Find Directions"),
                                    tr("Show the way to this client on the web"),
                                    QStringLiteral("route"),
                                    {}},
                            ToolKey{QStringLiteral("find_map"),
                                    tr("Find Map"),
                                    tr("Show a map of this client on the web"),
                                    QStringLiteral("map"),
                                    {}},
                            StandardKey(QStringLiteral("print"), tr("Print the map and the directions"))},
                           Frame());
    CMBwhichMap =
        new PlainCombo(QStringLiteral("CMBwhichMap"), tr("&Map:"), PlainCombo::Style::List, 16, Frame());
    FillFixedList(*CMBwhichMap);
    CMBwhichMap->SetText(ToQt(FixedListOf("CMBwhichMap").text));
    TXTdirections =
        new MemoBox(QStringLiteral("TXTdirections"), tr("Directions to the client:"), 60, 12, Frame());
    auto* top = new QHBoxLayout;
    top->addWidget(Toolbar7);
    top->addStretch(1);
    top->addWidget(CMBwhichMap->PlaceLabel());
    top->addWidget(CMBwhichMap);
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, 0, theme::kUnit, theme::kUnit);
    layout->setSpacing(theme::kHalfUnit);
    layout->addLayout(top);
    layout->addWidget(TXTdirections->PlaceLabel());
    layout->addWidget(TXTdirections, 1);
    keys_ = {
        {QStringLiteral("find_dir"), [this] { FindDirectionsKey(); }},
        {QStringLiteral("find_map"), [this] { FindMapKey(); }},
        {QStringLiteral("print"), [this] { PrintKey(); }},
    };
    connect(Toolbar7, &ToolBar::keyPressed, this,
            [this](const QString& key) { Reported(session_, keys_.at(key)); });
}

std::vector<ClientPart::Tie> FRMdirections::Ties() const {
    return {{TXTdirections, "directions"}};
}

PostalAddress FRMdirections::ClientAddress() const {
    const PrintedClient client = Client();
    return {client.street, client.city, client.state, client.zip};
}

void FRMdirections::Visit(WebVisit visit) {
    visit.home = ReadMapServers(session_).home;
    visit.clientId = Client().id;
    visit.takeText = [this](const std::string& text) { TXTdirections->EnterValue(Value(text)); };
    try {
        FRMweb(session_, std::move(visit), MakeView, this).exec();
    } catch (const std::runtime_error& error) {
        session_.ShowMessageWindow(error.what());
    }
}

void FRMdirections::FindDirectionsKey() {
    const MapServers servers = ReadMapServers(session_);
    if (servers.directions.empty()) {
        session_.ShowMessageWindow(MapServerMissing(session_, "DirectionsServer"));
        return;
    }
    WebVisit visit;
    visit.kind = WebVisit::Kind::Directions;
    visit.address = DirectionsAddress(servers, AgencyMapAddress(session_), ClientAddress());
    Visit(std::move(visit));
}

void FRMdirections::FindMapKey() {
    const MapServers servers = ReadMapServers(session_);
    if (servers.map.empty()) {
        session_.ShowMessageWindow(MapServerMissing(session_, "MapServer"));
        return;
    }
    WebVisit visit;
    visit.address = MapAddress(servers, ClientAddress(), kScreenMapSize);
    Visit(std::move(visit));
}

/// A picture that can't be had leaves the one of before.
void FRMdirections::FetchPicture(const std::filesystem::path& file) {
    const MapServers servers = ReadMapServers(session_);
    if (servers.map.empty()) {
        return;
    }
    const Hourglass hourglass(session_.progress);
    try {
        WriteClientPicture(file, Fetch(MapAddress(servers, ClientAddress(), kPrintMapSize)));
    } catch (const std::runtime_error& error) {
        session_.ShowMessageWindow(std::string("The map could not be fetched: ") + error.what());
    }
}

void FRMdirections::PrintKey() {
    const PrintedClient client = Client();
    const std::filesystem::path file = ClientPictureFile(session_, client.id, ".jpg");
    FetchPicture(file);
    Preview(DirectionsPrint(client, ReadFile(file).value_or(std::string()), FromQt(TXTdirections->Text())));
}

}  // namespace kv
