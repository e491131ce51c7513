#pragma once

namespace kv {

/// The moving keys of a toolbar.
enum class ListMove { First, Previous, Next, Last };

}  // namespace kv
