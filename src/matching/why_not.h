#pragma once
#include <string>

#include "matching/client_needs.h"

namespace kv {

/// Why a caregiver is not in the result of a search, and the smallest change that would let her in.
struct WhyNot {
    bool found = false;  ///< there is such a caregiver
    bool shown = false;  ///< she is in the result
    std::string emp_id, emp_name;
    std::string reason;  ///< in words; empty where she is shown
    std::string change;  ///< in words; empty where no single step helps
};
/// Runs the search's own rules for her alone. Throws EngineError.
WhyNot ExplainCaregiver(Session& session, const ClientNeeds& needs, const SuggestionRequest& request,
                        const SuggestionOptions& options, const std::string& emp_id);

/// The caregiver meant by an id, or by the beginning of "Last, First"; the first one by name where several
/// begin alike. Empty for none. Throws EngineError.
std::string CaregiverOfWords(Session& session, const std::string& words);

}  // namespace kv
