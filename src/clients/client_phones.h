#pragma once
#include <string>

#include "clients/list_move.h"
#include "clients/screen_controls.h"
#include "session/session.h"

namespace kv {

/// What frmAddPhone takes of the client on the main screen, as it stands there.
struct PhoneClient {
    std::string id;
    std::string name;   ///< "Last, First"
    std::string phone;  ///< the digits of the main phone
    std::string street;
    std::string zip;
};
PhoneClient PhoneClientOf(const std::string& id, const ScreenControls& mainScreen);

/// The client's further numbers in the telephony index (hkeylonglat): all but the main one, by number;
/// updatable. Throws EngineError, as everything below does.
Recordset OpenClientPhones(Session& session, const PhoneClient& client);

/// The keys of frmAddPhone. Each speaks to the operator and answers whether it did something. Between AddNew
/// or Edit and Save the screen writes its box into the row.
bool MayAddPhone(Session& session, const PhoneClient& client);
/// On a number that the list has already it gives up the edit and moves to that row.
bool SavePhone(Session& session, Recordset& phones, const PhoneClient& client);
bool DeletePhone(Session& session, Recordset& phones);
bool MovePhone(Session& session, Recordset& phones, ListMove move);

}  // namespace kv
