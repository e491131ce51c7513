#include "clients/client_id.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr const char* kSection = "KESTRAVA SYSTEM";
constexpr const char* kKey = "ClientID";

struct Range {
    long first;
    long last;
};
constexpr Range kClients = {1, 99899};
constexpr Range kTemplates = {99900, 99999};

bool IsUsed(Recordset& clients, const std::string& id) {
    clients.FindFirst(Sql("[CLIENT]={}", id));
    return !clients.NoMatch();
}

}  // namespace

IdState CheckNewId(Session& session, const std::string& id) {
    const std::string trimmed = Trim(id);
    if (trimmed.empty()) {
        return IdState::Empty;
    }
    if (Length(trimmed) < kLeastIdLength) {
        return IdState::TooShort;
    }
    Recordset clients = session.dbMainWork->OpenRecordset("select * from clientpr");
    return IsUsed(clients, trimmed) ? IdState::Used : IdState::Free;
}

std::string IdStateText(IdState state) {
    switch (state) {
        case IdState::Empty:
            return {};
        case IdState::TooShort:
            return "ID must be atleast 5 digits";
        case IdState::Free:
            return "The new Client ID is OK.";
        case IdState::Used:
            return "This new ID has already been used.";
    }
    return {};
}

std::optional<std::string> NextClientId(Session& session, bool forTemplate) {
    const Range range = forTemplate ? kTemplates : kClients;
    const long last = static_cast<long>(Val(session.Ini().Get(kSection, kKey, "0")));
    Recordset clients = session.dbMainWork->OpenRecordset("select * from clientpr");
    const ReadSpan span = session.dbMainWork->BeginRead();
    for (long number = std::max(last + 1, range.first); number <= range.last; ++number) {
        std::string id = fmt::format("{:05}", number);
        if (!IsUsed(clients, id)) {
            return id;
        }
    }
    return std::nullopt;
}

std::optional<std::string> GenerateClientId(Session& session, bool forTemplate) {
    std::optional<std::string> id = NextClientId(session, forTemplate);
    if (id && !forTemplate) {
        session.Ini().Set(kSection, kKey, std::to_string(static_cast<long>(Val(*id))));
    }
    return id;
}

}  // namespace kv
