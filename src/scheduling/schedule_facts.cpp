#include "scheduling/schedule_facts.h"

#include <algorithm>
#include <cstdlib>

#include "base/text.h"
#include "datastore/try_step.h"

namespace kv {

namespace {

constexpr int kDaysInAWeek = 7;
/// How far back the days are read for all; an assignment that was neglected for longer reads its own.
constexpr int kDaysAhead = 10 * kDaysInAWeek;

const FactRow* Found(const FactRow& row) {
    return row.empty() ? nullptr : &row;
}

FactRow FieldsOf(const Recordset& row) {
    FactRow fields;
    for (const FieldInfo& field : row.Fields()) {
        fields.emplace(field.name, row.Get(field.name));
    }
    return fields;
}

/// No statement takes a text with an apostrophe.
bool MayBeJoined(const std::string& text) {
    return text.find('\'') == std::string::npos;
}

template <typename Ids>
std::vector<std::string> ListOf(const Ids& ids) {
    std::vector<std::string> list;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(list), MayBeJoined);
    return list;
}

}  // namespace

bool IsSameVisit(const ExistingVisit& visit, Date start, const std::string& type) {
    constexpr long kMinutes = 15;
    return visit.start && std::labs(MinutesBetween(visit.start->TimeOnly(), start.TimeOnly())) <= kMinutes &&
           EqualsNoCase(visit.type, type);
}

StrokeFacts::StrokeFacts(Session& session, std::vector<long> assignments, Date horizon)
    : session_(session),
      work_(*session.dbMainWork),
      assignments_(std::move(assignments)),
      horizon_(horizon),
      ahead_(assignments_.size() < 2) {}

VisitFacts StrokeFacts::Of(const Recordset& assignment, Date weekEnd) {
    const std::string client = assignment.Text("CLIENT");
    const std::int64_t sequence = assignment.Get("sequence").ToInteger();
    if (seenByOthers_) {
        Forget();
    }
    // Without a client they are Non-Visit time of the caregiver, without a number as if typed in by hand.
    seenByOthers_ = client.empty() || sequence == 0;
    if (!ahead_) {
        ahead_ = true;
        Try([&] { ReadAhead(); });
    }

    VisitFacts facts;
    Try([&] { facts.client = Client(client); });
    Try([&] {
        const std::string caregiver = assignment.Text("emp_id");
        if (!Trim(caregiver).empty()) {
            facts.caregiver = Caregiver(caregiver);
            facts.nonVisits = NonVisitsOf(Trim(caregiver), weekEnd.DayNumber() + 1 - kDaysInAWeek);
        }
    });
    Try([&] {
        const std::string type = Type(assignment.Get("author_seq"));
        facts.type = type.empty() ? facts.type : type;
    });
    // Mileage, errands and expenses are billed as the payer takes them: 1 is the client.
    Try([&] {
        constexpr double kClientPays = 1;
        const double billto = assignment.Get("billto").NumberOr(0);
        const FactRow* payer = billto == kClientPays && facts.client ? facts.client : Payer(billto);
        if (payer) {
            facts.extras = {{"BILL_TRAVEL", payer->at("bill_mileage")},
                            {"bill_errand", payer->at("bill_errand")},
                            {"BILL_EXPENSE", payer->at("bill_expenses")}};
        }
    });
    Try([&] { facts.description = Description(assignment.Text("visit_type")); });
    // A visit that stands twice is seen; one that is missing leaves somebody alone.
    Try([&] { facts.visits = &Visits(client, weekEnd.DayNumber() - kDaysInAWeek); });
    return facts;
}

void StrokeFacts::Forget() {
    ahead_ = assignments_.size() < 2;
    clients_.clear();
    caregivers_.clear();
    types_.clear();
    payers_.clear();
    descriptions_.clear();
    visits_.clear();
    nonVisits_.clear();
}

/// Of the assignments that look as if they would make a visit.
void StrokeFacts::ReadAhead() {
    const long today = session_.clock.Today().DayNumber();
    long from = today;
    std::set<std::string, TextLess> clients;
    std::set<std::string, TextLess> caregivers;
    std::set<std::string, TextLess> trimmed;
    std::set<long> authorizations;
    for (
        Recordset row = Rows(Sql(
            "select CLIENT,emp_id,author_seq,Last_date from assign where sequence in ({}) and Type = 'A' and "
            "author_status = 'A' and HRS > 0 and st_date <= {} and Last_date <= END_DATE and Last_date <= {}",
            NumberList{assignments_}, horizon_.DayNumber(), horizon_.DayNumber() - kDaysInAWeek));
        !row.Eof(); row.MoveNext()) {
        from = std::min<long>(from, row.Get("Last_date").ToDate().DayNumber());
        clients.insert(row.Text("CLIENT"));
        if (const std::string id = row.Text("emp_id"); !Trim(id).empty()) {
            caregivers.insert(id);
            trimmed.insert(Trim(id));
        }
        if (const Value authorization = row.Get("author_seq"); !authorization.IsNull()) {
            authorizations.insert(static_cast<long>(authorization.ToInteger()));
        }
    }
    from = std::max(from, today - kDaysAhead);
    if (const Texts ids = ListOf(clients); !ids.empty()) {
        Try([&] { ReadClients(ids); });
        Try([&] { ReadVisits(ids, from); });
    }
    if (const Texts ids = ListOf(caregivers); !ids.empty()) {
        Try([&] { ReadCaregivers(ids); });
        Try([&] { ReadNonVisits(ListOf(trimmed), from); });
    }
    if (!authorizations.empty()) {
        Try([&] { ReadTypes({authorizations.begin(), authorizations.end()}); });
    }
}

Recordset StrokeFacts::Rows(const std::string& statement) {
    return work_.OpenRecordset(statement, RecordsetType::Snapshot);
}

StrokeFacts::ByText<FactRow> StrokeFacts::RowsById(const std::string& statement) {
    ByText<FactRow> rows;
    for (Recordset row = Rows(statement); !row.Eof(); row.MoveNext()) {
        if (const std::string id = row.Get(0).ToText(); !rows.contains(id)) {
            rows.emplace(id, FieldsOf(row));
        }
    }
    return rows;
}

// ------------------------------------------------------------------------------------------------- reading

void StrokeFacts::ReadClients(const Texts& ids) {
    ByText<FactRow> rows =
        RowsById(Sql("select client,Manager,HOL_COV,disaster_code,Grouping,bill_mileage,bill_errand,"
                     "bill_expenses from clientPR where [client] in ({})",
                     TextList{ids}));
    for (const std::string& id : ids) {
        clients_[id] = std::move(rows[id]);
    }
}

void StrokeFacts::ReadCaregivers(const Texts& ids) {
    ByText<FactRow> rows =
        RowsById(Sql("select EMP_ID,t_code,t_date,LastName,FirstName,dept,PAY_MILEAGE,"
                     "PAY_ERRAND,PAY_EXPENSES from employee where [EMP_ID] in ({})",
                     TextList{ids}));
    for (const std::string& id : ids) {
        caregivers_[id] = std::move(rows[id]);
    }
}

void StrokeFacts::ReadTypes(const Sequences& authorizations) {
    for (Recordset row = Rows(Sql("select sequence,sch_type from Authorizations where sequence in ({})",
                                  NumberList{authorizations}));
         !row.Eof(); row.MoveNext()) {
        types_[row.Get("sequence").ToInteger()] = row.Text("sch_type");
    }
}

void StrokeFacts::ReadVisits(const Texts& clients, long from) {
    ByText<Since<VisitsByDay>> found;
    for (const std::string& client : clients) {
        found[client].from = from;
    }
    for (Recordset row = Rows(Sql("select client,st_date,assign_seq,St_time,visit_type from sch_DAY where "
                                  "client in ({}) and st_date >= {} and st_date <= {}",
                                  TextList{clients}, from, horizon_.DayNumber()));
         !row.Eof(); row.MoveNext()) {
        const Value start = row.Get("St_time");
        found[row.Text("client")].days.emplace(
            row.Get("st_date").ToDate().DayNumber(),
            ExistingVisit{row.Get("assign_seq").NumberOr(-1),
                          start.IsNull() ? std::nullopt : std::optional(start.ToDate()),
                          row.Text("visit_type")});
    }
    for (auto& [client, visits] : found) {
        visits_[client] = std::move(visits);
    }
}

void StrokeFacts::ReadNonVisits(const Texts& caregivers, long from) {
    NonVisitsById found = ReadNonVisitsOf(session_, caregivers, Date(static_cast<double>(from)), horizon_);
    for (const std::string& id : caregivers) {
        nonVisits_[id] = {from, std::move(found[id])};
    }
}

// ------------------------------------------------------------------------------------------------ answering

const FactRow* StrokeFacts::Client(const std::string& id) {
    if (!clients_.contains(id)) {
        ReadClients({id});
    }
    return Found(clients_[id]);
}

const FactRow* StrokeFacts::Caregiver(const std::string& id) {
    if (!caregivers_.contains(id)) {
        ReadCaregivers({id});
    }
    return Found(caregivers_[id]);
}

std::string StrokeFacts::Type(const Value& authorization) {
    if (authorization.IsNull()) {
        return {};
    }
    const auto sequence = static_cast<long>(authorization.ToInteger());
    if (!types_.contains(sequence)) {
        ReadTypes({sequence});
    }
    return types_[sequence];
}

/// Payers and visit types are few, and one serves many assignments.
const FactRow* StrokeFacts::Payer(double billto) {
    const auto known = payers_.find(billto);
    if (known != payers_.end()) {
        return Found(known->second);
    }
    const Recordset row = Rows(Sql(
        "select bill_mileage,bill_errand,bill_expenses from Billcode_imaster where billcode = {}", billto));
    return Found(payers_[billto] = row.Eof() ? FactRow() : FieldsOf(row));
}

Value StrokeFacts::Description(const std::string& visitType) {
    const auto known = descriptions_.find(visitType);
    if (known != descriptions_.end()) {
        return known->second;
    }
    return descriptions_[visitType] = session_.dbMainCode->Lookup(
               Sql("select Description from visit_types where code = {}", visitType));
}

const VisitsByDay& StrokeFacts::Visits(const std::string& client, long from) {
    const auto known = visits_.find(client);
    if (known == visits_.end() || known->second.from > from) {
        ReadVisits({client}, from);
    }
    return visits_[client].days;
}

const NonVisits& StrokeFacts::NonVisitsOf(const std::string& caregiver, long from) {
    const auto known = nonVisits_.find(caregiver);
    if (known == nonVisits_.end() || known->second.from > from) {
        ReadNonVisits({caregiver}, from);
    }
    return nonVisits_[caregiver].days;
}

}  // namespace kv
