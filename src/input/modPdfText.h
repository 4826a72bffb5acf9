#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clsPdfProcess.h"
#include "clsTextSpool.h"

namespace quillon {

/// True for what begins as a PDF does.
bool IsPdf(std::string_view sHead);

/// Writes the text of a PDF into the spool, on one grid of characters (see clsWordGrid). False with the reason; a
/// document without any text is refused as a scan. Notes tell of pages and words that are no text.
bool MakePdfText(std::string_view sPath, int nHandle, const PdfPages& pages, clsTextSpool& spool,
                 std::vector<std::string>& notes, Failure& failure);

}  // namespace quillon
