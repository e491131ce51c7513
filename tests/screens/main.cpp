#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

#include "screens/widgets/theme.h"

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLocale::setDefault(QLocale::c());
    QApplication application(argc, argv);
    kv::theme::Apply(application);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
