#pragma once
#include <string>
#include <vector>

#include "clients/change_history.h"
#include "screens/frmClient_part.h"

class QLabel;

namespace kv {

class HistoryView;

/// The page of the changes made on the client, the latest first, with the words of the one that is picked.
class FRMhistory : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMhistory(QWidget* parent);
    void ShowHistory(const std::string& clientId, const std::vector<HistoryRow>& history);

    QLabel* Label1 = nullptr;  ///< "Client ID:" and the id
    HistoryView* View = nullptr;
};

}  // namespace kv
