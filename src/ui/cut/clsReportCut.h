#pragma once
// A report with its cut drawn over it, without a screen: what is shown, and what a hand may do to it.
//
// The model knows no rule of any cut. A clsCutSource says what is to be seen and takes the changes; there is one for
// recipes (clsRecipeCut), and a profile's rows can be one as well. A view (qt/clsReportCutView) shows Picture() and
// forwards what the hand does. Columns are characters from 1, lines are those of the report from 1.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "clsReportPass.h"
#include "clsReportText.h"
#include "clsTableTeacher.h"
#include "modCutFields.h"
#include "modReportPreview.h"
#include "modTidyColumns.h"

namespace quillon {

/// What a line is for the tables of a recipe that tells its lines apart.
enum class CutKind : uint8_t { Untold, Row, Further, Heading, Total, Dropped, LeftOut, Outside };

/// What tidy tables make of a line, for the drawing.
CutKind CutKindOf(TidyLineKind kind);

/// One line of the report as it is drawn.
struct CutLine {
  int64_t lLine = 0;       ///< Lines of a picture ascend; those left out between two are shown by a break
  std::string sText = {};  ///< UTF-8, tabs expanded
  /// As LossMarks gives them: "!" over what no field takes, "^" over the last character before a cut.
  std::string sMarks = {};
  int nTable = -1;  ///< Of CutPicture::tables; -1: in none
  CutKind kind = CutKind::Untold;
  bool bLikeRow = false;  ///< In no table, though it looks like a row; known once the report was read to its end
  int32_t lKeyAt = 0;     ///< Where a key text begins in it; 0: holds none
  int32_t lKeyLength = 0;
};

struct DrawnTable {
  int32_t lNumber = 1;
  std::vector<CutField> fields;
  std::vector<std::string> letters;  ///< Of each field's column of the output; "": left out of it
};

struct CutNote {
  std::string sText = {};  ///< Translated
  bool bWarning = false;   ///< Something is lost or not found
};

/// All that is drawn.
struct CutPicture {
  std::string sInput;          ///< Host path of the report
  std::string sFault;          ///< Why there are no lines; "" if there are
  std::vector<CutLine> lines;  ///< The report's beginning and what lies around the current table
  bool bMore = false;          ///< The report goes on behind the last line
  std::vector<DrawnTable> tables;
  int nCurrent = -1;  ///< The table that can be changed; -1: none
  int nShown = -1;    ///< The table that stands out where none can be changed; -1: none
  CutRules rules;
  std::vector<std::string> titles;     ///< Column letters of the cells, in the order of the output
  std::vector<bool> numbers;           ///< Of the titles: their cells stand at the right
  std::vector<PointedColumn> columns;  ///< Of the titles, where a hand may change them
  std::vector<CutKind> kinds;          ///< Of the lines from 1 on, shown or not, as far as they were told apart
  /// Lines of the table in front where nothing tells lines apart; 0: none.
  int64_t lTableFrom = 0, lTableTo = 0;
  bool bTrims = true;             ///< The output has the cells without the blanks around them
  bool bTidy = false;             ///< The current table tells its lines apart
  std::vector<PreviewRow> cells;  ///< Rows of the current table; their texts are dropped
  std::vector<CutNote> notes;
  bool bSearchedShort = false;  ///< A key text wasn't looked for to the end of the report: LookFurther may find it

  /// The table that stands out; -1: none.
  int InFront() const { return nCurrent >= 0 ? nCurrent : nShown; }
  /// Fields of the current table; none without one.
  const std::vector<CutField>& Fields() const;
};

/// A cut that was worked out and isn't taken yet.
struct CutProposal {
  std::string sName;  ///< Translated: how it was worked out
  std::vector<CutField> fields;
};

/// What a person says of a column; what isn't set stays as it is.
struct ColumnLesson {
  std::optional<std::string> sName;
  std::optional<TidyType> type;
  std::optional<bool> bFill;
};

/// Where a cut comes from and where its changes go.
class clsCutSource {
 public:
  virtual ~clsCutSource() = default;
  /// Looks at report and cut as they stand now; a proposal stands in for the current table's own fields. Reads no more
  /// than what is shown, whatever the size of the report.
  virtual CutPicture Look(const CutProposal* pProposal) = 0;
  /// Writes an edit of the current table's fields into the text that the cut comes from.
  virtual void Change(const CutChange& change) = 0;
  /// Writes a whole new cut.
  virtual void Take(const CutProposal& proposal) = 0;
  /// Cuts worked out from the report's own text, the best first. None: sFault says why.
  virtual std::vector<CutProposal> WorkOut(std::string& sFault) = 0;
  /// True if nothing of it can be changed by hand.
  virtual bool OnlyShows() const { return false; }
  /// True if the current table begins and ends where a hand says.
  virtual bool CanBound() { return false; }
  /// Makes a line the current table's first or last row. False with the reason if nothing in the report can tell it.
  virtual bool Bound(bool /*bFirst*/, int64_t /*lLine*/, std::string& /*sFault*/) { return false; }
  /// True if lines and columns can be pointed at.
  virtual bool CanTeach() { return false; }
  // Each writes what was said into the text that the cut comes from, or not, with the reason.
  virtual bool Teach(Lesson /*lesson*/, const PointedLine& /*line*/, std::string& /*sFault*/) { return false; }
  virtual bool TeachColumn(const PointedColumn& /*column*/, const ColumnLesson& /*lesson*/, std::string& /*sFault*/) {
    return false;
  }
  /// Makes another table (its number) the current one.
  virtual void Choose(int32_t /*lNumber*/) {}
  /// The report that is drawn; without a path there is none.
  virtual PreviewRequest Report() { return {}; }
  /// The recipe by whose tidy tables the whole report is read, UTF-8; "" if there is none.
  virtual std::string TidyRecipe() { return {}; }
  /// The proof of a report whose recipe has other tables than tidy ones; it may take long, and be stopped. False if
  /// there is none.
  virtual bool Prove(ReportProof& /*proof*/) { return false; }
  /// Lets the next Look search further for key texts.
  virtual void LookFurther() {}
};

/// The drawing. The source outlives it.
class clsReportCut {
 public:
  explicit clsReportCut(clsCutSource& source) : source_(source) {}

  /// Called after whatever changed the picture.
  std::function<void()> onChange;

  /// Looks again, after the text of the cut has changed. A report that can't be read any more leaves the lines that
  /// were shown, with a note. Ends a proposal.
  void Update();
  const CutPicture& Picture() const { return picture_; }

  // The whole report, also where the picture has no lines of it.
  /// Lines that are known to be there.
  int64_t Lines() const { return lLines_; }
  /// A line, read when it is asked for; null if it isn't there. Good until the next call.
  const CutLine* Line(int64_t lLine);
  /// The next line with the text behind a line, or in front of it; 0 if there is none.
  int64_t Find(std::string_view sText, int64_t lFrom, bool bForward) { return text_.Find(sText, lFrom, bForward); }
  /// The next line that loses something or is left out, as far as lines are told apart; 0 if there is none.
  int64_t NextLoss(int64_t lFrom, bool bForward) const;
  /// Counts lines and tells them apart for a moment. False once there is nothing left to do.
  bool WorkOn(int nMilliseconds);
  /// Another one for each proof.
  int ProofNumber() const { return nProof_; }
  /// What became of all lines, once that is known; else null.
  const ReportProof* Proof() const {
    if (askedProof_) return &*askedProof_;
    return pPass_ != nullptr && pPass_->IsDone() ? &pPass_->Proof() : nullptr;
  }
  /// True if only Prove makes the proof, as no reading of tidy tables does.
  bool MustAskForProof() const { return pPass_ == nullptr && bRecipe_ && !picture_.tables.empty(); }
  /// Reads the whole report for its proof, unless that was done or the user stops it.
  void Prove();

  /// Of the fields that are shown.
  const std::vector<CutBoundary>& Boundaries() const { return boundaries_; }
  /// The boundary behind a character; -1 if there is none.
  int BoundaryAt(int32_t lAfter) const;

  /// The boundary that keys work on; -1: none.
  int Selected() const { return nSelected_; }
  void Select(int nBoundary);
  /// The next one or the one before; from none, the first or last.
  void SelectNext(bool bForward);

  /// False while there is no table, or a proposal is shown.
  bool CanEdit() const { return picture_.nCurrent >= 0 && !HasProposal(); }
  // Each writes through the source, looks again and selects the boundary in hand. False if nothing was changed.
  bool Move(int nBoundary, int32_t lAfter, bool bApart = false);  ///< bApart: see MoveBoundary
  bool MoveSelected(int32_t lBy, bool bApart = false);
  bool Add(int32_t lAfter);
  /// In the middle of the field behind the selected boundary, or ten characters behind the last one.
  bool AddBehindSelected();
  bool Remove(int nBoundary);
  bool RemoveSelected() { return Remove(nSelected_); }

  bool CanBound() { return !HasProposal() && source_.CanBound(); }
  /// Makes a line the table's first or last row. What prevents it becomes a note.
  void Bound(bool bFirst, int64_t lLine);

  bool CanTeach() { return !HasProposal() && source_.CanTeach(); }
  // What was learned, and the rows that were lost by it, become notes; so does what prevents it.
  void Teach(Lesson lesson, const PointedLine& line);
  void TeachColumn(const PointedColumn& column, const ColumnLesson& lesson);

  bool OnlyShows() const { return source_.OnlyShows(); }
  bool CanWorkOut() const { return picture_.nCurrent >= 0 && !picture_.bTidy; }
  /// Shows the first worked-out cut; while one is shown, the next. What prevents it becomes a note.
  void WorkOut();
  bool HasProposal() const { return nProposal_ >= 0; }
  const CutProposal& Proposal() const { return proposals_[static_cast<size_t>(nProposal_)]; }
  void TakeProposal();
  void DropProposal();

  /// Makes the table that a line lies in the current one.
  void ChooseTableOf(int64_t lLine);
  bool CanLookFurther() const { return picture_.bSearchedShort; }
  void LookFurther();

 private:
  void Show(CutPicture picture);
  void ReadThrough();
  bool Do(const std::optional<CutChange>& change);
  void Note(std::string_view sFault);
  void Learn(const std::function<bool(std::string& sFault)>& take);
  void NoteLearned(const std::vector<CutKind>& before, const std::vector<CutKind>& now);
  std::vector<CutKind> KindsOfPass() const;

  void Tell(CutLine& line) const;
  void TellLikeRow(CutLine& line) const;
  void Proved();
  CutKind KindAt(int64_t lLine) const;

  clsCutSource& source_;
  CutPicture picture_;
  clsReportText text_;
  std::vector<CutLine> fetched_;  ///< Lines in a row that the picture doesn't have
  int64_t lLines_ = 0;
  std::unique_ptr<clsReportPass> pPass_;
  int nProof_ = 1;
  std::string sRead_;                                  ///< Report and recipe of pass and proof
  bool bRecipe_ = false;                               ///< There is one to read the report by
  std::optional<ReportProof> askedProof_;              ///< Made by Prove
  std::optional<std::vector<CutKind>> learnedBefore_;  ///< What a lesson changed, until the report was read by it
  std::unordered_set<std::string> likeRows_;           ///< Shapes of lines that look like rows and are in no table
  std::vector<CutBoundary> boundaries_;
  std::vector<CutProposal> proposals_;
  int nProposal_ = -1;
  int nSelected_ = -1;
};

}  // namespace quillon
