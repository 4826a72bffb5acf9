#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCon.h"
#include "clsTable.h"
#include "clsTitle.h"
#include "clsWorkbook.h"

namespace quillon {

/// A short recipe of our own making: the name by which messages speak of it, and how it is read.
struct OwnShortRecipe {
  std::string sShownName;
  TextFileOptions text;
};

/// What a recipe does, section by section, in the order in which the sections run: files *_ExportSpecs.t2x.
class clsExportSpecs {
 public:
  int32_t ProcessedTables = 0;     ///< Tables finished in the present run
  bool FatalProcessError = false;  ///< Set by a section that failed; ends the run of sections
  std::string FileHeader_Product = "QLN";
  std::string FileHeader_FileType = "EXPORT SPEC";
  std::string FileHeader_FileFormat = "1.1";
  std::string Name;
  /// Key DateOrder of [General]: of dates such as 1/2/24 in a workbook.
  DateOrder dateOrder = DateOrder::ByColumn;
  std::vector<std::string> SectionSequenceCollection;  ///< "Title", "Table" or "Consolidate" for each section
  std::vector<clsTitle> TitlesCollection;
  std::vector<clsTable> TablesCollection;
  std::vector<clsCon> ConsolidateCollection;

  /// Writes long_file from short_file, each table measured in textDataFile where its template has a "=". Reports -5300
  /// and goes on, -5500 for a short_file that is there and can't be read, which is kept as the run's failure, too;
  /// -5301 and -5302 end the work, and the tables before stay. Gives back why long_file, which is then not there, could
  /// not be written. pOwn: short_file is no recipe of the user.
  Failure FileConvertShortToLong(RecipeContext& context, std::string_view short_file, std::string_view long_file,
                                 std::string_view textDataFile, const OwnShortRecipe* pOwn = nullptr);
  /// Writes a short recipe from the marks in text_file. Reports -5303; nothing if it was stopped (modEventLoop).
  void FileCreateShort(RecipeContext& context, std::string_view text_file, std::string_view short_file);

  /// The next free row of sheet 1 or 2. Another sheet reports -5304 and gives 0.
  int32_t getWritePointer(clsHost& host, int32_t sheet) const;
  /// Another sheet reports -5305.
  void setWritePointer(clsHost& host, int32_t sheet, int32_t write_pointer);

  /// Replaces the content; a wrong header leaves it as it was and gives False. Each section reports its own failures,
  /// and the reading goes on with the next.
  bool ReadFromFile(RecipeContext& context, std::string_view file_name);
  bool ReadFromFile(RecipeContext& context, clsSectionFile& file);
  /// Sets the keys in the file, which needn't exist; what else it holds stays. Reports -5306. False with the reason if
  /// it can't be written.
  bool WriteToFile(RecipeContext& context, std::string_view file_name, Failure& failure) const;
  /// Runs the sections in their order; csv_file_handle null: to the workbook of the context. Reports -5307, -5308. A
  /// section that fails or dies ends the walk and leaves gbProcessing true, a pause ends it with gbProcessing false.
  void Process(RecipeContext& context, clsOutputFile* csv_file_handle);

  // For a look while debugging; no caller yet.
  void PropertyPrintCons() const;
  void PropertyPrintTables() const;

 private:
  struct SectionIndexes {
    size_t nTitle = 0, nTable = 0, nConsolidate = 0;
    bool bTidyRan = false;  ///< The tables of records, which read the report together
  };
  void ReadSectionSequence(clsSectionFile& file);
  void ReadTables(RecipeContext& context, clsSectionFile& file);
  bool ProcessSection(RecipeContext& context, clsOutputFile* csv_file_handle, const std::string& sKind,
                      SectionIndexes& indexes);

  int64_t lTitles_ = 0;  ///< Sections of each kind as counted in the file
  int64_t lTables_ = 0;
  int64_t lConsolidates_ = 0;
  std::array<int32_t, 2> writePointers_{1, 1};
};

/// A table between marks. Lines count from the reader's position at the call, which is all that their being above 0 is
/// good for; the rows are found later, by the numbered marks.
struct MarkedTable {
  int64_t lTop = 0, lBottom = 0;
  std::string sTemplate;  ///< UTF-8
  bool IsComplete() const { return !sTemplate.empty() && lTop > 0 && lBottom > 0; }
};
MarkedTable FindNextMarkedTable(clsLineReader& filehandle, std::string_view sTopMark, std::string_view sBottomMark);

}  // namespace quillon
