#include "tool/terminal.h"

#include <ostream>

#include "base/text.h"

namespace kv::tool {

void TerminalDialogs::ShowMessageWindow(const std::string& text, bool /*beep*/) {
    err_ << "message: " << ReplaceAll(text, "\r\n", "\n") << '\n';
}

void TerminalDialogs::ShowInformation(const std::string& title, const std::string& text) {
    ShowMessageWindow(title + ": " + text, false);
}

bool TerminalDialogs::AskQuestion(const std::string& question) {
    ShowMessageWindow(question + (answer_ ? " Yes" : " No"), false);
    return answer_;
}

void TerminalDialogs::ShowFaults(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        ShowMessageWindow(line, false);
}

std::optional<std::string> TerminalDialogs::AskInput(const std::string& title, const std::string& prompt,
                                                     const std::string& /*initial*/) {
    ShowMessageWindow(title + ": " + prompt, false);
    return std::nullopt;
}

void TerminalProgress::Begin(const std::string& text, long /*steps*/) {
    err_ << text << '\n';
}

}  // namespace kv::tool
