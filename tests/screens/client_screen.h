#pragma once
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "clients/client_fixture.h"
#include "screens/frmClient.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/tool_bar.h"

namespace kv::test {

/// The real main screen over a small agency, driven by its controls.
class ClientScreenTest : public ClientTest {
  protected:
    /// Starts the screen; what the start said stays to be asked for.
    frmClient& Open() {
        screen_ = std::make_unique<frmClient>(session);
        screen_->Start();
        screen_->show();
        return *screen_;
    }

    template <typename Widget = QWidget>
    Widget& Find(const char* name) {
        auto* found = screen_->findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            throw std::invalid_argument(std::string("the screen has no ") + name);
        }
        return *found;
    }
    BoundControl& Control(const char* name) {
        BoundControl* control = FindBoundControl(screen_.get(), QString::fromLatin1(name));
        if (control == nullptr) {
            throw std::invalid_argument(std::string("no control ") + name);
        }
        return *control;
    }
    std::string Text(const char* name) { return FromQt(Control(name).Text()); }
    /// Puts a text into a box as the operator's typing does.
    void Type(const char* name, const std::string& text) { Control(name).EnterValue(Value(text)); }
    void Press(const char* key) { screen_->Toolbar1->ActionOf(QString::fromLatin1(key))->trigger(); }
    void Click(const char* button) { QTest::mouseClick(&Find(button), Qt::LeftButton); }
    /// Picks an item of a combo as the operator does.
    void Pick(const char* combo, const char* item) {
        auto& box = Find<QComboBox>(combo);
        box.setCurrentIndex(box.findText(QString::fromLatin1(item)));
        emit box.activated(box.currentIndex());
    }
    std::string ShownId() { return Text("txtCliId"); }

    /// Acts on the dialog that the next step opens.
    template <typename Dialog>
    void OnDialog(std::function<void(Dialog&)> act) {
        QTimer::singleShot(0, [act] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
    }

    std::unique_ptr<frmClient> screen_;
};

}  // namespace kv::test
