#include "clsSectionFile.h"

#include <algorithm>
#include <numeric>

#include "modText.h"
#include "modTranslator.h"

namespace quillon {

bool clsSectionFile::Open(std::string_view sPath, const TextFileOptions& options, Failure& failure) {
  *this = clsSectionFile();
  clsLineReader reader;
  if (!reader.Open(sPath, options, failure)) return false;
  bOpen_ = Load(reader);
  if (!bOpen_) {
    failure = reader.LastFailure().Failed() ? reader.LastFailure() : OwnFailure(sPath, Translate("File is too large"));
    *this = clsSectionFile();
  }
  return bOpen_;
}

bool clsSectionFile::OpenMemory(std::string_view sBytes, const TextFileOptions& options) {
  *this = clsSectionFile();
  clsLineReader reader;
  reader.OpenMemory(sBytes, options);
  bOpen_ = Load(reader);
  return bOpen_;
}

bool clsSectionFile::Load(clsLineReader& reader) {
  for (std::string_view sRow; reader.ReadRow(sRow);) {
    starts_.push_back(static_cast<uint32_t>(sText_.size()));
    reader.CodePage().Decode(sRow, sText_);
    if (sText_.size() + starts_.size() > kMaxBytes) return false;
  }
  return !reader.LastFailure().Failed();
}

bool clsSectionFile::ReadLine(std::string_view& sLine) {
  if (AtEnd()) return false;
  const size_t nStart = starts_[nLine_++];
  const size_t nEnd = nLine_ < starts_.size() ? starts_[nLine_] : sText_.size();
  sLine = std::string_view(sText_).substr(nStart, nEnd - nStart);
  return true;
}

std::string_view clsSectionFile::Name(const Header& header) const {
  return std::string_view(sText_).substr(header.nName, header.nLength);
}

void clsSectionFile::IndexHeaders() {
  bIndexed_ = true;
  const size_t nKept = nLine_;
  std::string_view sLine;
  for (nLine_ = 0; ReadLine(sLine);) {
    const size_t nOpen = sLine.find('[');
    if (nOpen == std::string_view::npos) continue;
    const size_t nClose = sLine.find(']', nOpen);
    if (nClose == std::string_view::npos || nClose == nOpen + 1) continue;
    const std::string_view sName = TrimBlanks(sLine.substr(nOpen + 1, nClose - nOpen - 1));
    if (sName.empty()) continue;
    headers_.push_back({static_cast<uint32_t>(nLine_ - 1), static_cast<uint32_t>(sName.data() - sText_.data()),
                        static_cast<uint32_t>(sName.size())});
  }
  nLine_ = nKept;
  byName_.resize(headers_.size());
  std::iota(byName_.begin(), byName_.end(), 0U);
  const auto before = [this](uint32_t a, uint32_t b) {
    const int nOrder = Name(headers_[a]).compare(Name(headers_[b]));
    return nOrder != 0 ? nOrder < 0 : a < b;
  };
  std::sort(byName_.begin(), byName_.end(), before);
}

/// The first header of that name from the present line on; as many as there are if none follows.
size_t clsSectionFile::FindHeader(std::string_view section) {
  // Sections are mostly read in their order.
  const bool bNext = nBehind_ > 0 && nBehind_ < headers_.size() && headers_[nBehind_ - 1].nLine < nLine_ &&
                     headers_[nBehind_].nLine >= nLine_;
  if (bNext && Name(headers_[nBehind_]) == section) return nBehind_;
  const auto before = [this](uint32_t nHeader, std::string_view sName) { return Name(headers_[nHeader]) < sName; };
  auto found = std::lower_bound(byName_.begin(), byName_.end(), section, before);
  const auto isEarlier = [&](uint32_t nHeader) {
    return Name(headers_[nHeader]) == section && headers_[nHeader].nLine < nLine_;
  };
  found = std::partition_point(found, byName_.end(), isEarlier);
  return found != byName_.end() && Name(headers_[*found]) == section ? *found : headers_.size();
}

bool clsSectionFile::SeekSection(std::string_view section) {
  if (!bIndexed_) IndexHeaders();
  const size_t nFound = FindHeader(section);
  const bool bFound = nFound < headers_.size();
  nLine_ = bFound ? size_t{headers_[nFound].nLine} + 1 : starts_.size();
  nBehind_ = bFound ? nFound + 1 : 0;
  return bFound;
}

}  // namespace quillon
