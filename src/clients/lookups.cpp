#include "clients/lookups.h"

#include <array>

#include "base/text.h"

namespace kv {

namespace {

// In the order of LookupSource. COLOR_RESULT and VISIT are opened as tables: their lists keep the order in
// which the agency entered them.
constexpr std::array<std::string_view, 13> kStatements = {
    "select * from LANGUAGE order by description",
    "select * from SEX order by description",
    "select * from [PROVIDERS SEX] order by description",
    "select * from MANAGER order by description",
    "select * from FSL order by description",
    "select * from ETHNIC order by description",
    "select * from DIET order by description",
    "select * from NURSE order by description",
    "select * from BOROUGH order by description",
    "VISIT",
    "select * from DISCIPLINE order by description",
    "COLOR_RESULT",
    "select * from DIAGNOSIS order by description",
};

std::vector<std::string> LoadColumn(Session& session, std::string_view statement, std::string_view column) {
    std::vector<std::string> texts;
    Recordset rows = session.dbMainCode->OpenRecordset(statement, RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        texts.push_back(rows.Text(column));
    }
    return texts;
}

}  // namespace

std::string LookupStatement(LookupSource source) {
    return std::string(kStatements.at(static_cast<std::size_t>(source)));
}

std::vector<LookupItem> LoadLookup(Session& session, LookupSource source) {
    const std::string_view codeColumn = source == LookupSource::DBDistrict ? "description" : "code";
    std::vector<LookupItem> items;
    Recordset rows = session.dbMainCode->OpenRecordset(LookupStatement(source), RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        items.push_back({rows.Text(codeColumn), rows.Text("description")});
    }
    return items;
}

std::vector<std::string> LoadDescriptions(Session& session, const std::string& table) {
    // The groups stand as the agency entered them; the other lists are sorted.
    const std::string order = EqualsNoCase(table, "cli_group") ? "" : " order by description";
    return LoadColumn(session, "select * from " + table + order, "Description");
}

}  // namespace kv
