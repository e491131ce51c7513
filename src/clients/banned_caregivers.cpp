#include "clients/banned_caregivers.h"

#include "base/text.h"
#include "clients/record_keys.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr RecordTexts kTexts = {"There are no records to move to.", "This is the first Record",
                                "This is the Last Record", "There are no records to delete.",
                                "Are you sure you wish to delete this Caregiver"};

}  // namespace

Recordset OpenBannedCaregivers(Session& session, const std::string& clientId) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from emp_ban where client = {} order by emp_name", clientId));
}

std::optional<std::string> CaregiverName(Session& session, const std::string& id) {
    Recordset& caregivers = session.rsEmployee;
    caregivers.FindFirst(Sql("Emp_id = {}", id));
    if (caregivers.NoMatch()) {
        return std::nullopt;
    }
    return caregivers.Text("LastName") + ", " + caregivers.Text("FirstName");
}

bool SaveBannedCaregiver(Session& session, Recordset& banned, const std::string& clientId) {
    if (banned.EditMode() == EditState::None) {
        session.ShowMessageWindow("You must add a record before you can save!");
        return false;
    }
    const std::string caregiver = banned.Text("emp_id");
    if (Trim(caregiver).empty()) {
        session.ShowMessageWindow("You must enter in a valid Caregiver Id before saving");
        return false;
    }
    const std::string criteria = Sql("client = {} and emp_id = {}", clientId, caregiver);
    WriteWhole(session, banned, [&] {
        banned.Set("CLIENT", clientId);
        banned.Update();
        NoteOnTheRoad(session, "E", "C", clientId);
    });
    banned.Requery();
    banned.FindFirst(criteria);
    return true;
}

bool DeleteBannedCaregiver(Session& session, Recordset& banned, const std::string& clientId) {
    const auto what = [](const Recordset& ban) {
        return ban.Text("Emp_name") + " (" + ban.Text("emp_id") + ")";
    };
    return DeleteRecord(session, banned, kTexts, what, [&] { NoteOnTheRoad(session, "E", "C", clientId); });
}

bool MoveBannedCaregiver(Session& session, Recordset& banned, ListMove move) {
    return MoveInRecords(session, banned, move, kTexts);
}

}  // namespace kv
