#pragma once
#include <QDialog>
#include <functional>
#include <vector>

#include "clients/new_client.h"
#include "screens/screen_steps.h"
#include "session/session.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace kv {

class DateBox;
class ToolBar;

/// "New Client ID": makes a client. Session::PickedEmployee is the new id, or "Cancel".
class frmnew : public QDialog {
    Q_OBJECT
  public:
    explicit frmnew(Session& session, QWidget* parent = nullptr);
    bool IsTemplate() const;
    bool IsPotential() const;

    ToolBar* Toolbar1 = nullptr;
    QLineEdit* TDBText1 = nullptr;
    QLabel* LBLresult = nullptr;
    DateBox* TXTstdate = nullptr;
    QCheckBox* CHKnew_Template = nullptr;
    QCheckBox* CHKPotential = nullptr;
    QListWidget* LSTtemplate = nullptr;
    QGroupBox* FRAauth = nullptr;  ///< "Create Authorization and Billing Rate"
    QComboBox* cmbPayor = nullptr;
    QComboBox* cmbVisType = nullptr;
    QLineEdit* TXTviscode = nullptr;

    /// Picks any client; its id, or kCancelled.
    std::function<std::string()> PickPattern;

    void accept() override;
    void reject() override;

  private:
    void MakeToolbar();
    QWidget* MakeClient();
    QWidget* MakePattern();
    QWidget* MakeAuthorization();
    void Fill();
    void CheckId();
    void GenerateKey();
    void SaveKey();
    void OptionsChanged();
    void TemplateTicked(QListWidgetItem* item);
    std::string Pattern() const;

    Session& session_;
    std::vector<TemplateRow> templates_;
    std::vector<PayerItem> payers_;
    KeySteps keys_;
};

}  // namespace kv
