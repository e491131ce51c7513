#pragma once
#include "screens/attribute_screen.h"

namespace kv {

/// The skills that a caregiver must have for this client.
class FRMskills : public AttributeScreen {
    Q_OBJECT
  public:
    FRMskills(Session& session, QWidget* parent);
};

}  // namespace kv
