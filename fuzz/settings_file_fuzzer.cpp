// Any bytes as an INI file, behind a section, a key and a value that are set in it: an untouched file keeps its bytes,
// what was set is read, in memory and from the new bytes, and no other key changes.

#include "clsFuzzInput.h"
#include "clsIniFile.h"
#include "modText.h"

using namespace quillon;

namespace {

/// What a line can hold as a name: not blank at its ends, none of the signs that end it or make the line another.
bool IsName(std::string_view sName, std::string_view sSigns) {
  return !sName.empty() && sName.find_first_of(sSigns) == std::string_view::npos &&
         sName.find_first_not_of(" \t") == 0 && sName.find_last_not_of(" \t") + 1 == sName.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzInput input(pData, nSize);
  const clsCodePage* const pPage = FuzzPage(input.TakeByte());
  const std::string_view sSection = input.TakePart(), sKey = input.TakePart(), sValue = input.TakePart();
  const std::string_view sOtherKey = input.TakePart();
  clsIniFile file(pPage);
  file.LoadText(input.sInput);
  Must(file.Bytes() == input.sInput, "an untouched file keeps its bytes");
  file.GetInt(sSection, sKey, 1);

  constexpr std::string_view kAbsent = "-absent-";
  const std::string sOther = file.Get(sSection, sOtherKey, kAbsent);
  file.Set(sSection, sKey, sValue);
  clsIniFile again(pPage);
  again.LoadText(file.Bytes());
  Must(again.Bytes() == file.Bytes(), "bytes are read as they were written");
  if (!IsName(sSection, "[]\r\n") || !IsName(sKey, "=[;\r\n")) return 0;
  Must(again.Get(sSection, sKey, kAbsent) == file.Get(sSection, sKey, kAbsent), "what was set is read from the bytes");
  if (!EqualNoCase(sKey, sOtherKey)) {
    Must(again.Get(sSection, sOtherKey, kAbsent) == sOther, "no other key of the section changes");
  }
  if (IsName(sValue, "\r\n\"'") && CharCount(sValue) <= clsIniFile::kMaxValue) {
    Must(again.Get(sSection, sKey, kAbsent) == sValue, "what was set is read");
  }
  return 0;
}
