#pragma once
#include <QDialog>
#include <functional>
#include <string>

#include "screens/screen_steps.h"
#include "session/session.h"

class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace kv {

class ToolBar;

/// What the browser is opened for.
struct WebVisit {
    enum class Kind { Map, Directions };
    Kind kind = Kind::Map;
    std::string address;
    std::string home;
    std::string clientId;
    /// Takes the text that the operator copied out of the directions; without it nothing is saved.
    std::function<void(const std::string&)> takeText;
    std::string note;  ///< in place of the words on how to save
};

/// A browser for maps and directions. Its engine is loaded when the first one is opened.
class FRMweb : public QDialog {
    Q_OBJECT
  public:
    /// Makes the view: a widget with the property "url", the slots back, forward, stop and reload, and the
    /// signals loadStarted() and loadFinished(bool). Throws std::runtime_error with words for the operator.
    using ViewMaker = std::function<QWidget*(QWidget* parent)>;

    FRMweb(Session& session, WebVisit visit, const ViewMaker& makeView, QWidget* parent = nullptr);

    ToolBar* Toolbar1 = nullptr;
    QLineEdit* TXTcurrent = nullptr;
    QLabel* LBLstate = nullptr;  ///< "Busy" or "Done"
    QLabel* LBLnote = nullptr;
    QWidget* View = nullptr;

    /// Prints the page shown.
    std::function<void()> Print;

  private slots:
    void ShowBusy();
    void ShowDone();
    void ShowAddress(const QUrl& address);

  private:
    void MakeToolbar();
    void GoTo(const std::string& address);
    void SaveKey();
    bool SavePicture();
    bool SaveText();

    Session& session_;
    WebVisit visit_;
    KeySteps keys_;
};

/// The view of the program's browser module, which lies beside the program. Throws std::runtime_error where
/// it can't be loaded.
QWidget* MakeWebView(QWidget* parent);
/// Prints what such a view shows into a PDF file.
void PrintWebView(QWidget* view, const QString& file);

}  // namespace kv
