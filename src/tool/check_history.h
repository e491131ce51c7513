#pragma once
#include <optional>

#include "tool/check_findings.h"

namespace kv::tool {

/// What the change history says was done on purpose, so that it is not taken for what an interrupted step
/// left. Reads both `changes`, the archived one too, at the first question.
class PurposeHistory {
  public:
    explicit PurposeHistory(const OpenDatabases& databases) : databases_(databases) {}

    /// The client was deleted. Its history went with it, so one that has some of a later day is another
    /// client who got the id.
    bool ClientWasDeleted(const std::string& id);
    /// By its sequence.
    bool AuthorizationWasDeleted(const std::string& sequence) {
        return Read().authorizations.count(sequence) > 0;
    }
    /// The last day on which an authorization of the client was deleted, after which its status and days of
    /// service stay as they are; and on which its days of service were typed. Nothing where never.
    std::optional<Date> AuthorizationDeleted(const std::string& client);
    std::optional<Date> ServiceDaysTyped(const std::string& client);

  private:
    struct Known {
        ByKey<Date> clientDeleted;
        ByKey<Date> clientChanged;
        Keys authorizations;
        ByKey<Date> authorizationDeleted;  ///< by client
        ByKey<Date> serviceDaysTyped;
    };
    const Known& Read();
    void ReadClients(Database& database, Known& known) const;
    void ReadAuthorizations(Database& database, Known& known) const;
    void ReadTyped(Database& database, Known& known) const;

    const OpenDatabases& databases_;
    std::optional<Known> known_;
};

}  // namespace kv::tool
