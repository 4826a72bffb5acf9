#include "clsIniFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>

#include "clsOutputFile.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMaxIniBytes = size_t{64} << 20;
constexpr std::string_view kLineEnd = "\r\n";

std::string_view TrimWhite(std::string_view s) {
  const size_t nFirst = s.find_first_not_of(" \t");
  if (nFirst == std::string_view::npos) return {};
  return s.substr(nFirst, s.find_last_not_of(" \t") - nFirst + 1);
}

bool HeaderName(std::string_view sLine, std::string_view& sName) {
  sLine = TrimWhite(sLine);
  if (!sLine.starts_with('[')) return false;
  const size_t nEnd = sLine.find(']');
  sName = TrimWhite(sLine.substr(1, nEnd == std::string_view::npos ? nEnd : nEnd - 1));
  return true;
}

/// The key of a key line; nothing for comments and lines without "=".
bool KeyName(std::string_view sLine, std::string_view& sKey) {
  const size_t nEqual = sLine.find('=');
  if (nEqual == std::string_view::npos || TrimWhite(sLine).starts_with(';')) return false;
  sKey = TrimWhite(sLine.substr(0, nEqual));
  return true;
}

std::string_view ValueOf(std::string_view sLine) {
  std::string_view sValue = TrimWhite(sLine.substr(sLine.find('=') + 1));
  const bool bQuoted =
      sValue.size() >= 2 && (sValue.front() == '"' || sValue.front() == '\'') && sValue.back() == sValue.front();
  if (bQuoted) sValue = sValue.substr(1, sValue.size() - 2);
  return sValue.substr(0, sValue.find('\0'));
}

std::string Folded(std::string_view s) {
  return UpperText(s);
}

std::string OneLine(std::string sText) {
  std::replace(sText.begin(), sText.end(), '\n', ' ');
  sText.resize(sText.find_last_not_of('\r') + 1);  // A CR at the end would belong to the line end.
  return sText;
}

}  // namespace

clsIniFile::clsIniFile(const clsCodePage* pPage) : pAskedPage_(pPage) {
  LoadText({});
}

bool clsIniFile::Load(std::string_view sPath, Failure& failure) {
  std::string sBytes;
  if (!ReadWholeFile(sPath, sBytes, kMaxIniBytes, failure)) {
    if (failure.nError != ENOENT) return false;
    failure = {};
  }
  LoadText(sBytes);
  return true;
}

void clsIniFile::LoadText(std::string_view sBytes) {
  sections_.clear();
  index_.clear();
  sections_.emplace_back();
  bBom_ = sBytes.starts_with(kUtf8Bom);
  if (bBom_) sBytes.remove_prefix(kUtf8Bom.size());
  pPage_ = bBom_ ? &clsCodePage::Utf8() : pAskedPage_ != nullptr ? pAskedPage_ : &DetectCodePage(sBytes);
  const clsCodePage& page = *pPage_;
  while (!sBytes.empty()) {
    const size_t nLf = sBytes.find('\n');
    std::string_view sRaw = sBytes.substr(0, nLf == std::string_view::npos ? nLf : nLf + 1);
    sBytes.remove_prefix(sRaw.size());
    const size_t nText = sRaw.find_last_not_of("\r\n") + 1;
    Line line{page.ToUtf8(sRaw.substr(0, nText)), std::string(sRaw.substr(nText))};
    std::string_view sName;
    if (HeaderName(line.sText, sName)) {
      index_.emplace(Folded(sName), sections_.size());
      sections_.emplace_back();
      sections_.back().lines.push_back(std::move(line));
      continue;
    }
    Section& section = sections_.back();
    if (KeyName(line.sText, sName)) section.keys.emplace(Folded(sName), section.lines.size());
    section.lines.push_back(std::move(line));
  }
}

bool clsIniFile::HasSection(std::string_view sSection) const {
  return index_.contains(Folded(sSection));
}

std::string clsIniFile::Get(std::string_view sSection, std::string_view sKey, std::string_view sDefault) const {
  const auto found = index_.find(Folded(sSection));
  if (found == index_.end()) return std::string(sDefault);
  const Section& section = sections_[found->second];
  const auto key = section.keys.find(Folded(sKey));
  if (key == section.keys.end()) return std::string(sDefault);
  return std::string(MidChars(ValueOf(section.lines[key->second].sText), 1, kMaxValue));
}

int32_t clsIniFile::GetInt(std::string_view sSection, std::string_view sKey, int32_t lDefault) const {
  const std::string sValue = Get(sSection, sKey, {});
  int32_t lValue = lDefault;  // Stays where there are no digits, or too many.
  std::from_chars(sValue.data(), sValue.data() + sValue.size(), lValue);
  return lValue;
}

// A last line without line end gets one, or what follows would stand behind its text; a CR alone is none.
void clsIniFile::EndLine(Line& line) {
  if (!line.sEnd.ends_with('\n')) line.sEnd = kLineEnd;
}

clsIniFile::Section& clsIniFile::NewSection(std::string_view sSection) {
  if (!sections_.back().lines.empty()) EndLine(sections_.back().lines.back());
  index_.emplace(Folded(sSection), sections_.size());
  sections_.emplace_back();
  sections_.back().lines.push_back({OneLine("[" + std::string(sSection) + "]"), std::string(kLineEnd)});
  return sections_.back();
}

void clsIniFile::AddKeyLine(Section& section, std::string_view sKey, Line line) {
  size_t nAt = section.lines.size();
  while (nAt > 1 && TrimWhite(section.lines[nAt - 1].sText).empty()) --nAt;
  if (nAt > 0) EndLine(section.lines[nAt - 1]);
  section.keys.emplace(Folded(sKey), nAt);
  section.lines.insert(section.lines.begin() + static_cast<std::ptrdiff_t>(nAt), std::move(line));
}

void clsIniFile::Set(std::string_view sSection, std::string_view sKey, std::string_view sValue) {
  const auto found = index_.find(Folded(sSection));
  Section& section = found == index_.end() ? NewSection(sSection) : sections_[found->second];
  std::string sText = OneLine(std::string(sKey) + "=" + std::string(sValue));
  const auto key = section.keys.find(Folded(sKey));
  if (key == section.keys.end()) return AddKeyLine(section, sKey, {std::move(sText), std::string(kLineEnd)});
  section.lines[key->second].sText = std::move(sText);
}

std::string clsIniFile::Bytes() const {
  const auto joined = [&](const clsCodePage& page, size_t& nLost) {
    std::string sOut;
    for (const Section& section : sections_) {
      for (const Line& line : section.lines) {
        nLost += page.Encode(line.sText, sOut);
        sOut += line.sEnd;
      }
    }
    return sOut;
  };
  size_t nLost = 0;
  std::string sOut = joined(*pPage_, nLost);
  const bool bTells = pAskedPage_ != nullptr || IsAscii(sOut) || &DetectCodePage(sOut) == pPage_;
  if (nLost == 0 && bTells && !bBom_) return sOut;
  return std::string(kUtf8Bom) + joined(clsCodePage::Utf8(), nLost);
}

bool clsIniFile::Save(std::string_view sPath, Failure& failure) const {
  return WriteWholeFile(sPath, Bytes(), failure);
}

}  // namespace quillon
