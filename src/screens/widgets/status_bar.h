#pragma once
#include <QStatusBar>
#include <vector>

class QLabel;

namespace kv {

/// A status bar of panels that count from 1.
class StatusBar : public QStatusBar {
    Q_OBJECT
  public:
    struct Panel {
        /// What the panel tells, for assistive tools and as its tip.
        QString meaning;
        int characters = 0;
        bool stretches = false;
    };
    StatusBar(const QString& name, const std::vector<Panel>& panels, QWidget* parent);

    void SetPanel(int index, const QString& text);
    QString PanelText(int index) const;
    int PanelCount() const { return static_cast<int>(panels_.size()); }

  private:
    std::vector<QLabel*> panels_;
};

}  // namespace kv
