#include "clsUtf16Reader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "clsLineReader.h"
#include "modEventLoop.h"
#include "modFiles.h"
#include "modSystemIo.h"
#include "modTextEnds.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBlockBytes = size_t{256} << 10;
}  // namespace

void clsUtf16Reader::Close() {
  if (nHandle_ >= 0) close(nHandle_);
  nHandle_ = -1;
}

bool clsUtf16Reader::Open(std::string_view sPath, Failure& failure) {
  Close();
  sPath_ = sPath;
  failure_ = {};
  nHandle_ = OpenOrdinaryFile(sPath, nEnd_, failure_);
  if (nHandle_ >= 0 && Prepare()) return true;
  failure = failure_;
  Close();
  return false;
}

/// Looks at both ends and at the kind of line ends before the first row is handed out.
bool clsUtf16Reader::Prepare() {
  nPos_ = 0;
  lRow_ = 0;
  units_ = {};
  bEnded_ = false;
  text_.clear();
  nText_ = 0;
  block_.resize(kBlockBytes);
  size_t nGot = 0;
  if (!ReadBlock(0, nGot)) return false;
  nPos_ = static_cast<int64_t>(units_.TakeBom({block_.data(), nGot}));
  return FindEndOfText() && FindLineEnd();
}

bool clsUtf16Reader::ReadBlock(int64_t nPos, size_t& nGot) {
  nGot = 0;
  if (!RunEvents()) {
    failure_ = StoppedFailure(sPath_);
    return false;
  }
  const auto nWant = static_cast<size_t>(std::min<int64_t>(kBlockBytes, nEnd_ - nPos));
  while (nGot < nWant) {
    const int64_t n = ReadHandleAt(nHandle_, block_.data() + nGot, nWant - nGot, nPos + static_cast<int64_t>(nGot));
    if (n < 0) failure_ = SystemFailure(sPath_, errno);
    if (n < 0) return false;
    if (n == 0) break;
    nGot += static_cast<size_t>(n);
  }
  return true;
}

/// Sets nEnd_ before the units 0x1A at the very end and the NULs behind them.
bool clsUtf16Reader::FindEndOfText() {
  if (nEnd_ % 2 != 0) return true;
  bool bMark = false;
  for (int64_t nEnd = nEnd_; nEnd > nPos_;) {
    const int64_t nFrom = std::max<int64_t>(nPos_, nEnd - static_cast<int64_t>(kBlockBytes));
    size_t nGot = 0;
    if (!ReadBlock(nFrom, nGot)) return false;
    if (nGot < static_cast<size_t>(nEnd - nFrom)) return true;
    for (; nEnd > nFrom; nEnd -= 2) {
      const char16_t unit = units_.UnitAt({block_.data(), nGot}, static_cast<size_t>(nEnd - nFrom) - 2);
      if (unit == 0x1A) bMark = true;
      if (unit == 0x1A || unit == 0) continue;
      if (bMark) nEnd_ = nEnd;
      return true;
    }
  }
  if (bMark) nEnd_ = nPos_;
  return true;
}

/// A file with CRs and no LF ends its rows at CR.
bool clsUtf16Reader::FindLineEnd() {
  end_ = '\n';
  bool bCr = false;
  for (int64_t nPos = nPos_; nPos < nEnd_;) {
    size_t nGot = 0;
    if (!ReadBlock(nPos, nGot)) return false;
    for (size_t n = 0; n + 1 < nGot; n += 2) {
      const char16_t unit = units_.UnitAt({block_.data(), nGot}, n);
      if (unit == '\n') return true;
      bCr = bCr || unit == '\r';
    }
    if (nGot < 2) break;
    nPos += static_cast<int64_t>(nGot);
  }
  if (bCr) end_ = '\r';
  return true;
}

/// What is left at the end of the file: half a character or half a pair, one of each at most.
void clsUtf16Reader::EndConversion() {
  bEnded_ = true;
  units_.End(nEnd_ % 2 != 0, text_);
}

/// Converts the next block behind what is left of the text. False at the end and on a failure.
bool clsUtf16Reader::Fill() {
  if (bEnded_ || failure_.Failed()) return false;
  text_.erase(0, nText_);
  nText_ = 0;
  if (text_.size() > clsLineReader::kMaxRowBytes) {
    failure_ = OwnFailure(
        sPath_, Translate("Row") + " " + std::to_string(lRow_ + 1) + " " + Translate("is longer than 256 MB"));
    return false;
  }
  size_t nGot = 0;
  if (!ReadBlock(nPos_, nGot)) return false;
  units_.Convert({block_.data(), nGot}, text_);
  nPos_ += static_cast<int64_t>(nGot);
  if (nGot == 0 || nPos_ >= nEnd_) EndConversion();
  return true;
}

bool clsUtf16Reader::ReadRow(std::string_view& sRow) {
  size_t nSearched = 0;
  for (;;) {
    const std::string_view sText = std::string_view(text_).substr(nText_);
    const size_t nEnd = sText.find(end_, nSearched);
    if (nEnd != std::string_view::npos) {
      sRow = sText.substr(0, nEnd);
      nText_ += nEnd + 1;
      break;
    }
    nSearched = sText.size();
    if (Fill()) continue;
    if (failure_.Failed() || sText.empty()) return false;
    sRow = sText;
    nText_ = text_.size();
    break;
  }
  if (end_ == '\n') sRow = sRow.substr(0, sRow.find_last_not_of('\r') + 1);
  ++lRow_;
  return true;
}

int64_t clsUtf16Reader::SkipRows(int64_t nRows) {
  int64_t n = 0;
  for (std::string_view sRow; n < nRows && ReadRow(sRow);) ++n;
  return n;
}

}  // namespace quillon
