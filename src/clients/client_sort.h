#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

namespace kv {

/// FRMsort's "Available Fields".
const std::vector<std::string_view>& ClientSortFields();

struct SortField {
    std::string name;  ///< one of ClientSortFields
    bool descending = false;
};
struct ClientOrder {
    std::string columns;      ///< what stands behind "order by"; empty when nothing was chosen
    std::string description;  ///< for the status bar
};
ClientOrder OrderOf(const std::vector<SortField>& chosen);

/// Takes the order for the session and for the user's next start (CLIENT/SORT, CLIENT/SORT_DESC). An empty
/// one changes nothing. Throws std::system_error where the settings can't be written.
void KeepClientOrder(Session& session, const ClientOrder& order);

}  // namespace kv
