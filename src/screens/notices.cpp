#include "screens/notices.h"

#include <QStatusBar>
#include <QStringList>
#include <QWidget>

#include "screens/widgets/bound_source.h"

namespace kv {

void TellStatus(const QWidget* screen, const QString& text) {
    constexpr int kMilliseconds = 20000;
    if (auto* bar = screen->window()->findChild<QStatusBar*>()) {
        bar->showMessage(text, kMilliseconds);
    }
}

void TellFollowed(const QWidget* screen, const BoundSource& source, const std::vector<std::string>& fields,
                  const QString& who) {
    QStringList changed;
    for (const std::string& field : fields) {
        const BoundControl* box = source.ControlOf(field);
        const QString name = source.NameOf(field);
        const bool typed = box != nullptr && box->IsDataChanged();
        changed << (typed ? QObject::tr("%1 (what you typed stands)").arg(name) : name);
    }
    TellStatus(screen, QObject::tr("%1 has meanwhile changed %2")
                           .arg(who.isEmpty() ? QObject::tr("Another user") : who,
                                changed.join(QStringLiteral(", "))));
}

}  // namespace kv
