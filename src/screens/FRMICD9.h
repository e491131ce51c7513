#pragma once
#include <QDialog>
#include <vector>

#include "careplan/client_attributes.h"
#include "session/session.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace kv {

class Grid;
class ToolBar;

/// Whose diagnoses are attached, as the main screen shows it.
struct DiagnosisClient {
    std::string id;
    std::string name;   ///< first and last
    std::string phone;  ///< as it shows
};

/// "Attach ICD9 Codes to Client".
class FRMICD9 : public QDialog {
    Q_OBJECT
  public:
    FRMICD9(Session& session, const DiagnosisClient& client, QWidget* parent = nullptr);
    /// What was attached while the screen was open.
    const std::vector<AttributeItem>& Added() const { return added_; }

    ToolBar* Toolbar1 = nullptr;
    QLineEdit* txtCliId = nullptr;
    QLineEdit* TXTcliname = nullptr;
    QLineEdit* TxtPhone = nullptr;
    QListWidget* LSTicd9 = nullptr;
    QLineEdit* txtLOCATE = nullptr;
    Grid* FGicd9 = nullptr;
    QPushButton* CMDadd = nullptr;
    QPushButton* CMDdel = nullptr;

  private:
    QWidget* MakeHeader(const DiagnosisClient& client);
    void FillList();
    void ShowEntries();
    void AddKey();
    void RemoveKey();
    void Locate();

    Session& session_;
    std::string client_;
    Recordset entries_;
    std::vector<AttributeItem> added_;
};

}  // namespace kv
