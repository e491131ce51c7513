#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "printing/document/document.h"
#include "session/session.h"

namespace kv {

/// The record families of the changes, as TXTarea lists them: nothing for all, else "CLI - Client". The
/// three letters at the left are the code.
const std::vector<std::string_view>& ChangeAreas();
/// The code of a label of ChangeAreas; empty for all.
std::string AreaCode(std::string_view label);

/// What FRMedit searches for; what is empty is no criterion.
struct ChangeCriteria {
    std::string user;
    std::string area;  ///< a label of ChangeAreas
    std::string id;    ///< counts only with an area
    std::optional<Date> from;
    std::optional<Date> to;  ///< counts only with `from`, which alone means that one day
    std::string time;        ///< "08:00 AM"; compared as text with the column, which is one
};
/// The latest changes first. A text with an apostrophe throws EngineError 3075.
std::string ChangeSearchStatement(const ChangeCriteria& criteria);
/// The records that were deleted in an area.
std::string DeletedStatement(std::string_view area);
/// The client's own history list: everything but the bill rates.
std::string ClientHistoryStatement(const std::string& id);

/// A row as the grids show it.
struct HistoryRow {
    std::string date;  ///< "Jan/31/2026"
    std::string time;  ///< "03:05:00 PM"
    std::string area;
    std::string user;
    std::string status;
    std::string reason;
    std::optional<Date> day;
};
/// Throws EngineError.
std::vector<HistoryRow> LoadHistory(Database& database, const std::string& statement);

/// The rows that are shown, and the current one.
struct HistoryList {
    std::vector<HistoryRow> rows;
    std::size_t at = 0;
};
/// Walks forward from the current row, or from the one behind it, to the next whose reason holds the text
/// without regard to case. Line ends of the reason count as "~~". Progress yields at each row; whoever moves
/// `at` meanwhile moves the walk. At the end it answers false and stands on the first row again.
bool FindInReasons(Progress& progress, HistoryList& list, const std::string& text, bool behindCurrent);

/// The printout "Edit History Print".
Document HistoryPrint(const std::vector<HistoryRow>& rows, Date now);

}  // namespace kv
