#pragma once
// Values as bytes between two processes of this program: one order of the members serves both directions.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace quillon {

class clsPacker {
 public:
  void Bytes(void* p, size_t n) { sBytes_.append(static_cast<const char*>(p), n); }
  size_t Count(size_t n) {
    Bytes(&n, sizeof(n));
    return n;
  }
  bool Truth(bool b) {
    Bytes(&b, sizeof(b));
    return b;
  }
  const std::string& Packed() const { return sBytes_; }

 private:
  std::string sBytes_;
};

/// What isn't there comes out as zero.
class clsTaker {
 public:
  explicit clsTaker(std::string_view sBytes) : sLeft_(sBytes) {}
  void Bytes(void* p, size_t n) {
    bWhole_ = bWhole_ && n <= sLeft_.size();
    if (n == 0) return;
    if (!bWhole_) {
      std::memset(p, 0, n);
      return;
    }
    std::memcpy(p, sLeft_.data(), n);
    sLeft_.remove_prefix(n);
  }
  /// Of things of at least a byte each.
  size_t Count(size_t) {
    size_t n = 0;
    Bytes(&n, sizeof(n));
    bWhole_ = bWhole_ && n <= sLeft_.size();
    return bWhole_ ? n : 0;
  }
  /// A byte that is neither 0 nor 1 is no truth.
  bool Truth(bool) {
    uint8_t n = 0;
    Bytes(&n, sizeof(n));
    bWhole_ = bWhole_ && n <= 1;
    return bWhole_ && n == 1;
  }
  /// All was there, and nothing is left.
  bool Whole() const { return bWhole_ && sLeft_.empty(); }

 private:
  std::string_view sLeft_;
  bool bWhole_ = true;
};

template <typename Way, typename Value>
requires(std::is_arithmetic_v<Value> || std::is_enum_v<Value>) void Exchange(Way& way, Value& value) {
  way.Bytes(&value, sizeof(value));
}

template <typename Way>
void Exchange(Way& way, bool& value) {
  value = way.Truth(value);
}

template <typename Way>
void Exchange(Way& way, std::string& value) {
  value.resize(way.Count(value.size()));
  way.Bytes(value.data(), value.size());
}

template <typename Way, typename Value, size_t n>
void Exchange(Way& way, std::array<Value, n>& values) {
  for (Value& value : values) Exchange(way, value);
}

template <typename Way, typename Value>
void Exchange(Way& way, std::vector<Value>& values) {
  values.resize(way.Count(values.size()));
  for (Value& value : values) Exchange(way, value);
}

template <typename Way, typename First, typename Second, typename... More>
void Exchange(Way& way, First& first, Second& second, More&... more) {
  Exchange(way, first);
  Exchange(way, second, more...);
}

}  // namespace quillon
