#pragma once
#include <string>

#include "clients/client_form.h"
#include "session/session.h"

namespace kv {

/// What a client's authorizations make of the client: its status and days of service. They are taken one
/// after the other, ordered by status_code and from_date: a deceased one ends it, and those behind it do not
/// count, for their days neither.
class ServiceSpan {
  public:
    void Take(const std::string& statusCode, const Value& from, const Value& to);
    /// Reads status_code, from_date and to_DATE of each row from the current one on.
    static ServiceSpan Of(Recordset& authorizations);

    /// What casestatcd is to be: "A", "S", "D" or "C".
    const std::string& Letter() const { return letter_; }
    /// What startservc and caseexpdat are to be; Null where no row has the day.
    const Value& Lowest() const { return lowest_; }
    const Value& Highest() const { return highest_; }

  private:
    std::string letter_ = "C";
    Value lowest_;
    Value highest_;
};

/// Recomputes a client's status and dates of service from all the client's authorizations: one that is active
/// makes the client active, a deceased one outranks the rest. Writes the row that the main screen shows
/// (casestatcd, startservc, caseexpdat) and the phone index. Does nothing without authorizations. Throws
/// EngineError.
void UpdateClientStatus(Session& session, ClientForm& form, const std::string& client);

}  // namespace kv
