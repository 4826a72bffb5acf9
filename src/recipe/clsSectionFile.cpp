#include "clsSectionFile.h"

#include <algorithm>

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
  std::stable_sort(headers_.begin(), headers_.end(),
                   [this](const Header& a, const Header& b) { return Name(a) < Name(b); });
}

bool clsSectionFile::SeekSection(std::string_view section) {
  if (!bIndexed_) IndexHeaders();
  const auto before = [this](const Header& header, std::string_view sName) { return Name(header) < sName; };
  auto found = std::lower_bound(headers_.begin(), headers_.end(), section, before);
  const auto isEarlier = [&](const Header& header) { return Name(header) == section && header.nLine < nLine_; };
  found = std::partition_point(found, headers_.end(), isEarlier);
  const bool bFound = found != headers_.end() && Name(*found) == section;
  nLine_ = bFound ? size_t{found->nLine} + 1 : starts_.size();
  return bFound;
}

}  // namespace quillon
