#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "modProofModel.h"

namespace quillon {

/// Follows the page numbers that a report prints ("PAGE 3", "Seite: 3", "Page No. 3 of 7") and tells where a page
/// doesn't follow the one before. The number that is printed again is the same page, and 1 begins anew.
///
/// Nothing is told of numbers that don't count pages: most must follow each other, or be all pages from first to last
/// in another order. Memory doesn't grow with the report.
class clsPageNumbers {
 public:
  /// A line that is no row.
  void Line(int64_t lLine, std::string_view sLine);
  PageOrder Order() const;

 private:
  struct Page {
    int64_t lNumber = -1;
    size_t nPlace = 0;  ///< Of the word in front of it
  };
  static Page PageOf(std::string_view sLine);
  bool AreAllPages() const;

  Page last_;
  int64_t lPages_ = 0, lFirst_ = 0, lLeast_ = 0, lMost_ = 0;
  uint64_t nSum_ = 0, nSquares_ = 0;  ///< Tell, with the least and the most, whether each is there once
  int64_t lFollow_ = 0;               ///< Pages that follow the one before, or begin anew
  PageOrder out_;                     ///< Those that don't
  PageOrder anew_;                    ///< The first that begins anew
};

}  // namespace quillon
