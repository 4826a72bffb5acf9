#include "modFileStory.h"

#include <algorithm>

#include "modPacking.h"

namespace quillon {

// Found by the types of their arguments, so in no namespace of their own. What nobody asks about a file of a batch
// stays where it is: the code page, shapes of lines, tidy counts.

template <typename Way>
void Exchange(Way& way, HostEvent& event) {
  ReportEntry& entry = event.entry;
  Exchange(way, event.bMessage, entry.lErr, entry.sErr1, entry.sErr2, entry.sErr3, entry.type, entry.bShowMessageBox,
           entry.sCause, event.icon, event.buttons);
}

template <typename Way>
void Exchange(Way& way, CharacterLoss& loss) {
  Exchange(way, loss.lInFront, loss.lBetween, loss.lBehind, loss.lCuts, loss.lFirstLine);
}

template <typename Way>
void Exchange(Way& way, TableTotal& total) {
  Exchange(way, total.lTable, total.sColumn, total.total.lLine, total.total.nColumn, total.total.verdict,
           total.total.sPrinted, total.total.sSummed);
}

template <typename Way>
void Exchange(Way& way, ReportProof& proof) {
  Exchange(way, proof.lines);
  Exchange(way, proof.loss);
  Exchange(way, proof.lTotalsAgree, proof.lTotalsLastDigit, proof.lTotalsDisagree, proof.lLikeRows,
           proof.lMeantLikeRows, proof.lFigureLines, proof.pages.lPages);
  Exchange(way, proof.totals);
}

template <typename Way>
void Exchange(Way& way, TableAccount& table) {
  Exchange(way, table.lTable, table.lFirstLine, table.lLastLine, table.lRows, table.lColumns, table.lCellsFailed);
  Exchange(way, table.loss);
}

template <typename Way>
void Exchange(Way& way, FileReason& reason) {
  Exchange(way, reason.type, reason.lCode, reason.sText, reason.sPlace, reason.sCause, reason.bLogged);
}

template <typename Way>
void Exchange(Way& way, FileAccount& account) {
  Exchange(way, account.lLinesRead, account.lLinesInTables, account.lCharactersLost, account.lFormulasRefused,
           account.lCellsFailed, account.bOutputWritten, account.namesRefused, account.workbookNotes);
  Exchange(way, account.tables);
  Exchange(way, account.proof);
}

template <typename Way>
void Exchange(Way& way, FileStory& story) {
  FileOutcome& outcome = story.outcome;
  Exchange(way, story.nFile, outcome.sInput, outcome.sOutput, outcome.status, outcome.lResult, story.notes,
           story.sListLine);
  Exchange(way, story.events);
  Exchange(way, outcome.reasons);
  Exchange(way, outcome.account);
}

std::string PackedStory(FileStory& story) {
  clsPacker packer;
  Exchange(packer, story);
  return packer.Packed();
}

bool TakeStory(std::string_view sBytes, FileStory& story) {
  clsTaker taker(sBytes);
  Exchange(taker, story);
  if (taker.Whole()) return true;
  story = {};
  return false;
}

}  // namespace quillon
