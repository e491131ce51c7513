#include "screens/FRMskills.h"

namespace kv {

FRMskills::FRMskills(Session& session, QWidget* parent)
    : AttributeScreen(
          session,
          {AttributeList::Skills, "FRMskills", "      Skills", "FGskills", "CMDSkills_Add",
           "CMDSkills_Remove", tr("Add the checked skills to this client."),
           tr("Remove the skill from this client."), tr("&Skills"), tr("Skills required for this &client"),
           tr("The company has no skills in its list"), tr("No skill is required")},
          parent) {}

}  // namespace kv
