#include "screens/frmPrint.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScrollBar>
#include <QSpinBox>
#include <QVBoxLayout>
#include <array>
#include <system_error>

#include "printing/render/print.h"
#include "screens/frmCopies.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/preview_pages.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

namespace {

constexpr std::array kPercents = {25, 50, 75, 100, 150, 200, 400};
struct NamedMode {
    const char* name;
    ZoomMode mode;
};
constexpr std::array<NamedMode, 6> kModes = {{{"Percentage", ZoomMode::Percentage},
                                              {"Thumbnail", ZoomMode::Thumbnail},
                                              {"TwoPages", ZoomMode::TwoPages},
                                              {"WholePage", ZoomMode::WholePage},
                                              {"PageWidth", ZoomMode::PageWidth},
                                              {"Stretch", ZoomMode::Stretch}}};

ToolKey PdfToolKey() {
    return {QStringLiteral("pdf"), QObject::tr("PDF"), QObject::tr("Save the pages as a PDF file"),
            QStringLiteral("export"), QKeySequence(QStringLiteral("Ctrl+S"))};
}

}  // namespace

frmPrint::frmPrint(Session& session, const Document& document, QWidget* parent)
    : QDialog(parent), session_(session), layout_(document) {
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(QStringLiteral("Kestrava Print Preview"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Print = [this](int from, int to, int copies) { return PrintOnPrinter(from, to, copies); };
    HasPrinter = [] { return !QPrinterInfo::availablePrinterNames().isEmpty(); };
    AskPdfFile = [this] {
        const QString name = ToQt(layout_.Source().Title()) + QStringLiteral(".pdf");
        return QFileDialog::getSaveFileName(this, tr("Save as PDF"), name, tr("PDF files (*.pdf)"));
    };

    MakeToolbar();
    VP = new PreviewPages(QStringLiteral("VP"), layout_, this);
    scrlPage = new QScrollBar(Qt::Vertical, this);
    scrlPage->setObjectName(QStringLiteral("scrlPage"));
    scrlPage->setAccessibleName(tr("Page"));
    scrlPage->setToolTip(tr("Turns the pages"));
    auto* middle = new QHBoxLayout;
    middle->setSpacing(0);
    middle->addWidget(VP, 1);
    middle->addWidget(scrlPage);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar1);
    all->addLayout(middle, 1);
    all->addWidget(MakeLowerBar());
    resize(110 * theme::kUnit, 95 * theme::kUnit);

    connect(VP, &PreviewPages::pageChanged, this, &frmPrint::UpdateScroller);
    connect(scrlPage, &QScrollBar::valueChanged, VP, &PreviewPages::SetPage);
    UpdateScroller();
    VP->setFocus();
}

frmPrint::~frmPrint() = default;

void frmPrint::MakeToolbar() {
    Toolbar1 = new ToolBar(
        QStringLiteral("Toolbar1"),
        {StandardKey(QStringLiteral("exit")), ToolSeparator(), StandardKey(QStringLiteral("first")),
         StandardKey(QStringLiteral("previous")), StandardKey(QStringLiteral("next")),
         StandardKey(QStringLiteral("last")), StandardKey(QStringLiteral("goto")), ToolSeparator(),
         StandardKey(QStringLiteral("setup")), StandardKey(QStringLiteral("print")), PdfToolKey()},
        this);
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("first"), [this] { MoveTo(1); }},
        {QStringLiteral("previous"), [this] { MoveTo(VP->Page() - VP->Step()); }},
        {QStringLiteral("next"), [this] { MoveTo(VP->Page() + VP->Step()); }},
        {QStringLiteral("last"), [this] { MoveTo(VP->PageCount()); }},
        {QStringLiteral("goto"), [this] { GotoKey(); }},
        {QStringLiteral("setup"), [this] { SetupKey(); }},
        {QStringLiteral("print"), [this] { PrintKey(); }},
        {QStringLiteral("pdf"), [this] { PdfKey(); }},
    };
    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) { keys_.at(key)(); });
}

QWidget* frmPrint::MakeLowerBar() {
    auto* bar = new QWidget(this);
    lblPage = new QLabel(bar);
    lblPage->setObjectName(QStringLiteral("lblPage"));
    auto* lbl = new QLabel(tr("&Zoom:"), bar);
    lbl->setObjectName(QStringLiteral("lbl"));
    cmbZoomMode = new QComboBox(bar);
    cmbZoomMode->setObjectName(QStringLiteral("cmbZoomMode"));
    cmbZoomMode->setAccessibleName(tr("How the pages are shown"));
    for (const NamedMode& mode : kModes) {
        cmbZoomMode->addItem(QString::fromLatin1(mode.name));
    }
    lbl->setBuddy(cmbZoomMode);
    cmbPercent = new QComboBox(bar);
    cmbPercent->setObjectName(QStringLiteral("cmbPercent"));
    cmbPercent->setAccessibleName(tr("Size in percent"));
    for (const int percent : kPercents) {
        cmbPercent->addItem(QStringLiteral("%1%").arg(percent));
    }
    cmbPercent->setCurrentText(QStringLiteral("100%"));

    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    layout->addWidget(lblPage);
    layout->addStretch(1);
    layout->addWidget(lbl);
    layout->addWidget(cmbZoomMode);
    layout->addWidget(cmbPercent);

    connect(cmbZoomMode, &QComboBox::currentIndexChanged, this, [this](int index) {
        VP->SetMode(kModes.at(static_cast<std::size_t>(index)).mode);
        cmbPercent->setEnabled(VP->Mode() == ZoomMode::Percentage);
        UpdateScroller();
    });
    connect(cmbPercent, &QComboBox::currentIndexChanged, this, [this](int index) {
        cmbZoomMode->setCurrentText(QStringLiteral("Percentage"));
        VP->SetZoom(kPercents.at(static_cast<std::size_t>(index)));
    });
    cmbZoomMode->setCurrentText(QStringLiteral("PageWidth"));
    return bar;
}

void frmPrint::UpdateScroller() {
    const int pages = VP->PageCount();
    const int page = VP->Page();
    const QSignalBlocker quiet(scrlPage);
    scrlPage->setRange(1, pages);
    scrlPage->setPageStep(VP->Step());
    scrlPage->setSingleStep(VP->Step());
    scrlPage->setValue(page);
    scrlPage->setVisible(pages > 1);
    const bool two = VP->Step() == 2 && page < pages;
    const QString shown =
        two ? QStringLiteral("%L1 - %L2").arg(page).arg(page + 1) : QStringLiteral("%L1").arg(page);
    lblPage->setText(shown + QStringLiteral(" of %L1").arg(pages));
}

void frmPrint::MoveTo(int page) {
    // A step beyond the end stays where it is; two pages forward may pass the last one.
    if (page <= VP->PageCount()) {
        VP->SetPage(page);
    }
}

void frmPrint::GotoKey() {
    const auto answer = session_.dialogs.AskInput("Go to Page", "Page:", std::to_string(VP->Page()));
    if (!answer) {
        return;
    }
    bool isNumber = false;
    const int page = ToQt(*answer).trimmed().toInt(&isNumber);
    if (isNumber && page >= 1) {
        MoveTo(page);
    }
}

void frmPrint::SetupKey() {
    if (!printer_) {
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    QPrintDialog dialog(printer_.get(), this);
    dialog.setWindowTitle(tr("Printer"));
    dialog.exec();
}

void frmPrint::PrintKey() {
    if (!HasPrinter()) {
        session_.ShowMessageWindow("This computer has no printer. The PDF key keeps the pages as a file.");
        return;
    }
    frmCopies copies(session_, VP->PageCount(), this);
    copies.exec();
    if (session_.Reply != "GO" || VP->PageCount() < 1) {
        return;
    }
    int from = 1;
    int to = VP->PageCount();
    if (copies.Which() == frmCopies::Pages::FromTo) {
        from = copies.numFrom->value();
        to = copies.numTo->value();
    } else if (copies.Which() == frmCopies::Pages::Current) {
        from = to = VP->Page();
    }
    const int number = copies.Numnum->value();
    const bool wholeCopies = number > 1 && copies.chkCollate->isChecked();
    const Hourglass hourglass(session_.progress);
    for (int run = 0; run < (wholeCopies ? number : 1); ++run) {
        if (!Print(from, to, wholeCopies ? 1 : number)) {
            session_.ShowMessageWindow(
                "The printer did not take the pages. Please look at the printer's setup.");
            return;
        }
    }
}

bool frmPrint::PrintOnPrinter(int from, int to, int copies) {
    if (!printer_) {
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    printer_->setCopyCount(copies);
    return PrintPages(layout_, *printer_, from, to);
}

void frmPrint::PdfKey() {
    QString file = AskPdfFile();
    if (file.isEmpty()) {
        return;
    }
    if (!file.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) {
        file += QStringLiteral(".pdf");
    }
    try {
        const Hourglass hourglass(session_.progress);
        SavePdf(layout_, FromQt(file));
    } catch (const std::system_error& error) {
        session_.ShowMessageWindow(std::string("The PDF could not be saved: ") + error.what());
    }
}

void ShowPreview(Session& session, const Document& document, QWidget* parent) {
    frmPrint(session, document, parent).exec();
}

}  // namespace kv
