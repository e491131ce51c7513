#pragma once
#include <optional>

namespace kv {

/// What client and payer pay of a bill, in dollars, and the client's percentage of it to three decimals.
struct CobillingShares {
    double client = 0;
    double total = 0;
    double percent = 0;
};

/// From the most that may be billed to both together. Nothing where the payer leaves the client no part.
std::optional<CobillingShares> SharesOfTotal(double total, double payer);
/// From the two portions. Two portions of nothing are no percent.
CobillingShares SharesOfPortions(double client, double payer);

inline constexpr const char* kTotalTooLow = "Your total billing should be higher than your payer portion.";

}  // namespace kv
