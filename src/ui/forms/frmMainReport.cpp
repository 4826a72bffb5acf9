// What the main form tells of the report before it is converted: its code page, and the options in force.

#include <algorithm>
#include <array>

#include "clsCodePageScope.h"
#include "clsEbcdicPage.h"
#include "clsLineReader.h"
#include "frmMain.h"
#include "modCharacterList.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modPdfText.h"
#include "modReportPage.h"
#include "modReportText.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modSystemIo.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int64_t kLookedAt = int64_t{4} << 20;  ///< Bytes of a report by which its page is shown
constexpr int64_t kHeadBytes = 64;               ///< Enough to tell a PDF
constexpr std::array<std::string_view, 12> kPages{"UTF-8",        "windows-1252", "cp437",        "cp850",
                                                  "ISO-8859-1",   "ISO-8859-15",  "ISO-8859-2",   "windows-1250",
                                                  "windows-1251", "KOI8-R",       "windows-1253", "cp852"};

constexpr std::string_view kStartColRow = "A1";
constexpr int32_t kTabSize = 8, kComma = 44, kQuoteSometimes = 1;

/// How the beginning of a report is read by the choices in force.
struct HowRead {
  std::string sPage;   ///< "" if it can't be read, and where its text is made in UTF-8, whatever it was in
  std::string sNotes;  ///< Records, carriage control, codes of printers: what was found beyond a page
};

HowRead LookAt(const std::string& sPath, bool bUnix) {
  HowRead how;
  if (!IsFile(sPath)) return how;
  clsLineReader reader;
  Failure ignored;
  // The first page of a PDF can't be had without all of them, which takes longer than typing a name may.
  std::string_view sRow;
  if (reader.Open(sPath, {.lMostBytes = kHeadBytes}, ignored) && reader.ReadRow(sRow) && IsPdf(sRow))
    return {"PDF", ""};
  if (!reader.Open(sPath, {.bUnix = bUnix, .pCodePage = nullptr, .lMostBytes = kLookedAt, .bReport = true}, ignored)) {
    return how;
  }
  for (const std::string& sNote : ReportNotes(sPath)) how.sNotes += (how.sNotes.empty() ? "" : "; ") + sNote;
  ReportText text;
  if (!how.sNotes.empty() && OpenReportText(sPath, kLookedAt, text, ignored)) CloseHandle(text.nHandle);
  if (!text.bUtf8) how.sPage = reader.CodePage().Name();
  return how;
}

std::string Joined(const std::string& sFirst, std::string_view sBetween, const std::string& sSecond) {
  return sSecond.empty() ? sFirst : sFirst + std::string(sBetween) + sSecond;
}

}  // namespace

const clsCodePage* frmMain::ReportPage() const {
  const std::string sName = NameOfPage();
  // A report in EBCDIC is made into text by its own page.
  if (sName.empty() || clsEbcdicPage::Find(sName) != nullptr) return SystemCodePage();
  return CodePageNamed(sName);
}

std::string frmMain::NameOfPage() const {
  const bool bRecipe = sCodePage.empty() && Get("rbConversionMethod", kMethodRecipe).bChecked;
  return bRecipe ? PageOfRecipe(ExpandedPath(Get("cbRecipeFile").sText)) : sCodePage;
}

void frmMain::ShowCodePage() {
  const std::string sPath = ExpandedPath(Get("cbInputFile").sText);
  // Text that the options already say is UTF-16 is left to them.
  ReportInput().bFindKinds = !bIsUnicode;
  const HowRead how = HasWildcards(sPath) ? HowRead() : LookAt(Report().sInput, bUnix);
  const std::string sByContent = Joined(Translate("By content"), ": ", how.sPage);
  clsControl& combo = Get("cbCodePage");
  pages_.clear();
  combo.items.clear();
  const auto add = [&](std::string_view sPage, std::string sShown) {
    pages_.emplace_back(sPage);
    combo.items.push_back(std::move(sShown));
  };
  const clsCodePage* const pSystem = SystemCodePage();
  const std::string sOfRecipe = sCodePage.empty() ? NameOfPage() : std::string();
  if (!sOfRecipe.empty()) add("", Translate("Recipe") + ": " + sOfRecipe);
  if (pSystem != nullptr && sOfRecipe.empty()) add("", Translate("Settings") + ": " + pSystem->Name());
  const bool bByDefault = pSystem == nullptr && sOfRecipe.empty();
  add(bByDefault ? "" : kFoundByContent, sByContent);
  for (const std::string_view sPage : kPages) add(sPage, std::string(sPage));
  const bool bByContent = bByDefault && EqualNoCase(sCodePage, kFoundByContent);
  const auto found = std::find_if(pages_.begin(), pages_.end(), [&](const std::string& sPage) {
    return EqualNoCase(sPage, bByContent ? std::string_view() : std::string_view(sCodePage));
  });
  combo.lListIndex = static_cast<int>(found - pages_.begin());
  if (found == pages_.end()) add(sCodePage, sCodePage);
  std::string& sShown = combo.items[static_cast<size_t>(combo.lListIndex)];
  sShown = Joined(sShown, ": ", how.sNotes);
  combo.sText = combo.sToolTip = sShown;
}

void frmMain::cbCodePage_Click() {
  sCodePage = pages_[static_cast<size_t>(Get("cbCodePage").lListIndex)];
  JobChanged();
}

// Whether the output is cleared first isn't told: each of its values is the default of some road.
std::string frmMain::OptionsInForce() const {
  std::string sAll;
  const auto tell = [&](bool bDefault, const std::string& sText) {
    if (!bDefault) sAll += (sAll.empty() ? "" : ";  ") + sText;
  };
  const auto characters = FillInCharacterSelectionListBox();
  const bool bKnown = lDelimitationCharacter > 0 && static_cast<size_t>(lDelimitationCharacter) < characters.size();
  const std::string sSeparator =
      bKnown ? characters[static_cast<size_t>(lDelimitationCharacter)] : std::to_string(lDelimitationCharacter);
  tell(EqualNoCase(sStartColRow, kStartColRow), Translate("Start cell") + " " + sStartColRow);
  tell(lTabSize == kTabSize, Translate("Tab Size:") + " " + std::to_string(lTabSize));
  tell(!bUnix, Translate("Support Unix style text files"));
  tell(!bTrimFields, Translate("Drop the blanks around fields"));
  tell(!bIsUnicode, Translate("Input File Format") + ": UNICODE");
  tell(!bTreatDataAsText, Translate("Values as text"));
  tell(lDelimitationCharacter == kComma, Translate("Separator") + " " + sSeparator);
  tell(lUseDoubleQuotes == kQuoteSometimes,
       Translate("Use Double Quotes") + ": " + Translate(lUseDoubleQuotes == 2 ? "Always" : "Never"));
  tell(Trims(), Translate("Pad characters are kept"));
  return sAll;
}

void frmMain::ShowOptionsInForce() {
  const std::string sOptions = OptionsInForce();
  Get("lblOptionsInForce").sCaption = Translate("Options in force:") + " " + sOptions;
  for (const char* const pName : {"lblOptionsInForce", "cmdChangeOptions", "cmdClearOptions"}) {
    Get(pName).bVisible = !sOptions.empty();
  }
}

void frmMain::cmdClearOptions_Click() {
  sStartColRow = kStartColRow;
  lTabSize = kTabSize;
  bUnix = bTrimFields = bIsUnicode = bTreatDataAsText = false;
  sSheetTarget = "1";
  lDelimitationCharacter = kComma;
  lUseDoubleQuotes = kQuoteSometimes;
  SetTrims(true);
  JobChanged();
  UpdateFileControls();
  Focus("cbInputFile");
}

}  // namespace quillon
