#include "clsXlsStrings.h"

#include <algorithm>
#include <cstring>

#include "modText.h"
#include "modXlsText.h"

namespace quillon {

namespace {

uint32_t HashOf(std::string_view sBytes) {
  constexpr uint64_t kFactor = 0x9E3779B97F4A7C15ULL;
  uint64_t nHash = sBytes.size() * kFactor;
  while (sBytes.size() >= 8) {
    nHash = (nHash ^ GetAt<uint64_t>(sBytes, 0)) * kFactor;
    nHash ^= nHash >> 32;
    sBytes.remove_prefix(8);
  }
  uint64_t nRest = 0;
  std::memcpy(&nRest, sBytes.data(), sBytes.size());
  nHash = (nHash ^ nRest) * kFactor;
  return static_cast<uint32_t>(nHash >> 32);
}

}  // namespace

bool clsXlsStrings::SameEntry(size_t nOffset, std::string_view sChars, size_t nCount, bool bWide) const {
  const char* pEntry = sEntries_.data() + nOffset;
  return GetU16({pEntry, 2}, 0) == nCount && (pEntry[2] & 1) == (bWide ? 1 : 0) &&
         std::memcmp(pEntry + 3, sChars.data(), sChars.size()) == 0;
}

// The hash of a text with other than plain characters is another one; then only the wrong place is fetched.
uint32_t clsXlsStrings::Expect(std::string_view sUtf8) const {
  const uint32_t nHash = HashOf(sUtf8);
  if (!slots_.empty()) __builtin_prefetch(&slots_[nHash & (slots_.size() - 1)]);
  return nHash;
}

void clsXlsStrings::ExpectEntry(uint32_t nHash) const {
  if (slots_.empty()) return;
  const Slot& slot = slots_[nHash & (slots_.size() - 1)];
  if (slot.nHash == nHash) __builtin_prefetch(sEntries_.data() + slot.nOffset);
}

uint32_t clsXlsStrings::Add(std::string_view sUtf8) {
  ++nReferences_;
  XlsChars chars{sUtf8.size(), false};
  std::string_view sChars = sUtf8;
  if (!IsAscii(sUtf8)) {
    sScratch_.clear();
    chars = AppendXlsChars(sUtf8, sScratch_);
    sChars = sScratch_;
  }
  if ((size_t{nCount_} + 1) * 4 > slots_.size() * 3) Grow();
  const size_t nMask = slots_.size() - 1;
  const uint32_t nHash = HashOf(sChars);
  for (size_t i = nHash & nMask;; i = (i + 1) & nMask) {
    Slot& slot = slots_[i];
    if (slot.nNext == 0) {
      slot = {nHash, ++nCount_, sEntries_.size()};
      PutU16(sEntries_, static_cast<unsigned>(chars.nCount));
      PutU8(sEntries_, chars.bWide ? 1 : 0);
      sEntries_.append(sChars);
      return nCount_ - 1;
    }
    if (slot.nHash == nHash && SameEntry(slot.nOffset, sChars, chars.nCount, chars.bWide)) return slot.nNext - 1;
  }
}

void clsXlsStrings::Grow() {
  std::vector<Slot> old(std::max<size_t>(1024, slots_.size() * 4));
  old.swap(slots_);
  const size_t nMask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.nNext == 0) continue;
    size_t i = slot.nHash & nMask;
    while (slots_[i].nNext != 0) i = (i + 1) & nMask;
    slots_[i] = slot;
  }
}

}  // namespace quillon
