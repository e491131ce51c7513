#include "screens/page_fetcher.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <memory>
#include <stdexcept>

#include "screens/widgets/qt_text.h"

namespace kv {

std::string FetchPage(const std::string& address) {
    constexpr int kMilliseconds = 15000;
    QNetworkAccessManager manager;
    QNetworkRequest request{QUrl(ToQt(address))};
    request.setTransferTimeout(kMilliseconds);
    const std::unique_ptr<QNetworkReply> reply(manager.get(request));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) {
        // The operator must not start a second thing in the middle of this one.
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (reply->error() != QNetworkReply::NoError) {
        throw std::runtime_error(FromQt(reply->errorString()));
    }
    return reply->readAll().toStdString();
}

}  // namespace kv
