// The browser module of kvCli. It knows nothing of the program: a view comes out of it, and is driven by its
// property, slots and signals.
#include <QWebEngineView>

extern "C" {

Q_DECL_EXPORT QWidget* kv_make_web_view(QWidget* parent) {
    return new QWebEngineView(parent);
}

Q_DECL_EXPORT void kv_print_web_view(QWidget* view, const QString& file) {
    static_cast<QWebEngineView*>(view)->page()->printToPdf(file);
}
}
