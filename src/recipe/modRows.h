#pragma once
// Rows of report text by number, and their tabs.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"
#include "clsLineReader.h"

namespace quillon {

/// The file's next row in its bytes; "" without a file. False if there is none: on a failure, and at the end with bUnix
/// off. With bUnix on reading past the end gives empty rows.
bool ReadNextRow(clsLineReader* filehandle, bool bUnix, std::string_view& sRow);

/// The UTF-8 text with its tabs turned into blanks; "" for a tab_size below 1. The stops lie at 1 + k * tab_size, and a
/// tab fills up to the character before the next one: behind text that ends exactly there it has no width at all.
std::string ExpandTabs(std::string_view text, int32_t tab_size);
/// The same for bytes of a code page, appended. False if that would pass clsLineReader::kMaxRowBytes.
bool AppendExpanded(std::string_view sBytes, int32_t tab_size, bool bUtf8, std::string& sOut);

/// Fills the first line_count entries of lines with the rows from start_line (from 1) on, as UTF-8. Entries that the
/// file does not reach, or all if it can't be read, keep what they held. A start below 1 shows a message box.
void file_read(clsHost& host, std::vector<std::string>& lines, std::string_view file_name,
               const TextFileOptions& options, int16_t start_line, int16_t line_count);

/// A number's text as WriteDataFormat wants it: "NearestDollar" and "NearestCent" round, anything else leaves it.
std::string RoundByDataFormat(std::string sNumber, std::string_view sWriteDataFormat);

}  // namespace quillon
