#include "support/scripted_ports.h"

#include <utility>

#include <gtest/gtest.h>

namespace kv::test {

void ScriptedDialogs::Answer(std::vector<bool> answers) {
    answers_.insert(answers_.end(), answers.begin(), answers.end());
}

void ScriptedDialogs::Input(std::vector<std::optional<std::string>> inputs) {
    inputs_.insert(inputs_.end(), inputs.begin(), inputs.end());
}

std::vector<std::string> ScriptedDialogs::TakeSaid() {
    return std::exchange(said_, {});
}

void ScriptedDialogs::ShowMessageWindow(const std::string& text, bool beep) {
    said_.push_back((beep ? "beep: " : "message: ") + text);
}

void ScriptedDialogs::ShowInformation(const std::string& title, const std::string& text) {
    said_.push_back(title + ": " + text);
}

std::optional<bool> ScriptedDialogs::NextAnswer(const std::string& question) {
    said_.push_back("question: " + question);
    if (answers_.empty()) {
        ADD_FAILURE() << "No answer was scripted for: " << question;
        return false;
    }
    const std::optional<bool> answer = answers_.front();
    answers_.pop_front();
    return answer;
}

bool ScriptedDialogs::AskQuestion(const std::string& question) {
    return NextAnswer(question).value_or(false);
}

SaveAnswer ScriptedDialogs::AskToSave(const std::string& question) {
    const std::optional<bool> answer = NextAnswer(question);
    return !answer ? SaveAnswer::Stay : *answer ? SaveAnswer::Save : SaveAnswer::Discard;
}

void ScriptedDialogs::ShowFaults(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        said_.push_back("fault: " + line);
}

std::optional<std::string> ScriptedDialogs::AskInput(const std::string& title, const std::string& prompt,
                                                     const std::string& /*initial*/) {
    said_.push_back("input: " + prompt);
    if (inputs_.empty()) {
        ADD_FAILURE() << "No input was scripted for " << title << ": " << prompt;
        return std::nullopt;
    }
    auto input = inputs_.front();
    inputs_.pop_front();
    return input;
}

void RecordingProgress::Begin(const std::string& text, long stepCount) {
    begun.push_back(text);
    steps = stepCount;
    advanced = 0;
    ++open;
}

bool RecordingProgress::Yield() {
    ++yields;
    return breakOffAt == 0 || yields < breakOffAt;
}

}  // namespace kv::test
