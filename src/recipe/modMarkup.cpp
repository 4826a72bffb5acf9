// And FileCreateShort of clsExportSpecs: the marks in a report become a short recipe.

#include "modMarkup.h"

#include "clsExportSpecs.h"
#include "modEventLoop.h"
#include "modRecipeMessages.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr std::string_view kTopMark = ">>";
constexpr std::string_view kBottomMark = "<<";

int64_t FindMark(clsLineReader& filehandle, std::string_view sMark) {
  return FindKeyText(filehandle, {.sNeedle1 = sMark, .lLength = static_cast<int64_t>(sMark.size())});
}

void WriteMarkedTable(clsSectionWriter& file, int32_t lTable, const std::string& sTemplate) {
  const std::string sNumber = std::to_string(lTable);
  const std::string sSection = "Table " + sNumber;
  file.Set(sSection, "ReadStartLine", std::string(kTopMark) + sNumber);
  file.Set(sSection, "ReadStartLineOffset", 2);
  file.Set(sSection, "ReadEndLine", std::string(kBottomMark) + sNumber);
  file.Set(sSection, "ReadEndLineOffset", -1);
  file.Set(sSection, "Parsing", sTemplate);
  file.Set(sSection, "WriteColumn", "A");
}

void NoteWithoutEnd(RecipeContext& context, int64_t lLine) {
  context.account.leftOut.push_back(Translate("A marked table has no end, so no row of it was written") + ": " +
                                    Translate("Line") + " " + std::to_string(lLine));
}

}  // namespace

MarkedTable FindNextMarkedTable(clsLineReader& filehandle, std::string_view sTopMark, std::string_view sBottomMark) {
  MarkedTable table;
  const int64_t lTop = FindMark(filehandle, sTopMark);
  std::string_view sRow;
  if (lTop < 1) return table;
  table.lTop = lTop;
  if (filehandle.ReadRow(sRow)) table.sTemplate = filehandle.CodePage().ToUtf8(sRow);
  const int64_t lBottom = FindMark(filehandle, sBottomMark);
  if (lBottom >= 1) table.lBottom = lTop + 1 + lBottom;
  return table;
}

int32_t WriteRecipeOfMarks(clsLineReader& reader, clsSectionWriter& file, int64_t& lWithoutEnd) {
  file.Set("Header", "Product", "QLN-B");
  file.Set("Header", "FileType", "RECIPE");
  file.Set("Header", "FileFormat", "1.0");
  for (int32_t lTables = 0;; ++lTables) {
    const int64_t lBefore = reader.RowNumber();
    const MarkedTable table = FindNextMarkedTable(reader, kTopMark, kBottomMark);
    lWithoutEnd = table.IsComplete() || table.lTop < 1 ? 0 : lBefore + table.lTop;
    if (!table.IsComplete()) return lTables;
    WriteMarkedTable(file, lTables + 1, table.sTemplate);
  }
}

void clsExportSpecs::FileCreateShort(RecipeContext& context, std::string_view text_file, std::string_view short_file) {
  clsReport& report = context.Report(std::string(text_file));
  clsLineReader& reader = report.Reader();
  Failure failure;
  if (report.Open(failure)) {
    report.SeekLine(1);
    clsSectionWriter file(*context.options.OwnText().pCodePage);
    int64_t lWithoutEnd = 0;
    WriteRecipeOfMarks(reader, file, lWithoutEnd);
    if (lWithoutEnd > 0) NoteWithoutEnd(context, lWithoutEnd);
    failure = reader.LastFailure();
    if (!failure.Failed() && file.Save(short_file, failure)) return;
  }
  if (IsStopped(failure)) return;
  ReportRecipe(context.host, kMarksUnreadable, {std::to_string(failure.nError), failure.sText});
  context.account.failure = failure;
}

}  // namespace quillon
