#include "modCutPicture.h"

#include <utility>

#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

bool IsOneInput(std::string_view sInput, CutPicture& picture) {
  if (!TrimBlanks(sInput).empty() && !HasWildcards(sInput)) return true;
  picture.sFault = Translate("Choose one input file in the main window to see how it is cut.");
  return false;
}

bool DrawStretches(ReportStretches stretches, CutPicture& picture) {
  picture.sFault = std::move(stretches.sFault);
  if (!picture.sFault.empty()) return false;
  picture.bMore = stretches.bMore;
  for (PreviewRow& row : stretches.rows) picture.lines.push_back({.lLine = row.lLine, .sText = std::move(row.sText)});
  if (picture.lines.empty()) picture.notes.push_back({Translate("The report is empty."), true});
  if (stretches.bBinary) {
    picture.notes.push_back({Translate("The report holds control characters that no printed text has."), true});
  }
  return true;
}

CutPicture OnlyShown(CutPicture picture) {
  picture.nShown = picture.InFront();
  picture.nCurrent = -1;
  return picture;
}

CutNote LossNote(const ReportPreview& preview) {
  const auto number = [](int64_t lNumber) { return " " + std::to_string(lNumber); };
  const std::string sRows = Translate("Rows looked at:") + number(preview.lRows) + "; ";
  if (!preview.Loses()) return {sRows + Translate("Nothing is lost."), false};
  return {sRows + Translate("Characters left out:") + number(preview.lLeftOut) + "; " + Translate("Values cut:") +
              number(preview.lCuts) + "; " + Translate("First on line:") + number(preview.lFirstLossLine),
          true};
}

}  // namespace quillon
