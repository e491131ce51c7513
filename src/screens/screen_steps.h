#pragma once
#include <QString>
#include <functional>
#include <map>
#include <system_error>

#include "clients/list_move.h"
#include "session/session.h"

namespace kv {

/// What a key or another event of a screen does, and the steps of a toolbar's keys.
using Step = std::function<void()>;
using KeySteps = std::map<QString, Step>;

/// Runs what an event asked for. An error of the store or of a file ends here: it is told to the operator.
template <typename Event>
void Reported(Session& session, const Event& event) {
    try {
        event();
    } catch (const EngineError& error) {
        ReportEngineError(session, error);
    } catch (const std::system_error& error) {
        session.ShowMessageWindow(error.what());
    }
}

/// The steps of a record list's keys. Those for moving share one.
struct RecordSteps {
    std::function<void(ListMove)> move;
    Step add, remove, save, discard;
};
/// "first", "previous", "next", "last", "new", "delete", "save" and "discard".
inline KeySteps StepsOf(const RecordSteps& steps) {
    const auto to = [&steps](ListMove move) { return [go = steps.move, move] { go(move); }; };
    return {
        {QStringLiteral("first"), to(ListMove::First)},
        {QStringLiteral("previous"), to(ListMove::Previous)},
        {QStringLiteral("next"), to(ListMove::Next)},
        {QStringLiteral("last"), to(ListMove::Last)},
        {QStringLiteral("new"), steps.add},
        {QStringLiteral("delete"), steps.remove},
        {QStringLiteral("save"), steps.save},
        {QStringLiteral("discard"), steps.discard},
    };
}

}  // namespace kv
