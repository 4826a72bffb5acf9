#pragma once
// An existing .xlsx workbook, changed in place.

#include <memory>
#include <string>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

/// Opens the workbook; null with the reason if it can't be read as one. Parts that the run doesn't touch will be copied
/// as they are packed. A touched sheet is rewritten as a stream when it is saved: only the cells written or cleared
/// differ, the rest of it stays byte by byte. What a spreadsheet would otherwise have to repair is put right: extent,
/// chain of calculation, shared formulas, headings of tables, references to a sheet that got another name.
///
/// A sheet is looked through when it is first touched; one that is damaged fails every operation on it. A write into a
/// part of an array formula fails as it does in a spreadsheet. Headings of tables get a name of their own: a text that
/// comes twice is told apart by " (2)".
std::unique_ptr<clsWorkbook> OpenXlsxWorkbook(std::string_view sHostPath, const WorkbookOptions& options,
                                              Failure& failure);

}  // namespace quillon
