#pragma once
#include "datastore/engine_error.h"

namespace kv {

/// Runs a step of what is only shown. One that fails leaves empty what it was to show, and the next one runs.
template <typename Step>
void Passing(const Step& step) {
    try {
        step();
    } catch (const EngineError&) {
    }
}

}  // namespace kv
