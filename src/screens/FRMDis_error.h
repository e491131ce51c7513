#pragma once
#include <QDialog>
#include <QStringList>

class QListWidget;
class QPushButton;

namespace kv {

/// "Current Errors Found": all faults of a screen in one list.
class FRMDis_error : public QDialog {
    Q_OBJECT
  public:
    explicit FRMDis_error(QWidget* parent = nullptr);
    void SetLines(const QStringList& lines);

    QListWidget* LSTerror = nullptr;
    QPushButton* CMDok = nullptr;
};

}  // namespace kv
