#pragma once
#include <QWidget>

namespace kv {

class BoundSource;

/// The key that brings back what was typed and taken off the screen, while the focus is in the screen: F9.
void AddBringBackKey(QWidget* screen, BoundSource& source);
inline constexpr const char* kBringBackKey = "F9";
/// What the operator is told when something was set aside.
inline constexpr const char* kBringBackHint = "What was typed is set aside: F9 brings it back";

}  // namespace kv
