#pragma once
// A report with its cut drawn over it, without a screen: what is shown, and what a hand may do to it.
//
// The model knows no rule of any cut. A clsCutSource says what is to be seen and takes the changes; there is one for
// recipes (clsRecipeCut), and a profile's rows can be one as well. A view (qt/clsReportCutView) shows Picture() and
// forwards what the hand does. Columns are characters from 1, lines are those of the report from 1.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "modCutFields.h"
#include "modReportPreview.h"

namespace quillon {

/// What a line is for the tables of a recipe that tells its lines apart.
enum class CutKind : uint8_t { Untold, Row, Further, Heading, Total, Dropped, LeftOut, Outside };

/// One line of the report as it is drawn.
struct CutLine {
  int64_t lLine = 0;       ///< Lines of a picture ascend; those left out between two are shown by a break
  std::string sText = {};  ///< UTF-8, tabs expanded
  /// As LossMarks gives them: "!" over what no field takes, "^" over the last character before a cut.
  std::string sMarks = {};
  int nTable = -1;  ///< Of CutPicture::tables; -1: in none
  CutKind kind = CutKind::Untold;
  int32_t lKeyAt = 0;  ///< Where a key text begins in it; 0: holds none
  int32_t lKeyLength = 0;
};

struct CutTable {
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
  std::vector<CutTable> tables;
  int nCurrent = -1;  ///< The table that can be changed; -1: none
  int nShown = -1;    ///< The table that stands out where none can be changed; -1: none
  CutRules rules;
  std::vector<std::string> titles;  ///< Column letters of the cells, in the order of the output
  std::vector<PreviewRow> cells;    ///< Rows of the current table; their texts are dropped
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
  /// Makes another table (its number) the current one.
  virtual void Choose(int32_t /*lNumber*/) {}
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

  bool OnlyShows() const { return source_.OnlyShows(); }
  bool CanWorkOut() const { return picture_.nCurrent >= 0; }
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
  bool Do(const std::optional<CutChange>& change);
  void Note(std::string_view sFault);

  clsCutSource& source_;
  CutPicture picture_;
  std::vector<CutBoundary> boundaries_;
  std::vector<CutProposal> proposals_;
  int nProposal_ = -1;
  int nSelected_ = -1;
};

}  // namespace quillon
