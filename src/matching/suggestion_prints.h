#pragma once
#include <string>

#include "matching/suggestion.h"
#include "printing/document/document.h"

namespace kv {

/// "Caregiver Suggestion Report": the chart of the day as it stands.
Document SuggestionReport(const Suggestion& suggestion, bool withSkills, Date today);

/// The lines of TEMP.TXT in the data folder, in their order.
Document RejectedReport(Session& session);

}  // namespace kv
