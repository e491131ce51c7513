// The browser module of kvCli. It knows nothing of the program: a view comes out of it, and is driven by its
// property, slots and signals.
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickWindow>
#include <QWebEngineView>

QT_BEGIN_NAMESPACE
// Qt's own, exported for its modules alone.
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);
Q_GUI_EXPORT QOpenGLContext* qt_gl_global_share_context();
QT_END_NAMESPACE

namespace {

/// The engine wants all windows to share one drawing context, and asks for it before the application begins.
/// There it would cost each start of the program; here only whoever opens the browser waits for it. The
/// context lives as long as the program: the engine draws on it up to its own end.
void ShareDrawingContext() {
    if (qt_gl_global_share_context() != nullptr) {
        return;
    }
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    auto* context = new QOpenGLContext(QGuiApplication::instance());
    if (context->create()) {
        qt_gl_set_global_share_context(context);
    }
}

}  // namespace

extern "C" {

/// nullptr where the display can't draw it.
Q_DECL_EXPORT QWidget* kv_make_web_view(QWidget* parent) {
    ShareDrawingContext();
    return qt_gl_global_share_context() == nullptr ? nullptr : new QWebEngineView(parent);
}

Q_DECL_EXPORT void kv_print_web_view(QWidget* view, const QString& file) {
    static_cast<QWebEngineView*>(view)->page()->printToPdf(file);
}
}
