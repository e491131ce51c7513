// Whom the client needs, and the query of those who may come.
#include "matching/client_needs.h"

#include "base/format.h"
#include "base/text.h"
#include "billing/visit_amounts.h"
#include "datastore/try_step.h"

namespace kv {

namespace {

constexpr int kMostKnown = 60;  ///< rows read of the trees of visited and banned caregivers

class Preparation {
  public:
    Preparation(Session& session, const SuggestionRequest& request) : session_(session), request_(request) {}

    ClientNeeds Run() {
        needs_.client = request_.client;
        needs_.liveIn = request_.liveIn;
        needs_.type = "FIELD";
        const Recordset client = Work(Sql("select * from ClientPR where client = {}", request_.client));
        if (!client.Eof()) {
            needs_.area = client.Text("BORO");
            needs_.language = client.Text("LANGUAGE");
            needs_.gender = Upper(client.Text("PROV_SEX"));
            needs_.billCode = 0;
        }
        Try([&] { ReadAuthorization(); });
        Try([&] { ReadDiscipline(client); });
        Try([&] { Rate(); });
        Try([&] { FillPanel(client); });
        Try([&] { ReadSkills(); });
        Try([&] { ReadVisited(); });
        Try([&] { ReadBanned(); });
        return std::move(needs_);
    }

  private:
    Recordset Work(const std::string& statement) {
        return session_.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    }
    Recordset Code(const std::string& statement) {
        return session_.dbMainCode->OpenRecordset(statement, RecordsetType::Snapshot);
    }

    void ReadAuthorization() {
        const Recordset row =
            Work(Sql("Select * from authorizations where sequence = {}", request_.authorization));
        if (row.Eof()) {
            return;
        }
        if (const std::string type = Upper(row.Text("emp_type")); !type.empty()) {
            needs_.type = type;
        }
        needs_.visitType = row.Text("visit_type");
        needs_.billCode = static_cast<long>(row.Get("bill_code").NumberOr(0));
        needs_.liveIn = needs_.liveIn || EqualsNoCase(row.Text("Live_in"), "Y");
    }

    bool FindDiscipline(const std::string& code) {
        const Recordset row = Code(Sql("select * from discipline where [code] = {}", code));
        if (row.Eof()) {
            return false;
        }
        needs_.disciplineValue = static_cast<long>(row.Get("Value").NumberOr(0));
        discipline_ = row.Text("Description");
        return true;
    }

    void ReadDiscipline(const Recordset& client) {
        if (!client.Eof()) {
            FindDiscipline(client.Text("ORD_DISCPL"));
        }
        if (request_.authorization > 0) {
            const Recordset type = Code(Sql("Select * from visit_types where code = {}", needs_.visitType));
            if (!type.Eof()) {
                callType_ = type.Text("Description");
                if (const std::string own = type.Text("ord_Discpl"); !Trim(own).empty()) {
                    FindDiscipline(own);
                }
            }
        }
    }

    double Bill(const std::string& visitType, long billCode, bool liveIn) {
        return BillAmountForVisit(session_, {needs_.client, visitType, billCode, liveIn, {}},
                                  request_.day.At(request_.time), request_.hours);
    }

    void Rate() {
        needs_.bill = Bill(needs_.visitType, needs_.billCode, needs_.liveIn);
        if (needs_.bill == 0) {
            needs_.billFault = "Missing a Bill Rate";
            if (request_.authorization == 0) {
                ExplainMissingRate();
            }
        }
    }

    /// Call type and payer come from an authorization; the search from a screen has none.
    void ExplainMissingRate() {
        needs_.billReason = "No authorization stands behind this search.";
        const Recordset row =
            Work(Sql("Select * from authorizations where sequence = {}", request_.openedFrom));
        if (row.Eof()) {
            return;
        }
        if (request_.hours <= 0) {
            needs_.billReason += " Without hours nothing is billed.";
            return;
        }
        const double bill = Bill(row.Text("visit_type"), static_cast<long>(row.Get("bill_code").NumberOr(0)),
                                 needs_.liveIn || EqualsNoCase(row.Text("Live_in"), "Y"));
        needs_.billReason += bill > 0 ? " The assignment's own would bill " +
                                            FormatNumber(bill, "##,##0.00") + " for this visit."
                                      : " The assignment's own has no rate for this visit either.";
    }

    void FillPanel(const Recordset& client) {
        if (client.Eof()) {
            return;
        }
        const Recordset language = Code(Sql("select * from LANGUAGE where code = {}", needs_.language));
        const std::string gender = needs_.gender == "F"   ? "Female"
                                   : needs_.gender == "M" ? "Male"
                                                          : "Not Applicable";
        needs_.panel = {
            {"ID", needs_.client},
            {"Name", Trim(client.Text("LASTNAME")) + ", " + Trim(client.Text("FIRSTNAM"))},
            {"Address", client.Text("STREET")},
            {"City", client.Text("CITY")},
            {"State", client.Text("STATE")},
            {"Zip", client.Text("ZIP")},
            {"Phone", FormatPhone(client.Text("PHONE"))},
            {"District", needs_.area.empty() ? "Not Applicable" : needs_.area},
            {"Discipline", discipline_},
            {"Gender", gender},
            {"Language", language.Eof() ? std::string() : language.Text("Description")},
            {"Type", needs_.type},
            {"Call Type", callType_},
            {"Billing Rate", FormatNumber(needs_.bill, "##,##0.00")},
        };
    }

    void ReadSkills() {
        Recordset critical = Code("Select * from skills where critical = 1");
        Recordset rows =
            Work(Sql("Select * from cli_misc where client = {} and area = 'SKI'", needs_.client));
        for (; !rows.Eof(); rows.MoveNext()) {
            SkillNeed need = {rows.Text("ID"), Trim(rows.Text("Description")), false};
            critical.FindFirst(Sql("code = {}", need.code));
            need.critical = !critical.NoMatch();
            needs_.skills.push_back(std::move(need));
        }
    }

    /// Is she in the list, and does she work on the day?
    std::optional<std::string> NameIfWorking(const std::string& id) {
        const Recordset caregiver = Work(Sql("select * from employee where emp_id = {}", id));
        if (caregiver.Eof()) {
            return std::nullopt;
        }
        const Value left = caregiver.Get("t_date");
        const bool works = EqualsNoCase(caregiver.Text("t_code"), "A") ||
                           (!left.IsNull() && left.ToDate() >= request_.day.DayOnly());
        return works ? std::optional(Trim(caregiver.Text("LastName")) + ", " +
                                     Left(caregiver.Text("FirstName"), 1))
                     : std::nullopt;
    }

    void ReadVisited() {
        constexpr std::size_t kNameWidth = 13;
        Recordset rows =
            Work(Sql("Select * from cli_emp where client = {} order by last_date DESC", needs_.client));
        for (; !rows.Eof() && read_ <= kMostKnown; rows.MoveNext(), ++read_) {
            const std::string id = rows.Text("emp_id");
            if (const std::optional<std::string> name = NameIfWorking(id)) {
                const Value last = rows.Get("Last_date");
                needs_.visited.push_back(
                    {id, Left(*name, kNameWidth) + " " +
                             (last.IsNull() ? std::string() : FormatDate(last.ToDate(), "MMM/DD/YY")) +
                             " - " + FormatNumber(rows.Get("num_visits").NumberOr(0), "##,000")});
            }
        }
    }

    /// The rows read of both lists count together.
    void ReadBanned() {
        Recordset rows = Work(Sql("Select * from emp_ban where client = {}", needs_.client));
        for (; !rows.Eof() && read_ <= kMostKnown; rows.MoveNext(), ++read_) {
            const std::string id = rows.Text("emp_id");
            if (NameIfWorking(id)) {
                needs_.banned.push_back({id, rows.Text("emp_name")});
            }
        }
    }

    Session& session_;
    const SuggestionRequest& request_;
    ClientNeeds needs_;
    std::string discipline_;
    std::string callType_;
    int read_ = 0;
};

}  // namespace

std::vector<std::string> ClientNeeds::CriticalSkills() const {
    std::vector<std::string> codes;
    for (const SkillNeed& skill : skills) {
        if (skill.critical) {
            codes.push_back(skill.code);
        }
    }
    return codes;
}

ClientNeeds PrepareClient(Session& session, const SuggestionRequest& request) {
    return Preparation(session, request).Run();
}

std::string EmployeeStatement(const ClientNeeds& needs, const SuggestionRequest& request,
                              const SuggestionOptions& options, const std::string& emp_id) {
    const bool join = options.areas && !needs.area.empty();
    std::string statement =
        join ? Sql("select * from employee  inner join emp_locations on emp_locations.emp = employee.emp_id "
                   "where emp_locations.district = {}",
                   needs.area)
             : "select * from employee";
    const Raw start{join ? " and " : "  WHERE "};
    statement += options.potential ? Sql("{}employee.t_code = 'Z'", start)
                                   : Sql("{}(employee.t_code = 'A' or employee.t_date >= {})", start,
                                         request.day.DayNumber());
    if (options.group != "ALL") {
        statement += Sql(" and employee.dept = {}", Trim(options.group));
    }
    if (needs.liveIn) {
        statement += " and employee.live_in = true";
    }
    if (options.language) {
        statement += Sql(" and employee.tot_lang like {}", "*" + needs.language + "*");
    }
    if (options.gender && (needs.gender == "F" || needs.gender == "M")) {
        statement += Sql(" AND employee.SEX = {}", needs.gender);
    }
    statement +=
        Sql(" and employee.disp_level {} {}", Raw{options.discipline ? "=" : ">="}, needs.disciplineValue);
    if (options.type && (needs.type == "FIELD" || needs.type == "STAFFING")) {
        statement += Sql(" and employee.EMP_TYPE <> {}", needs.type == "FIELD" ? "STAFFING" : "FIELD");
    }
    if (!emp_id.empty()) {
        statement += Sql(" and employee.emp_id = {}", emp_id);
    }
    return statement + " order by emp_id";
}

}  // namespace kv
