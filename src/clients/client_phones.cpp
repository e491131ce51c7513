#include "clients/client_phones.h"

#include "base/format.h"
#include "base/text.h"
#include "clients/record_keys.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr std::size_t kDigits = 10;
constexpr RecordTexts kTexts = {"There are no records to move to.",
                                "Beginning of file, moving to the first record.",
                                "End of file, moving to the Last record.", "There are no records to delete!",
                                "Are you sure you wish to delete this record?"};

bool MoveToNumber(Recordset& phones, const std::string& number) {
    phones.FindFirst(Sql("[phonenum] = {}", number));
    return !phones.NoMatch();
}

bool IsListed(const Recordset& phones, const std::string& number) {
    Recordset look = phones.Clone();
    return MoveToNumber(look, number);
}

std::string StatusOf(Session& session, const std::string& id) {
    return session.dbMainWork->Lookup(Sql("select casestatcd from clientpr where client = {}", id)).ToText();
}

}  // namespace

PhoneClient PhoneClientOf(const std::string& id, const ScreenControls& mainScreen) {
    return {id, mainScreen.Text("TxtLastname") + ", " + mainScreen.Text("TxtFirstnam"),
            DigitsOf(mainScreen.Stored("TxtPhone")), mainScreen.Stored("txtStreet"),
            mainScreen.Stored("TXTzip")};
}

Recordset OpenClientPhones(Session& session, const PhoneClient& client) {
    return session.dbMainCode->OpenRecordset(
        Sql("select * from hkeylonglat where cltid = {} and phonenum <> {} order by phonenum", client.id,
            client.phone));
}

bool MayAddPhone(Session& session, const PhoneClient& client) {
    if (client.id.empty()) {
        session.ShowMessageWindow("There are no Clients added to add a phone number!");
        return false;
    }
    return true;
}

bool SavePhone(Session& session, Recordset& phones, const PhoneClient& client) {
    if (phones.EditMode() == EditState::None) {
        session.ShowMessageWindow("You must add a record before you can save!");
        return false;
    }
    const std::string number = phones.Text("phonenum");
    if (!number.empty() && number == client.phone) {
        session.ShowMessageWindow("Phone number " + number + " already exists on the client screen!");
        return false;
    }
    if (Trim(number).empty()) {
        session.ShowMessageWindow("Phone number must be entered before you can save!");
        return false;
    }
    if (DigitsOf(number).size() < kDigits) {
        session.ShowMessageWindow("Invalid Phone number!");
        return false;
    }
    if (IsListed(phones, number)) {
        phones.CancelUpdate();
        session.ShowMessageWindow("Phone # " + FormatPhone(number) + " already exists, moving to record.");
        MoveToNumber(phones, number);
        return true;
    }
    WriteWhole(session, phones, [&] {
        phones.Set("CLTid", client.id);
        phones.Set("branchid", session.VENDOR);
        phones.Set("addr", client.street);
        phones.Set("Zip", client.zip);
        phones.Set("Status", StatusOf(session, client.id));
        phones.Update();
        NoteOnTheRoad(session, "E", "C", client.id);
    });
    phones.Requery();
    MoveToNumber(phones, number);
    return true;
}

bool DeletePhone(Session& session, Recordset& phones) {
    return DeleteRecord(session, phones, kTexts,
                        [](const Recordset& phone) { return FormatPhone(phone.Text("phonenum")); });
}

bool MovePhone(Session& session, Recordset& phones, ListMove move) {
    return MoveInRecords(session, phones, move, kTexts);
}

}  // namespace kv
