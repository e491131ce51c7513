#pragma once
#include <string>

#include "tool/check_findings.h"

namespace kv::tool {

/// The tables, columns and indexes of a database against data/schema. What lies outside the schema is no
/// fault.
Findings FindSchemaFaults(const std::string& name, const Database& database);

}  // namespace kv::tool
