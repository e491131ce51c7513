#include "billing/cobilling_shares.h"

#include "base/numbers.h"

namespace kv {

namespace {

double PercentOf(double part, double whole) {
    constexpr double kHundred = 100;
    constexpr int kDecimals = 3;
    return whole == 0 ? 0 : RoundTo(part / whole * kHundred, kDecimals);
}

}  // namespace

std::optional<CobillingShares> SharesOfTotal(double total, double payer) {
    if (total <= payer) {
        return std::nullopt;
    }
    return CobillingShares{total - payer, total, PercentOf(total - payer, total)};
}

CobillingShares SharesOfPortions(double client, double payer) {
    return {client, client + payer, PercentOf(client, client + payer)};
}

}  // namespace kv
