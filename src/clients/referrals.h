#pragma once
#include <string>
#include <utility>
#include <vector>

#include "printing/document/document.h"
#include "session/session.h"

namespace kv {

/// The boxes "Limit Referral by:"; "All" is no limit.
struct ReferralLimits {
    std::string category = "All";
    std::string status = "Active";
};

struct ReferralSource {
    long sequence = 0;
    std::string name;
    std::string category;
    std::vector<std::string> contacts;
};
/// Load_Referrals: the sources for clients that meet the limits, with their contacts, all by name. Throws
/// EngineError.
std::vector<ReferralSource> LoadReferrals(Session& session, const ReferralLimits& limits);

/// The columns of FGReferral and FGcontact with what the source or contact has in them.
using ReferralDetails = std::vector<std::pair<std::string, std::string>>;
/// Empty when no source has that name: FGReferral then shows "Not Found". Throws EngineError.
ReferralDetails SourceDetails(Session& session, const std::string& source);
/// Empty without a contact of that name at the source. Throws EngineError.
ReferralDetails ContactDetails(Session& session, const std::string& source, const std::string& contact);

/// What the referral page's boxes hold.
struct ReferralEntry {
    std::string source;
    std::string contact;
    std::string category;
};
/// CMDsaveReferral: adds the source and the contact where there are none of those names. Takes "," and "'"
/// out of both and tells so; the entry is then to be shown as it comes back. Throws EngineError.
void SaveReferral(Session& session, ReferralEntry& entry);

/// The "Ref_graph" report: how many clients each category sent, among the categories ticked (all of them when
/// none is) and in the group ("ALL" for every one). Throws EngineError.
Document ReferralGraph(Session& session, const std::vector<std::string>& categories,
                       const std::string& group);

}  // namespace kv
