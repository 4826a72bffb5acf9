#include "clsRecordMaker.h"

#include <algorithm>

#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr char kOther = '\x80';
constexpr char kEbcdicBlank = '\x40';

/// Line ends inside of a record would make lines of their own.
char32_t InRecord(char32_t ch) {
  constexpr char32_t kNel = 0x85;
  return ch == U'\n' || ch == U'\r' || ch == kNel ? U' ' : ch;
}

std::string FormText(const RecordKind& kind) {
  switch (kind.form) {
    case RecordForm::Fixed:
      return Translate("records of a length of") + " " + std::to_string(kind.nLength);
    case RecordForm::Rdw:
      return Translate("records with their length in front");
    case RecordForm::Blocks:
      return Translate("records with their length in front, in blocks");
    default:
      return Translate("lines");
  }
}

}  // namespace

clsRecordMaker::clsRecordMaker(const RecordKind& kind)
    : kind_(kind), cutter_(kind.form, kind.nLength, kind.pEbcdic != nullptr) {
  for (size_t i = 0; kind_.pEbcdic != nullptr && i < ascii_.size(); ++i) {
    const char32_t ch = InRecord(kind_.pEbcdic->CharOf(static_cast<unsigned char>(i)));
    ascii_[i] = ch < 0x80 ? static_cast<char>(ch) : kOther;
  }
}

void clsRecordMaker::Take(std::string_view sBlock, std::string& sOut) {
  sOut.reserve(sOut.size() + sBlock.size() + sBlock.size() / 8);
  cutter_.Take(sBlock, [&](std::string_view sRecord) { Put(sRecord, sOut); });
}

void clsRecordMaker::End(std::string& sOut) {
  cutter_.End([&](std::string_view sRecord) { Put(sRecord, sOut); });
  page_.End(sOut);
}

void clsRecordMaker::Decode(std::string_view sBytes, std::string& sOut) const {
  if (kind_.pEbcdic == nullptr) {
    sOut.append(sBytes);
    return;
  }
  const size_t nBefore = sOut.size();
  sOut.resize(nBefore + sBytes.size());
  char* const pOut = sOut.data() + nBefore;
  unsigned all = 0;
  for (size_t i = 0; i < sBytes.size(); ++i) {
    pOut[i] = ascii_[static_cast<unsigned char>(sBytes[i])];
    all |= static_cast<unsigned char>(pOut[i]);
  }
  if ((all & 0x80U) == 0) return;
  sOut.resize(nBefore);
  for (const char c : sBytes) AppendUtf8(InRecord(kind_.pEbcdic->CharOf(static_cast<unsigned char>(c))), sOut);
}

void clsRecordMaker::Put(std::string_view sRecord, std::string& sOut) {
  if (kind_.form == RecordForm::Fixed) {
    const char blank = kind_.pEbcdic != nullptr ? kEbcdicBlank : ' ';
    const size_t nLast = sRecord.find_last_not_of(blank);
    // The first column may be all there is.
    const size_t nKept = nLast == std::string_view::npos ? 0 : nLast + 1;
    sRecord = sRecord.substr(0, std::max<size_t>(nKept, kind_.control == CarriageControl::None ? 0 : 1));
  }
  if (kind_.control == CarriageControl::None) {
    Decode(sRecord, sOut);
    sOut += '\n';
    return;
  }
  sText_.clear();
  if (!sRecord.empty()) Decode(sRecord.substr(1), sText_);
  const char first = sRecord.empty() ? ' ' : sRecord.front();
  if (kind_.control == CarriageControl::Machine) {
    PutMachine(static_cast<unsigned char>(first), sText_, sOut);
  } else {
    const bool bDecoded = kind_.pEbcdic != nullptr && !sRecord.empty();
    PutAsa(bDecoded ? ascii_[static_cast<unsigned char>(first)] : first, sText_, sOut);
  }
}

void clsRecordMaker::PutAsa(char control, std::string_view sText, std::string& sOut) {
  int nLines = 1;
  if (control == '1') {
    page_.NewPage(sOut);
    nLines = 0;
  } else if (control == '+') {
    nLines = 0;
  } else {
    nLines = control == '0' ? 2 : control == '-' ? 3 : 1;
    // The paper stands on the line that is printed first.
    if (!page_.IsLineOpen()) --nLines;
  }
  page_.Advance(nLines, sOut);
  page_.Print(sText, sOut);
}

/// The code's last bit tells that a line is printed before, the next that nothing is; the rest says how far the paper
/// moves, or with the first bit set to which channel.
void clsRecordMaker::PutMachine(unsigned char control, std::string_view sText, std::string& sOut) {
  constexpr unsigned kOnlyMoves = 0x02;
  constexpr unsigned kToChannel = 0x80;
  constexpr unsigned kFirstChannel = 1;
  const unsigned nWay = (control >> 3) & 0x0FU;
  if ((control & kOnlyMoves) == 0) page_.Print(sText, sOut);
  if ((control & kToChannel) == 0) {
    page_.Advance(static_cast<int>(std::min(nWay, 3U)), sOut);
  } else if (nWay == kFirstChannel) {
    page_.NewPage(sOut);
  } else {
    page_.Advance(1, sOut);
  }
}

std::vector<std::string> clsRecordMaker::Notes() const {
  std::string sNote = Translate("read as") + " ";
  if (kind_.pEbcdic != nullptr) sNote += "EBCDIC (" + kind_.pEbcdic->Name() + "), ";
  sNote += FormText(kind_);
  if (kind_.control == CarriageControl::Asa) sNote += ", " + Translate("ASA carriage control");
  if (kind_.control == CarriageControl::Machine) sNote += ", " + Translate("machine carriage control");
  return {sNote};
}

}  // namespace quillon
