#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsColumn.h"
#include "clsRow.h"
#include "clsRowSink.h"

namespace quillon {

/// The fields of a table's rows, in the order of its columns, as a sink takes them.
///
/// Where all columns are plain cuts, fields are views into the row's bytes; else each is taken by its column's own
/// operations. Both give the same fields.
class clsRowFields {
 public:
  /// The columns must have been checked: start 1 or more, end not below it. All outlive the object.
  clsRowFields(RecipeContext& context, std::span<clsColumn> columns, bool bQuick = true);

  /// Cuts the row in the context's line processor. False if a field could not be taken (EndWalk has noted it): Row then
  /// has those before it.
  bool Cut(clsRow& row);
  /// The fields of the row cut last, good until the next one or until the row changes.
  SinkRow Row() const { return {fields_, pPage_, bAscii_, bRoom_}; }
  /// Column numbers of the sheet, once a row was cut.
  std::span<const int32_t> SheetColumns() const { return sheetColumns_; }
  bool IsQuick() const { return bQuick_; }

 private:
  struct Place {
    size_t nFrom, nEnd;  ///< Characters, the end behind the last
  };
  struct Edges {
    size_t nFrom, nEnd;  ///< Indexes in edges_
  };

  void FindEdges();
  bool CutByColumns();
  void CutBytes(const clsRow& row);
  void CutCharacters(const clsRow& row);
  std::string_view WithBlankBehind(std::string_view sRow);

  RecipeContext& context_;
  std::span<clsColumn> columns_;
  bool bQuick_;
  std::vector<Place> cuts_;
  std::vector<size_t> edges_;  ///< Character positions at which the cuts begin or end, ascending
  std::vector<Edges> edgesOfCuts_;
  std::vector<size_t> offsets_;  ///< Of the edges in the row at hand
  std::vector<int32_t> sheetColumns_;
  std::vector<std::string_view> fields_;
  std::vector<std::string> taken_;  ///< Fields that are no views
  std::string sWithBlank_;          ///< The row and the blank thought behind it
  bool bWithBlank_ = false;         ///< That is the row at hand
  const clsCodePage* pPage_ = &clsCodePage::Utf8();
  bool bAscii_ = false;
  bool bRoom_ = false;
};

}  // namespace quillon
