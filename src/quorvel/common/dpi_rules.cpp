#include "quorvel/common/dpi_rules.h"

#include <climits>
#include <cstdint>

namespace qv {
namespace {

unsigned Effective(unsigned dpi) noexcept { return dpi == 0 ? kBaseDpi : dpi; }

int Saturate(std::int64_t v) noexcept {
    if (v > INT_MAX) return INT_MAX;
    if (v < INT_MIN) return INT_MIN;
    return static_cast<int>(v);
}

// a * b / c rounded half away from zero, c > 0.
int MulDivRound(int a, std::int64_t b, std::int64_t c) noexcept {
    const std::int64_t product = std::int64_t{a} * b;
    const std::int64_t half = c / 2;
    const std::int64_t q = product >= 0 ? (product + half) / c : -((-product + half) / c);
    return Saturate(q);
}

}  // namespace

int ScaleToDpi(int length, unsigned dpi) noexcept { return MulDivRound(length, Effective(dpi), kBaseDpi); }

int ScaleFromDpi(int length, unsigned dpi) noexcept { return MulDivRound(length, kBaseDpi, Effective(dpi)); }

int ScaleBetweenDpi(int length, unsigned from, unsigned to) noexcept {
    return MulDivRound(length, Effective(to), Effective(from));
}

int BitmapFactorForDpi(unsigned dpi) noexcept {
    const unsigned factor = Effective(dpi) / kBaseDpi;
    return factor < 1 ? 1 : static_cast<int>(factor > 64 ? 64 : factor);
}

int FontHeightForDpi(int points, unsigned dpi) noexcept { return -MulDivRound(points, Effective(dpi), 72); }

}  // namespace qv
