#include "modPdfText.h"

#include <array>
#include <cerrno>
#include <cstring>

#include "clsWordGrid.h"
#include "modSystemIo.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBlockBytes = size_t{256} << 10;

/// The words of one page behind the number of bytes that they take, as they lie in the file without a name between the
/// two passes over them: told anew, they would have to be read from text again.
std::string Packed(const std::vector<PlacedWord>& page) {
  std::string sPage(sizeof(uint64_t), '\0');
  for (const PlacedWord& word : page) {
    const std::array<double, 4> box{word.dLeft, word.dTop, word.dRight, word.dBottom};
    const uint64_t nBytes = word.sText.size();
    sPage.append(reinterpret_cast<const char*>(box.data()), sizeof box);
    sPage.append(reinterpret_cast<const char*>(&nBytes), sizeof nBytes).append(word.sText);
  }
  const uint64_t nBytes = sPage.size() - sizeof nBytes;
  std::memcpy(sPage.data(), &nBytes, sizeof nBytes);
  return sPage;
}

std::vector<PlacedWord> Unpacked(std::string_view sPage) {
  std::vector<PlacedWord> page;
  while (!sPage.empty()) {
    std::array<double, 4> box;
    uint64_t nBytes = 0;
    std::memcpy(box.data(), sPage.data(), sizeof box);
    std::memcpy(&nBytes, sPage.data() + sizeof box, sizeof nBytes);
    sPage.remove_prefix(sizeof box + sizeof nBytes);
    page.push_back({box[0], box[1], box[2], box[3], std::string(sPage.substr(0, nBytes))});
    sPage.remove_prefix(nBytes);
  }
  return page;
}

bool MeasureWords(clsPdfProcess& process, clsTextSpool& list, clsWordGrid& grid, Failure& failure) {
  std::vector<char> block(kBlockBytes);
  clsWordList words;
  bool bMore = true;
  while (const size_t nGot = bMore ? process.Read(block.data(), block.size()) : 0) {
    words.Take({block.data(), nGot}, [&](std::vector<PlacedWord>& page) {
      grid.Measure(page);
      bMore = bMore && list.Write(Packed(page), process.BytesTaken());
    });
  }
  failure = process.LastFailure().Failed() ? process.LastFailure() : list.LastFailure();
  grid.EndMeasure();
  return !failure.Failed();
}

bool ReadWhole(const clsTextSpool& list, int64_t nPos, char* pBytes, size_t nBytes) {
  for (size_t nDone = 0; nDone < nBytes;) {
    const int64_t nGot =
        ReadHandleAt(list.Handle(), pBytes + nDone, nBytes - nDone, nPos + static_cast<int64_t>(nDone));
    if (nGot <= 0) return false;
    nDone += static_cast<size_t>(nGot);
  }
  return true;
}

bool PlaceWords(std::string_view sPath, const clsTextSpool& list, clsWordGrid& grid, clsTextSpool& spool,
                Failure& failure) {
  std::string sPage;
  bool bMore = true;
  for (int64_t nPos = 0; bMore && nPos < list.Size();) {
    uint64_t nBytes = 0;
    bool bRead = ReadWhole(list, nPos, reinterpret_cast<char*>(&nBytes), sizeof nBytes);
    sPage.resize(nBytes);
    bRead = bRead && ReadWhole(list, nPos + static_cast<int64_t>(sizeof nBytes), sPage.data(), nBytes);
    if (!bRead) failure = SystemFailure(sPath, EIO);
    if (!bRead) return false;
    nPos += static_cast<int64_t>(sizeof nBytes + nBytes);
    std::vector<PlacedWord> page = Unpacked(sPage);
    std::string sText;
    grid.Place(page, sText);
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
