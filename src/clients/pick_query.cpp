#include "clients/pick_query.h"

namespace kv {

PickRows LoadPickRows(Database& database, const std::string& statement) {
    PickRows found;
    for (Recordset rows = database.OpenRecordset(statement, RecordsetType::Snapshot); !rows.Eof();
         rows.MoveNext()) {
        std::vector<Value>& row = found.emplace_back();
        for (std::size_t column = 0; column < rows.Fields().size(); ++column) {
            row.push_back(rows.Get(column));
        }
    }
    return found;
}

}  // namespace kv
