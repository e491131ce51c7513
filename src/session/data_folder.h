#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "datastore/workspace.h"

namespace kv {

/// The file name of a database of the data folder: "kestrava" is in "kestrava.mdb".
std::string DatabaseFile(const std::string& name);

/// Where a database of the data folder lies: the shared ones on the server that KESTRAVA.INI names (section
/// "Database", key "Server", a connection string of libpq without a password), else and all others in the
/// folder's file of that name, its case ignored. `name` is "kestrava", "kestrava.mdb" or another file's.
DatabasePlace PlaceOf(const std::filesystem::path& folder, std::string_view name);
/// The databases that all seats work on, without tempassign, the template of a seat's private copies.
const std::vector<std::string>& SharedDatabases();
/// The server that KESTRAVA.INI names, or the empty text. Throws EngineError 3051 where the file can't be
/// read or holds a password.
std::string ServerOf(const std::filesystem::path& folder);
/// Throws EngineError 3051 where a connection string holds a password. `where`: what the words call it.
void RefusePassword(const std::string& server, const std::string& where);

/// The database that a copy puts into its place last and takes out of it first: where it stands the others
/// do, too.
inline constexpr const char* kLastMoved = "kestrava";
/// The file that lies in a data folder while a copy is put into its place there.
std::filesystem::path CopyMark(const std::filesystem::path& folder);
/// A copy into the folder was broken off while it was put into its place, so that only some of its databases
/// are there.
bool HoldsBrokenCopy(const std::filesystem::path& folder);

/// Makes the data folder and what it lacks of its databases, each empty but for main, which gets one Agency
/// row with workable defaults; and KESTRAVA.INI with the country ("US" or "CANADA"). What exists is
/// left alone. Answers the file names of the databases that were made, in the order of SchemaNames. Throws
/// EngineError, 3051 where the folder holds a broken copy, and std::filesystem::filesystem_error.
std::vector<std::string> InitDataFolder(Workspace& workspace, const std::filesystem::path& folder,
                                        const std::string& country);

}  // namespace kv
