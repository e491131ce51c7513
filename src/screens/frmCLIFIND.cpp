#include "screens/frmCLIFIND.h"

#include "clients/client_find.h"
#include "clients/lookups.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

PickScreenTexts Texts(Session& session) {
    PickScreenTexts texts;
    texts.name = QStringLiteral("frmCLIFIND");
    texts.title = QStringLiteral("Find Client");
    texts.exitTip = QStringLiteral("Exit without selecting a client.");
    texts.fields = {ClientFindFields().begin(), ClientFindFields().end()};
    texts.statuses = {ClientFindStatuses().begin(), ClientFindStatuses().end()};
    texts.status = texts.statuses.front();
    try {
        texts.groups = LoadDescriptions(session, "cli_group");
    } catch (const EngineError& error) {
        ReportEngineError(session, error);
    }
    texts.columns = {{QStringLiteral("ID"), 10},         {QStringLiteral("Last Name"), 20},
                     {QStringLiteral("First Name"), 16}, {QStringLiteral("Phone"), 15},
                     {QStringLiteral("Group"), 16},      {QStringLiteral("Status"), 7}};
    texts.label = [](const std::string& field) { return ToQt(ClientFindLabel(field)); };
    texts.search = [&session](const PickQuery& query) { return FindClients(session, query); };
    return texts;
}

}  // namespace

frmCLIFIND::frmCLIFIND(Session& session, QWidget* parent) : PickScreen(session, Texts(session), parent) {}

std::string PickClient(Session& session, QWidget* parent) {
    session.PickedClient = frmCLIFIND(session, parent).Pick();
    return session.PickedClient;
}

}  // namespace kv
