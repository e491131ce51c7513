#pragma once
#include "datastore/engine_error.h"

namespace kv {

/// One step. Where it fails, the next one runs all the same: a single bad value must not cost the other
/// visits.
template <typename Step>
void Try(const Step& step) {
    try {
        step();
    } catch (const EngineError&) {
        // Passed over on purpose; the row shows what is missing.
    }
}

}  // namespace kv
