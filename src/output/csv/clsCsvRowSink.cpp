#include "clsCsvRowSink.h"

#include "modCsvSafety.h"
#include "modText.h"

namespace quillon {

bool clsCsvRowSink::PutRow(const SinkRow& row) {
  if (PutInBlocks(row)) return true;
  for (const std::string_view sField : row.fields) {
    Note(sField);
    const bool bCalm = writer_.Rules().bSafe && IsHarmful(sField, *row.pPage);
    writer_.Field(ForOutput(sField, *row.pPage), bCalm);
  }
  writer_.EndRow();
  return true;
}

void clsCsvRowSink::PutBroken(const SinkRow& row) {
  for (const std::string_view sField : row.fields) Note(sField);
}

/// Fields in the output's own bytes. False, and nothing written, for any other row.
bool clsCsvRowSink::PutInBlocks(const SinkRow& row) {
  if (road_ == Road::Plain || !blocks_.Serves()) return false;
  const size_t nMost = blocks_.RoomFor(row);
  if (nMost > clsOutputFile::kBufferBytes / 2) return false;
  const bool bSameBytes = row.bAscii || row.pPage == &pageOut_;
  char* const pRow = file_.Reserve(nMost);
  char* const pEnd = blocks_.PutRow(row, !bSameBytes, pRow, [this](std::string_view sField) { Note(sField); });
  if (pEnd == nullptr) return false;
  file_.Used(static_cast<size_t>(pEnd - pRow));
  return true;
}

bool clsCsvRowSink::IsHarmful(std::string_view sField, const clsCodePage& page) {
  sUtf8_.clear();
  page.Decode(sField, sUtf8_);
  return MayRunAsFormula(sUtf8_);
}

std::string_view clsCsvRowSink::ForOutput(std::string_view sField, const clsCodePage& page) {
  if (&page == &pageOut_ || IsAscii(sField)) return sField;
  if (page.IsSingleByte()) {
    sUtf8_.clear();
    page.Decode(sField, sUtf8_);
    sField = sUtf8_;
  }
  if (!pageOut_.IsSingleByte()) return sField;
  sOut_.clear();
  lLost_ += static_cast<int64_t>(pageOut_.Encode(sField, sOut_));
  return sOut_;
}

}  // namespace quillon
