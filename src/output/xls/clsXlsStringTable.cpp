#include "clsXlsStringTable.h"

#include <algorithm>

#include "modXlsText.h"

namespace quillon {

namespace {

constexpr size_t kMaxBuckets = 1000;

/// Reads strings that may go on from one record into its CONTINUEs. Where characters go on, a new flag byte says
/// whether they are wide from there.
class clsStringCursor {
 public:
  clsStringCursor(std::string_view sStream, size_t nPos, size_t nRecordEnd)
      : sStream_(sStream), nPos_(nPos), nEnd_(nRecordEnd) {}

  size_t Pos() const { return nPos_; }
  bool AtRecordEnd() const { return nPos_ == nEnd_; }

  bool NextContinue() {
    clsXlsRecordReader reader(sStream_, nEnd_);
    XlsRecord record;
    if (!reader.Next(record) || record.nId != xls::kContinue) return false;
    nPos_ = record.nOffset + 4;
    nEnd_ = record.End();
    return true;
  }

  /// The characters of strings that are passed over become blanks there.
  void BlankIn(std::string& sStream) { psStream_ = &sStream; }

  /// Passes over a string; its text is appended if there is a place for it.
  bool Read(std::string* psUtf8) {
    if (nEnd_ - nPos_ < 3) return false;
    size_t nChars = GetU16(sStream_, nPos_);
    const unsigned nFlags = GetU8(sStream_, nPos_ + 2);
    nPos_ += 3;
    size_t nRest = 0;
    if ((nFlags & 0x08) != 0) nRest += size_t{4} * TakeNumber(2);
    if ((nFlags & 0x04) != 0) nRest += TakeNumber(4);
    return ReadChars(nChars, (nFlags & 1) != 0, psUtf8) && Skip(nRest);
  }

 private:
  size_t TakeNumber(size_t nBytes) {
    if (nEnd_ - nPos_ < nBytes) {
      nPos_ = nEnd_;
      return 0;
    }
    const size_t nValue = nBytes == 2 ? GetU16(sStream_, nPos_) : GetU32(sStream_, nPos_);
    nPos_ += nBytes;
    return nValue;
  }

  bool ReadChars(size_t nChars, bool bWide, std::string* psUtf8) {
    std::string sWide;  // surrogate pairs may be split over records, so the units are joined first
    while (true) {
      const size_t nUnit = bWide ? 2 : 1;
      const size_t nHere = std::min(nChars, (nEnd_ - nPos_) / nUnit);
      if (psUtf8 != nullptr) {
        const std::string_view sPart = sStream_.substr(nPos_, nHere * nUnit);
        for (size_t i = 0; i < sPart.size(); i += nUnit) PutU16(sWide, bWide ? GetU16(sPart, i) : GetU8(sPart, i));
      }
      for (size_t i = 0; psStream_ != nullptr && i < nHere * nUnit; ++i)
        (*psStream_)[nPos_ + i] = i % nUnit == 0 ? ' ' : '\0';
      nPos_ += nHere * nUnit;
      nChars -= nHere;
      if (nChars == 0) break;
      if (!NextContinue() || nPos_ == nEnd_) return false;
      bWide = (GetU8(sStream_, nPos_++) & 1) != 0;
    }
    if (psUtf8 != nullptr) AppendUtf8OfXls(sWide, true, *psUtf8);
    return true;
  }

  bool Skip(size_t nBytes) {
    while (nBytes > nEnd_ - nPos_) {
      nBytes -= nEnd_ - nPos_;
      if (!NextContinue()) return false;
    }
    nPos_ += nBytes;
    return true;
  }

  std::string_view sStream_;
  size_t nPos_;
  size_t nEnd_;
  std::string* psStream_ = nullptr;
};

/// Appends strings to the record at the end of sOut and begins CONTINUEs as they are needed.
class clsStringAppender {
 public:
  clsStringAppender(std::string& sOut, size_t nRecord) : sOut_(sOut), nRecord_(nRecord) {}

  size_t Record() const { return nRecord_; }

  void Add(std::string_view sEntry) {
    const size_t nUnit = (GetU8(sEntry, 2) & 1) != 0 ? 2 : 1;
    if (sEntry.size() > Room()) {
      MakeRoomFor(sEntry);
      if (sEntry.size() > Room()) return AddSplit(sEntry, nUnit);
    }
    sOut_.append(sEntry);
  }
  /// Puts the length of the last record right.
  void Finish() { SetAt(sOut_, nRecord_ + 2, static_cast<uint16_t>(sOut_.size() - nRecord_ - 4)); }
  /// The next string's place, begun with a new record if its head doesn't fit.
  void MakeRoomFor(std::string_view sEntry) {
    if (sEntry.size() > Room() && Room() < 3 + ((GetU8(sEntry, 2) & 1) != 0 ? 4u : 1u)) Begin();
  }

 private:
  size_t Room() const {
    const size_t nUsed = sOut_.size() - nRecord_ - 4;
    return nUsed < xls::kMaxRecordData ? xls::kMaxRecordData - nUsed : 0;
  }
  void Begin() {
    Finish();
    nRecord_ = sOut_.size();
    PutU16(sOut_, xls::kContinue);
    PutU16(sOut_, 0);
  }
  void AddSplit(std::string_view sEntry, size_t nUnit) {
    size_t nPart = 3 + (Room() - 3) / nUnit * nUnit;
    while (true) {
      // Some readers decode each record's part by itself, so a surrogate pair stays in one.
      if (nUnit == 2 && nPart < sEntry.size() && (GetU16(sEntry, nPart - 2) & 0xFC00u) == 0xD800u) nPart -= 2;
      sOut_.append(sEntry.substr(0, nPart));
      sEntry.remove_prefix(std::min(nPart, sEntry.size()));
      if (sEntry.empty()) return;
      Begin();
      PutU8(sOut_, nUnit == 2 ? 1 : 0);
      nPart = Room() / nUnit * nUnit;
    }
  }

  std::string& sOut_;
  size_t nRecord_;
};

}  // namespace

/// Positions of every so-many-th string, for EXTSST.
struct clsXlsStringTable::Buckets {
  uint32_t nStep = 8;
  std::string sData;

  void Note(size_t nIndex, size_t nAbsolute, size_t nInRecord) {
    if (nIndex % nStep != 0) return;
    PutU32(sData, nAbsolute);
    PutU16(sData, static_cast<unsigned>(nInRecord));
    PutU16(sData, 0);
  }
};

bool ReadXlsString(std::string_view sStream, size_t nPos, size_t nRecordEnd, std::string& sUtf8) {
  if (nPos > nRecordEnd || nRecordEnd > sStream.size()) return false;
  return clsStringCursor(sStream, nPos, nRecordEnd).Read(&sUtf8);
}

bool clsXlsStringTable::Parse(std::string_view sStream, size_t nOffset) {
  clsXlsRecordReader reader(sStream, nOffset);
  XlsRecord record;
  if (!reader.Next(record) || record.nId != xls::kSst || record.sData.size() < 8) return false;
  const uint32_t nCount = GetU32(record.sData, 4);
  sStream_ = sStream;
  nOffset_ = nOffset;
  records_.assign(1, 0);
  clsStringCursor cursor(sStream, nOffset + 12, record.End());
  for (uint32_t i = 0; i < nCount; ++i) {
    if (cursor.AtRecordEnd() && !cursor.NextContinue()) return false;
    starts_.push_back(static_cast<uint32_t>(cursor.Pos() - nOffset));
    if (!cursor.Read(nullptr)) return false;
  }
  nStringsEnd_ = cursor.Pos();
  nEnd_ = record.End();
  while (reader.Next(record) && record.nId == xls::kContinue) {
    if (record.nOffset < nStringsEnd_) records_.push_back(static_cast<uint32_t>(record.nOffset - nOffset));
    nEnd_ = record.End();
  }
  return true;
}

void clsXlsStringTable::Drop(const std::vector<bool>& kept, std::string& sStream) {
  size_t nKept = starts_.size();
  while (nKept > 0 && (nKept > kept.size() || !kept[nKept - 1])) --nKept;
  for (size_t i = 0; i < nKept; ++i) {
    if (kept[i]) continue;
    const size_t nRecord = *(std::upper_bound(records_.begin(), records_.end(), starts_[i]) - 1) + nOffset_;
    clsStringCursor cursor(sStream_, nOffset_ + starts_[i], nRecord + 4 + GetU16(sStream_, nRecord + 2));
    cursor.BlankIn(sStream);
    cursor.Read(nullptr);
  }
  if (nKept == starts_.size()) return;
  size_t nEnd = starts_[nKept];
  while (records_.size() > 1 && records_.back() + 4 >= nEnd) {
    nEnd = std::min(nEnd, size_t{records_.back()});
    records_.pop_back();
  }
  nStringsEnd_ = nOffset_ + nEnd;
  starts_.resize(nKept);
}

std::string clsXlsStringTable::Text(uint32_t nIndex) const {
  std::string sText;
  if (nIndex >= starts_.size()) return sText;
  const uint32_t nStart = starts_[nIndex];
  const size_t nRecord = *(std::upper_bound(records_.begin(), records_.end(), nStart) - 1) + nOffset_;
  clsStringCursor cursor(sStream_, nOffset_ + nStart, nRecord + 4 + GetU16(sStream_, nRecord + 2));
  cursor.Read(&sText);
  return sText;
}

void clsXlsStringTable::Write(const clsXlsStrings& added, size_t nBase, std::string& sOut) const {
  const size_t nTable = sOut.size();
  const uint32_t nAll = Count() + added.Count();
  Buckets buckets;
  buckets.nStep = std::max<uint32_t>(8, nAll / static_cast<uint32_t>(kMaxBuckets) + 1);
  clsStringAppender appender(sOut, nTable + WriteOwn(nBase, buckets, sOut));
  const std::string_view sEntries = added.Entries();
  size_t nIndex = Count();
  for (size_t nPos = 0; nPos < sEntries.size(); ++nIndex) {
    const std::string_view sEntry = sEntries.substr(nPos, clsXlsStrings::EntryBytes(sEntries, nPos));
    appender.MakeRoomFor(sEntry);
    buckets.Note(nIndex, nBase + sOut.size(), sOut.size() - appender.Record());
    appender.Add(sEntry);
    nPos += sEntry.size();
  }
  appender.Finish();
  SetAt(sOut, nTable + 4, GetU32(sOut, nTable + 4) + added.References());
  SetAt(sOut, nTable + 8, nAll);
  PutU16(sOut, xls::kExtSst);
  PutU16(sOut, static_cast<unsigned>(2 + buckets.sData.size()));
  PutU16(sOut, buckets.nStep);
  sOut.append(buckets.sData);
}

/// The strings that were there, as they stand, or an empty table. Gives the place of its last record in it.
size_t clsXlsStringTable::WriteOwn(size_t nBase, Buckets& buckets, std::string& sOut) const {
  const size_t nTable = sOut.size();
  if (nEnd_ == 0) {
    PutRecord(sOut, xls::kSst, std::string_view("\0\0\0\0\0\0\0\0", 8));
    return 0;
  }
  sOut.append(sStream_.substr(nOffset_, nStringsEnd_ - nOffset_));
  size_t nRecord = 0;
  for (size_t i = 0; i < starts_.size(); i += buckets.nStep) {
    while (nRecord + 1 < records_.size() && records_[nRecord + 1] <= starts_[i]) ++nRecord;
    buckets.Note(i, nBase + nTable + starts_[i], starts_[i] - records_[nRecord]);
  }
  return records_.back();
}

}  // namespace quillon
