#pragma once
#include "base/program_log.h"
#include "datastore/engine_error.h"

namespace kv {

/// Notes a failure that a routine goes on after in the program's log.
inline void LogSkipped(const EngineError& error, CodePlace place = CodePlace::Here()) noexcept {
    LogSkippedStep(error.Number(), error.what(), place);
}

/// One step of a routine that goes on where a step fails: a single bad value must not cost the other visits,
/// nor the rest of what a panel shows. Only for routines whose rules say so. What was skipped is in the
/// program's log.
template <typename Step>
void Try(const Step& step, CodePlace place = CodePlace::Here()) {
    try {
        step();
    } catch (const EngineError& error) {
        LogSkipped(error, place);  // the row or the empty field shows what is missing
    }
}

}  // namespace kv
