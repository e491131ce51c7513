#pragma once
#include <QDialog>
#include <string>
#include <vector>

#include "clients/lookups.h"
#include "session/session.h"

class QPushButton;

namespace kv {

class Grid;

/// "Find Call Type": chooses one of the call types.
class FRMIdFind : public QDialog {
    Q_OBJECT
  public:
    /// Offers these types; without any, "There are no Call Types".
    FRMIdFind(Session& session, std::vector<LookupItem> types, QWidget* parent = nullptr);
    /// The code of the call type taken, or kCancelled.
    std::string Pick();

    Grid* FGfind = nullptr;
    QPushButton* CMDselect = nullptr;
    QPushButton* Command1 = nullptr;  ///< gives up

  private:
    std::vector<LookupItem> types_;
};

}  // namespace kv
