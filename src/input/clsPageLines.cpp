#include "clsPageLines.h"

#include "modText.h"

namespace quillon {

bool JoinOverprint(std::string_view sOver, std::string& sLine) {
  std::string sJoined;
  size_t nOver = 0;
  size_t nLine = 0;
  while (nOver < sOver.size() || nLine < sLine.size()) {
    const char32_t over = nOver < sOver.size() ? DecodeUtf8(sOver, nOver) : U' ';
    const char32_t line = nLine < sLine.size() ? DecodeUtf8(sLine, nLine) : U' ';
    const bool bLineGives = line == U' ' || (line == U'_' && over != U' ');
    if (!bLineGives && over != U' ' && over != U'_' && over != line) return false;
    AppendUtf8(bLineGives ? over : line, sJoined);
  }
  sLine = std::move(sJoined);
  return true;
}

void clsPageLines::Print(std::string_view sText, std::string& sOut) {
  if (bOpen_ && !JoinOverprint(sText, sLine_)) Close(sOut);
  if (!bOpen_) sLine_.assign(sText);
  bOpen_ = true;
}

void clsPageLines::Close(std::string& sOut) {
  sOut.append(sFeeds_).append(sLine_).append("\n");
  sFeeds_.clear();
  sLine_.clear();
  bOpen_ = false;
  bBegun_ = true;
}

void clsPageLines::Advance(int nLines, std::string& sOut) {
  for (int i = 0; i < nLines; ++i) Close(sOut);
}

void clsPageLines::NewPage(std::string& sOut) {
  if (bOpen_) Close(sOut);
  // The paper stands at the top of a page when printing begins.
  if (bBegun_) sFeeds_ += '\f';
}

void clsPageLines::End(std::string& sOut) {
  if (bOpen_) Close(sOut);
}

}  // namespace quillon
