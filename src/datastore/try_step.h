#pragma once
#include "datastore/engine_error.h"

namespace kv {

/// One step of a routine that goes on where a step fails: a single bad value must not cost the other visits,
/// nor the rest of what a panel shows. Only for routines whose rules say so.
template <typename Step>
void Try(const Step& step) {
    try {
        step();
    } catch (const EngineError&) {
        // Passed over on purpose; the row or the empty field shows what is missing.
    }
}

}  // namespace kv
