#include "screens/widgets/bring_back.h"

#include <QShortcut>

#include "screens/widgets/bound_source.h"

namespace kv {

void AddBringBackKey(QWidget* screen, BoundSource& source) {
    auto* key = new QShortcut(QKeySequence(QString::fromLatin1(kBringBackKey)), screen);
    key->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(key, &QShortcut::activated, &source, [&source] { source.BringBack(); });
}

}  // namespace kv
