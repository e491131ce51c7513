#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/text_less.h"
#include "scheduling/visit_conflicts.h"
#include "session/session.h"

namespace kv {

/// A row's fields, by the names that its statement gives them.
using FactRow = std::map<std::string, Value, TextLess>;

/// A visit of the client that is there.
struct ExistingVisit {
    double assignment;  ///< 0: typed in by hand
    std::optional<Date> start;
    std::string type;
};
/// Does it begin within a quarter of an hour of that time, with that call type? To the client it is one and
/// the same visit then, whoever entered it.
bool IsSameVisit(const ExistingVisit& visit, Date start, const std::string& type);
using VisitsByDay = std::multimap<long, ExistingVisit>;

/// What an assignment's visits are made with beside its row. What couldn't be read, or is not there, is
/// missing. It stays as it was read until the stroke is asked for another assignment.
struct VisitFacts {
    const FactRow* client = nullptr;
    const FactRow* caregiver = nullptr;
    std::string type = "R";
    std::vector<std::pair<const char*, Value>> extras;
    Value description;
    const VisitsByDay* visits = nullptr;
    NonVisits nonVisits;

    /// Null where there is no such client.
    Value Client(const char* field) const { return client ? client->at(field) : Value(); }
};

/// The facts of assignments that are run one behind the other in one transaction. The first that needs facts
/// has those of all of them read, a statement for each table: on a database server every statement costs a
/// way to it. What was not read ahead (a text that no statement takes, weeks that lie far back) is read alone
/// when its assignment asks for it, and fails alone.
class StrokeFacts {
  public:
    /// Those that will be asked for, each once; no visit lies behind the horizon.
    StrokeFacts(Session& session, std::vector<long> assignments, Date horizon);
    /// For the assignment in that row of assign, from the week on that ends on that day.
    VisitFacts Of(const Recordset& assignment, Date weekEnd);

  private:
    template <typename Fact>
    using ByText = std::map<std::string, Fact, TextLess>;
    using Texts = std::vector<std::string>;
    using Sequences = std::vector<long>;
    /// What was read of somebody's days, and from which day on.
    template <typename Days>
    struct Since {
        long from = 0;
        Days days;
    };

    void ReadAhead();
    void Forget();
    void ReadClients(const Texts& ids);
    void ReadCaregivers(const Texts& ids);
    void ReadTypes(const Sequences& authorizations);
    void ReadVisits(const Texts& clients, long from);
    void ReadNonVisits(const Texts& caregivers, long from);

    const FactRow* Client(const std::string& id);
    const FactRow* Caregiver(const std::string& id);
    std::string Type(const Value& authorization);
    const FactRow* Payer(double billto);
    Value Description(const std::string& visitType);
    const VisitsByDay& Visits(const std::string& client, long from);
    const NonVisits& NonVisitsOf(const std::string& caregiver, long from);

    Recordset Rows(const std::string& statement);
    /// The statement's rows, by its first column.
    ByText<FactRow> RowsById(const std::string& statement);

    Session& session_;
    Database& work_;
    Sequences assignments_;
    Date horizon_;
    bool ahead_ = false;
    /// The visits of the assignment answered last count for those behind it.
    bool seenByOthers_ = false;

    // What is in a map was asked for; it may have found nothing.
    ByText<FactRow> clients_;
    ByText<FactRow> caregivers_;
    std::map<long, std::string> types_;
    std::map<double, FactRow> payers_;
    ByText<Value> descriptions_;
    ByText<Since<VisitsByDay>> visits_;
    ByText<Since<NonVisits>> nonVisits_;
};

}  // namespace kv
