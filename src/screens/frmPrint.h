#pragma once
#include <QDialog>
#include <functional>
#include <memory>

#include "printing/render/page_layout.h"
#include "screens/screen_steps.h"
#include "session/session.h"

class QComboBox;
class QLabel;
class QPrinter;
class QScrollBar;

namespace kv {

class PreviewPages;
class ToolBar;

/// "Kestrava Print Preview": shows a printout, and prints it or keeps it as a PDF.
class frmPrint : public QDialog {
    Q_OBJECT
  public:
    frmPrint(Session& session, const Document& document, QWidget* parent = nullptr);
    ~frmPrint() override;

    PreviewPages* VP = nullptr;
    QScrollBar* scrlPage = nullptr;
    QLabel* lblPage = nullptr;
    QComboBox* cmbPercent = nullptr;
    QComboBox* cmbZoomMode = nullptr;
    ToolBar* Toolbar1 = nullptr;

    /// Prints a range of pages so many times; the printer's own copies. False where the printer refused.
    std::function<bool(int from, int to, int copies)> Print;
    /// Answers whether there is a printer to print on.
    std::function<bool()> HasPrinter;
    /// The file to keep the PDF in, or empty.
    std::function<QString()> AskPdfFile;

  private:
    void MakeToolbar();
    QWidget* MakeLowerBar();
    void UpdateScroller();
    void MoveTo(int page);
    void GotoKey();
    void SetupKey();
    void PrintKey();
    void PdfKey();
    bool PrintOnPrinter(int from, int to, int copies);

    Session& session_;
    PageLayout layout_;
    std::unique_ptr<QPrinter> printer_;
    KeySteps keys_;
};

/// Shows the preview until the operator leaves it.
void ShowPreview(Session& session, const Document& document, QWidget* parent);

}  // namespace kv
