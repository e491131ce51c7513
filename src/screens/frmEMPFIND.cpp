#include "screens/frmEMPFIND.h"

#include "base/text.h"
#include "clients/caregiver_find.h"
#include "clients/lookups.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

PickScreenTexts Texts(Session& session) {
    PickScreenTexts texts;
    texts.name = QStringLiteral("frmEMPFIND");
    texts.title = QStringLiteral("Find Caregiver");
    texts.exitTip = QStringLiteral("Exit without selecting a caregiver.");
    bool mayViewSsn = false;
    try {
        mayViewSsn = MayViewCaregiverSsn(session);
        texts.groups = LoadDescriptions(session, "emp_group");
    } catch (const EngineError& error) {
        ReportEngineError(session, error);
    }
    texts.fields = CaregiverFindFields(mayViewSsn);
    texts.statuses = {CaregiverFindStatuses().begin(), CaregiverFindStatuses().end()};
    texts.status = kCaregiverFindStatus;
    texts.emptyTextResetsGroup = true;
    texts.columns = {{QStringLiteral("ID"), 10},         {QStringLiteral("Last Name"), 20},
                     {QStringLiteral("First Name"), 16}, {QStringLiteral("Phone"), 15},
                     {QStringLiteral("SSNO"), 12},       {QStringLiteral("Group"), 16},
                     {QStringLiteral("Status"), 7}};
    texts.columns[4].hidden = !mayViewSsn;
    texts.label = [](const std::string& field) { return ToQt(Trim(field) + ":"); };
    texts.search = [&session](const PickQuery& query) { return FindCaregivers(session, query); };
    return texts;
}

}  // namespace

frmEMPFIND::frmEMPFIND(Session& session, QWidget* parent) : PickScreen(session, Texts(session), parent) {}

std::string PickEmployee(Session& session, QWidget* parent) {
    session.PickedEmployee = frmEMPFIND(session, parent).Pick();
    return session.PickedEmployee;
}

}  // namespace kv
