// The browser module: loaded when its first view is asked for, so that neither start-up nor memory pays for
// it.
#include <QCoreApplication>
#include <QLibrary>
#include <stdexcept>

#include "screens/FRMweb.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

QFunctionPointer Resolve(const char* name) {
    static QLibrary module(QCoreApplication::applicationDirPath() + QStringLiteral("/kv_web"));
    const QFunctionPointer function = module.resolve(name);
    if (function == nullptr) {
        throw std::runtime_error("The browser can not be opened: " + FromQt(module.errorString()));
    }
    return function;
}

}  // namespace

QWidget* MakeWebView(QWidget* parent) {
    using Make = QWidget* (*)(QWidget*);
    QWidget* view = reinterpret_cast<Make>(Resolve("kv_make_web_view"))(parent);
    if (view == nullptr) {
        throw std::runtime_error("The browser can not be opened: this display can not draw it (OpenGL).");
    }
    return view;
}

void PrintWebView(QWidget* view, const QString& file) {
    using Print = void (*)(QWidget*, const QString&);
    reinterpret_cast<Print>(Resolve("kv_print_web_view"))(view, file);
}

}  // namespace kv
