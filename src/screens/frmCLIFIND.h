#pragma once
#include "screens/pick_screen.h"

namespace kv {

/// "Find Client": picks one of all clients, for any screen.
class frmCLIFIND : public PickScreen {
    Q_OBJECT
  public:
    explicit frmCLIFIND(Session& session, QWidget* parent = nullptr);
};

}  // namespace kv
