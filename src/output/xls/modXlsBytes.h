#pragma once
// Little-endian bytes of .xls records: the only place that puts and gets them.

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace quillon {

static_assert(std::endian::native == std::endian::little, "the helpers copy numbers as they lie in memory");

/// Stores at an address that has the room.
template <typename T>
inline void StoreAt(char* pTarget, T value) {
  std::memcpy(pTarget, &value, sizeof value);
}

template <typename T>
inline void Put(std::string& sOut, T value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  sOut.append(bytes, sizeof value);
}
inline void PutU8(std::string& sOut, unsigned value) {
  sOut.push_back(static_cast<char>(value));
}
inline void PutU16(std::string& sOut, unsigned value) {
  Put(sOut, static_cast<uint16_t>(value));
}
inline void PutU32(std::string& sOut, size_t value) {
  Put(sOut, static_cast<uint32_t>(value));
}

/// The number at a byte offset; 0 where the bytes don't reach that far.
template <typename T>
inline T GetAt(std::string_view sBytes, size_t nOffset) {
  T value{};
  if (nOffset <= sBytes.size() && sizeof value <= sBytes.size() - nOffset)
    std::memcpy(&value, sBytes.data() + nOffset, sizeof value);
  return value;
}
inline uint8_t GetU8(std::string_view sBytes, size_t nOffset) {
  return GetAt<uint8_t>(sBytes, nOffset);
}
inline uint16_t GetU16(std::string_view sBytes, size_t nOffset) {
  return GetAt<uint16_t>(sBytes, nOffset);
}
inline uint32_t GetU32(std::string_view sBytes, size_t nOffset) {
  return GetAt<uint32_t>(sBytes, nOffset);
}
inline double GetF64(std::string_view sBytes, size_t nOffset) {
  return GetAt<double>(sBytes, nOffset);
}

/// Overwrites bytes of a record; an offset that doesn't fit changes nothing.
template <typename T>
inline void SetAt(std::string& sBytes, size_t nOffset, T value) {
  if (nOffset <= sBytes.size() && sizeof value <= sBytes.size() - nOffset)
    std::memcpy(sBytes.data() + nOffset, &value, sizeof value);
}

}  // namespace quillon
