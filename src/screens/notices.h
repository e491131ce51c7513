#pragma once
#include <QString>
#include <string>
#include <vector>

class QWidget;

namespace kv {

class BoundSource;

/// Shows a line in the status bar of the screen's window for a while. Nothing happens in a window without
/// one.
void TellStatus(const QWidget* screen, const QString& text);
/// Tells which boxes took what another seat had written since the row was shown; `who` is that seat's user,
/// empty where the row does not say.
void TellFollowed(const QWidget* screen, const BoundSource& source, const std::vector<std::string>& fields,
                  const QString& who = {});

}  // namespace kv
