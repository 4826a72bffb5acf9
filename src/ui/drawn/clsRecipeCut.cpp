#include "clsRecipeCut.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "clsRecipeLook.h"
#include "clsReportLines.h"
#include "frmExportBuilder.h"
#include "frmMain.h"
#include "modPaths.h"
#include "modRecipeText.h"
#include "modSectionFile.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modTableKeys.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

const TextFileOptions kUtf8{false, &clsCodePage::Utf8()};

std::string ParsingOf(std::string_view sRecipe, int32_t lTable) {
  clsSectionFile recipe;
  recipe.OpenMemory(sRecipe, kUtf8);
  return ReadKeyFromFileTrimmed(recipe, "Table " + std::to_string(lTable), "Parsing", {}, TrimMode::RightOnly);
}

/// The recipe with another Parsing value for one table.
std::string WithParsing(std::string_view sRecipe, int32_t lTable, std::string_view sParsing) {
  const auto edit = SetTableKey(sRecipe, lTable, "Parsing", sParsing);
  return edit ? edit->Applied(sRecipe) : std::string(sRecipe);
}

}  // namespace

std::string RulerOfFields(const std::vector<CutField>& fields, std::string_view sDrawn) {
  if (fields.empty()) return "-";
  std::u32string drawn;
  if (sDrawn.find('=') == std::string_view::npos) {
    for (size_t i = 0; i < sDrawn.size();) drawn += DecodeUtf8(sDrawn, i);
  }
  std::string sRuler;
  int32_t lDone = 0;
  const auto mark = [&](int32_t lAt) {
    const auto nAt = static_cast<size_t>(lAt) - 1;
    AppendUtf8(nAt < drawn.size() && drawn[nAt] != U' ' ? drawn[nAt] : U'-', sRuler);
  };
  for (const CutField& field : fields) {
    AppendRepeated(sRuler, " ", field.lStart - 1 - lDone);
    const bool bLast = &field == &fields.back();
    for (int32_t l = field.lStart; l < field.lEnd || (bLast && l == field.lEnd); ++l) mark(l);
    if (!bLast) sRuler += ' ';
    lDone = field.lEnd;
  }
  // This one character alone would be the word for the whole width.
  if (TrimBlanks(sRuler) == "-") sRuler.back() = 'X';
  return sRuler;
}

const std::string& clsRecipeCut::Text() const {
  return form_.Get("txtFileEditor").sText;
}

int32_t clsRecipeCut::Table() const {
  return TableAt(Text(), form_.nCaret);
}

PreviewRequest clsRecipeCut::Request() const {
  const frmMain& main = form_.Owner();
  PreviewRequest request = main.Report();
  request.text.lMostBytes = request.sInput == sSearchedInput_ ? lSearched_ : kSearched;
  request.lTable = Table();
  request.lRows = kLines;
  request.bFindEnd = true;
  return request;
}

CutPicture clsRecipeCut::Look(const CutProposal* pProposal) {
  const PreviewRequest request = Request();
  const std::string sRecipe =
      pProposal == nullptr ? Text() : WithParsing(Text(), request.lTable, RulerOfFields(pProposal->fields, {}));
  CutPicture picture = clsRecipeLook(request, sRecipe).Look();
  picture.bTrims = picture.bTidy || form_.Owner().bTrimFields;
  return picture;
}

void clsRecipeCut::Change(const CutChange& change) {
  if (!IsTidy()) return WriteRuler(change.fields);
  std::string sIgnored;
  EditTable(sIgnored, [&](TidyTable& table) {
    ChangeColumns(table, change);
    return true;
  });
}

void clsRecipeCut::Take(const CutProposal& proposal) {
  WriteRuler(proposal.fields);
}

void clsRecipeCut::WriteRuler(const std::vector<CutField>& fields) {
  const int32_t lTable = Table();
  const auto edit = SetTableKey(Text(), lTable, "Parsing", RulerOfFields(fields, ParsingOf(Text(), lTable)));
  if (edit) form_.EditText({*edit});
}

std::vector<CutProposal> clsRecipeCut::WorkOut(std::string& sFault) {
  std::vector<CutProposal> proposals;
  PreviewRequest request = Request();
  request.lRows = 1;
  const auto add = [&](std::string_view sWord, std::string sName) {
    clsSectionFile recipe;
    recipe.OpenMemory(WithParsing(Text(), request.lTable, sWord), kUtf8);
    const ReportPreview preview = PreviewByRecipe(request, recipe);
    std::vector<CutField> fields = FieldsOf(preview);
    if (fields.empty() && sFault.empty()) sFault = preview.sFault;
    const bool bKnown = !proposals.empty() && proposals.back().fields == fields;
    if (!fields.empty() && !bKnown) proposals.push_back({std::move(sName), std::move(fields)});
  };
  add("=", Translate("Worked out: blanks go to the text in front of them"));
  add("=R", Translate("Worked out: blanks go to the number behind them"));
  return proposals;
}

bool clsRecipeCut::CanBound() {
  return PlaceOfTable(Text(), Table()).has_value();
}

bool clsRecipeCut::Bound(bool bFirst, int64_t lLine, std::string& sFault) {
  constexpr int64_t kRows = 6;  // of a table whose other end isn't known
  const PreviewRequest request = Request();
  clsReportLines report;
  Failure failure;
  if (!report.Read(request.sInput, request.text, request.lTabSize, failure)) {
    sFault = failure.sText;
    return false;
  }
  clsSectionFile recipe;
  recipe.OpenMemory(Text(), kUtf8);
  const ReportPreview now = PreviewByRecipe(request, recipe);
  const auto lLines = static_cast<int64_t>(report.Lines().size());
  const int64_t lLast = now.lLastLine > lLine ? now.lLastLine : lLine + kRows;
  const int64_t lFirst = now.lFirstLine > 0 && now.lFirstLine < lLine ? now.lFirstLine : lLine - kRows;
  const auto index = [&](int64_t l) { return static_cast<size_t>(std::clamp<int64_t>(l, 1, lLines) - 1); };
  std::optional<TableKey> key;
  if (lLine >= 1 && lLine <= lLines) {
    key = bFirst ? FindStartKey(report, index(lLine), index(lLast), 0)
                 : FindEndKey(report, index(lFirst), index(lLine), report.Lines().size());
  }
  if (lLine > lLines && !report.IsWhole()) {
    sFault = Translate("This line is too far down: key texts are looked for in the first megabytes of a report.");
    return false;
  }
  if (!key) {
    sFault = Translate("No text near this line stands in the report for the first time.");
    return false;
  }
  const std::string sKey = bFirst ? "ReadStartLine" : "ReadEndLine";
  const std::string sOffset = std::to_string(lLine - static_cast<int64_t>(key->nLine) - 1);
  std::vector<TextEdit> edits;
  std::string sText = Text();
  for (const auto& [sName, sValue] : {std::pair{sKey, key->sText}, std::pair{sKey + "Offset", sOffset}}) {
    const auto edit = SetTableKey(sText, request.lTable, sName, sValue);
    if (!edit) return false;
    sText = edit->Applied(sText);
    edits.push_back(*edit);
  }
  form_.EditText(edits);
  return true;
}

void clsRecipeCut::Choose(int32_t lNumber) {
  if (const auto nPlace = PlaceOfTable(Text(), lNumber)) form_.MoveCaret(*nPlace);
}

void clsRecipeCut::LookFurther() {
  constexpr int64_t kStep = 8;
  const PreviewRequest request = Request();
  lSearched_ = request.text.lMostBytes * kStep;
  sSearchedInput_ = request.sInput;
}

}  // namespace quillon
