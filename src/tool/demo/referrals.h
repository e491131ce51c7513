#pragma once
#include <string>
#include <vector>

#include "datastore/workspace.h"
#include "tool/demo/model.h"

namespace kv::demo {

struct ReferralSource {
    std::string name;
    const char* category = "";
    std::vector<std::string> contacts;
    bool forClients = true;  ///< Ref_Group "Both" or "Client"
};

/// Writes the referral sources with their contacts; about one for every twelve clients.
std::vector<ReferralSource> WriteReferrals(Database& work, const Calendar& calendar, long clients,
                                           Random random);

}  // namespace kv::demo
