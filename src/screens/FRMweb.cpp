#include "screens/FRMweb.h"

#include <QBuffer>
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <QVBoxLayout>
#include <system_error>

#include "clients/directions.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

namespace {

ToolKey Key(const char* name, const QString& word, const QString& tip, const char* shortcut = "") {
    return {QString::fromLatin1(name), word, tip, QString::fromLatin1(name),
            QKeySequence(QString::fromLatin1(shortcut))};
}

}  // namespace

FRMweb::FRMweb(Session& session, WebVisit visit, const ViewMaker& makeView, QWidget* parent)
    : QDialog(parent), session_(session), visit_(std::move(visit)) {
    setObjectName(QStringLiteral("FRMweb"));
    setWindowTitle(visit_.kind == WebVisit::Kind::Map ? tr("Map") : tr("Directions"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    View = makeView(this);
    Print = [this] {
        const QString file = QFileDialog::getSaveFileName(
            this, tr("Print to PDF"), windowTitle() + QStringLiteral(".pdf"), tr("PDF files (*.pdf)"));
        if (!file.isEmpty()) {
            PrintWebView(View, file);
        }
    };
    MakeToolbar();
    TXTcurrent = new QLineEdit(this);
    TXTcurrent->setObjectName(QStringLiteral("TXTcurrent"));
    auto* caption = new QLabel(tr("&Address:"), this);
    caption->setBuddy(TXTcurrent);
    LBLstate = new QLabel(this);
    LBLstate->setObjectName(QStringLiteral("LBLstate"));
    LBLstate->setMinimumWidth(theme::CharactersWide(*LBLstate, 6));
    LBLnote = new QLabel(
        visit_.kind == WebVisit::Kind::Directions
            ? QStringLiteral("To save, highlight directions, then right click and choose 'Copy' from popup "
                             "menu, then press the 'Save' option on the toolbar.")
            : QStringLiteral("To save, right click on the map and choose 'Copy' from the popup menu, then "
                             "press the 'Save' option on the toolbar."),
        this);
    LBLnote->setObjectName(QStringLiteral("LBLnote"));
    LBLnote->setWordWrap(true);
    if (!visit_.note.empty()) {
        LBLnote->setText(ToQt(visit_.note));
        LBLnote->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }

    auto* line = new QHBoxLayout;
    line->setSpacing(theme::kUnit);
    line->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    line->addWidget(caption);
    line->addWidget(TXTcurrent, 1);
    line->addWidget(LBLstate);
    auto* note = new QHBoxLayout;
    note->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    note->addWidget(LBLnote);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(Toolbar1);
    all->addLayout(line);
    all->addWidget(View, 1);
    all->addLayout(note);
    resize(120 * theme::kUnit, 90 * theme::kUnit);

    // The view's class stands in the browser module alone; it is known here by its names.
    connect(View, SIGNAL(loadStarted()), this, SLOT(ShowBusy()));
    connect(View, SIGNAL(loadFinished(bool)), this, SLOT(ShowDone()));
    connect(View, SIGNAL(urlChanged(QUrl)), this, SLOT(ShowAddress(QUrl)));
    connect(TXTcurrent, &QLineEdit::returnPressed, this, [this] { GoTo(FromQt(TXTcurrent->text())); });
    GoTo(visit_.address);
}

void FRMweb::MakeToolbar() {
    Toolbar1 = new ToolBar(
        QStringLiteral("Toolbar1"),
        {StandardKey(QStringLiteral("exit")), ToolSeparator(),
         Key("back", tr("Back"), tr("The page before"), "Alt+Left"),
         Key("forward", tr("Forward"), tr("The page behind"), "Alt+Right"),
         Key("stop", tr("Stop"), tr("Stop loading")),
         Key("refresh", tr("Refresh"), tr("Load the page again"), "F5"),
         Key("home", tr("Home"), tr("The home page")), ToolSeparator(), StandardKey(QStringLiteral("print")),
         StandardKey(QStringLiteral("save"), tr("Save what was copied"))},
        this);
    Toolbar1->ShowKey(QStringLiteral("home"), !visit_.home.empty());
    Toolbar1->ShowKey(QStringLiteral("save"), visit_.kind == WebVisit::Kind::Map || visit_.takeText);
    const auto call = [this](const char* slot) {
        return [this, slot] { QMetaObject::invokeMethod(View, slot); };
    };
    keys_ = {
        {QStringLiteral("exit"), [this] { reject(); }},
        {QStringLiteral("back"), call("back")},
        {QStringLiteral("forward"), call("forward")},
        {QStringLiteral("stop"), call("stop")},
        {QStringLiteral("refresh"), call("reload")},
        {QStringLiteral("home"), [this] { GoTo(visit_.home); }},
        {QStringLiteral("print"), [this] { Print(); }},
        {QStringLiteral("save"), [this] { SaveKey(); }},
    };
    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) { keys_.at(key)(); });
}

void FRMweb::ShowBusy() {
    LBLstate->setText(QStringLiteral("Busy"));
}

void FRMweb::ShowDone() {
    LBLstate->setText(QStringLiteral("Done"));
}

void FRMweb::ShowAddress(const QUrl& address) {
    TXTcurrent->setText(address.toString());
}

void FRMweb::GoTo(const std::string& address) {
    const QString complete = ToQt(BrowserAddress(address));
    TXTcurrent->setText(complete);
    View->setProperty("url", QUrl(complete));
}

void FRMweb::SaveKey() {
    try {
        if (visit_.kind == WebVisit::Kind::Map ? SavePicture() : SaveText()) {
            session_.ShowMessageWindow("Save complete, exiting Web browser");
            accept();
        }
    } catch (const std::system_error& error) {
        session_.ShowMessageWindow(error.what());
    }
}

bool FRMweb::SavePicture() {
    const QImage image = QGuiApplication::clipboard()->image();
    if (image.isNull()) {
        session_.ShowMessageWindow(
            "You must right click on the map and choose 'Copy' from the popup menu, before saving.");
        return false;
    }
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    image.save(&content, "BMP");
    WriteClientPicture(ClientPictureFile(session_, visit_.clientId, ".BMP"), content.data().toStdString());
    return true;
}

bool FRMweb::SaveText() {
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty()) {
        session_.ShowMessageWindow(
            "You must highlight the directions, then right click and choose 'Copy' from the popup menu, "
            "before saving.");
        return false;
    }
    visit_.takeText(FromQt(text));
    return true;
}

}  // namespace kv
