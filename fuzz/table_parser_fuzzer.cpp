// Rulers over reports of any bytes. A ruler that was worked out has no "=" left, and its fields lie in order within it.

#include <cstdlib>

#include "clsFuzzRecipe.h"
#include "clsTableParser.h"
#include "modText.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const std::string sTemplate(fuzz.TakePart());
  clsTableParser parser;
  parser.ReadFromFile(fuzz.context, fuzz.folder.Write("fuzz.txt", "TOP\n" + std::string(fuzz.sInput) + "\nEND\n"),
                      "TOP", 1, "END", -1, glTabSize);
  const std::string sFixed = parser.VariableToFixedTemplate(fuzz.host, sTemplate);
  std::vector<int32_t> starts, ends;
  std::vector<std::string> ops;
  const bool bFields = clsTableParser::analyze_template(fuzz.host, sFixed, starts, ends, ops);
  if (bFields == starts.empty() || starts.size() != ends.size()) std::abort();
  if (sFixed.find('=') != std::string::npos) std::abort();
  int32_t lDone = 0;
  for (size_t i = 0; i < starts.size(); ++i) {
    if (starts[i] <= lDone || ends[i] < starts[i]) std::abort();
    lDone = ends[i];
  }
  if (static_cast<size_t>(lDone) > CharCount(sFixed)) std::abort();
  return 0;
}
