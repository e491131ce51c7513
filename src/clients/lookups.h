#pragma once
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// The look-up lists of main.mdb, by the name of their data source on the main screen.
enum class LookupSource {
    dbLanguage,
    dbSex,
    dbProvidersSex,
    dbManager,
    dbFsl,
    dbEthnic,
    dbDiet,
    dbNurse,
    DBDistrict,
    DbVisit,
    dbOrder_Discipline,
    dbColor,
    dbdiagnosis,
};

struct LookupItem {
    std::string code;
    std::string description;
};

/// The items of a list in the order of its data source. DBDistrict's code is its description: the client row
/// stores the district's text. Throws EngineError.
std::vector<LookupItem> LoadLookup(Session& session, LookupSource source);
/// The statement or table name that the data source opens on main.mdb.
std::string LookupStatement(LookupSource source);

/// Plain text lists: the Description of qbclass, cli_group and Ref_group.
std::vector<std::string> LoadDescriptions(Session& session, const std::string& table);

}  // namespace kv
