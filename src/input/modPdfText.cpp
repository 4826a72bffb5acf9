#include "modPdfText.h"

#include <cerrno>

#include "clsWordGrid.h"
#include "modSystemIo.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBlockBytes = size_t{256} << 10;

/// The list of words, read twice: from the process into a file without a name, and from there.
bool MeasureWords(clsPdfProcess& process, clsTextSpool& list, clsWordGrid& grid, Failure& failure) {
  std::vector<char> block(kBlockBytes);
  clsWordList words;
  while (const size_t nGot = process.Read(block.data(), block.size())) {
    words.Take({block.data(), nGot}, [&](std::vector<PlacedWord>& page) { grid.Measure(page); });
    if (!list.Write({block.data(), nGot}, process.BytesTaken())) break;
  }
  failure = process.LastFailure().Failed() ? process.LastFailure() : list.LastFailure();
  grid.EndMeasure();
  return !failure.Failed();
}

bool PlaceWords(std::string_view sPath, const clsTextSpool& list, clsWordGrid& grid, clsTextSpool& spool,
                Failure& failure) {
  std::vector<char> block(kBlockBytes);
  clsWordList words;
  int64_t nPos = 0;
  for (bool bMore = true; bMore && nPos < list.Size();) {
    const int64_t nGot = ReadHandleAt(list.Handle(), block.data(), block.size(), nPos);
    if (nGot <= 0) failure = SystemFailure(sPath, nGot < 0 ? errno : EIO);
    if (nGot <= 0) return false;
    nPos += nGot;
    std::string sText;
    words.Take({block.data(), static_cast<size_t>(nGot)}, [&](auto& page) { grid.Place(page, sText); });
    bMore = spool.Write(sText, nPos);
  }
  failure = spool.LastFailure();
  return !failure.Failed();
}

}  // namespace

bool IsPdf(std::string_view sHead) {
  return sHead.starts_with("%PDF-");
}

bool MakePdfText(std::string_view sPath, int nHandle, const PdfPages& pages, clsTextSpool& spool,
                 std::vector<std::string>& notes, Failure& failure) {
  clsPdfProcess process(sPath, nHandle, pages);
  clsTextSpool list(sPath, 0);
  clsWordGrid grid;
  if (!MeasureWords(process, list, grid, failure) || !PlaceWords(sPath, list, grid, spool, failure)) return false;
  if (grid.Words() == 0) {
    failure = OwnFailure(sPath, Translate("the PDF holds no text; is it a scan?"));
    return false;
  }
  const auto note = [&](int64_t lCount, const std::string& sText) {
    if (lCount > 0) notes.push_back(sText + " " + std::to_string(lCount));
  };
  note(grid.EmptyPages(), Translate("pages without text (a scan?):"));
  note(grid.TurnedWords(), Translate("words of rotated text left out:"));
  note(grid.MovedWords(), Translate("words that lay over others and moved on:"));
  return true;
}

}  // namespace quillon
