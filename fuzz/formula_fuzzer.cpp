// Any text as a formula: the verdict is the same with tokens and without; copying to the same place and renaming
// nothing change nothing.
#include <cstdint>

#include "modFormula.h"
#include "modFormulaText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  const std::string_view sText(reinterpret_cast<const char*>(pBytes), nBytes);
  std::vector<FormulaToken> tokens;
  const FormulaVerdict verdict = ParseFormula(sText, tokens);
  if (verdict != CheckFormula(sText)) __builtin_trap();
  FormulaSheetsExist(sText, {});
  const FormulaRenames renames{{{"Old", "New name"}}, {{"T", "a", "b]"}}};
  RenamedFormula(sText, renames);
  if (RenamedFormula(sText, {}) != sText) __builtin_trap();
  // What leaves the sheet becomes "#REF!", which is well-formed as well.
  if (verdict == FormulaVerdict::WellFormed && CheckFormula(ShiftedFormula(sText, 0, 0)) != verdict) __builtin_trap();
  ShiftedFormula(sText, 7, -3);
  return 0;
}
