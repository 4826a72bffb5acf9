#pragma once
// A report as people have it is at times no text yet: it is compressed, or of another kind than the line reader knows.
// Its text is then made once, into a private file without a name, and every opening of the report reads that.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modFailure.h"
#include "modInputOptions.h"

namespace quillon {

/// The choices in force, one for the process. Whoever begins a run sets them.
InputOptions& ReportInput();

/// What an opened report reads from.
struct ReportText {
  int nHandle = -1;  ///< The caller's to close; read it by offset, as others may read the same
  int64_t nBytes = 0;
  bool bUtf8 = false;      ///< The text was made here, as UTF-8
  bool bCutShort = false;  ///< Only the beginning was made
};

/// Opens a report by its path text; a plain file is its own text. nMost above 0: so many bytes of it are enough, for
/// looks that must not take long. False with the reason; a text that would outgrow all reports is refused, too.
bool OpenReportText(std::string_view sPath, int64_t nMost, ReportText& text, Failure& failure);

/// What was found out about a report while its text was made, for people: "UTF-16". Empty for a plain file, and for one
/// that was only unpacked.
std::vector<std::string> ReportNotes(std::string_view sPath);

/// Lets go of the texts made so far. Called between the files of a batch.
void ForgetReportTexts();
/// The same, and the choices are the defaults again.
void ResetReportInput();

}  // namespace quillon
