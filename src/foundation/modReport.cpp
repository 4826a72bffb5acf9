#include "modReport.h"

#include "modTranslator.h"

namespace quillon {

std::string CodeLine(EntryType type, int32_t lErr) {
  return Translate(type == EntryType::Warning ? "Warning" : "Error") + " [" + std::to_string(lErr) + "]";
}

void ReportCode(clsHost& host, EntryType type, int32_t lErr, std::string sMessage, bool bShowMessageBox,
                std::string sThirdLine) {
  host.Report({lErr, CodeLine(type, lErr), std::move(sMessage), std::move(sThirdLine), type, bShowMessageBox});
}

}  // namespace quillon
