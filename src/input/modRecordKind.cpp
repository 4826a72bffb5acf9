#include "modRecordKind.h"

#include <algorithm>
#include <array>
#include <vector>

#include "modTranslator.h"

namespace quillon {

namespace {

/// The usual lengths of print files, the likelier ones first.
constexpr std::array<size_t, 12> kUsualLengths{133, 121, 132, 120, 137, 80, 81, 136, 255, 256, 134, 72};
constexpr size_t kMostLength = 32760;
constexpr const char* kUsualPage = "cp037";

/// The records that stand whole in the beginning. False if it isn't of that form.
bool Gather(const FileBeginning& file, RecordForm form, size_t nLength, bool bEbcdic,
            std::vector<std::string>& records) {
  records.clear();
  clsRecordCutter cutter(form, nLength, bEbcdic);
  const auto sink = [&](std::string_view sRecord) { records.emplace_back(sRecord); };
  cutter.Take(file.sHead, sink);
  if (file.nBytes > 0 && static_cast<int64_t>(file.sHead.size()) >= file.nBytes) cutter.End(sink);
  return cutter.Fault().empty() && !records.empty();
}

bool IsEbcdicTextByte(unsigned char byte) {
  const unsigned low = byte & 0x0FU;
  if (byte == 0x40) return true;
  if (byte >= 0xF0) return low <= 9;
  if (byte >= 0xE2) return low <= 9 && byte < 0xF0;
  if ((byte >= 0x81 && byte < 0xA0) || (byte >= 0xC1 && byte < 0xE0)) return low >= 1 && low <= 9;
  return byte >= 0xA2 && byte <= 0xA9;
}

/// Blanks, letters, digits and what rules are made of, nearly alone, and no blank of ASCII.
bool IsEbcdicText(std::string_view s) {
  constexpr std::string_view kMarks = "\x60\x7E\x4B\x6B\x5C\x6D\x61\x7A";
  const auto is_text = [](char c) { return IsEbcdicTextByte(static_cast<unsigned char>(c)); };
  const auto nText = std::count_if(s.begin(), s.end(), is_text);
  const auto nMarks = std::count_if(s.begin(), s.end(), [&](char c) { return kMarks.find(c) != std::string::npos; });
  const bool bForeign = std::any_of(s.begin(), s.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte == 0xFF || (byte >= 0x20 && byte < 0x40 && byte != 0x25);
  });
  const auto nAll = static_cast<std::ptrdiff_t>(s.size());
  return nAll > 0 && !bForeign && nText * 100 >= nAll * 40 && (nText + nMarks) * 100 >= nAll * 80;
}

bool IsCounted(const FileBeginning& file, RecordForm form) {
  std::vector<std::string> records;
  if (!Gather(file, form, 0, true, records)) return false;
  std::string sText;
  for (const std::string& sRecord : records) sText += sRecord.substr(std::min<size_t>(1, sRecord.size()));
  return IsEbcdicText(sText);
}

bool HasLineEnds(std::string_view sHead) {
  constexpr int64_t kBytesPerLine = 2000;
  const auto nEnds = std::count_if(sHead.begin(), sHead.end(), [](char c) { return c == '\x15' || c == '\x25'; });
  return nEnds > 0 && static_cast<int64_t>(sHead.size()) / nEnds <= kBytesPerLine;
}

RecordForm FormOf(const FileBeginning& file) {
  if (IsCounted(file, RecordForm::Rdw)) return RecordForm::Rdw;
  if (IsCounted(file, RecordForm::Blocks)) return RecordForm::Blocks;
  return HasLineEnds(file.sHead) ? RecordForm::Lines : RecordForm::Fixed;
}

/// The first of the usual lengths that divides the file and at whose ends blanks stand; 0 if none does.
size_t LengthOf(const FileBeginning& file) {
  constexpr size_t kOfHundred = 80;
  for (const size_t nLength : kUsualLengths) {
    if (file.nBytes % static_cast<int64_t>(nLength) != 0) continue;
    size_t nRecords = 0;
    size_t nBlank = 0;
    for (size_t n = nLength; n <= file.sHead.size(); n += nLength, ++nRecords) nBlank += file.sHead[n - 1] == '\x40';
    if (nRecords > 0 && nBlank * 100 >= nRecords * kOfHundred) return nLength;
  }
  return 0;
}

bool IsMachineCode(char c) {
  const auto byte = static_cast<unsigned char>(c);
  const unsigned way = byte & 0x7FU;
  if (byte == 0x03) return true;
  return (way & 0x07U) == 1 || (way & 0x07U) == 3 ? (byte & 0x80U) != 0 || way <= 0x1B : false;
}

/// Whether all records begin with codes of that kind, and one of them begins a page.
CarriageControl ControlOf(const std::vector<std::string>& records, const clsEbcdicPage* pEbcdic) {
  constexpr size_t kFewest = 3;
  const auto asa = [&](const std::string& s) {
    if (s.empty()) return '\0';
    if (pEbcdic == nullptr) return s.front();
    const char32_t ch = pEbcdic->CharOf(static_cast<unsigned char>(s.front()));
    return ch < 0x80 ? static_cast<char>(ch) : '\0';
  };
  const auto is_asa = [&](const std::string& s) { return std::string_view(" 0-+1").find(asa(s)) != std::string::npos; };
  const auto is_page = [&](const std::string& s) { return asa(s) == '1'; };
  const auto is_machine = [](const std::string& s) { return !s.empty() && IsMachineCode(s.front()); };
  if (records.size() < kFewest) return CarriageControl::None;
  const bool bAsa = std::all_of(records.begin(), records.end(), is_asa);
  if (bAsa && std::any_of(records.begin(), records.end(), is_page)) return CarriageControl::Asa;
  return std::all_of(records.begin(), records.end(), is_machine) ? CarriageControl::Machine : CarriageControl::None;
}

}  // namespace

bool LooksLikeEbcdic(std::string_view sHead) {
  constexpr size_t kFewest = 16;
  if (sHead.size() < kFewest) return false;
  const FileBeginning file{sHead, static_cast<int64_t>(sHead.size()) + 1};
  return IsEbcdicText(sHead) || IsCounted(file, RecordForm::Rdw) || IsCounted(file, RecordForm::Blocks);
}

bool FindRecordKind(const FileBeginning& file, const InputOptions& options, RecordKind& kind, std::string& sFault) {
  kind = {};
  if (!options.sEbcdicPage.empty()) {
    kind.pEbcdic = clsEbcdicPage::Find(options.sEbcdicPage);
  } else if (options.bFindKinds && LooksLikeEbcdic(file.sHead)) {
    kind.pEbcdic = clsEbcdicPage::Find(kUsualPage);
  }
  const bool bEbcdic = kind.pEbcdic != nullptr;
  kind.nLength = static_cast<size_t>(options.lRecordLength);
  kind.form = options.records;
  if (kind.form == RecordForm::Auto && kind.nLength > 0) kind.form = RecordForm::Fixed;
  if (kind.form == RecordForm::Auto) kind.form = bEbcdic ? FormOf(file) : RecordForm::Lines;
  if (kind.form == RecordForm::Fixed && kind.nLength == 0) kind.nLength = LengthOf(file);
  if (kind.form == RecordForm::Fixed && (kind.nLength == 0 || kind.nLength > kMostLength)) {
    sFault = Translate("where its records end can't be told; say it by --record-length or --records");
    return false;
  }
  kind.control = options.carriageControl;
  if (kind.control == CarriageControl::Unsaid) kind.control = bEbcdic ? CarriageControl::Auto : CarriageControl::None;
  if (kind.control != CarriageControl::Auto) return true;
  std::vector<std::string> records;
  // What is no whole record of that form at the front is told when the text is made.
  kind.control = Gather(file, kind.form, kind.nLength, bEbcdic, records) ? ControlOf(records, kind.pEbcdic)
                                                                         : CarriageControl::None;
  return true;
}

}  // namespace quillon
