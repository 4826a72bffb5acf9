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
  int32_t lErr;
  EntryType type;
  bool bShowMessageBox;
  /// Pieces between "|": "%1" is a value, a piece with a letter a phrase, anything else stands as it is.
  std::string_view sPieces;
};

constexpr EntryType kError = EntryType::Error;
constexpr EntryType kWarning = EntryType::Warning;

// Ascending by size of the code.
constexpr std::array kMessages = std::to_array<RecipeMessage>({
    {-5000, kError, true, "Invalid Read Column start position!"},
    {-5001, kError, true, "Invalid Read Column end position!"},
    {-5002, kError, true, "Error in| [|%1|] : |Write Column must be (A-Z)!"},
    {-5003, kError, true, "Invalid Multi-file operator!"},
    {-5004, kWarning, true, "Unrecognized operator|: [|%1|]"},
    {-5005, kWarning, true, "Source Data field begins with Equal Sign! This may not be accepted by Excel!"},
    {-5006, kWarning, false, "Excel: |Warning|: [|%1|] |%2"},
    {-5101, kError, true, "Error in section| [|%1|] : |Table number must be > 0!"},
    {-5102, kError, true, "Error in section| [|%1|] : |Table number| [|%2|] |does not exist!"},
    {-5103, kError, true, "Error in section| [|%1|] : |Accounts Column Number must be > 0!"},
    {-5104, kError, true, "Cannot consolidate table| [|%1|]. |Table does not exist!"},
    {-5105, kError, true, "Error in Consolidate: Table| [|%1|] |does not have| [|%2|] |columns!"},
    {-5106, kError, true, "Unexpected non-numeric field!| (|Sheet:| 2, |Row:| |%1|)"},
    {-5107, kError, true, "No Departments to consolidate in clsCon!"},
    {-5200, kError, true, "Error in| [|%1|] : |Missing ReadStartLine text!"},
    {-5201, kError, true, "Error in| [|%1|] : |Missing ReadEndLine text!"},
    {-5202, kError, true, "Error in Department specs: Cannot find ReadStartLine|: |%1"},
    {-5203, kError, true, "Error in Department specs: Cannot find ReadEndLine|: |%1"},
    {-5204, kError, true,
     "Error in Table specs: ReadEndLine key text| [|%1|] |was found before ReadStartLine key text| [|%2|]"},
    {-5300, kWarning, true, "Short format recipe file does not exist!"},
    {-5301, kError, true, "Table| |%1| |not found!"},
    {-5302, kError, true, "Table| |%1| |not found!"},
    {-5303, kError, false, "Error|: [|%1|] |%2"},
    {-5304, kError, true, "Invalid sheet number specified!"},
    {-5305, kError, true, "Invalid sheet number specified!"},
    {-5306, kError, true, "Invalid item specfied!"},
    {-5307, kError, true, "Invalid Section Count!"},
    {-5308, kError, true, "Invalid Section type specified!"},
    {-5309, kError, true, "The separator is no character code from 1 to 255|: |%1"},
    {-5400, kError, true, "Invalid Row number!| [|%1|]"},
    {-5401, kError, true, "Text File| [|%1|] |does not exist!"},
    {-5402, kWarning, true, "Invalid operator found!"},
    {-5403, kError, true, "Invalid line number found!| [|%1|]"},
    {-5500, kError, true, "Cannot find recipe file|: |%1"},
    {-5501, kError, true, "Cannot find recipe file|: |%1"},
    {-5502, kError, true, "Cannot find recipe file|: |%1"},
    {-5503, kError, true, "Invalid header in recipe file|: |%1"},
    {-5504, kError, true, "Cannot find Export Specs file|: |%1"},
    {-5601, kError, true, "Error in| [|%1|] : |Invalid ReadStartLine!"},
    {-5602, kError, true, "Error in| [|%1|] : |Invalid ReadEndLine!"},
    {-5603, kError, true, "Error in| [|%1|] : |Number of Columns must be > 0!"},
    {-5604, kError, true, "Error in Table specs: Cannot find ReadStartLine|: |%1"},
    {-5605, kError, true, "Error in Table specs: Cannot find ReadEndLine|: |%1"},
    {-5606, kError, true,
     "Error in Table specs: ReadEndLine key text [|%1|]| |was found before ReadStartLine key text [|%2|]"},
    {-5607, kError, true,
     "Invalid table specs (column |%1|): |ReadColumnStart is smaller than 1 or larger than ReadColumnEnd!"},
    {-5700, kError, true, "Unexpected error in template analyzer!"},
    {-5701, kError, true, "A table must have no more than 9999 rows!"},
    {-5801, kError, true, "Error in| |%1| : |Write sheet number must be > 0!"},
    {-5802, kError, true, "Error in| |%1| : |Write Column must be (A-Z)!"},
    {-5803, kError, true, "Error in| |%1| : |Number of lines must be > 0!"},
    {-5804, kWarning, true, "Incorrect SheetRowColumn code!"},
    {-5900, kError, true, "Invalid Index in CollectionItemSet!"},
});

const RecipeMessage& MessageOf(int32_t lErr) {
  const auto* const found = std::find_if(kMessages.begin(), kMessages.end(),
                                         [lErr](const RecipeMessage& message) { return message.lErr == lErr; });
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

ReportEntry RecipeEntry(int32_t lErr, std::initializer_list<std::string_view> values) {
  const RecipeMessage& message = MessageOf(lErr);
  return {lErr,         CodeLine(message.type, lErr), BuildText(message.sPieces, values), {},
          message.type, message.bShowMessageBox};
}

void ReportRecipe(clsHost& host, int32_t lErr, std::initializer_list<std::string_view> values, bool bShowMessageBox,
                  std::string sThirdLine) {
  ReportEntry entry = RecipeEntry(lErr, values);
  entry.bShowMessageBox = entry.bShowMessageBox && bShowMessageBox;
  entry.sErr3 = std::move(sThirdLine);
  host.Report(entry);
}

void ReportTrappedFailure(clsHost& host, int32_t lNumber, std::string_view sDescription) {
  ReportCode(host, kError, lNumber, BuildText("Error|: [|%1|] |%2", {std::to_string(lNumber), sDescription}), false);
}

}  // namespace quillon
