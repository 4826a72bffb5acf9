#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "clsColumn.h"
#include "clsOutputFile.h"
#include "clsRow.h"

namespace quillon {

/// Writes the rows of a table to a CSV report: the fields in column order, joined by the separator, ended by CR LF. A
/// field is joined without a separator as long as the row's text is empty; with bTrimFields the fields count as they
/// were before the trimming, so that no field moves.
///
/// WritePlain does it by the columns' own operations and the row in the line processor. Write takes the same row, and
/// gives the same bytes straight from those of the row where the table's fields are plain cuts.
class clsCsvRows {
 public:
  /// The columns must have been checked: start 1 or more, end not below it. All outlive the object.
  clsCsvRows(RecipeContext& context, std::vector<clsColumn>& columns, int32_t lDelimitationChar,
             const clsCodePage& pageOfReport, clsOutputFile& file);

  /// False if the separator is none: outside 1 to 255.
  bool HasSeparator() const { return !sSeparator_.empty(); }
  /// The row in the faster way that is open to it. False: see EndWalk.
  bool Write(clsRow& row);
  bool WritePlain();
  /// True if the columns are plain cuts, so that rows in the output's own bytes go the fast way.
  bool IsFast() const { return bFast_; }

 private:
  struct Cut {
    size_t nFrom, nEnd;  ///< Bytes, the end behind the last
  };
  void FindEdges();
  bool MayBeFast(const std::vector<clsColumn>& columns) const;
  char* PutBytes(char* p, const clsRow& row);
  char* PutCharacters(char* p, const clsRow& row);
  char* PutSeparator(char* p) const {
    std::memcpy(p, separator_.data(), separator_.size());  // of a fixed size; the next field writes over the surplus
    return p + sSeparator_.size();
  }
  char* PutField(char* p, std::string_view sField, bool bBlankBehind, size_t nReadable);
  char* PutQuoted(char* p, std::string_view sField);

  RecipeContext& context_;
  std::vector<clsColumn>& columns_;
  clsOutputFile& file_;
  const clsCodePage& pageOfOutput_;
  std::string sSeparator_;  ///< In the bytes of the output
  std::string sSeparatorUtf8_;
  std::array<char, 4> separator_{};  ///< sSeparator_ again, for copying at one go
  std::vector<Cut> cuts_;
  std::vector<size_t> edges_;  ///< Character positions at which the cuts begin or end, ascending
  struct Edges {
    size_t nFrom, nEnd;  ///< Indexes in edges_
  };
  std::vector<Edges> edgesOfCuts_;
  std::vector<size_t> offsets_;  ///< Of the edges in the row at hand
  size_t nFixedBytes_ = 0;       ///< Most that a row takes, but for its wide cuts
  size_t nWideCuts_ = 0;         ///< Cuts whose room goes by the row
  bool bFast_ = false;
  std::string sField_, sRow_, sBytes_;  ///< Kept for their memory
};

}  // namespace quillon
