#include "modRecipeMessages.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "modReport.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

struct RecipeMessage {
  RecipeCode code;
  EntryType type;
  bool bShowMessageBox;
  /// Pieces between "|": "%1" is a value, a piece with a letter a phrase, anything else stands as it is.
  std::string_view sPieces;
};

constexpr EntryType kError = EntryType::Error;
constexpr EntryType kWarning = EntryType::Warning;

// Ascending by size of the code.
constexpr std::array kMessages = std::to_array<RecipeMessage>({
    {kReadColumnStart, kError, true, "Invalid Read Column start position!"},
    {kReadColumnEnd, kError, true, "Invalid Read Column end position!"},
    {kWriteColumn, kError, true, "Error in| [|%1|] : |Write Column must be (A-Z)!"},
    {kPeriodOperator, kError, true, "Invalid Multi-file operator!"},
    {kUnknownOperator, kWarning, true, "Unrecognized operator|: [|%1|]"},
    {kLeadingEqualSign, kWarning, true, "Source Data field begins with Equal Sign! This may not be accepted by Excel!"},
    {kCellsFailed, kWarning, false, "Excel: |Warning|: [|%1|] |%2"},
    {kConTableNumber, kError, true, "Error in section| [|%1|] : |Table number must be > 0!"},
    {kConNoSuchTable, kError, true, "Error in section| [|%1|] : |Table number| [|%2|] |does not exist!"},
    {kConAccountsColumn, kError, true, "Error in section| [|%1|] : |Accounts Column Number must be > 0!"},
    {kConTableGone, kError, true, "Cannot consolidate table| [|%1|]. |Table does not exist!"},
    {kConTooFewColumns, kError, true, "Error in Consolidate: Table| [|%1|] |does not have| [|%2|] |columns!"},
    {kConNoNumber, kError, true, "Unexpected non-numeric field!| (|Sheet:| 2, |Row:| |%1|)"},
    {kConNoDepartments, kError, true, "No Departments to consolidate in clsCon!"},
    {kDepartmentNoStartText, kError, true, "Error in| [|%1|] : |Missing ReadStartLine text!"},
    {kDepartmentNoEndText, kError, true, "Error in| [|%1|] : |Missing ReadEndLine text!"},
    {kDepartmentStartNotFound, kError, true, "Error in Department specs: Cannot find ReadStartLine|: |%1"},
    {kDepartmentEndNotFound, kError, true, "Error in Department specs: Cannot find ReadEndLine|: |%1"},
    {kDepartmentEndInFront, kError, true,
     "Error in Table specs: ReadEndLine key text| [|%1|] |was found before ReadStartLine key text| [|%2|]"},
    {kNoShortRecipe, kWarning, true, "Short format recipe file does not exist!"},
    {kTemplateNotFound, kError, true, "Table| |%1| |not found!"},
    {kNoTemplateRuler, kError, true, "Table| |%1| |not found!"},
    {kMarksUnreadable, kError, false, "Error|: [|%1|] |%2"},
    {kNextRowSheet, kError, true, "Invalid sheet number specified!"},
    {kSetRowSheet, kError, true, "Invalid sheet number specified!"},
    {kNoSuchSpec, kError, true, "Invalid item specfied!"},
    {kSectionCount, kError, true, "Invalid Section Count!"},
    {kSectionType, kError, true, "Invalid Section type specified!"},
    {kSeparator, kError, true, "The separator is no character code from 1 to 255|: |%1"},
    {kPeriodRow, kError, true, "Invalid Row number!| [|%1|]"},
    {kNoPeriodFile, kError, true, "Text File| [|%1|] |does not exist!"},
    {kPeriodNoOperator, kWarning, true, "Invalid operator found!"},
    {kPeriodLine, kError, true, "Invalid line number found!| [|%1|]"},
    {kShortRecipeUnreadable, kError, true, "Cannot find recipe file|: |%1"},
    {kNoRecipeFile, kError, true, "Cannot find recipe file|: |%1"},
    {kRecipeUnreadable, kError, true, "Cannot find recipe file|: |%1"},
    {kRecipeHeader, kError, true, "Invalid header in recipe file|: |%1"},
    {kNoSpecsFile, kError, true, "Cannot find Export Specs file|: |%1"},
    {kTableStartLine, kError, true, "Error in| [|%1|] : |Invalid ReadStartLine!"},
    {kTableEndLine, kError, true, "Error in| [|%1|] : |Invalid ReadEndLine!"},
    {kTableColumns, kError, true, "Error in| [|%1|] : |Number of Columns must be > 0!"},
    {kTableStartNotFound, kError, true, "Error in Table specs: Cannot find ReadStartLine|: |%1"},
    {kTableEndNotFound, kError, true, "Error in Table specs: Cannot find ReadEndLine|: |%1"},
    {kTableEndInFront, kError, true,
     "Error in Table specs: ReadEndLine key text [|%1|]| |was found before ReadStartLine key text [|%2|]"},
    {kTableColumnPlace, kError, true,
     "Invalid table specs (column |%1|): |ReadColumnStart is smaller than 1 or larger than ReadColumnEnd!"},
    {kTemplateAnalyzer, kError, true, "Unexpected error in template analyzer!"},
    {kTemplateRows, kError, true, "A table must have no more than 9999 rows!"},
    {kTitleSheet, kError, true, "Error in| |%1| : |Write sheet number must be > 0!"},
    {kTitleColumn, kError, true, "Error in| |%1| : |Write Column must be (A-Z)!"},
    {kTitleLines, kError, true, "Error in| |%1| : |Number of lines must be > 0!"},
    {kSheetRowColumn, kWarning, true, "Incorrect SheetRowColumn code!"},
});

const RecipeMessage& MessageOf(RecipeCode code) {
  const auto* const found = std::find_if(kMessages.begin(), kMessages.end(),
                                         [code](const RecipeMessage& message) { return message.code == code; });
  assert(found != kMessages.end());
  return *found;
}

bool HasLetter(std::string_view s) {
  return std::any_of(s.begin(), s.end(), IsAsciiLetter);
}

std::string BuildText(std::string_view sPieces, std::initializer_list<std::string_view> values) {
  std::string sOut;
  while (!sPieces.empty()) {
    const size_t nBar = std::min(sPieces.find('|'), sPieces.size());
    const std::string_view sPiece = sPieces.substr(0, nBar);
    sPieces.remove_prefix(std::min(nBar + 1, sPieces.size()));
    if (sPiece.starts_with('%')) {
      const auto nValue = static_cast<size_t>(sPiece[1] - '1');
      assert(nValue < values.size());
      sOut += values.begin()[nValue];
    } else if (HasLetter(sPiece)) {
      sOut += Translate(sPiece);
    } else {
      sOut += sPiece;
    }
  }
  return sOut;
}

}  // namespace

ReportEntry RecipeEntry(RecipeCode code, std::initializer_list<std::string_view> values) {
  const RecipeMessage& message = MessageOf(code);
  return {code,         CodeLine(message.type, code), BuildText(message.sPieces, values), {},
          message.type, message.bShowMessageBox};
}

void ReportRecipe(clsHost& host, RecipeCode code, std::initializer_list<std::string_view> values, bool bShowMessageBox,
                  std::string sThirdLine) {
  ReportEntry entry = RecipeEntry(code, values);
  entry.bShowMessageBox = entry.bShowMessageBox && bShowMessageBox;
  entry.sErr3 = std::move(sThirdLine);
  host.Report(entry);
}

void ReportTrappedFailure(clsHost& host, int32_t lNumber, std::string_view sDescription) {
  ReportCode(host, kError, lNumber, BuildText("Error|: [|%1|] |%2", {std::to_string(lNumber), sDescription}), false);
}

}  // namespace quillon
