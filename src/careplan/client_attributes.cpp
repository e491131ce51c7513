#include "careplan/client_attributes.h"

#include "base/text.h"
#include "session/rights.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

/// What is particular to a list.
struct ListText {
    const char* area;
    const char* items;  ///< the company list
    const char* order;  ///< of the client's entries
    const char* right;  ///< description of its rights, or nullptr for none
    const char* addCode;
    const char* removeCode;
};

const ListText& TextOf(AttributeList list) {
    static const ListText skills = {"SKI",
                                    "select * from skills ORDER BY DESCRIPTION",
                                    " ORDER BY DESCRIPTION",
                                    "Skills Required",
                                    "CSKA",
                                    "CSKR"};
    static const ListText callTypes = {
        "CTY", "select * from cli_calltype ORDER BY DESCRIPTION", "", "Extra Call Types", "CETA", "CETR"};
    static const ListText diagnoses = {"ICD", "select * from ICD9", "", nullptr, nullptr, nullptr};
    switch (list) {
        case AttributeList::Skills:
            return skills;
        case AttributeList::CallTypes:
            return callTypes;
        case AttributeList::Diagnoses:
            break;
    }
    return diagnoses;
}

constexpr std::size_t kCodePlaces = 6;
constexpr std::size_t kTextAt = 8;

bool IsAddANew(AttributeList list, const AttributeItem& item) {
    return list == AttributeList::CallTypes && StartsWithNoCase(item.description, "ADD A NEW");
}

void AddEntry(Recordset& entries, const char* area, const std::string& client, const AttributeItem& item) {
    entries.AddNew();
    entries.Set("CLIENT", client);
    if (!item.code.empty()) {
        entries.Set("ID", item.code);
    }
    entries.Set("Area", area);
    entries.Set("Description", item.description);
    entries.Update();
}

}  // namespace

std::vector<AttributeItem> LoadAttributeItems(Session& session, AttributeList list) {
    Recordset rows = session.dbMainCode->OpenRecordset(TextOf(list).items, RecordsetType::Snapshot);
    std::vector<AttributeItem> items;
    for (; !rows.Eof(); rows.MoveNext()) {
        AttributeItem item = {rows.Text("code"), rows.Text("Description")};
        item.critical = list == AttributeList::Skills && rows.Get("critical").NumberOr(0) != 0;
        items.push_back(std::move(item));
    }
    return items;
}

Recordset OpenAttributes(Session& session, AttributeList list, const std::string& client) {
    return session.dbMainWork->OpenRecordset(Sql("select * from cli_misc where client = {} and area = {}{}",
                                                 client, TextOf(list).area, Raw{TextOf(list).order}));
}

void AddAttributes(Session& session, AttributeList list, const std::string& client,
                   const std::vector<AttributeItem>& items, const AskCallType& ask) {
    const char* area = TextOf(list).area;
    // The operator is asked before the first row is written. What was typed has no code.
    std::vector<AttributeItem> chosen;
    for (const AttributeItem& item : items) {
        if (!IsAddANew(list, item)) {
            chosen.push_back(item);
        } else if (const std::optional<std::string> text = ask()) {
            chosen.push_back({"", *text});
        }
    }
    if (items.empty()) {
        return;
    }
    WholeStep step(session);
    Recordset entries = OpenAttributes(session, list, client);
    for (const AttributeItem& item : chosen) {
        if (item.code.empty()) {
            // No look-up: the same words may be added twice.
            AddEntry(entries, area, client, item);
            continue;
        }
        entries.FindFirst(Sql("client = {} and id = {} and area = {}", client, item.code, area));
        if (entries.NoMatch()) {
            AddEntry(entries, area, client, item);
        } else {
            entries.Edit();
            entries.Set("Description", item.description);
            entries.Update();
        }
    }
    NoteOnTheRoad(session, "E", "C", client);
    step.Finish();
}

bool RemoveAttribute(Session& session, AttributeList list, Recordset& entries, const std::string& client) {
    const bool asks = list != AttributeList::Diagnoses;
    if (entries.RecordCount() == 0 ||
        (asks && !session.dialogs.AskToDestroy("Are you sure you wish to remove this item?\r\n" +
                                               entries.Text("Description")))) {
        return false;
    }
    WholeStep step(session);
    entries.Delete();
    NoteOnTheRoad(session, "E", "C", client);
    step.Finish();
    entries.Requery();
    return true;
}

std::string DiagnosisLine(const AttributeItem& diagnosis) {
    std::string code = Left(diagnosis.code, kCodePlaces);
    code.resize(std::max(code.size(), kCodePlaces), ' ');
    return code + "  " + diagnosis.description;
}

AttributeItem DiagnosisOf(const std::string& line) {
    return {Trim(Left(line, kCodePlaces)), line.size() > kTextAt ? line.substr(kTextAt) : std::string()};
}

AttributeRights AskAttributeRights(Session& session, AttributeList list) {
    const ListText& text = TextOf(list);
    if (text.right == nullptr) {
        return {};
    }
    const auto ask = [&](const char* code, const char* what) {
        return CheckScreenAccess(session, code, false, std::string(text.right) + " - " + what, "Client", "*");
    };
    return {ask(text.addCode, "Add Entry"), ask(text.removeCode, "Remove Entry")};
}

}  // namespace kv
