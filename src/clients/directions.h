#pragma once
#include <filesystem>
#include <optional>
#include <string>

#include "session/session.h"

namespace kv {

/// KESTRAVA.INI, section "Maps": the keys DirectionsServer and MapServer ("https://maps.example.com"), MapKey
/// (as it stands in an address) and HomePage. Empty where nothing is set.
struct MapServers {
    std::string directions;
    std::string map;
    std::string key;
    std::string home;
};
MapServers ReadMapServers(const Session& session);
/// What to tell the operator where the server that is asked for is not set.
std::string MapServerMissing(const Session& session, const char* key);

struct PostalAddress {
    std::string street, city, state, zip;
};
/// The place that directions begin at: the map address of Agency. Throws EngineError.
PostalAddress AgencyMapAddress(Session& session);

/// The page with the way from one place to the other, the parts of a place joined by the separator. A missing
/// part stays empty.
std::string DirectionsAddress(const MapServers& servers, const PostalAddress& from, const PostalAddress& to,
                              const char* separator = "+");
/// The picture of the place, `size` as "750,550".
std::string MapAddress(const MapServers& servers, const PostalAddress& place, const std::string& size);
inline constexpr const char* kScreenMapSize = "750,550";
inline constexpr const char* kPrintMapSize = "500,400";

/// PICTURES\CLIENT\ and the client's id in the data folder; the ending with its point.
std::filesystem::path ClientPictureFile(const Session& session, const std::string& clientId,
                                        const char* ending);
/// Writes it, its folder too where it is missing. Throws std::system_error.
void WriteClientPicture(const std::filesystem::path& file, const std::string& bytes);

/// "http://" before an address that begins with "www.".
std::string BrowserAddress(const std::string& typed);

}  // namespace kv
