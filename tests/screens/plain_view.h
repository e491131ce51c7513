#pragma once
#include <QStringList>
#include <QUrl>
#include <QWidget>

namespace kv::test {

/// The browser's view without a browser.
class PlainView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QUrl url READ Url WRITE SetUrl)
  public:
    using QWidget::QWidget;
    QUrl Url() const { return url_; }
    void SetUrl(const QUrl& url) {
        url_ = url;
        done << url.toString();
        emit loadStarted();
        emit urlChanged(url);
    }
    QStringList done;

  public slots:
    void back() { done << QStringLiteral("back"); }
    void forward() { done << QStringLiteral("forward"); }
    void stop() { done << QStringLiteral("stop"); }
    void reload() { done << QStringLiteral("reload"); }

  signals:
    void loadStarted();
    void loadFinished(bool ok);
    void urlChanged(const QUrl& url);

  private:
    QUrl url_;
};

}  // namespace kv::test
