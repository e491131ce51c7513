#include "clients/referrals.h"

#include "base/format.h"
#include "base/text.h"
#include "clients/client_save.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr const char* kAll = "All";

/// No source or contact bears an apostrophe: the save takes it out.
bool CanBeFound(const std::string& name) {
    return !name.empty() && name.find('\'') == std::string::npos;
}

/// The source's row, or one at its end when there is none of that name.
Recordset OpenSource(Session& session, const std::string& source) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from referral where fullname = {} order by sequence", source));
}

Recordset OpenContact(Session& session, const Value& sequence, const std::string& contact) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from referral_contacts where referral_seq = {} and fullname = {}", sequence, contact));
}

std::string CityLine(const Recordset& row) {
    return row.Text("State") + ",  " + row.Text("Zip");
}

void AddSource(Session& session, const ReferralEntry& entry) {
    const Date today = session.clock.Today();
    Recordset sources = session.dbMainWork->OpenRecordset("select * from referral");
    sources.AddNew();
    sources.Set("FullName", entry.source);
    sources.Set("first_contact", today);
    sources.Set("ranking", 0);
    sources.Set("Ref_Group", "Client");
    sources.Set("Status", "Active");
    sources.Set("status_date", today);
    sources.Set("Weekstoreview", 0);
    sources.Set("lastreviewDate", today);
    sources.Set("Category", entry.category);
    sources.Update();
}

void AddContact(Session& session, const ReferralEntry& entry) {
    const Recordset source = OpenSource(session, entry.source);
    if (source.Eof()) {
        return;
    }
    const Value sequence = source.Get("sequence");
    Recordset contacts = OpenContact(session, sequence, entry.contact);
    if (contacts.Eof()) {
        contacts.AddNew();
        contacts.Set("referral_seq", sequence);
        contacts.Set("FullName", entry.contact);
        contacts.Update();
    }
}

void Clean(Session& session, std::string& name, const char* message) {
    const std::string clean = CleanName(name);
    if (clean != name) {
        name = clean;
        session.ShowMessageWindow(message);
    }
}

}  // namespace

std::vector<ReferralSource> LoadReferrals(Session& session, const ReferralLimits& limits) {
    std::string statement = "Select * from referral where (Ref_Group = 'Both' or Ref_Group = 'Client')";
    if (limits.category != kAll) {
        statement += Sql(" and category = {}", limits.category);
    }
    if (limits.status != kAll) {
        statement += Sql(" and Status = {}", limits.status);
    }
    const ReadSpan span = session.dbMainWork->BeginRead();
    std::vector<ReferralSource> sources;
    Recordset rows =
        session.dbMainWork->OpenRecordset(statement + " order by fullname", RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        ReferralSource& source = sources.emplace_back();
        source.sequence = static_cast<long>(rows.Get("sequence").ToInteger());
        source.name = rows.Text("FullName");
        source.category = rows.Text("Category");
        Recordset contacts = session.dbMainWork->OpenRecordset(
            Sql("select * from Referral_contacts where referral_seq = {} ORDER BY Fullname", source.sequence),
            RecordsetType::Snapshot);
        for (; !contacts.Eof(); contacts.MoveNext()) {
            source.contacts.push_back(contacts.Text("FullName"));
        }
    }
    return sources;
}

ReferralDetails SourceDetails(Session& session, const std::string& source) {
    if (!CanBeFound(source)) {
        return {};
    }
    const Recordset row = OpenSource(session, source);
    if (row.Eof()) {
        return {};
    }
    return {{"Name", row.Text("FullName")},
            {"Address", row.Text("Address")},
            {"City", row.Text("City")},
            {"State", CityLine(row)},
            {"Phone", FormatPhone(row.Text("Phone"))},
            {"Fax", FormatPhone(row.Text("Fax"))}};
}

ReferralDetails ContactDetails(Session& session, const std::string& source, const std::string& contact) {
    if (!CanBeFound(source) || !CanBeFound(contact)) {
        return {};
    }
    const Recordset of = OpenSource(session, source);
    if (of.Eof()) {
        return {};
    }
    const Recordset row = OpenContact(session, of.Get("sequence"), contact);
    if (row.Eof()) {
        return {};
    }
    return {{"Name", row.Text("FullName")},
            {"Title", row.Text("Title")},
            {"Address", row.Text("Address")},
            {"City", row.Text("City")},
            {"State", row.Text("State")},
            {"Phone", FormatPhone(row.Text("Phone")) + "  Ext: " + row.Text("ext")},
            {"Email", row.Text("Email")}};
}

void SaveReferral(Session& session, ReferralEntry& entry) {
    Clean(session, entry.source, "You may not have a , or a ' in your Source");
    Clean(session, entry.contact, "You may not have a , or a ' in your Contact");
    WholeStep step(session);
    if (!entry.source.empty() && OpenSource(session, entry.source).Eof()) {
        AddSource(session, entry);
    }
    if (!entry.contact.empty() && !entry.source.empty()) {
        AddContact(session, entry);
    }
    step.Finish();
    if (!entry.contact.empty() && entry.source.empty()) {
        session.ShowMessageWindow("You must choose a referral source, before adding a contact");
    }
}

Document ReferralGraph(Session& session, const std::vector<std::string>& categories,
                       const std::string& group) {
    std::string statement = "select ref_grouping, count(*) as clients from clientpr where istemplate = 0";
    if (!categories.empty()) {
        statement += Sql(" and ref_grouping in ({})", TextList{categories});
    }
    if (!EqualsNoCase(group, "ALL")) {
        statement += Sql(" and grouping = {}", group);
    }
    BarChart chart;
    double total = 0;
    Recordset rows = session.dbMainWork->OpenRecordset(
        statement + " group by ref_grouping order by ref_grouping", RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string category = rows.Get(0).ToText();
        const double clients = rows.Get(1).ToDouble();
        chart.bars.emplace_back(Trim(category).empty() ? "(none)" : category, clients);
        total += clients;
    }
    Document document("Referral Graph");
    document.Heading(1, session.AgencyName);
    document.Heading(2, "Clients by Referral Category");
    document
        .Line("Group: " + (EqualsNoCase(group, "ALL") ? "All" : group) +
              "     Run Date: " + FormatDate(session.clock.Today(), "MMM/DD/YYYY"))
        .spaceAfter = 0.2;
    if (chart.bars.empty()) {
        document.Line("No client came from these categories.");
        return document;
    }
    document.Add(std::move(chart));
    document.Line("Clients in all: " + FormatNumber(total, "##,##0")).spaceBefore = 0.1;
    return document;
}

}  // namespace kv
