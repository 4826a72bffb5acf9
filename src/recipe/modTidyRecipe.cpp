#include "modTidyRecipe.h"

#include <algorithm>

#include "clsTableParser.h"
#include "modCellTyping.h"
#include "modNumbers.h"
#include "modReport.h"
#include "modSectionFile.h"
#include "modShortTable.h"
#include "modText.h"

namespace quillon {

std::vector<TidySection> SectionsOf(clsSectionFile& file, Columns columns) {
  std::string sText;
  bool bLeftOut = false;
  file.Rewind();
  for (std::string_view sLine; file.ReadLine(sLine);) {
    if (columns == Columns::LeftOut && sLine.find('[') != std::string_view::npos) {
      bLeftOut = sLine.starts_with("[Table ") && sLine.find(" Col ") != std::string_view::npos;
    }
    if (!bLeftOut) sText.append(sLine).push_back('\n');
  }
  file.Rewind();
  return SectionsOfText(sText);
}

std::set<int32_t> TidyTablesOf(const std::vector<TidySection>& sections) {
  std::set<int32_t> numbers;
  for (const TidySection& section : sections) {
    const size_t nBlank = section.sName.find(' ');
    if (nBlank == std::string::npos) continue;
    const std::string_view sKind = std::string_view(section.sName).substr(0, nBlank);
    if (sKind != "Table" && sKind != "Heading" && sKind != "Line") continue;
    const std::string_view sNumber = std::string_view(section.sName).substr(nBlank + 1);
    const int32_t lTable = ParseWholeNumber(sNumber.substr(0, sNumber.find('.'))).value_or(0);
    const bool bTidy = sKind != "Table" || HasTidyKey(section);
    if (lTable > 0 && bTidy) numbers.insert(lTable);
  }
  return numbers;
}

clsTidyTables::clsTidyTables(clsSectionFile& file, Columns columns)
    : sections_(SectionsOf(file, columns)), numbers_(TidyTablesOf(sections_)) {}

bool clsTidyTables::Check(int32_t nTables, TidyFault& fault) const {
  if (HasStraySections(sections_, nTables, fault)) return false;
  return std::all_of(numbers_.begin(), numbers_.end(), [&](int32_t lTable) {
    TidyTable table;
    return Read(lTable, table, fault);
  });
}

bool clsTidyTables::Read(int32_t lTable, TidyTable& table, TidyFault& fault) const {
  return ReadTidyTable(sections_, lTable, table, fault);
}

bool PlaceRuler(RecipeContext& context, std::string_view sTextFile, TidyTable& table, TidyFault& fault) {
  if (table.sParsing.empty()) return true;
  std::string sTemplate = UpperText(table.sParsing);
  const bool bDrawn = sTemplate.find('=') == std::string::npos && TrimBlanks(sTemplate) != "-";
  if (!bDrawn && (table.sStartLine.empty() || table.sEndLine.empty())) {
    const std::string& sSection = table.sections.front().sName;
    fault = {kTidyMissingKey, sSection, "Parsing",
             TidyText(kTidyMissingKey, {sSection, "Parsing=" + table.sParsing, "ReadStartLine and ReadEndLine"})};
    return false;
  }
  clsTable measured;
  measured.ReadStartLine = table.sStartLine;
  measured.ReadStartLineOffset = table.lStartOffset;
  measured.ReadEndLine = table.sEndLine;
  measured.ReadEndLineOffset = table.lEndOffset;
  std::vector<int32_t> starts;
  std::vector<int32_t> ends;
  std::vector<std::string> ops;
  if (!FixTemplate(context, sTextFile, glTabSize, measured, sTemplate) ||
      !clsTableParser::analyze_template(context.host, sTemplate, starts, ends, ops)) {
    return false;
  }
  std::string sPlaces;
  for (size_t i = 0; i < starts.size(); ++i) {
    sPlaces += (i > 0 ? " " : "") + std::to_string(starts[i]) + "-" + std::to_string(ends[i]);
  }
  std::vector<TidySection> sections = table.sections;
  for (auto& [sName, sValue] : sections.front().keys) {
    if (sName != "Parsing") continue;
    sName = "Places";
    sValue = sPlaces;
  }
  return ReadTidyTable(sections, table.lNumber, table, fault);
}

void ReportTidyFault(clsHost& host, std::string_view sRecipe, const TidyFault& fault) {
  ReportCode(host, EntryType::Error, fault.lCode, std::string(sRecipe) + ": " + fault.sText, true);
}

bool ReadDateOrder(RecipeContext& context, clsSectionFile& file, std::string_view sRecipe, DateOrder& order) {
  const std::string sOrder = ReadKeyFromFile(file, "General", kDateOrderKey, {});
  const auto known = DateOrderOf(sOrder);
  order = known.value_or(DateOrder::ByColumn);
  if (known || sOrder.empty()) return true;
  constexpr std::string_view kSection = "General";
  const std::string sText = TidyText(kTidyBadValue, {kSection, kDateOrderKey, "mdy, dmy, ymd: " + sOrder});
  ReportTidyFault(context.host, sRecipe, {kTidyBadValue, std::string(kSection), std::string(kDateOrderKey), sText});
  context.account.failure = OwnFailure(sRecipe, sText);
  return false;
}

void WriteTidyTable(clsSectionWriter& file, const TidyTable& table) {
  for (const TidySection& section : table.sections) {
    if (section.keys.empty()) file.Set(section.sName, "ReadStartLine", "");
    for (const auto& [sName, sValue] : section.keys) file.Set(section.sName, sName, sValue);
  }
}

}  // namespace quillon
