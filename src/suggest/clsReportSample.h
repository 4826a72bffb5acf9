#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"
#include "modLineMarks.h"

namespace quillon {

/// A line of a report, its tabs expanded.
struct SampleLine {
  std::u32string_view sText;  ///< No blanks at its end, no further than clsReportSample::kWidest
  std::span<const LineMark> marks;
  bool bDrawn = false;
  bool IsBlank() const { return marks.empty(); }
};

/// The first lines of a report, as many as tell what its tables look like; or fewer of them, and lines further down.
class clsReportSample {
 public:
  static constexpr size_t kMostCharacters = size_t{2} << 20;
  static constexpr size_t kMostLines = 15000;
  static constexpr size_t kWidest = 2000;

  clsReportSample() = default;
  clsReportSample(const clsReportSample&) = delete;
  clsReportSample& operator=(const clsReportSample&) = delete;

  /// To be called once. False with the reason if the file can't be read. A line (from 1) that lies behind the first
  /// half of what there is room for gets the second half, from somewhat above it, parted from the first by a blank
  /// line.
  bool Read(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, Failure& failure,
            int64_t lAround = 0);
  /// Where a line of the report stands in Lines(); their number if it isn't among them.
  size_t IndexOf(int64_t lLine) const;
  const std::vector<SampleLine>& Lines() const { return lines_; }
  /// False if the report goes on behind the lines.
  bool IsWhole() const { return bWhole_; }
  /// Whether its numbers have a decimal comma: some of them leave no doubt, and none has a decimal point.
  bool HasDecimalComma() const { return bComma_; }

 private:
  void AddLine(std::string_view sText, int32_t lTabSize);
  void Settle();
  void LookAtDecimals();
  void ReadOn(clsLineReader& reader, int32_t lTabSize, size_t nCharacters, size_t nLines, int64_t lAtLeastTo);

  std::vector<SampleLine> lines_;
  std::vector<LineMark> marks_;  ///< Of all lines
  std::u32string all_;           ///< All texts
  std::vector<LineMark> scratch_;
  bool bWhole_ = true;
  bool bComma_ = false;
  size_t nFirstPart_ = 0;    ///< Lines of it, the blank one behind it included; 0: there is no second
  int64_t lSecondPart_ = 0;  ///< Its first line in the report
};

/// A row of a report as characters, its tabs expanded, no blanks at its end.
void TakePlaces(std::string_view sUtf8, int32_t lTabSize, std::u32string& sText);
/// The row with its tabs turned into blanks up to true stops.
std::string TabsExpanded(std::string_view sUtf8, int32_t lTabSize);
std::string Utf8Of(std::u32string_view sText);

}  // namespace quillon
