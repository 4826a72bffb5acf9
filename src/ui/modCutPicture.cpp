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

CutNote LossNote(const ReportPreview& preview) {
  const auto part = [](std::string_view sWhat, int64_t lCount) {
    return Translate(sWhat) + " " + std::to_string(lCount);
  };
  const std::string sRows = part("Rows looked at:", preview.lRows) + "; ";
  if (!preview.Loses()) return {sRows + Translate("Nothing is lost."), false};
  return {sRows + part("Characters left out:", preview.lLeftOut) + "; " + part("Values cut:", preview.lCuts) + "; " +
              part("First on line:", preview.lFirstLossLine),
          true};
}

}  // namespace quillon
