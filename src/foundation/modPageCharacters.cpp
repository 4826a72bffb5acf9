#include "modPageCharacters.h"

#include <iconv.h>

#include <cstdint>

namespace quillon {

namespace {

/// The converter of iconv, closed with its scope.
class clsConverter {
 public:
  explicit clsConverter(const std::string& sFrom) : handle_(iconv_open("UTF-32LE", sFrom.c_str())) {}
  clsConverter(const clsConverter&) = delete;
  clsConverter& operator=(const clsConverter&) = delete;
  ~clsConverter() {
    if (Works()) iconv_close(handle_);
  }
  // iconv_open's failure value is (iconv_t)-1; comparing it as a number avoids the cast of its macro.
  bool Works() const { return reinterpret_cast<intptr_t>(handle_) != -1; }

  /// The character of one byte; 0 if the byte alone stands for none (a hole, or a multi-byte page).
  char32_t CharOf(unsigned char byte) const {
    char in = static_cast<char>(byte);
    char32_t out = 0;
    char* pIn = &in;
    char* pOut = reinterpret_cast<char*>(&out);
    size_t nIn = 1;
    size_t nOut = sizeof out;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    const size_t nResult = iconv(handle_, &pIn, &nIn, &pOut, &nOut);
    return nResult == static_cast<size_t>(-1) || nIn != 0 || nOut != 0 ? 0 : out;
  }

 private:
  iconv_t handle_;
};

}  // namespace

bool FindPageCharacters(const std::string& sName, PageCharacters& characters) {
  const clsConverter converter(sName);
  if (!converter.Works()) return false;
  for (size_t i = 0; i < characters.size(); ++i) characters[i] = converter.CharOf(static_cast<unsigned char>(i));
  return true;
}

}  // namespace quillon
