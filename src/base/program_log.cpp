#include "base/program_log.h"

#include <algorithm>
#include <mutex>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "base/format.h"
#include "base/platform.h"

namespace kv {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kMostBytes = 1'000'000;
constexpr int kKept = 3;
constexpr std::string_view kValue = "...";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsQuote(char c) {
    return c == '\'' || c == '"' || c == '`';
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The first quotation mark that is not an apostrophe within a word ("can't").
std::size_t FirstQuote(std::string_view words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool within = i > 0 && i + 1 < words.size() && IsLetter(words[i - 1]) && IsLetter(words[i + 1]);
        if (IsQuote(words[i]) && !within)
            return i;
    }
    return std::string_view::npos;
}

fs::path Numbered(const fs::path& file, int number) {
    return fs::path(file) += "." + std::to_string(number);
}

/// The oldest goes, the others move on by one. What fails leaves a longer log.
void Rotate(const fs::path& file) {
    std::error_code none;
    for (int number = kKept; number > 1; --number)
        fs::rename(Numbered(file, number - 1), Numbered(file, number), none);
    fs::rename(file, Numbered(file, 1), none);
}

bool IsFull(const fs::path& file) {
    std::error_code none;
    const std::uintmax_t size = fs::file_size(file, none);
    return !none && size >= kMostBytes;
}

void RotateWhenFull(const fs::path& file) {
    if (!IsFull(file))
        return;
    ByteLocks lock(fs::path(file) += ".lck");
    // Another program that is about it has it done before this one's next line.
    if (lock.TryLock(0) && IsFull(file))
        Rotate(file);
}

void Append(const fs::path& file, const std::string& line) {
    std::error_code none;
    fs::create_directories(file.parent_path(), none);
    RotateWhenFull(file);
    AppendForOwner(file, line);
}

/// The process has one log, whichever thread speaks to it.
struct Current {
    std::mutex guard;
    ProgramLog* log = nullptr;
    std::string user;
};

Current& TheCurrent() {
    static Current current;
    return current;
}

/// A name of one word: it can't end the line or pass for another part of it.
std::string Word(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::string word(text.substr(0, kLongest));
    std::replace_if(
        word.begin(), word.end(), [](unsigned char c) { return c <= ' ' || c == 127; }, '_');
    return word.empty() ? "-" : word;
}

std::string PlaceText(const CodePlace& place) {
    const std::string file = fs::path(place.file).filename().string();
    const std::string_view function = place.function;
    // A nameless function's name says nothing.
    return function == "operator()" ? fmt::format("{}:{}", file, place.line)
                                    : fmt::format("{}:{} {}", file, place.line, function);
}

}  // namespace

ProgramLog::ProgramLog(const fs::path& folder, std::string program)
    : file_(folder / "program.log"), program_(std::move(program)) {
    const std::lock_guard held(TheCurrent().guard);
    before_ = std::exchange(TheCurrent().log, this);
}

ProgramLog::~ProgramLog() {
    const std::lock_guard held(TheCurrent().guard);
    TheCurrent().log = before_;
}

void SetLogUser(std::string_view user) {
    const std::lock_guard held(TheCurrent().guard);
    TheCurrent().user = user;
}

void LogSkippedStep(int error, std::string_view words, CodePlace place) noexcept {
    try {
        const std::lock_guard held(TheCurrent().guard);
        const ProgramLog* log = TheCurrent().log;
        if (log == nullptr)
            return;
        Append(log->file_,
               fmt::format("{} {} {} {} error {}: {}\n", FormatDate(LocalNow(), "yyyy-mm-dd HH:NN:SS"),
                           Word(log->program_), Word(TheCurrent().user), PlaceText(place), error,
                           WithoutValues(words)));
    } catch (...) {
        // No room, no rights or no memory: what the log was to note went on as well.
    }
}

std::string WithoutValues(std::string_view words) {
    const std::size_t quote = FirstQuote(words);
    std::string kept;
    int depth = 0;
    for (const char c : words.substr(0, quote)) {
        depth += c == '(' ? 1 : 0;
        const bool value = depth > 0 || IsDigit(c);
        depth -= c == ')' && depth > 0 ? 1 : 0;
        if (!value)
            kept += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
        else if (!kept.ends_with(kValue))
            kept += kValue;
    }
    return quote == std::string_view::npos || kept.ends_with(kValue) ? kept : kept + std::string(kValue);
}

}  // namespace kv
