#pragma once
// Stretches of places that are columns, or parts of one.

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "clsReportSample.h"

namespace quillon {

/// Which parts of a date all values are.
enum class DateParts : uint8_t { None, Weekday, Month, Day, Year, Time, HalfDay, MonthAndDay, Date };

struct ColumnPart {
  int32_t lFirst = 0, lLast = 0;
  double dFilled = 0;                       ///< Share of the rows that have a value here
  double dNumbers = 0;                      ///< Of these, how many are numbers
  double dFigures = 0;                      ///< Of these, how many hold a digit
  double dStart = 0, dEnd = 0, dPoint = 0;  ///< Of these, how many have the commonest edge
  bool bSigns = false;                      ///< Nothing but currency signs
  bool bSignsBehind = false;                ///< Nothing but what stands behind a number: -, CR, DR, %
  bool bOpen = false;                       ///< A parenthesis opens in all values and doesn't close
  bool bWholeDates = false;                 ///< All values are dates with day, month and year
  bool bOneValue = false;                   ///< All rows have the same word
  DateParts dates = DateParts::None;

  bool IsNumber() const { return dNumbers >= 0.6; }
};

/// Takes the values of a part one by one.
class clsPartMeasure {
 public:
  explicit clsPartMeasure(size_t nRows) : nRows_(nRows) {}
  void Add(std::u32string_view sCell, int32_t lStart);
  void Finish(ColumnPart& part) const;

 private:
  size_t nRows_;
  size_t nCells_ = 0, nNumbers_ = 0, nFigures_ = 0, nSigns_ = 0, nBehind_ = 0, nOpen_ = 0, nBlankMarks_ = 0;
  std::map<int32_t, size_t> starts_, ends_, points_;
  size_t nWholeDates_ = 0, nLikeFirst_ = 0;
  std::u32string sFirst_;
  uint32_t lDates_ = ~0U;  ///< A bit for each part of a date that all values may be
};

/// What a line has between two places, blanks around it dropped.
std::u32string_view CellAt(std::u32string_view sLine, int32_t lFirst, int32_t lLast);
/// Sets what the values of a part are like, from its places.
void MeasurePart(const clsReportSample& report, std::span<const size_t> rows, ColumnPart& part);

/// Whether two neighbours, with nothing but blanks between, are one column that a sign, a date or words divide.
bool AreOneColumn(const ColumnPart& left, const ColumnPart& right);
/// Whether the rows have an edge in common between the two, so that they are columns though some rows touch.
bool HaveEdgeBetween(const ColumnPart& left, const ColumnPart& right);
/// The date that two neighbours are together; None if they are none.
DateParts JoinedDates(DateParts left, DateParts right);

}  // namespace quillon
