#pragma once

#include <string>
#include <vector>

#include "clsTidyPartReader.h"
#include "clsTidyReport.h"

namespace quillon {

/// Types one cell. sScratch backs the plain form where it isn't what is printed.
TidyCell TypeTidyCell(std::string_view sPrinted, const TidyTyping& typing, const std::vector<std::string>& blanks,
                      std::string& sScratch);

/// The values that stand outside of the rows, as they are while a report is read.
class clsTidyHeadings {
 public:
  explicit clsTidyHeadings(const std::vector<TidyPart>& parts);

  /// True if the line is a heading. Its values are only noted: what goes on with the old ones can still be ended.
  bool Reads(const clsTidyLine& line);
  /// The first heading whose value changes with the line read last; npos if none does.
  size_t FirstChange() const { return nFirstChange_; }
  /// Takes the values that were noted, in the order of the headings; behind a changed one all are empty but those of
  /// the same line.
  void Apply();

  const TidyCell& Cell(size_t nHeading, TidyColumn column) const { return headings_[nHeading].cells[column]; }
  const std::vector<bool>& Found() const { return found_; }
  size_t Count() const { return headings_.size(); }

  static constexpr size_t kNone = static_cast<size_t>(-1);

 private:
  struct Heading {
    explicit Heading(const TidyPart& part)
        : reader(part, true), texts(part.ColumnCount()), plains(texts.size()), cells(texts.size()) {}
    clsTidyPartReader reader;
    std::vector<std::string> texts, plains;
    std::vector<TidyCell> cells;
  };
  bool IsChange(const Heading& heading) const;
  static void Set(Heading& heading, const std::vector<std::string_view>& values);

  std::vector<Heading> headings_;
  std::vector<bool> found_;  ///< By heading: in the line read last
  size_t nFirstChange_ = kNone;
};

}  // namespace quillon
