// What is said of lines and columns by pointing at them, written into the recipe in the editor.

#include <algorithm>

#include "clsRecipeCut.h"
#include "clsRecipeLook.h"
#include "frmExportBuilder.h"
#include "frmMain.h"
#include "modCellKinds.h"
#include "modFiles.h"
#include "modTidyEdits.h"
#include "modTidyKeys.h"
#include "modTranslator.h"

namespace quillon {

bool clsRecipeCut::IsTidy() const {
  return IsTidyTable(SectionsOfText(Text()), Table());
}

PreviewRequest clsRecipeCut::Report() {
  return form_.Owner().Report();
}

bool clsRecipeCut::Prove(ReportProof& proof) {
  return form_.Owner().Prove(Report(), Text(), proof);
}

bool clsRecipeCut::CanTeach() {
  const std::string sInput = Report().sInput;
  return !sInput.empty() && IsFile(sInput);
}

/// Reads the table at the caret, or adds one where there is none, lets it be changed and writes the difference.
bool clsRecipeCut::EditTable(std::string& sFault, const std::function<bool(TidyTable& table)>& edit) {
  const int32_t lTable = Table();
  std::string sText = Text();
  std::vector<TextEdit> edits;
  if (!PlaceOfTable(sText, lTable)) {
    edits.push_back(AddedTable(sText, lTable));
    sText = edits.back().Applied(sText);
    ++form_.TableCounter;
  }
  TidyTable before;
  TidyFault fault;
  if (!ReadTidyTable(SectionsOfText(sText), lTable, before, fault)) {
    sFault = fault.sText;
    return false;
  }
  TidyTable after = before;
  if (!edit(after)) return false;
  for (TextEdit& change : TidyEdits(sText, before, after)) edits.push_back(std::move(change));
  form_.EditText(edits);
  return true;
}

bool clsRecipeCut::Teach(Lesson lesson, const PointedLine& line, std::string& sFault) {
  if (lesson != Lesson::Starts && lesson != Lesson::Ends) {
    return EditTable(sFault, [&](TidyTable& table) { return TeachLine(lesson, line, table, sFault); });
  }
  if (!PlaceOfTable(Text(), Table())) {
    ++form_.TableCounter;
    form_.EditText({AddedTable(Text(), Table())});
  }
  return Bound(lesson == Lesson::Starts, line.lLine, sFault);
}

bool clsRecipeCut::TeachLine(Lesson lesson, const PointedLine& line, TidyTable& table, std::string& sFault) const {
  PreviewRequest request = Request();
  request.text.lMostBytes = 0;
  clsReportSample report;
  Failure failure;
  if (!report.Read(request.sInput, request.text, request.lTabSize, failure, line.lLine)) {
    sFault = failure.sText;
    return false;
  }
  clsTableTeacher teacher(report, table);
  using Method = bool (clsTableTeacher::*)(const PointedLine&, std::string&);
  const Method method = lesson == Lesson::Row        ? &clsTableTeacher::Row
                        : lesson == Lesson::Names    ? &clsTableTeacher::Names
                        : lesson == Lesson::Heading  ? &clsTableTeacher::Heading
                        : lesson == Lesson::LeaveOut ? &clsTableTeacher::LeaveOut
                                                     : &clsTableTeacher::Further;
  if (!(teacher.*method)(line, sFault)) return false;
  table = teacher.Table();
  return true;
}

/// The form that all dates of the column have, by the rows that are shown.
bool clsRecipeCut::DateForm(const PointedColumn& column, std::string& sForm) const {
  const PreviewRequest request = Request();
  const CutPicture picture = clsRecipeLook(request, Text()).Look();
  clsDateForms forms;
  for (size_t i = 0; i < picture.columns.size(); ++i) {
    const PointedColumn& shown = picture.columns[i];
    if (shown.part != column.part || shown.nPart != column.nPart || shown.column != column.column) continue;
    std::u32string sCell;
    for (const PreviewRow& row : picture.cells) {
      TakePlaces(row.cells[i], 0, sCell);
      forms.Add(sCell);
    }
  }
  sForm = forms.Form();
  return !sForm.empty();
}

bool clsRecipeCut::TeachColumn(const PointedColumn& column, const ColumnLesson& lesson, std::string& sFault) {
  return EditTable(sFault, [&](TidyTable& table) {
    if (column.column == kNoTidyColumn) return false;
    if (lesson.sName) NameColumn(table, column, *lesson.sName);
    if (lesson.bFill && column.part == ColumnSource::Row) FillColumn(table, column.column, *lesson.bFill);
    if (!lesson.type) return true;
    TidyTyping typing;
    typing.type = *lesson.type;
    if (typing.type == TidyType::Date && !DateForm(column, typing.sDateForm)) {
      sFault = Translate("The cells of this column aren't dates of one form.");
      return false;
    }
    TypeColumn(table, column, typing);
    return true;
  });
}

}  // namespace quillon
