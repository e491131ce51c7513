#pragma once
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "datastore/engine_error.h"

/// What a target found wrong. Nothing catches it but the replay of tests/fuzz: a fuzzer ends with it and
/// keeps the input.
class Finding : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

inline void Expect(bool holds, std::string_view words) {
    if (!holds)
        throw Finding(std::string(words));
}

/// The call may fail with an EngineError, but never because the engine did not understand it.
template <typename Call>
bool Succeeds(Call call) {
    try {
        call();
        return true;
    } catch (const kv::EngineError& error) {
        Expect(error.Number() != kv::engine_error::kReservedError, error.Description());
        Expect(!error.Description().empty(), "an error without words");
        return false;
    }
}

/// Cuts an input into its parts, from the front.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    /// One byte, 0 behind the end.
    std::uint8_t Byte() {
        if (rest_.empty())
            return 0;
        const auto byte = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }
    /// What stands before the next separator, or all that is left.
    std::string_view Part(char separator) {
        const std::size_t end = rest_.find(separator);
        const std::string_view part = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return part;
    }
    std::string_view Rest() const { return rest_; }

  private:
    std::string_view rest_;
};

/// A fuzz target; each stands in a file <name>_target.cpp and answers 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
