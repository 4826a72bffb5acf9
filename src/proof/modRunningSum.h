#pragma once

#include <cstdint>

#include "modTidyValues.h"

namespace quillon {

constexpr int kMostSumDecimals = 9;

/// The absolute value, of the least integer too.
constexpr uint64_t Magnitude(int64_t nValue) {
  return nValue < 0 ? 0 - static_cast<uint64_t>(nValue) : static_cast<uint64_t>(nValue);
}

/// A running sum modulo 2^64: differences of two are right wherever they fit. Its scale only grows.
struct RunningSum {
  uint64_t nValue = 0;
  int nScale = 0;
  int64_t lRows = 0;      ///< Rows with a number
  int64_t lUnscaled = 0;  ///< Numbers that no integer holds
  double dValue = 0;      ///< Tells whether a difference fits
  TidyNumber last;        ///< The last number: where that is printed again it is a balance that is carried

  void Add(const TidyNumber& number);
  /// Sums of other rows; the last number stays.
  void Add(const RunningSum& other);
  /// Takes away what was added before.
  void TakeAway(const RunningSum& part);
};

/// What was added to `now` since it was `before`, in so many decimals; halves away from zero. False if that can't be
/// told.
bool SumSince(const RunningSum& now, const RunningSum& before, int nDecimals, int64_t& nSum);

}  // namespace quillon
