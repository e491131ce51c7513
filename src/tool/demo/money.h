#pragma once
#include "tool/demo/model.h"

namespace kv::demo {

/// Writes the rates of the clients who pay themselves.
void WriteClientRates(Database& work, const World& world);
/// Writes what payroll and billing have made of the worked visits of whole weeks, a row for a week: the last
/// four weeks, and what came before them into the archive.
void WriteMoney(Database& work, Database& archive, const World& world);

}  // namespace kv::demo
