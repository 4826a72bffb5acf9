// Any text as a ruler: fields in order, parted by blanks, none overlooked.

#include <string>
#include <vector>

#include "clsFuzzInput.h"
#include "clsTableParser.h"
#include "clsTestHost.h"
#include "modText.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  const std::string_view sRuler = clsFuzzInput(pData, nSize).sInput;
  clsTestHost host;
  std::vector<int32_t> starts, ends;
  std::vector<std::string> ops;
  const bool bFields = clsTableParser::analyze_template(host, sRuler, starts, ends, ops);
  Must(bFields == !starts.empty() && starts.size() == ends.size() && starts.size() == ops.size(), "as many of each");
  if (!host.reports.empty()) return 0;

  // The same by another road: a field begins where a blank, or nothing, stands in front.
  std::string sShape;
  std::vector<char32_t> chars;
  for (size_t i = 0; i < sRuler.size();) chars.push_back(DecodeUtf8(sRuler, i));
  size_t nField = 0;
  for (size_t i = 0; i < chars.size(); ++i) {
    const bool bBegins = chars[i] != U' ' && (i == 0 || chars[i - 1] == U' ');
    if (bBegins) {
      Must(nField < starts.size() && starts[nField] == static_cast<int32_t>(i) + 1, "a field begins here");
      Must(ops[nField] == (chars[i] == U'+' ? "Sum" : ""), "with its operation");
      ++nField;
    }
    const bool bEnds = nField > 0 && (chars[i] == U' ' ? chars[i - 1] != U' ' : i + 1 == chars.size());
    if (bEnds && i > 0) Must(ends[nField - 1] == static_cast<int32_t>(i) + 1, "and ends here");
  }
  Must(nField == starts.size(), "no field besides");
  const clsTableParser parser;
  parser.VariableToFixedTemplate(host, sRuler);
  return 0;
}
