// Any text as the list of words that a PDF's reader tells: the words are measured and placed, none of them is lost but
// those of turned text, and the lines stay within their bounds.

#include <string>

#include "clsFuzzInput.h"
#include "clsWordGrid.h"

using namespace quillon;

namespace {

constexpr size_t kPiece = 97;

/// The list in pieces that end anywhere, as a pipe gives them.
void TakeInPieces(std::string_view sList, const clsWordList::PageSink& sink) {
  clsWordList words;
  for (; !sList.empty(); sList.remove_prefix(std::min(sList.size(), kPiece))) words.Take(sList.substr(0, kPiece), sink);
}

size_t WithoutBlanks(std::string_view s) {
  size_t n = 0;
  for (const char c : s) n += c != ' ' && c != '\n' && c != '\f' ? 1 : 0;
  return n;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  const clsFuzzInput input(pData, nSize);
  clsWordGrid grid;
  TakeInPieces(input.sInput, [&](std::vector<PlacedWord>& page) { grid.Measure(page); });
  grid.EndMeasure();
  std::string sPlaced;
  size_t nWanted = 0;
  TakeInPieces(input.sInput, [&](std::vector<PlacedWord>& page) {
    for (const PlacedWord& word : page) nWanted += word.IsTurned() ? 0 : WithoutBlanks(word.sText);
    const size_t nBefore = sPlaced.size();
    grid.Place(page, sPlaced);
    Must(sPlaced.size() - nBefore <= (page.size() + 1) * 10000 + input.sInput.size(), "a page stays within its bounds");
  });
  Must(grid.DoubledWords() > 0 || WithoutBlanks(sPlaced) == nWanted, "no word is lost");
  return 0;
}
