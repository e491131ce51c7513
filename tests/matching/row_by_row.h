#pragma once
#include <string>
#include <vector>

#include "matching/suggestion.h"

namespace kv::test {

/// A row of the result, as texts, in the order of the grid.
struct PlainRow {
    std::string emp_id, emp_name;
    double max_hours = 0;
    int skills = 0;
    int longest = 0;
    std::vector<std::string> quarters;  ///< 96 texts
    friend bool operator==(const PlainRow&, const PlainRow&) = default;
};
struct PlainSuggestion {
    std::vector<PlainRow> rows;
    std::vector<std::string> rejected;
};

/// The search as it was first told: one recordset for each caregiver and step, each change a statement on
/// assign_head. Slow; what the search of the program is compared with.
PlainSuggestion SearchRowByRow(Session& session, Database& working, const ClientNeeds& needs,
                               const SuggestionRequest& request, const SuggestionOptions& options);

}  // namespace kv::test
