#include "modTextPlan.h"

#include <algorithm>

#include "clsPrinterCodes.h"
#include "clsUtf16Maker.h"
#include "modRecordKind.h"
#include "modSystemIo.h"
#include "modText.h"

namespace quillon {

namespace {

bool IsUtf16(std::string_view sHead) {
  return sHead.starts_with("\xFF\xFE") || sHead.starts_with("\xFE\xFF");
}

/// The choices leave no question open, or the answer stands in the head.
bool IsPlain(std::string_view sHead, const InputOptions& options) {
  InputOptions open;
  open.bFindKinds = options.bFindKinds;
  return open == options && !(open.bFindKinds && (IsUtf16(sHead) || LooksLikeEbcdic(sHead)));
}

/// The text of the file's beginning so far. What stands cut at its end doesn't matter here.
std::string TextOf(const FileBeginning& file, const RecordKind& kind) {
  if (kind.IsPlain()) return std::string(file.sHead);
  clsRecordMaker maker(kind);
  std::string sText;
  maker.Take(file.sHead, sText);
  return sText;
}

bool PlanRecords(const FileBeginning& file, const InputOptions& options, TextPlan& plan, std::string& sFault) {
  RecordKind kind;
  if (!FindRecordKind(file, options, kind, sFault)) return false;
  plan.bUtf8 = kind.pEbcdic != nullptr;
  if (!kind.IsPlain()) plan.makers.push_back(std::make_unique<clsRecordMaker>(kind));
  const bool bCodes = options.printerCodes == PrinterCodes::On ||
                      (options.printerCodes == PrinterCodes::Auto && HasPrinterCodes(TextOf(file, kind)));
  if (bCodes) plan.makers.push_back(std::make_unique<clsPrinterCodes>(plan.bUtf8 || IsValidUtf8(file.sHead)));
  return true;
}

}  // namespace

std::string BeginningOf(int nHandle, size_t nBytes) {
  std::string sHead(nBytes, '\0');
  const int64_t nGot = ReadHandleAt(nHandle, sHead.data(), sHead.size(), 0);
  sHead.resize(static_cast<size_t>(std::max<int64_t>(nGot, 0)));
  return sHead;
}

bool MakeTextPlan(int nHandle, std::string_view sHead, int64_t nBytes, const InputOptions& options, TextPlan& plan,
                  std::string& sFault) {
  if (IsPlain(sHead, options)) return true;
  if (options.bFindKinds && IsUtf16(sHead)) {
    plan.makers.push_back(std::make_unique<clsUtf16Maker>());
    plan.bUtf8 = true;
    return true;
  }
  const std::string sBeginning = BeginningOf(nHandle, kBeginningBytes);
  return PlanRecords({sBeginning, nBytes}, options, plan, sFault);
}

}  // namespace quillon
