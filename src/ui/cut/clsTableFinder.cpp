#include "clsTableFinder.h"

#include <algorithm>
#include <utility>

#include "modTranslator.h"

namespace quillon {

namespace {

/// The fields of a worked-out ruler: the blank behind each belongs to it.
std::vector<CutField> FieldsOfRuler(const std::string& sRuler) {
  std::vector<CutField> fields;
  for (size_t nAt = sRuler.find('-'); nAt != std::string::npos;) {
    const size_t nBlank = std::min(sRuler.find(' ', nAt), sRuler.size() - 1);
    fields.push_back({static_cast<int32_t>(nAt) + 1, static_cast<int32_t>(nBlank) + 1});
    nAt = sRuler.find('-', nBlank + 1);
  }
  return fields;
}

}  // namespace

bool clsTableFinder::Find(const PreviewRequest& report, std::string& sFault) {
  Failure failure;
  tables_.clear();
  if (!SuggestRecipe(report.sInput, report.text, report.lTabSize, found_, failure)) {
    sFault = failure.sText;
    return false;
  }
  for (const SuggestedTable& table : found_.tables) {
    ListedTable& listed = tables_.emplace_back();
    listed.lRows = table.lRows;
    listed.lColumns = table.lColumns;
    listed.bDoubtful = table.bDoubtful;
    listed.fields = FieldsOfRuler(table.sRuler);
    for (const SuggestedSection& section : table.sections) {
      listed.parts.push_back({section.lFirstLine, section.lLastLine});
    }
  }
  if (tables_.empty()) sFault = Translate("No table was found: no lines of the report stand in columns.");
  return !tables_.empty();
}

std::string clsTableFinder::Recipe(const std::vector<bool>& chosen) const {
  SuggestedRecipe recipe = found_;
  recipe.tables.clear();
  for (size_t i = 0; i < found_.tables.size(); ++i) {
    if (chosen[i]) recipe.tables.push_back(found_.tables[i]);
  }
  return recipe.Text();
}

}  // namespace quillon
