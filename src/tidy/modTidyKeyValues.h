#pragma once
// Values of tidy keys, one function a kind. Each gives False with what is wrong in a few words; who calls knows where.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modTidyModel.h"

namespace quillon {

/// What is wrong with a value.
struct TidyValueFault {
  int32_t lCode = 0;
  std::string sWhat;   ///< The offending piece, or the sentence of kTidyBadValue
  std::string sLimit;  ///< Of kTidyTooMuch
};

bool ParseTidyPlaces(std::string_view sValue, TidyCut& cut, TidyValueFault& fault);
bool ParseTidySplit(std::string_view sValue, TidyCut& cut, TidyValueFault& fault);
bool ParseTidyNames(std::string_view sValue, std::vector<std::string>& names, TidyValueFault& fault);
/// "A C-E, F" as columns; kEveryTidyColumn alone for an empty text.
bool ParseTidyColumns(std::string_view sValue, std::vector<TidyColumn>& columns, TidyValueFault& fault);
bool ParseTidyNeeds(std::string_view sValue, std::vector<TidyNeed>& needs, TidyValueFault& fault);
/// Types by column; those without letters are of all columns.
bool ParseTidyTypes(std::string_view sValue, std::vector<TidyTyping>& types, TidyTyping& others, TidyValueFault& fault);
bool ParseTidyPictures(std::string_view sValue, std::vector<std::string>& likes, TidyValueFault& fault);
bool ParseTidyYesNo(std::string_view sValue, bool& bYes, TidyValueFault& fault);
bool ParseTidyJoin(std::string_view sValue, TidyTable& table, TidyValueFault& fault);
bool ParseTidyLevels(std::string_view sValue, TidyTable& table, TidyValueFault& fault);
bool ParseTidySheet(std::string_view sValue, std::string& sSheet, TidyValueFault& fault);
bool ParseTidyNumber(std::string_view sValue, int32_t& lNumber, TidyValueFault& fault);

/// In TidyNeed::column: each of the columns.
constexpr TidyColumn kEveryTidyColumn = kNoTidyColumn;

}  // namespace quillon
