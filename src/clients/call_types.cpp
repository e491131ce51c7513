#include "clients/call_types.h"

namespace kv {

std::vector<LookupItem> LoadCallTypes(Session& session) {
    std::vector<LookupItem> types;
    Recordset rows = session.dbMainCode->OpenRecordset(
        "select * from Visit_types where payroll_or_billing = 'Both' order by code", RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        types.push_back({rows.Text("code"), rows.Text("Description")});
    }
    return types;
}

}  // namespace kv
