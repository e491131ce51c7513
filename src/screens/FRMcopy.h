#pragma once
#include <QDialog>
#include <vector>

#include "clients/lookups.h"
#include "session/session.h"

class QComboBox;
class QListWidget;
class QPushButton;

namespace kv {

/// "Copy Billing Rates from one Call Type to another".
class FRMcopy : public QDialog {
    Q_OBJECT
  public:
    /// `rates` are the client's call types that have rates; the one chosen at first is `from`.
    FRMcopy(Session& session, const std::string& client, const std::vector<LookupItem>& rates,
            const std::string& from, QWidget* parent = nullptr);

    QComboBox* TXTvistype = nullptr;
    QListWidget* LST1 = nullptr;
    QPushButton* Command1 = nullptr;  ///< all
    QPushButton* Command2 = nullptr;  ///< none
    QPushButton* CMDsave = nullptr;
    QPushButton* CMDexit = nullptr;

  private:
    void TickAll(bool ticked);
    void SaveKey();

    Session& session_;
    std::string client_;
    std::vector<LookupItem> rates_;
    std::vector<LookupItem> types_;
};

}  // namespace kv
