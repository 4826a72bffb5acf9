// Section files: sections and keys in any bytes, by their index as by their order; the scanner over the same bytes.

#include <cstdlib>

#include "clsFuzzRecipe.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const std::string_view sSection = fuzz.TakePart();
  const std::string_view sKey = fuzz.TakePart();
  clsSectionFile file;
  if (!file.OpenMemory(fuzz.sInput, fuzz.options.text)) return 0;
  ReadKeyFromFileTrimmed(file, sSection, sKey, "-999999", TrimMode::RightOnly);
  while (!file.AtEnd()) ReadSectionValue(file, "", sKey, "");
  CheckFileHeader(fuzz.host, file, "QLN", "RECIPE", "1.1");

  const KeyTexts texts{.sNeedle1 = sSection, .sNeedle2 = sKey, .sExclusion = "Col", .lStartColumn = 2, .lLength = 20};
  clsLineReader reader;
  reader.OpenMemory(fuzz.sInput, fuzz.options.text);
  file.Rewind();
  // A report is searched in its own bytes, a section file as UTF-8; for UTF-8 both see the same characters.
  if (reader.CodePage().IsSingleByte()) return 0;
  for (int64_t lFound = 1; lFound != 0;) {
    lFound = FindKeyText(file, texts);
    if (FindKeyText(reader, texts) != lFound) std::abort();
  }
  return 0;
}
