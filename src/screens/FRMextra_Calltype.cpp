#include "screens/FRMextra_Calltype.h"

namespace kv {

FRMextra_Calltype::FRMextra_Calltype(Session& session, QWidget* parent)
    : AttributeScreen(
          session,
          {AttributeList::CallTypes, "FRMextra_Calltype", "      Extra Call Type Information", "FGcall",
           "CMDExtraCall_Add", "CMDExtraCall_Remove", tr("Add the checked call types to this client."),
           QStringLiteral("Remove Special Call Types from this client."), tr("Extra call &types"),
           tr("Extra call types of this c&lient"), tr("The company has no extra call types in its list"),
           tr("No extra call type")},
          parent) {}

}  // namespace kv
