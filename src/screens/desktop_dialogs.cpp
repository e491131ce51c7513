#include "screens/desktop_dialogs.h"

#include <QApplication>
#include <QCursor>
#include <QMessageBox>
#include <vector>

#include "screens/FRMDis_error.h"
#include "screens/FRMinput.h"
#include "screens/FRMmessage.h"
#include "screens/FRMquestion.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

// Takes the hourglasses away while the operator answers, and puts them back.
class CursorAside {
  public:
    CursorAside() {
        while (const QCursor* cursor = QApplication::overrideCursor()) {
            aside_.push_back(*cursor);
            QApplication::restoreOverrideCursor();
        }
    }
    ~CursorAside() {
        for (auto cursor = aside_.rbegin(); cursor != aside_.rend(); ++cursor) {
            QApplication::setOverrideCursor(*cursor);
        }
    }
    CursorAside(const CursorAside&) = delete;
    CursorAside& operator=(const CursorAside&) = delete;

  private:
    std::vector<QCursor> aside_;
};

}  // namespace

void DesktopDialogs::ShowMessageWindow(const std::string& text, bool beep) {
    const CursorAside aside;
    FRMmessage message(DialogOwner());
    message.SetMessage(ToQt(text));
    if (beep) {
        QApplication::beep();
    }
    message.exec();
}

void DesktopDialogs::ShowInformation(const std::string& title, const std::string& text) {
    const CursorAside aside;
    QMessageBox box(QMessageBox::Information, ToQt(title), ToQt(text), QMessageBox::Ok, DialogOwner());
    box.setObjectName(QStringLiteral("MsgBox"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool DesktopDialogs::AskQuestion(const std::string& question) {
    const CursorAside aside;
    FRMquestion box(DialogOwner());
    box.SetQuestion(ToQt(question));
    box.exec();
    return box.Answer;
}

bool DesktopDialogs::AskToDestroy(const std::string& question) {
    const CursorAside aside;
    FRMquestion box(DialogOwner());
    box.SetQuestion(ToQt(question));
    box.SetDefaultNo();
    box.exec();
    return box.Answer;
}

SaveAnswer DesktopDialogs::AskToSave(const std::string& question) {
    const CursorAside aside;
    FRMquestion box(DialogOwner());
    box.SetQuestion(ToQt(question));
    box.OfferStay();
    box.exec();
    return box.Stayed ? SaveAnswer::Stay : box.Answer ? SaveAnswer::Save : SaveAnswer::Discard;
}

void DesktopDialogs::ShowFaults(const std::vector<std::string>& lines) {
    const CursorAside aside;
    FRMDis_error box(DialogOwner());
    QStringList shown;
    for (const std::string& line : lines) {
        shown << ToQt(line);
    }
    box.SetLines(shown);
    box.exec();
}

std::optional<std::string> DesktopDialogs::AskInput(const std::string& title, const std::string& prompt,
                                                    const std::string& initial) {
    const CursorAside aside;
    FRMinput box(ToQt(title), ToQt(prompt), ToQt(initial), DialogOwner());
    if (box.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return FromQt(box.Text());
}

}  // namespace kv
