#pragma once
#include <QWidget>
#include <optional>

#include "billing/authorization_use.h"

class QLabel;
class QProgressBar;

namespace kv {

/// What of an authorization is used and left, in words, with a plain bar.
class UseStrip : public QWidget {
    Q_OBJECT
  public:
    explicit UseStrip(QWidget* parent);
    /// Nothing is shown without one.
    void ShowUse(const std::optional<AuthorizationUse>& use);

    QLabel* LBLperiod = nullptr;
    QLabel* LBLtotal = nullptr;
    QProgressBar* Bar = nullptr;
};

}  // namespace kv
