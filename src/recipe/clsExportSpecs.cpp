#include "clsExportSpecs.h"

#include "clsRecipe.h"
#include "modRecipeMessages.h"
#include "modTidyRecipe.h"

namespace quillon {

namespace {

constexpr std::string_view kProduct = "QLN";
constexpr std::string_view kFileType = "EXPORT SPEC";
constexpr std::string_view kFileFormat = "1.1";

constexpr KeyTexts kTitles{.sNeedle1 = "[Title "};
constexpr KeyTexts kTables{.sNeedle1 = "[Table ", .sExclusion = "Col"};
constexpr KeyTexts kConsolidates{.sNeedle1 = "[Consolidate "};
constexpr KeyTexts kSections{
    .sNeedle1 = "[Title ", .sNeedle2 = "[Table ", .sNeedle3 = "[Consolidate ", .sExclusion = "Col"};

/// Reads sections 1 to lCount of a kind, each from the top of the file.
template <typename Section>
void ReadSections(RecipeContext& context, clsSectionFile& file, int64_t lCount, std::vector<Section>& sections) {
  sections.clear();
  for (int32_t n = 1; n <= lCount && file.MayReadOn(); ++n) {
    file.Rewind();
    Section section;
    section.ReadFromFileSequentially(context, file, n);
    sections.push_back(std::move(section));
  }
}

}  // namespace

int32_t clsExportSpecs::getWritePointer(clsHost& host, int32_t sheet) const {
  if (sheet == 1 || sheet == 2) return writePointers_[static_cast<size_t>(sheet) - 1];
  ReportRecipe(host, kNextRowSheet);
  return 0;
}

void clsExportSpecs::setWritePointer(clsHost& host, int32_t sheet, int32_t write_pointer) {
  if (sheet != 1 && sheet != 2) return ReportRecipe(host, kSetRowSheet);
  writePointers_[static_cast<size_t>(sheet) - 1] = write_pointer;
}

bool clsExportSpecs::ReadFromFile(RecipeContext& context, std::string_view file_name) {
  clsSectionFile file;
  Failure ignored;
  file.Open(file_name, context.options.RecipeText(), ignored);
  return ReadFromFile(context, file);
}

bool clsExportSpecs::ReadFromFile(RecipeContext& context, clsSectionFile& file) {
  if (CheckFileHeader(context.host, file, kProduct, kFileType, kFileFormat)) return false;
  Name = ReadKeyFromFile(file, "General", "Name", {});
  ReadDateOrder(context, file, context.recipe.ExportSpecFileName, dateOrder);
  lTitles_ = CountMatchingLines(file, kTitles);
  lTables_ = CountMatchingLines(file, kTables);
  lConsolidates_ = CountMatchingLines(file, kConsolidates);
  ReadSectionSequence(file);
  ReadSections(context, file, lTitles_, TitlesCollection);
  ReadTables(context, file);
  ReadSections(context, file, lConsolidates_, ConsolidateCollection);
  return true;
}

void clsExportSpecs::ReadTables(RecipeContext& context, clsSectionFile& file) {
  const clsTidyTables tidy(file, Columns::LeftOut);
  if (!tidy.Any()) return ReadSections(context, file, lTables_, TablesCollection);
  TablesCollection.clear();
  for (int32_t n = 1; n <= lTables_ && file.MayReadOn(); ++n) {
    clsTable& table = TablesCollection.emplace_back();
    if (!tidy.Has(n)) {
      file.Rewind();
      table.ReadFromFileSequentially(context, file, n);
      continue;
    }
    TidyFault fault;
    if (!tidy.Read(n, table.tidy.emplace(), fault) || !PlaceRuler(context, {}, *table.tidy, fault)) {
      ReportTidyFault(context.host, context.recipe.ExportSpecFileName, fault);
      table.tidy.reset();
    }
  }
}

void clsExportSpecs::ReadSectionSequence(clsSectionFile& file) {
  file.Rewind();
  SectionSequenceCollection.clear();
  for (int64_t i = lTitles_ + lTables_ + lConsolidates_; i > 0; --i) {
    const int64_t lFound = FindKeyText(file, kSections);
    if (lFound > kThirdNeedle) {
      SectionSequenceCollection.emplace_back("Consolidate");
    } else if (lFound != 0) {
      SectionSequenceCollection.emplace_back(lFound > 0 ? "Title" : "Table");
    }
  }
}

bool clsExportSpecs::WriteToFile(RecipeContext& context, std::string_view file_name, Failure& failure) const {
  clsSectionWriter file(*context.options.OwnText().pCodePage);
  if (!file.Load(file_name, failure)) return false;
  file.Set("Header", "Product", kProduct);
  file.Set("Header", "FileType", kFileType);
  file.Set("Header", "FileFormat", kFileFormat);
  file.Set("General", "Name", Name);
  size_t nTitle = 0;
  size_t nTable = 0;
  size_t nConsolidate = 0;
  const auto writeNext = [&file](const auto& sections, size_t& nIndex) {
    if (nIndex++ < sections.size()) sections[nIndex - 1].WriteToFile(file, static_cast<int32_t>(nIndex));
  };
  for (const std::string& sKind : SectionSequenceCollection) {
    if (sKind == "Title") {
      writeNext(TitlesCollection, nTitle);
    } else if (sKind == "Table") {
      writeNext(TablesCollection, nTable);
    } else if (sKind == "Consolidate") {
      writeNext(ConsolidateCollection, nConsolidate);
    } else {
      ReportRecipe(context.host, kNoSuchSpec);
    }
  }
  return file.Save(file_name, failure);
}

void clsExportSpecs::PropertyPrintCons() const {
  for (const clsCon& con : ConsolidateCollection) con.PropertyPrint();
}

void clsExportSpecs::PropertyPrintTables() const {
  for (const clsTable& table : TablesCollection) table.PropertyPrint();
}

}  // namespace quillon
