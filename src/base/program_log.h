#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace kv {

/// A place in the source, by default the one that names it.
struct CodePlace {
    const char* file;
    int line;
    const char* function;

    static constexpr CodePlace Here(const char* file = __builtin_FILE(), int line = __builtin_LINE(),
                                    const char* function = __builtin_FUNCTION()) {
        return {file, line, function};
    }
};

/// The log of the program: the file program.log in a folder of the user's, with a line for each step that a
/// routine went on without. It says when, which program and user, where in the program and what failed, and
/// nothing of the data: see WithoutValues. Several programs of one user write to one log. It is kept small:
/// with a million bytes in it the file becomes program.log.1, of which there are three at most.
///
/// While one lives, LogSkippedStep of the whole process writes to it, to the last one of several.
class ProgramLog {
  public:
    /// `program`: "kvCli". The folder and the file are made with the first line.
    ProgramLog(const std::filesystem::path& folder, std::string program);
    ~ProgramLog();
    ProgramLog(const ProgramLog&) = delete;
    ProgramLog& operator=(const ProgramLog&) = delete;

  private:
    friend void LogSkippedStep(int error, std::string_view words, CodePlace place) noexcept;

    std::filesystem::path file_;
    std::string program_;
    ProgramLog* before_;
};

/// Whose lines the process writes from now on.
void SetLogUser(std::string_view user);

/// Notes a step that failed and that the routine goes on without. Does nothing where no log is open, and
/// never fails: what can't be written is left out. May be called from any thread.
void LogSkippedStep(int error, std::string_view words, CodePlace place = CodePlace::Here()) noexcept;

/// An error's words on one line without what may be data: "..." stands for the rest from the first quotation
/// mark on (a text of the operator's may hold quotation marks of its own), for what stands in parentheses and
/// for numbers.
std::string WithoutValues(std::string_view words);

}  // namespace kv
