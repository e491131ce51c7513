#pragma once
#include <QString>
#include <functional>
#include <map>

#include "base/date.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

class NotesBox;

/// The keys that both the notes' page and the full screen have: bottom, the stamp by its key there, bold,
/// underline, italic.
std::vector<ToolKey> NotesToolKeys(const QString& stampKey);
std::map<QString, std::function<void()>> NotesKeyActions(const QString& stampKey, NotesBox& box,
                                                         const std::function<Date()>& now);

}  // namespace kv
