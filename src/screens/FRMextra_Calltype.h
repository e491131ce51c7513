#pragma once
#include "screens/attribute_screen.h"

namespace kv {

/// Extra call types of a client.
class FRMextra_Calltype : public AttributeScreen {
    Q_OBJECT
  public:
    FRMextra_Calltype(Session& session, QWidget* parent);
};

}  // namespace kv
