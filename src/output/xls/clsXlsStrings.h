#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modXlsRecords.h"

namespace quillon {

/// The strings that a run adds to a workbook, each once, in the form of the shared string table.
class clsXlsStrings {
 public:
  /// Index of the text among the added ones, from 0.
  uint32_t Add(std::string_view sUtf8);
  /// Said of texts that are likely to be added soon, so that the memory of the table is at hand by then: first of all
  /// of them, then by what that gave.
  uint32_t Expect(std::string_view sUtf8) const;
  void ExpectEntry(uint32_t nHash) const;
  /// Makes room for about so many bytes of text.
  void Reserve(size_t nBytes) { sEntries_.reserve(nBytes); }
  /// How many different ones there are, and how often Add was called.
  uint32_t Count() const { return nCount_; }
  uint32_t References() const { return nReferences_; }
  /// All strings behind one another: count (2 bytes), flag, characters.
  std::string_view Entries() const { return sEntries_; }
  static size_t EntryBytes(std::string_view sEntries, size_t nOffset) {
    return 3 + size_t{GetU16(sEntries, nOffset)} * ((GetU8(sEntries, nOffset + 2) & 1) != 0 ? 2 : 1);
  }

 private:
  struct Slot {
    uint32_t nHash = 0;
    uint32_t nNext = 0;  ///< Index of the string plus 1; 0 is free
    size_t nOffset = 0;  ///< In sEntries_
  };

  bool SameEntry(size_t nOffset, std::string_view sChars, size_t nCount, bool bWide) const;
  void Grow();

  std::string sEntries_;
  std::string sScratch_;
  std::vector<Slot> slots_;  ///< Open addressing, a power of two
  uint32_t nCount_ = 0;
  uint32_t nReferences_ = 0;
};

}  // namespace quillon
