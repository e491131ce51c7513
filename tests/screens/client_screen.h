#pragma once
#include <QComboBox>
#include <QTest>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "clients/client_fixture.h"
#include "screens/frmClient.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/tool_bar.h"
#include "support/qt_driver.h"

namespace kv::test {

/// The real main screen over a small agency, driven by its controls.
class ClientScreenTest : public ClientTest {
  protected:
    /// Starts the screen; what the start said stays to be asked for.
    frmClient& Open() {
        screen_ = std::make_unique<frmClient>(session);
        screen_->Start();
        qt_driver::Show(*screen_);
        return *screen_;
    }

    template <typename Widget = QWidget>
    Widget& Find(const char* name) {
        return *qt_driver::Find<Widget>(screen_.get(), QString::fromLatin1(name));
    }
    BoundControl& Control(const char* name) { return dynamic_cast<BoundControl&>(Find(name)); }
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

    /// Acts on the dialog that the step after it opens.
    template <typename Dialog>
    qt_driver::ModalDriver OnDialog(std::function<void(Dialog&)> act) {
        return qt_driver::ModalDriver([act = std::move(act)](QWidget& modal) {
            auto* dialog = qobject_cast<Dialog*>(&modal);
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
        });
    }

    std::unique_ptr<frmClient> screen_;
};

}  // namespace kv::test
