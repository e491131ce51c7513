#pragma once
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"

namespace kv {

// What differs between operating systems, one source file per platform (platform_linux.cpp). A port is this
// folder's work.

/// The user's configuration folder for programs ("~/.config"); not created.
std::filesystem::path UserConfigFolder();
/// The system's clock in local time, to the second.
Date LocalNow();

/// A folder for temporary files of this user alone, made where it is missing: other users' programs can
/// neither read what lies in it nor put something into its place. Throws std::system_error.
std::filesystem::path UserTempFolder();
/// Opens a file, folder or address ("mailto:...", "http://...") with the desktop's own program, without
/// waiting for it. `argument` is handed to a program file. Returns whether the desktop took it.
bool OpenWithDesktop(const std::string& target, const std::string& argument = {});

/// "\\" and "/" alike become the system's own separator.
std::filesystem::path NativePath(std::string_view path);
/// The folder's entry of that name without regard to case, or folder / name when there is none.
std::filesystem::path FindNoCase(const std::filesystem::path& folder, std::string_view name);

/// Writes the whole content beside the file and moves it into its place, so that a reader sees the old or the
/// new one and a full disk leaves the old. `ownerOnly` makes it readable by its owner alone. Throws
/// std::system_error.
void ReplaceFile(const std::filesystem::path& file, std::string_view content, bool ownerOnly = false);
/// Adds to the end of a file that its owner alone can read, in one piece, so that the lines of several
/// programs do not mix; makes the file where it is missing. False where it can't be written.
bool AppendForOwner(const std::filesystem::path& file, std::string_view content) noexcept;
/// The whole file, or nothing when it can't be opened.
std::optional<std::string> ReadFile(const std::filesystem::path& file);

/// How this machine is called in its network, or the empty text.
std::string MachineName();

/// A file whose bytes are locked singly and exclusively between processes and between handles of one process;
/// locks vanish with their holder, a killed one included.
class ByteLocks {
  public:
    /// Opens the file, or makes it, for those who may use `like`. Throws std::system_error.
    explicit ByteLocks(const std::filesystem::path& file, const std::filesystem::path& like = {});
    ~ByteLocks();
    ByteLocks(const ByteLocks&) = delete;
    ByteLocks& operator=(const ByteLocks&) = delete;
    /// At once: true when the byte is now this handle's (also when it was before), false when another holds
    /// it.
    bool TryLock(std::uint64_t byte);
    void Unlock(std::uint64_t byte) noexcept;
    /// Waits for the byte as long as it takes another to do a short piece of work. Throws std::system_error.
    void Lock(std::uint64_t byte);
    /// The file's content, which the locks leave alone: a text at a place, for whoever finds a byte taken. A
    /// note that can't be written or read is left out; the locks hold without it.
    void WriteNote(std::uint64_t place, std::string_view text) noexcept;
    std::string ReadNote(std::uint64_t place, std::size_t size) const;

  private:
    int handle_ = -1;
};

/// The window systems of this machine that answer.
struct LocalDisplays {
    bool wayland = false;
    bool x11 = false;
};
/// Asks the displays that the environment names, and takes nothing for granted: a name that nobody answers
/// to, or a server that turns this user away, is no display. Remote displays ("host:0") are not asked.
LocalDisplays FindLocalDisplays();
/// True where a window can be shown.
bool HasLocalDisplay();

/// A descriptor that can be read from once the system asks the program to end (log-out, shutdown, Ctrl+C); a
/// second request ends it at once. -1 where there is none.
int WatchTermination();

/// What work apart may take: time of the processor, and memory on top of what this program has.
struct ApartLimits {
    std::chrono::seconds time;
    std::uintmax_t memory;
};

/// Runs the work in a process of its own, a copy of this one whose words on standard error go nowhere, and
/// waits for it: true when it came to its end, false when it crashed, threw or went beyond the limits. What
/// it changes in memory is lost; it uses no file, connection or lock that this process has open. Throws
/// std::system_error when no process can be had.
bool SurvivesApart(const std::function<void()>& work, const ApartLimits& limits);

}  // namespace kv
