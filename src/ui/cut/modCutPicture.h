#pragma once
// What the pictures of recipes and profiles have in common.

#include <string_view>

#include "clsReportCut.h"
#include "modReportPreview.h"

namespace quillon {

/// False, with the fault, if the text names no file or a pattern of files.
bool IsOneInput(std::string_view sInput, CutPicture& picture);
/// Puts the lines into the picture, and notes on what they are. False, with the fault, if they couldn't be read.
bool DrawStretches(ReportStretches stretches, CutPicture& picture);
/// The picture with nothing in it for a hand to change.
CutPicture OnlyShown(CutPicture picture);
/// The rows that were looked at and what they lose.
CutNote LossNote(const ReportPreview& preview);

}  // namespace quillon
