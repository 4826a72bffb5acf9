#include "clsLineReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "modByteCount.h"
#include "modEventLoop.h"
#include "modFiles.h"
#include "modReportText.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBlockBytes = size_t{256} << 10;

const char* FindByte(std::string_view s, char c) {
  return s.empty() ? nullptr : static_cast<const char*>(std::memchr(s.data(), c, s.size()));
}

}  // namespace

void clsLineReader::Close() {
  file_.Close();
  window_ = {};
}

bool clsLineReader::Open(std::string_view sPath, const TextFileOptions& options, Failure& failure) {
  Close();
  failure_ = {};
  options_ = options;
  sPath_ = sPath;
  bCutShort_ = false;
  file_.Use(options.bReport ? OpenReport(failure) : OpenOrdinaryFile(sPath, nEnd_, failure));
  if (!file_.IsOpen()) return false;
  if (Prepare()) return true;
  failure = failure_;
  Close();
  return false;
}

int clsLineReader::OpenReport(Failure& failure) {
  ReportText text;
  if (!OpenReportText(sPath_, options_.lMostBytes, text, failure)) return -1;
  nEnd_ = text.nBytes;
  bCutShort_ = text.bCutShort;
  if (text.bUtf8) options_.pCodePage = &clsCodePage::Utf8();
  return text.nHandle;
}

void clsLineReader::OpenMemory(std::string_view sBytes, const TextFileOptions& options) {
  Close();
  failure_ = {};
  options_ = options;
  sPath_.clear();
  bCutShort_ = false;
  window_ = sBytes;
  nFilePos_ = nEnd_ = static_cast<int64_t>(sBytes.size());
  Prepare();
}

bool clsLineReader::Fail(int nError) {
  failure_ = SystemFailure(sPath_, nError);
  return false;
}

/// Looks at both ends and at the kind of line ends before the first row is handed out.
bool clsLineReader::Prepare() {
  bRunsEvents_ = true;
  lRow_ = 0;
  raw_ = {};
  tabs_ = Tabs::Unknown;
  ends_ = Ends::Lf;
  nStart_ = 0;
  hasTab_.reset();
  bWatched_ = false;
  const bool bMemory = !file_.IsOpen();
  if (!bMemory) {
    nFilePos_ = nBlock_ = 0;
    window_ = {};
    const bool bTooLong = options_.lMostBytes > 0 && nEnd_ > options_.lMostBytes;
    if (bTooLong) nEnd_ = options_.lMostBytes;
    bCutShort_ = bCutShort_ || bTooLong;
    if (!(bCutShort_ ? FindEndOfRows(file_.Handle(), nEnd_) : FindEndOfText(file_.Handle(), nEnd_))) return Fail(errno);
  } else {
    memory_ = window_ = TextBeforeMarks(window_);
    nFilePos_ = nEnd_ = static_cast<int64_t>(window_.size());
  }
  if (!bMemory && !Fill() && failure_.Failed()) return false;
  pCodePage_ = options_.pCodePage;
  if (window_.starts_with(kUtf8Bom)) {
    window_.remove_prefix(kUtf8Bom.size());
    nStart_ = static_cast<int64_t>(kUtf8Bom.size());
    pCodePage_ = &clsCodePage::Utf8();
  }
  return SettleEnds();
}

/// A file without any LF ends its rows at CR (bUnix off), and "auto" needs a look at all bytes: both in one pass, which
/// isn't made where neither is open.
bool clsLineReader::SettleEnds() {
  clsTextSigns signs;
  const Wanted wanted{.bEnds = !options_.bUnix && FindByte(window_, '\n') == nullptr, .bPage = pCodePage_ == nullptr};
  if (!wanted.Any()) return true;
  if (!LookThrough(wanted, signs)) return false;
  if (!options_.bUnix && !signs.HasLf() && signs.HasCr()) ends_ = Ends::Cr;
  if (pCodePage_ == nullptr)
    pCodePage_ = !signs.IsAscii() && signs.IsUtf8() ? &clsCodePage::Utf8() : &clsCodePage::Windows1252();
  return true;
}

/// One pass from the first row on, as far as something is wanted. Tabs and texts are found on the way.
bool clsLineReader::LookThrough(Wanted wanted, clsTextSigns& signs) {
  std::vector<char> block;
  std::string_view s;
  size_t nKeep = 0;
  int64_t nPos = file_.IsOpen() ? nStart_ : nEnd_;
  if (!file_.IsOpen()) {
    s = memory_.substr(static_cast<size_t>(nStart_));
  } else if (BytesDone() == nStart_) {
    s = window_;
    nPos = nFilePos_;
  }
  bool bTab = false;
  watch_.Start(nStart_);
  for (std::string_view sNew = s;;) {
    watch_.Look(sNew);
    nKeep = signs.Look(s, wanted.bPage, nPos < nEnd_);
    bTab = bTab || FindByte(sNew, '\t') != nullptr;
    wanted = {wanted.bEnds && !signs.HasLf(), wanted.bPage && signs.IsUtf8(), wanted.bTab && !bTab,
              wanted.bKeys && !watch_.IsDone()};
    if (bTab || nPos >= nEnd_) hasTab_ = bTab;
    bWatched_ = nPos >= nEnd_;
    if (nPos >= nEnd_ || !wanted.Any()) return true;
    if (!MayGoOn()) return false;
    const std::string sTail(s.substr(s.size() - nKeep));
    block.resize(kBlockBytes + nKeep);
    std::copy(sTail.begin(), sTail.end(), block.begin());
    const auto nWant = static_cast<size_t>(std::min<int64_t>(kBlockBytes, nEnd_ - nPos));
    const int64_t nGot = file_.ReadAt(block.data() + nKeep, nWant, nPos);
    if (nGot < 0) return Fail(errno);
    if (nGot == 0) return true;
    nPos += nGot;
    sNew = {block.data() + nKeep, static_cast<size_t>(nGot)};
    s = {block.data(), nKeep + static_cast<size_t>(nGot)};
  }
}

/// The same once the rows are known to be what they are; the texts looked out for are found as well.
bool clsLineReader::LookAhead(Wanted wanted) {
  clsTextSigns ignored;
  wanted.bKeys = watch_.TextCount() > 0;
  return LookThrough(wanted, ignored);
}

bool clsLineReader::HasTab() {
  if (!hasTab_) LookAhead({.bTab = true});
  return hasTab_.value_or(false);
}

std::optional<clsKeyWatch::Row> clsLineReader::Sighted(std::string_view sText) {
  // A start and an end key text are found as fast one behind the other, when rows are on their way already.
  constexpr size_t kSeveral = 3;
  const clsKeyWatch::Row* const pRow = watch_.RowOf(sText);
  const bool bPlainRows = ends_ == Ends::Lf && !options_.bUnix && file_.IsOpen();
  if (pRow == nullptr || !bPlainRows) return std::nullopt;
  if (pRow->lRow == 0 && !bWatched_ && watch_.TextCount() >= kSeveral) LookAhead({});
  if (pRow->lRow == 0 && !bWatched_) return std::nullopt;
  return *pRow;
}

bool clsLineReader::MayGoOn() {
  if (!bRunsEvents_ || RunEvents()) return true;
  failure_ = StoppedFailure(sPath_);
  window_ = {};
  nFilePos_ = nEnd_;
  return false;
}

/// Reads the next block behind what is left of the window. False at the end and on a failure.
bool clsLineReader::Fill() {
  if (!file_.IsOpen() || nFilePos_ >= nEnd_ || (nFilePos_ > 0 && !MayGoOn())) return false;
  const size_t nLeft = window_.size();
  if (nLeft > kMaxRowBytes) {
    failure_ = OwnFailure(
        sPath_, Translate("Row") + " " + std::to_string(lRow_ + 1) + " " + Translate("is longer than 256 MB"));
    window_ = {};
    nFilePos_ = nEnd_;
    return false;
  }
  const size_t nOffset = nLeft == 0 ? 0 : static_cast<size_t>(window_.data() - buffer_.data());
  // A long row doubles its buffer; a short rest moves to the front.
  if (nLeft > 0 && nOffset > 0) std::memmove(buffer_.data(), window_.data(), nLeft);
  const size_t nBlock = static_cast<size_t>(std::min<int64_t>(kBlockBytes, nEnd_ - nFilePos_));
  const size_t nRoom = std::max(nBlock, nLeft);
  if (buffer_.size() < nLeft + nRoom + kRoomBehind) buffer_.resize(nLeft + nRoom + kRoomBehind);
  const auto nWant = static_cast<size_t>(
      std::min<int64_t>(static_cast<int64_t>(buffer_.size() - nLeft - kRoomBehind), nEnd_ - nFilePos_));
  const int64_t nGot = file_.ReadAt(buffer_.data() + nLeft, nWant, nFilePos_);
  if (nGot < 0) failure_ = SystemFailure(sPath_, errno);
  if (nGot <= 0) nEnd_ = nFilePos_;
  nBlock_ = nFilePos_ - static_cast<int64_t>(nLeft);
  nFilePos_ += std::max<int64_t>(nGot, 0);
  tabs_ = Tabs::Unknown;
  window_ = std::string_view(buffer_.data(), nLeft + static_cast<size_t>(std::max<int64_t>(nGot, 0)));
  return nGot > 0;
}

/// The next row with its CRs, without its LF (or CR).
bool clsLineReader::NextRawRow(std::string_view& sRow) {
  const char end = ends_ == Ends::Lf ? '\n' : '\r';
  size_t nSearched = 0;
  for (;;) {
    const char* const pEnd = FindByte(window_.substr(nSearched), end);
    if (pEnd != nullptr) {
      sRow = window_.substr(0, static_cast<size_t>(pEnd - window_.data()));
      window_.remove_prefix(sRow.size() + 1);
      bEnded_ = true;
      return true;
    }
    nSearched = window_.size();
    if (nFilePos_ < nEnd_ && Fill()) continue;
    if (failure_.Failed() || window_.empty()) return false;
    sRow = window_;
    window_ = {};
    bEnded_ = false;
    return true;
  }
}

/// Takes off the CRs of the line end and, with bUnix on, all others.
std::string_view clsLineReader::StripRow(std::string_view sRow) {
  if (ends_ == Ends::Cr) return sRow;
  while (bEnded_ && !sRow.empty() && sRow.back() == '\r') sRow.remove_suffix(1);
  if (!options_.bUnix || FindByte(sRow, '\r') == nullptr) return sRow;
  sScratch_.clear();
  std::copy_if(sRow.begin(), sRow.end(), std::back_inserter(sScratch_), [](char c) { return c != '\r'; });
  return sScratch_;
}

bool clsLineReader::ReadRow(std::string_view& sRow) {
  if (!NextRawRow(raw_)) return false;
  ++lRow_;
  sRow = StripRow(raw_);
  bInBuffer_ = sRow.data() == raw_.data();
  return true;
}

bool clsLineReader::RowMayHaveTab() {
  if (tabs_ == Tabs::Unknown) {
    const char* const pEnd = window_.empty() ? raw_.data() + raw_.size() : window_.data() + window_.size();
    const bool bTab = FindByte({raw_.data(), static_cast<size_t>(pEnd - raw_.data())}, '\t') != nullptr;
    tabs_ = bTab ? Tabs::Some : Tabs::None;
  }
  return tabs_ == Tabs::Some;
}

int64_t clsLineReader::SkipRows(int64_t nRows) {
  int64_t n = 0;
  std::string_view sRow;
  while (n < nRows && NextRawRow(sRow)) ++n;
  lRow_ += n;
  return n;
}

bool clsLineReader::AtEnd() {
  return window_.empty() && (nFilePos_ >= nEnd_ || !Fill());
}

bool clsLineReader::SeekRow(int64_t lRow, int64_t nOffset) {
  if (failure_.Failed()) return false;
  lRow_ = lRow;
  raw_ = {};
  if (!file_.IsOpen()) {
    window_ = memory_.substr(static_cast<size_t>(nOffset));
  } else if (nOffset >= nBlock_ && nOffset <= nFilePos_) {
    window_ = {buffer_.data() + (nOffset - nBlock_), buffer_.data() + (nFilePos_ - nBlock_)};
  } else {
    window_ = {};
    nFilePos_ = nBlock_ = nOffset;
  }
  tabs_ = Tabs::Unknown;
  return true;
}

int64_t clsLineReader::BytesDone() const {
  return nFilePos_ - static_cast<int64_t>(window_.size());
}

/// Leaves the window at the row that has the needle; returns the rows before it, or -1 at the end. Searching the block
/// as a whole runs at the speed of memory; row by row it is five times slower.
int64_t clsLineReader::PassToNeedle(std::string_view sNeedle) {
  int64_t nPassed = 0;
  for (;;) {
    const size_t nHit = FindBytes(window_, sNeedle);
    const bool bHit = nHit != std::string_view::npos;
    const size_t nSeen = bHit ? nHit : window_.size();
    const size_t nRowStart = nSeen == 0 ? 0 : window_.rfind('\n', nSeen - 1) + 1;
    nPassed += CountByte(window_.substr(0, nRowStart), '\n');
    window_.remove_prefix(nRowStart);
    if (bHit) break;
    if (!Fill()) {
      nPassed += window_.empty() ? 0 : 1;
      window_ = {};
      lRow_ += nPassed;
      return -1;
    }
  }
  lRow_ += nPassed;
  return nPassed;
}

int64_t clsLineReader::FindRow(std::string_view sNeedle, std::string_view sExclusion, std::string_view& sRow) {
  const bool bPlainRows =
      ends_ == Ends::Lf && !options_.bUnix && sNeedle.find_first_of("\r\n") == std::string_view::npos;
  if (bPlainRows && !sNeedle.empty() && sExclusion.empty()) {
    const int64_t nPassed = PassToNeedle(sNeedle);
    return nPassed >= 0 && ReadRow(sRow) ? nPassed + 1 : 0;
  }
  for (int64_t nRows = 1; ReadRow(sRow); ++nRows) {
    const bool bHit = sNeedle.empty() ? !sRow.empty() : sRow.find(sNeedle) != std::string_view::npos;
    if (bHit && (sExclusion.empty() || sRow.find(sExclusion) == std::string_view::npos)) return nRows;
  }
  return 0;
}

bool ReadAllRows(std::string_view sPath, const TextFileOptions& options, std::vector<std::string>& rows,
                 Failure& failure) {
  rows.clear();
  clsLineReader reader;
  if (!reader.Open(sPath, options, failure)) return false;
  for (std::string_view sRow; reader.ReadRow(sRow);) rows.push_back(reader.CodePage().ToUtf8(sRow));
  failure = reader.LastFailure();
  return !failure.Failed();
}

}  // namespace quillon
