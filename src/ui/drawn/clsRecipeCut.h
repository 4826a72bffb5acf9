#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clsReportCut.h"
#include "clsSectionFile.h"

namespace quillon {

class frmExportBuilder;

/// The recipe as it stands in the recipe editor, over the input file of the main window. The table that can be changed
/// is the one that the caret is in; a change replaces the value of its Parsing line, in the editor's text.
class clsRecipeCut : public clsCutSource {
 public:
  static constexpr int64_t kLines = 1000;                 ///< Lines of a stretch, and rows of a table, that are shown
  static constexpr size_t kCharacters = 2000;             ///< Characters of a line that are shown
  static constexpr int64_t kSearched = int64_t{4} << 20;  ///< Bytes of a report that are searched for key texts
  static constexpr int64_t kBeginning = int64_t{128} << 10;  ///< The same for tables other than the current one
  static constexpr int32_t kNeighbours = 12;  ///< Other tables looked for on each side of the current one

  explicit clsRecipeCut(frmExportBuilder& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  void Change(const CutChange& change) override;
  void Take(const CutProposal& proposal) override;
  std::vector<CutProposal> WorkOut(std::string& sFault) override;
  bool CanBound() override;
  /// The key text nearest by that stands in the report for the first time, and the offset from it to the line.
  bool Bound(bool bFirst, int64_t lLine, std::string& sFault) override;
  void Choose(int32_t lNumber) override;
  void LookFurther() override;
  PreviewRequest Report() override;
  std::string TidyRecipe() override { return Text(); }
  bool Prove(ReportProof& proof) override;
  bool CanTeach() override;
  bool Teach(Lesson lesson, const PointedLine& line, std::string& sFault) override;
  bool TeachColumn(const PointedColumn& column, const ColumnLesson& lesson, std::string& sFault) override;

 private:
  const std::string& Text() const;
  int32_t Table() const;
  PreviewRequest Request() const;
  void WriteRuler(const std::vector<CutField>& fields);
  bool IsTidy() const;
  bool EditTable(std::string& sFault, const std::function<bool(TidyTable& table)>& edit);
  bool TeachLine(Lesson lesson, const PointedLine& line, TidyTable& table, std::string& sFault) const;
  bool DateForm(const PointedColumn& column, std::string& sForm) const;

  frmExportBuilder& form_;
  int64_t lSearched_ = kSearched;
  std::string sSearchedInput_;  ///< The report that lSearched_ was raised for
};

/// The ruler that cuts these fields, in the form that the Table Builder writes: marks, and a blank that closes each
/// field but the last. Marks of sDrawn stay where they were, so that a hand's own letters live on. No fields give "-",
/// one field as wide as the table.
std::string RulerOfFields(const std::vector<CutField>& fields, std::string_view sDrawn);

}  // namespace quillon
