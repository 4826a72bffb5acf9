#include "modRunningSum.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillon {

namespace {

constexpr double kMostExact = 9.0e18;
constexpr std::array<uint64_t, 19> kPowers = [] {
  std::array<uint64_t, 19> powers{};
  uint64_t nPower = 1;
  for (uint64_t& power : powers) {
    power = nPower;
    nPower *= 10;
  }
  return powers;
}();

/// A multiplication takes a tenth of a division's time, and what fits needn't be known to the last bit.
constexpr std::array<double, kMostSumDecimals + 1> kUnits = [] {
  std::array<double, kMostSumDecimals + 1> units{};
  for (size_t i = 0; i < units.size(); ++i) units[i] = 1.0 / static_cast<double>(kPowers[i]);
  return units;
}();

uint64_t Power(int nExponent) {
  return kPowers[static_cast<size_t>(nExponent)];
}

/// Halves away from zero.
int64_t Rounded(int64_t nValue, int nFewer) {
  const uint64_t nPower = Power(nFewer);
  const uint64_t nSize = Magnitude(nValue);
  const auto nRounded = static_cast<int64_t>((nSize / nPower) + (nSize % nPower >= nPower / 2 ? 1 : 0));
  return nValue < 0 ? -nRounded : nRounded;
}

}  // namespace

void RunningSum::Add(const TidyNumber& number) {
  if (!number.bScaled || number.nDecimals > kMostSumDecimals) {
    ++lUnscaled;
    return;
  }
  if (number.nDecimals > nScale) {
    nValue *= Power(number.nDecimals - nScale);
    nScale = number.nDecimals;
  }
  nValue += static_cast<uint64_t>(number.nValue) * Power(nScale - number.nDecimals);
  dValue += static_cast<double>(number.nValue) * kUnits[static_cast<size_t>(number.nDecimals)];
  last = number;
  ++lRows;
}

void RunningSum::Add(const RunningSum& other) {
  const int nWider = std::max(nScale, other.nScale);
  nValue = (nValue * Power(nWider - nScale)) + (other.nValue * Power(nWider - other.nScale));
  nScale = nWider;
  lRows += other.lRows;
  lUnscaled += other.lUnscaled;
  dValue += other.dValue;
}

void RunningSum::TakeAway(const RunningSum& part) {
  nValue -= part.nValue * Power(nScale - part.nScale);
  lRows -= part.lRows;
  lUnscaled -= part.lUnscaled;
  dValue -= part.dValue;
}

bool SumSince(const RunningSum& now, const RunningSum& before, int nDecimals, int64_t& nSum) {
  if (now.lUnscaled > before.lUnscaled) return false;
  if (std::abs(now.dValue - before.dValue) * static_cast<double>(Power(now.nScale)) > kMostExact) return false;
  nSum = static_cast<int64_t>(now.nValue - (before.nValue * Power(now.nScale - before.nScale)));
  if (now.nScale > nDecimals) nSum = Rounded(nSum, now.nScale - nDecimals);
  const uint64_t nRaise = Power(std::max(nDecimals - now.nScale, 0));
  if (nRaise > 1 && Magnitude(nSum) > static_cast<uint64_t>(kMostExact) / nRaise) return false;
  nSum *= static_cast<int64_t>(nRaise);
  return true;
}

}  // namespace quillon
