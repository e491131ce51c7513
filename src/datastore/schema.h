#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "datastore/catalogue.h"

namespace kv {

/// The version that every database of this program bears; raised with each change of data/schema.
inline constexpr int kSchemaVersion = 1;

/// The databases of a data folder, in the order in which they are made: kestrava, main, archive, trans,
/// tempassign.
const std::vector<std::string>& SchemaNames();
/// The CREATE statements of one of them, from data/schema/<name>.sql.
std::string_view SchemaScript(std::string_view name);
/// The tables, columns and indexes that its script declares.
const Catalogue& SchemaTables(std::string_view name);

}  // namespace kv
