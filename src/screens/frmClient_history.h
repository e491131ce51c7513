#pragma once
#include <string>
#include <vector>

#include "clients/client_history.h"
#include "screens/frmClient_part.h"

class QPlainTextEdit;

namespace kv {

class Grid;

/// The page of the changes made on the client, the latest first, with the words of the one that is picked.
class FRMhistory : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMhistory(QWidget* parent);
    void ShowHistory(std::vector<HistoryRow> history);

    Grid* FGedit;
    QPlainTextEdit* TXTreason;

  private:
    void ShowReason(int row);

    std::vector<HistoryRow> history_;
};

}  // namespace kv
