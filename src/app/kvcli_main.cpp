// kvCli, the client module. The menu program starts it; alone it ends at once.
#include <QApplication>
#include <QCursor>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QPixmap>
#include <QSocketNotifier>
#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>

#include "base/platform.h"
#include "base/program_log.h"
#include "screens/desktop_dialogs.h"
#include "screens/desktop_progress.h"
#include "screens/frmClient.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"
#include "session/start.h"

namespace {

using namespace kv;

constexpr int kFailed = 1;
constexpr int kUnusable = 2;

void Complain(const std::string& words) {
    std::fprintf(stderr, "kvCli: %s\n", words.c_str());
}

/// The Dialogs port where nobody looks at the screen: what would be shown is printed, and every question is
/// answered with No.
class PrintedDialogs : public Dialogs {
  public:
    void ShowMessageWindow(const std::string& text, bool /*beep*/) override { Complain(text); }
    void ShowInformation(const std::string& title, const std::string& text) override {
        Complain(title + ": " + text);
    }
    bool AskQuestion(const std::string& question) override {
        Complain(question);
        return false;
    }
    void ShowFaults(const std::vector<std::string>& lines) override {
        for (const std::string& line : lines) {
            Complain(line);
        }
    }
    std::optional<std::string> AskInput(const std::string& /*title*/, const std::string& prompt,
                                        const std::string& /*initial*/) override {
        Complain(prompt);
        return std::nullopt;
    }
};

/// The platform plugins for the displays that answer, the better one first; "" for none. A platform that the
/// user names himself holds, unless it needs a display that does not answer.
std::string PlatformToUse() {
    const LocalDisplays displays = FindLocalDisplays();
    const QFileInfo waylandPlugin(QLibraryInfo::path(QLibraryInfo::PluginsPath) +
                                  QStringLiteral("/platforms/libqwayland-generic.so"));
    const bool wayland = displays.wayland && waylandPlugin.exists();
    const std::string asked = qEnvironmentVariable("QT_QPA_PLATFORM").toStdString();
    if (asked.rfind("xcb", 0) == 0) {
        return displays.x11 ? asked : "";
    }
    if (asked.rfind("wayland", 0) == 0) {
        return wayland ? asked : "";
    }
    if (!asked.empty()) {
        return asked;
    }
    if (wayland) {
        return displays.x11 ? "wayland;xcb" : "wayland";
    }
    return displays.x11 ? "xcb" : "";
}

/// Would anybody see a window on the platform? Those that draw into memory show nothing.
bool IsToBeSeen(const std::string& platform) {
    return !platform.empty() && platform.rfind("offscreen", 0) != 0 && platform.rfind("minimal", 0) != 0;
}

/// Ends the program without a question when the system asks for it, or has asked while the program started.
void EndWithTheSystem(QApplication& application, frmClient& screen, int requests) {
    QObject::connect(&application, &QApplication::aboutToQuit, &screen, &frmClient::Unload);
    if (requests >= 0) {
        auto* notifier = new QSocketNotifier(requests, QSocketNotifier::Read, &application);
        QObject::connect(notifier, &QSocketNotifier::activated, &application, &QApplication::quit);
    }
}

int Draw(frmClient& screen, const std::string& file) {
    constexpr int kWidth = 1280;
    constexpr int kHeight = 800;
    screen.resize(kWidth, kHeight);
    QCursor::setPos(kWidth, kHeight);  // so that no key shows as pointed at
    screen.show();
    // What the start showed and hid is laid out by events of its own, some of which send further ones.
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QApplication::processEvents();
    QApplication::processEvents();
    const bool saved = screen.grab().save(ToQt(file), "PNG");
    screen.Unload();
    if (!saved) {
        Complain("The picture " + file + " can not be written.");
        return kFailed;
    }
    std::printf("%s\n", file.c_str());
    return 0;
}

/// What a start that can't go on leaves behind: the words, on both ways.
int TellFailure(Session& session, const std::string& words, bool drawing) {
    Complain(words);
    if (!drawing) {
        session.ShowMessageWindow(words, true);
    }
    return kFailed;
}

int Run(QApplication& application, SettingsStore& settings, Clock& clock, const std::string& drawing) {
    DesktopDialogs windows;
    PrintedDialogs printed;
    DesktopProgress progress;
    Dialogs& dialogs = drawing.empty() ? static_cast<Dialogs&>(windows) : printed;
    Session session(settings, {clock, dialogs, progress});
    const int requests = WatchTermination();
    frmClient screen(session);
    try {
        screen.Start();
    } catch (const std::exception& error) {
        screen.Unload();
        return TellFailure(session, error.what(), !drawing.empty());
    }
    EndWithTheSystem(application, screen, requests);
    if (!drawing.empty()) {
        return Draw(screen, drawing);
    }
    screen.showMaximized();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App options("The client module of the suite.", "kvCli");
    std::string drawing;
    options.add_option("--draw-without-display", drawing,
                       "Where no display is set, draw the main screen into this file (PNG)");
    options.set_version_flag("--version", KV_VERSION);
    CLI11_PARSE(options, argc, argv);

    SettingsStore settings(SettingsStore::DefaultFile());
    if (!IsStarted(settings)) {
        return 0;
    }
    const ProgramLog log(settings.File().parent_path(), "kvCli");
    SystemClock clock;
    try {
        clock = SystemClockFromEnvironment();
    } catch (const std::exception& error) {
        Complain(std::string("KV_NOW: ") + error.what());
        return kUnusable;
    }
    std::string platform = PlatformToUse();
    if (!IsToBeSeen(platform) && !drawing.empty()) {
        platform = "offscreen";
    } else if (!platform.empty()) {
        drawing.clear();
    } else {
        Complain("There is no display on this machine to show a window on.");
        return kFailed;
    }
    qputenv("QT_QPA_PLATFORM", platform.c_str());

    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kvCli"));
    QApplication::setApplicationVersion(QStringLiteral(KV_VERSION));
    theme::Apply(application);
    return Run(application, settings, clock, drawing);
}
