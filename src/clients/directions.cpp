#include "clients/directions.h"

#include <array>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr const char* kSection = "Maps";
constexpr std::size_t kLongest = 1024;

/// Blanks become "+"; what has a meaning of its own in an address is written by its code.
std::string InAddress(const std::string& text) {
    constexpr std::string_view kOwnMeaning = "#&?%+";
    std::string out;
    for (const char c : Trim(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == ' ') {
            out += '+';
        } else if (byte <= ' ' || byte >= 0x7F || kOwnMeaning.find(c) != std::string_view::npos) {
            out += fmt::format("%{:02X}", byte);
        } else {
            out += c;
        }
    }
    return out;
}

std::string Joined(const PostalAddress& place, const char* separator) {
    return Join(
        {InAddress(place.street), InAddress(place.city), InAddress(place.state), InAddress(place.zip)},
        separator);
}

}  // namespace

MapServers ReadMapServers(const Session& session) {
    const IniFile ini = session.Ini();
    const auto get = [&](const char* key) { return Trim(ini.Get(kSection, key, "", kLongest)); };
    return {get("DirectionsServer"), get("MapServer"), get("MapKey"), get("HomePage")};
}

std::string MapServerMissing(const Session& session, const char* key) {
    return std::string("No server is set for this. Please enter it in the file ") +
           session.Ini().File().string() + ", section [Maps], key " + key + ".";
}

PostalAddress AgencyMapAddress(Session& session) {
    const Recordset agency =
        session.dbMainCode->OpenRecordset("select * from Agency", RecordsetType::Snapshot);
    if (agency.Eof()) {
        return {};
    }
    return {agency.Text("map_adr"), agency.Text("map_city"), agency.Text("map_state"),
            agency.Text("map_zip")};
}

std::string DirectionsAddress(const MapServers& servers, const PostalAddress& from, const PostalAddress& to,
                              const char* separator) {
    return servers.directions + "/maps?hl=en&tab=wl&saddr=" + Joined(from, separator) +
           "&daddr=" + Joined(to, separator);
}

std::string MapAddress(const MapServers& servers, const PostalAddress& place, const std::string& size) {
    return servers.map + "/staticmap/v3/getplacemap?key=" + servers.key + "&location=" + Joined(place, ",") +
           "&size=" + size + "&type=map&zoom=12&imagetype=jpeg&showicon=green-1&style=european";
}

std::filesystem::path ClientPictureFile(const Session& session, const std::string& clientId,
                                        const char* ending) {
    return session.DataFile("PICTURES/CLIENT/" + clientId + ending);
}

void WriteClientPicture(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    ReplaceFile(file, bytes);
}

std::string BrowserAddress(const std::string& typed) {
    const std::string address = Trim(typed);
    return StartsWithNoCase(address, "www.") ? "http://" + address : address;
}

}  // namespace kv
