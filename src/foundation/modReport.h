#pragma once
// How a reporter words an entry: the table of a subsystem holds code and text, this puts them into the log's form.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

/// "Error [-5604]": the word translated by itself.
std::string CodeLine(EntryType type, int32_t lErr);
/// Reports sErr1 = CodeLine, sErr2 = the message (translated already), sErr3 = an optional third line.
void ReportCode(clsHost& host, EntryType type, int32_t lErr, std::string sMessage, bool bShowMessageBox = true,
                std::string sThirdLine = {});

}  // namespace quillon
