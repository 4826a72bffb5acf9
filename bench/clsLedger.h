#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace quillon {

/// A printed ledger as benchmarks use it: rows of 117 bytes with ten fields, always the same.
class clsLedger {
 public:
  struct Field {
    size_t nStart, nLength;
    bool bNumber;
  };
  static constexpr size_t kRowBytes = 117;
  static constexpr std::array<Field, 10> kFields = {{{0, 10, false},
                                                     {11, 8, false},
                                                     {20, 6, true},
                                                     {27, 20, false},
                                                     {48, 22, false},
                                                     {71, 12, true},
                                                     {84, 12, true},
                                                     {97, 14, true},
                                                     {112, 3, true},
                                                     {115, 1, false}}};

  explicit clsLedger(int64_t nRows) : nRows_(nRows) {
    sText_.reserve(static_cast<size_t>(nRows) * kRowBytes);
    for (int64_t i = 0; i < nRows; ++i) AppendRow(i);
  }
  int64_t Rows() const { return nRows_; }
  const std::string& Text() const { return sText_; }
  std::string_view Cell(int64_t nRow, size_t nField) const {
    const Field& field = kFields[nField];
    return std::string_view(sText_).substr(static_cast<size_t>(nRow) * kRowBytes + field.nStart, field.nLength);
  }

 private:
  uint32_t Next() {
    nState_ = nState_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<uint32_t>(nState_ >> 33);
  }
  static std::string Amount(uint32_t nCents) {
    std::string sWhole = std::to_string(nCents / 100);
    for (size_t i = sWhole.size(); i > 3; i -= 3) sWhole.insert(i - 3, ",");
    const std::string sCents = std::to_string(nCents % 100 + 100);
    return sWhole + "." + sCents.substr(1);
  }
  void AppendRow(int64_t nRow) {
    constexpr std::array<const char*, 8> kAccounts = {"Office supplies",  "Travel",       "Freight in",
                                                      "Sales domestic",   "Bank charges", "Utilities",
                                                      "Accounts payable", "Cash on hand"};
    constexpr std::array<const char*, 6> kTexts = {"Invoice",     "Payment ref", "Reversal of",
                                                   "Monthly fee", "Order",       "Correction"};
    const uint32_t nCents = Next() % 5000000;
    const bool bDebit = Next() % 2 == 0;
    std::array<char, 160> row{};
    const std::string sAmount = Amount(nCents);
    const std::string sText = std::string(kTexts[Next() % 6]) + " " + std::to_string(Next() % 1000000);
    std::snprintf(row.data(), row.size(), "%02u/%02u/2024 V%07u %6u %-20s %-22s %12s %12s %14s %3u%c", Next() % 12 + 1,
                  Next() % 28 + 1, static_cast<unsigned>(nRow % 10000000), 1000 + Next() % 9000, kAccounts[Next() % 8],
                  sText.c_str(), bDebit ? sAmount.c_str() : "", bDebit ? "" : sAmount.c_str(),
                  (Amount(Next() % 100000000) + (Next() % 3 == 0 ? "-" : " ")).c_str(), Next() % 100,
                  static_cast<char>('A' + Next() % 5));
    sText_.append(row.data());
    sText_.push_back('\n');
  }

  int64_t nRows_;
  uint64_t nState_ = 42;
  std::string sText_;
};

}  // namespace quillon
