#include "modSectionFile.h"

#include <array>
#include <limits>
#include <optional>

#include "clsIniFile.h"
#include "modFailure.h"
#include "modNumbers.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

bool Holds(std::string_view sLine, std::string_view sText) {
  return sLine.find(sText) != std::string_view::npos;
}

std::string_view Trimmed(std::string_view sText, TrimMode trim) {
  switch (trim) {
    case TrimMode::LeftOnly:
      return TrimLeftBlanks(sText);
    case TrimMode::RightOnly:
      return TrimRightBlanks(sText);
    default:
      return TrimBlanks(sText);
  }
}

/// The key texts in the bytes of the lines they are looked for in. Nothing: in no line.
struct Needles {
  std::array<std::optional<std::string>, 3> texts;
  std::optional<std::string> sExclusion;

  Needles(const KeyTexts& keys, const clsCodePage& page) {
    const auto encoded = [&page](std::string_view s) -> std::optional<std::string> {
      if (!page.CanEncode(s)) return std::nullopt;
      return page.FromUtf8(s);
    };
    texts[0] = encoded(keys.sNeedle1);
    if (!keys.sNeedle2.empty()) texts[1] = encoded(keys.sNeedle2);
    if (!keys.sNeedle3.empty()) texts[2] = encoded(keys.sNeedle3);
    if (!keys.sExclusion.empty()) sExclusion = encoded(keys.sExclusion);
  }

  /// Number of the first needle that the line holds, from 1; 0 if none does or the line is excluded.
  int Match(std::string_view sLine) const {
    for (size_t i = 0; i < texts.size(); ++i) {
      if (!texts[i] || !(texts[i]->empty() ? !sLine.empty() : Holds(sLine, *texts[i]))) continue;
      return sExclusion && Holds(sLine, *sExclusion) ? 0 : static_cast<int>(i) + 1;
    }
    return 0;
  }
};

int64_t Coded(int64_t lCount, int nNeedle) {
  return nNeedle == 1 ? lCount : nNeedle == 2 ? -lCount : lCount + kThirdNeedle;
}

/// The scan of any source of lines: next(sLine) gives the next one, cut where only part of it is looked at.
template <typename Next>
int64_t Scan(const Needles& needles, Next next) {
  int64_t lCount = 0;
  for (std::string_view sLine; next(sLine);) {
    ++lCount;
    if (const int nNeedle = needles.Match(sLine); nNeedle != 0) return Coded(lCount, nNeedle);
  }
  return 0;
}

std::string_view Cut(std::string_view sLine, const KeyTexts& texts, bool bByteIsChar) {
  if (texts.lLength < 1) return sLine;
  if (!bByteIsChar) return MidChars(sLine, texts.lStartColumn, texts.lLength);
  const auto nFrom = static_cast<size_t>(texts.lStartColumn) - 1;
  return nFrom < sLine.size() ? sLine.substr(nFrom, static_cast<size_t>(texts.lLength)) : std::string_view{};
}

}  // namespace

std::string ReadSectionValue(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                             std::string_view sDefault, TrimMode trim) {
  if (!section.empty()) filehandle.SeekSection(section);
  for (std::string_view sLine; filehandle.ReadLine(sLine);) {
    if (Holds(sLine, "[")) return std::string(sDefault);
    const size_t nEqual = sLine.find('=');
    if (nEqual == std::string_view::npos || !Holds(sLine, key)) continue;
    if (TrimBlanks(sLine.substr(0, nEqual)) != key) return std::string(sDefault);
    std::string_view sValue = sLine.substr(nEqual + 1);
    sValue = Trimmed(sValue.substr(0, sValue.find(';')), trim);
    return std::string(TrimBlanks(sValue).empty() ? sDefault : sValue);
  }
  filehandle.NoteMissing();
  return std::string(sDefault);
}

std::string ReadKeyFromFile(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                            std::string_view sDefault) {
  return ReadKeyFromFileTrimmed(filehandle, section, key, sDefault, TrimMode::Both);
}

std::string ReadKeyFromFileTrimmed(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                                   std::string_view sDefault, TrimMode trim) {
  filehandle.Rewind();
  return ReadSectionValue(filehandle, section, key, sDefault, trim);
}

std::string ReadKeyFromFile(std::string_view sPath, const TextFileOptions& options, std::string_view section,
                            std::string_view key, std::string_view sDefault) {
  clsSectionFile file;
  Failure ignored;
  file.Open(sPath, options, ignored);
  return ReadSectionValue(file, section, key, sDefault);
}

bool WriteSectionValue(std::string_view sPath, std::string_view section, std::string_view key,
                       std::string_view sValue) {
  return WritePrivateProfileString(sPath, section, key, sValue);
}

bool CheckFileHeader(clsHost& host, clsSectionFile& file, std::string_view sProduct, std::string_view sFileType,
                     std::string_view sFileFormat) {
  struct Check {
    std::string_view sKey, sExpected, sMessage;
  };
  const std::array checks{Check{"Product", sProduct, "Incorrect product code!"},
                          Check{"FileType", sFileType, "Incorrect file type!"},
                          Check{"FileFormat", sFileFormat, "Incorrect file format!"}};
  for (const Check& check : checks) {
    if (UpperText(ReadKeyFromFile(file, "Header", check.sKey, kMissing)) == UpperText(check.sExpected)) continue;
    host.ShowMessage(Translate(check.sMessage), "Quillon", MessageIcon::Critical, MessageButtons::Ok);
    return true;
  }
  return false;
}

int64_t FindKeyText(clsLineReader& filehandle, const KeyTexts& texts) {
  const clsCodePage& page = filehandle.CodePage();
  const Needles needles(texts, page);
  const bool bOneNeedle = texts.lLength < 1 && texts.sNeedle2.empty() && texts.sNeedle3.empty();
  std::string_view sRow;
  if (bOneNeedle && !needles.texts[0]) {
    filehandle.SkipRows(std::numeric_limits<int64_t>::max());
    return 0;
  }
  if (bOneNeedle) return filehandle.FindRow(*needles.texts[0], needles.sExclusion.value_or(std::string()), sRow);
  return Scan(needles, [&](std::string_view& sLine) {
    if (!filehandle.ReadRow(sLine)) return false;
    sLine = Cut(sLine, texts, page.IsSingleByte());
    return true;
  });
}

int64_t FindKeyText(clsSectionFile& filehandle, const KeyTexts& texts) {
  const Needles needles(texts, clsCodePage::Utf8());
  return Scan(needles, [&](std::string_view& sLine) {
    if (!filehandle.ReadLine(sLine)) return false;
    sLine = Cut(sLine, texts, false);
    return true;
  });
}

int64_t FindKeyTextInFile(std::string_view sPath, const TextFileOptions& options, const KeyTexts& texts) {
  clsLineReader reader;
  Failure ignored;
  return reader.Open(sPath, options, ignored) ? FindKeyText(reader, texts) : 0;
}

int64_t CountMatchingLines(clsSectionFile& file, const KeyTexts& texts) {
  file.Rewind();
  int64_t lCount = 0;
  while (FindKeyText(file, texts) != 0) ++lCount;
  return lCount;
}

int64_t CountMatchingLines(std::string_view sPath, const TextFileOptions& options, const KeyTexts& texts) {
  clsSectionFile file;
  Failure ignored;
  return file.Open(sPath, options, ignored) ? CountMatchingLines(file, texts) : 0;
}

int32_t RequiredWholeNumber(std::string_view sPlace, std::string_view sKey, std::string_view sValue) {
  if (const std::optional<int32_t> lNumber = ParseWholeNumber(sValue)) return *lNumber;
  throw UnhandledFailure(std::string(sPlace) + ": " + Translate("Not a whole number") + ": " + std::string(sKey) + "=" +
                         std::string(sValue));
}

bool ReadRequiredText(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                      std::string& sResult) {
  std::string sValue = ReadSectionValue(filehandle, section, key, kMissing);
  if (sValue == kMissing) return false;
  sResult = std::move(sValue);
  return true;
}

bool ReadPositiveNumber(clsSectionFile& filehandle, std::string_view section, std::string_view key, int32_t& lResult) {
  const int32_t lValue = ParseWholeNumber(ReadSectionValue(filehandle, section, key, kMissing)).value_or(0);
  if (lValue < 1) return false;
  lResult = lValue;
  return true;
}

bool ReadColumnLetters(clsSectionFile& filehandle, std::string_view key, std::string& sResult) {
  std::string sValue = ReadSectionValue(filehandle, {}, key, kMissing);
  if (!IsColumnText(sValue)) return false;
  sResult = std::move(sValue);
  return true;
}

int32_t ReadOffset(clsSectionFile& filehandle, std::string_view sPlace, std::string_view key) {
  return RequiredWholeNumber(sPlace, key, ReadSectionValue(filehandle, {}, key, "0"));
}

bool IsColumnText(std::string_view sText) {
  const std::string sUpper = UpperText(sText);
  return sUpper >= "A" && sUpper <= "Z";
}

}  // namespace quillon
