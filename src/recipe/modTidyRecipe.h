#pragma once
// Tidy tables of short recipes and specifications, as the engine of recipes finds and keeps them.

#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "clsSectionFile.h"
#include "clsSectionWriter.h"
#include "modRecipeGlobals.h"
#include "modTidyKeys.h"

namespace quillon {

/// Sections of an open file with their keys. Columns of tables, which a specification has very many of, are no part of
/// a tidy table and may be left out.
enum class Columns : uint8_t { Taken, LeftOut };
std::vector<TidySection> SectionsOf(clsSectionFile& file, Columns columns = Columns::Taken);
/// Numbers of the tables that are tidy ones.
std::set<int32_t> TidyTablesOf(const std::vector<TidySection>& sections);

/// The tidy tables of a file, read once for all.
class clsTidyTables {
 public:
  /// Reads the sections; a file without a tidy table costs no more than that.
  explicit clsTidyTables(clsSectionFile& file, Columns columns = Columns::Taken);

  bool Has(int32_t lTable) const { return numbers_.contains(lTable); }
  bool Any() const { return !numbers_.empty(); }
  /// False with the first mistake in any of them, or in a section that belongs to none. nTables: as many there are.
  bool Check(int32_t nTables, TidyFault& fault) const;
  bool Read(int32_t lTable, TidyTable& table, TidyFault& fault) const;

 private:
  std::vector<TidySection> sections_;
  std::set<int32_t> numbers_;
};

/// Turns a table's ruler into places, measured in the report where it leaves something open, and reads the table anew.
/// False with a fault, or without one where the table can't be found or the run was given up.
bool PlaceRuler(RecipeContext& context, std::string_view sTextFile, TidyTable& table, TidyFault& fault);

/// Key DateOrder of [General], which tables of every kind have in common; ByColumn where it isn't there. False,
/// reported and kept as the run's failure, so that nothing is written over, for a word that is none.
bool ReadDateOrder(RecipeContext& context, clsSectionFile& file, std::string_view sRecipe, DateOrder& order);
constexpr std::string_view kDateOrderKey = "DateOrder";

/// Reports a mistake with the recipe's name in front.
void ReportTidyFault(clsHost& host, std::string_view sRecipe, const TidyFault& fault);

/// Sets the keys of the table and of its headings and further lines.
void WriteTidyTable(clsSectionWriter& file, const TidyTable& table);

}  // namespace quillon
