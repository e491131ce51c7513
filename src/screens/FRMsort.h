#pragma once
#include <QDialog>

#include "clients/client_sort.h"

class QCheckBox;
class QListWidget;
class QPushButton;

namespace kv {

/// "Sort Options for Client": chooses the order of the client list.
class FRMsort : public QDialog {
    Q_OBJECT
  public:
    explicit FRMsort(QWidget* parent = nullptr);
    /// What was chosen; nothing when the operator gave up.
    ClientOrder Order() const;

    QListWidget* lstData = nullptr;
    QListWidget* lstSort = nullptr;
    QCheckBox* Check1 = nullptr;
    QPushButton* CMDadd = nullptr;
    QPushButton* cmdRemove = nullptr;
    QPushButton* CMDok = nullptr;
    QPushButton* CMDcancel = nullptr;

  private:
    void Add();
    void Remove();
    void MarkLast(bool descending);
    void ShowState();

    std::vector<SortField> chosen_;
};

}  // namespace kv
