// Any bytes as a language file, behind a phrase that it gets: all of its phrases stay, and the new one is read.

#include "clsFuzzInput.h"
#include "clsTempFolder.h"
#include "modPhraseFile.h"
#include "modSettings.h"
#include "modText.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  clsFuzzInput input(pData, nSize);
  const clsCodePage* const pPage = FuzzPage(input.TakeByte());
  OverrideSystemCodePage(pPage, pPage == nullptr);
  const std::string sKey(input.TakePart());
  const int16_t iFormat = phrasefile::DetectFormat(input.sInput);
  if (iFormat == kPhrasesUnreadable) return 0;
  PhraseTable phrases;
  phrasefile::Parse(input.sInput, iFormat, phrases);

  const std::string sFile = folder.Write("a.txt", input.sInput);
  Must(phrasefile::Append(sFile, iFormat, sKey), "a phrase can be appended");
  const std::string sBytes = folder.Read("a.txt");
  Must(std::string_view(sBytes).starts_with(input.sInput), "what the file held stays in front");
  Must(phrasefile::DetectFormat(sBytes) == iFormat, "the format stays");
  // With a text of another page behind it the guess may change, and a mark of a comment or an end changes the rest.
  if (iFormat == kPhrasesUtf16 && input.sInput.size() % 2 != 0) return 0;
  if (pPage == nullptr || !IsAscii(sKey) || sKey.find_first_of("\r\n\"*!") != std::string::npos) return 0;
  PhraseTable after;
  phrasefile::Parse(sBytes, iFormat, after);
  for (const auto& [sOne, sPhrase] : phrases) {
    const auto found = after.find(sOne);
    Must(found != after.end() && found->second == sPhrase, "all phrases stay");
  }
  Must(after.size() <= phrases.size() + 1, "at most one phrase more");
  return 0;
}
