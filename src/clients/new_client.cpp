#include "clients/new_client.h"

#include "base/text.h"
#include "clients/client_id.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr int kYearsOfService = 10;

bool IsText(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Memo;
}

Date EndOfService(Date start) {
    return start.AddYears(kYearsOfService);
}

/// Adds a copy of each row under the new key.
void CopyRows(Database& database, const std::string& table, const char* key, const std::string& from,
              const std::string& to) {
    const auto ofClient = [&](const std::string& id) {
        return Sql("select * from {} where {} = {}", Raw{table}, Raw{key}, id);
    };
    Recordset rows = database.OpenRecordset(ofClient(from), RecordsetType::Snapshot);
    Recordset copies = database.OpenRecordset(ofClient(to));
    for (; !rows.Eof(); rows.MoveNext()) {
        copies.AddNew();
        for (std::size_t field = 0; field < rows.Fields().size(); ++field) {
            copies.Set(field, rows.Get(field));
        }
        copies.Set(key, to);
        copies.Update();
    }
}

/// A client's status and days of service, as they begin.
void SetBeginning(Session& session, Recordset& row, const NewClient& client) {
    if (client.potential) {
        row.Set("casestatcd", "Z");
        row.Set("potientalstatus", "Active");
        row.Set("first_contact", session.clock.Today());
        row.Set("startservc", Value());
        row.Set("caseexpdat", Value());
        row.Set("istemplate", 0);
    } else {
        row.Set("casestatcd", "A");
        row.Set("startservc", client.start);
        row.Set("caseexpdat", EndOfService(client.start));
        row.Set("istemplate", client.asTemplate ? 1 : 0);
    }
    if (!EqualsNoCase(session.Manager, "all")) {
        row.Set("Manager", session.Manager);
    }
}

void AddClientRow(Session& session, Recordset& clients, const NewClient& client) {
    clients.AddNew();
    clients.Set("CLIENT", client.id);
    SetBeginning(session, clients, client);
    clients.Update();
}

void CopyClientRow(Session& session, Recordset& clients, const NewClient& client) {
    Recordset pattern = session.dbMainWork->OpenRecordset(
        Sql("select * from CLIENTPR where cliENT = {}", client.pattern), RecordsetType::Snapshot);
    clients.FindFirst(Sql("[CLIENT]={}", client.id));
    if (pattern.Eof() || clients.NoMatch()) {
        return;
    }
    clients.Edit();
    for (std::size_t field = 0; field < pattern.Fields().size(); ++field) {
        const FieldInfo& info = pattern.Fields()[field];
        // The key can't be the pattern's, not even for a moment.
        if (EqualsNoCase(info.name, "CLIENT")) {
            continue;
        }
        // Texts are joined to the empty one on their way, so what is Null becomes empty.
        const Value value = pattern.Get(field);
        clients.Set(info.name, value.IsNull() && IsText(info.type) ? Value("") : value);
    }
    for (const char* own : {"external_id", "LastName", "firstnam"}) {
        clients.Set(own, "");
    }
    SetBeginning(session, clients, client);
    clients.Update();
}

void CopyPattern(Session& session, Recordset& clients, const NewClient& client) {
    CopyRows(*session.dbMainCode, "hkeylonglat", "CLTid", client.pattern, client.id);
    for (const char* table : {"cli_documents", "cli_personnel", "cli_misc", "care_plan"}) {
        CopyRows(*session.dbMainWork, table, "Client", client.pattern, client.id);
    }
    CopyClientRow(session, clients, client);
}

/// The pattern's rate of the call type, or one without amounts.
void AddRate(Session& session, const NewClient& client) {
    Database& work = *session.dbMainWork;
    Recordset rates = work.OpenRecordset(
        Sql("Select * from clirate where client = {} and visittype = {}", client.pattern, client.visitType));
    if (!rates.Eof()) {
        for (Recordset pattern = rates.Clone(); !pattern.Eof(); pattern.MoveNext()) {
            rates.AddNew();
            for (std::size_t field = 0; field < pattern.Fields().size(); ++field) {
                rates.Set(field, pattern.Get(field));
            }
            rates.Set("client", client.id);
            rates.Update();
        }
        return;
    }
    rates.AddNew();
    rates.Set("client", client.id);
    rates.Set("visittype", client.visitType);
    rates.Set("Description", client.visitDescription);
    rates.Set("method", "H");
    rates.Update();
}

void AddAuthorization(Session& session, const NewClient& client) {
    Recordset row = session.dbMainWork->OpenRecordset("select * from authorizations");
    row.AddNew();
    row.Set("Client", client.id);
    row.Set("vendor", session.VENDOR);
    row.Set("from_date", client.start);
    row.Set("to_DATE", EndOfService(client.start));
    row.Set("status_code", "A");
    row.Set("live_in", "N");
    row.Set("HRS", 0);
    row.Set("weekormonth", "W");
    row.Set("cobilling_type", Value());
    row.Set("cobilling_amount", Value());
    row.Set("status_date", session.clock.Today());
    row.Set("visit_type", client.visitType);
    row.Set("vis_desc", client.visitDescription);
    row.Set("bill_code", client.payer->billCode);
    row.Set("bill_name", client.payer->name);
    row.Set("emp_type", "FIELD");
    row.Update();
}

std::string FullName(const Recordset& client) {
    return client.Text("firstnam") + " " + client.Text("LastName");
}

}  // namespace

std::vector<TemplateRow> LoadTemplates(Session& session) {
    std::vector<TemplateRow> templates;
    Recordset rows = session.dbMainWork->OpenRecordset(
        "select * from clientpr where istemplate = 1 order by firstnam,lastname", RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        templates.push_back({FullName(rows), rows.Text("CLIENT"), true});
    }
    templates.push_back({"Use an Existing Client", "00000", false});
    return templates;
}

std::string TemplateName(Session& session, const std::string& id) {
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select * from clientpr where client = {}", id), RecordsetType::Snapshot);
    return row.Eof() ? id : FullName(row);
}

std::vector<PayerItem> LoadPayers(Session& session) {
    std::vector<PayerItem> payers;
    Recordset rows = session.dbMainWork->OpenRecordset("select * from billcode_imaster order by insname",
                                                       RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        payers.push_back({rows.Text("INSNAME"), static_cast<long>(rows.Get("BILLCODE").ToInteger())});
    }
    return payers;
}

NewClientAnswer SaveNewClient(Session& session, const NewClient& client) {
    if (client.payer && client.visitType.empty()) {
        session.ShowMessageWindow(
            "You must choose a valid Call Type Description, if you choose a Payer Source");
        return {NewClientResult::NoCallType, {}};
    }
    Recordset clients = session.dbMainWork->OpenRecordset("select * from clientpr");
    clients.FindFirst(Sql("CLIENT = {}", client.id));
    if (!clients.NoMatch()) {
        return {NewClientResult::IdUsed, client.id + " has already been used!"};
    }
    if (Length(client.id) < kLeastIdLength) {
        return {NewClientResult::IdTooShort, "You must enter a valid ID of 5 chars."};
    }
    WholeStep step(session);
    AddClientRow(session, clients, client);
    if (!client.pattern.empty()) {
        CopyPattern(session, clients, client);
    }
    if (client.payer) {
        AddRate(session, client);
        AddAuthorization(session, client);
    }
    NoteOnTheRoad(session, "A", "C", client.id);
    step.Finish();
    session.PickedEmployee = client.id;
    return {};
}

}  // namespace kv
