#pragma once
#include "screens/pick_screen.h"

namespace kv {

/// "Find Caregiver": picks one of all caregivers, for any screen.
class frmEMPFIND : public PickScreen {
    Q_OBJECT
  public:
    explicit frmEMPFIND(Session& session, QWidget* parent = nullptr);
};

}  // namespace kv
