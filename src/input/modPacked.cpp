#include "modPacked.h"

#include <algorithm>
#include <array>

#include "clsUnpacker.h"
#include "modPaths.h"
#include "modText.h"

namespace quillon {

namespace {

struct Kind {
  Packing packing;
  std::string_view sName;
  std::string_view sMagic;
};

constexpr std::string_view kBzip2Block = "\x31\x41\x59\x26\x53\x59";
constexpr std::string_view kBzip2End = "\x17\x72\x45\x38\x50\x90";

constexpr std::array kKinds{
    Kind{Packing::Gzip, "gzip", "\x1F\x8B\x08"},
    Kind{Packing::Zstd, "zstd", "\x28\xB5\x2F\xFD"},
    Kind{Packing::Xz, "xz", std::string_view("\xFD\x37\x7A\x58\x5A\x00", 6)},
    Kind{Packing::Bzip2, "bzip2", "BZh"},
    Kind{Packing::Zip, "zip", "PK\x03\x04"},
    Kind{Packing::Zip, "zip", "PK\x05\x06"},  // holds nothing
};

constexpr std::array<std::string_view, 5> kEndings{"gz", "zst", "xz", "bz2", "zip"};

/// "BZh" may begin a text; what stands behind the digit may not.
bool IsBzip2(std::string_view sHead) {
  const std::string_view sBehind = sHead.substr(std::min<size_t>(4, sHead.size()));
  return sBehind.starts_with(kBzip2Block) || sBehind.starts_with(kBzip2End);
}

}  // namespace

Packing PackingOf(std::string_view sHead) {
  for (const Kind& kind : kKinds) {
    if (!sHead.starts_with(kind.sMagic)) continue;
    return kind.packing != Packing::Bzip2 || IsBzip2(sHead) ? kind.packing : Packing::None;
  }
  return Packing::None;
}

std::string_view NameOf(Packing packing) {
  for (const Kind& kind : kKinds) {
    if (kind.packing == packing) return kind.sName;
  }
  return {};
}

std::string BaseNameOfReport(std::string_view sPath) {
  std::string sName = BaseNameOfPath(sPath);
  const std::string sEnd = ExtensionOfPath(sPath);
  const bool bPacked = std::any_of(kEndings.begin(), kEndings.end(), [&](auto s) { return EqualNoCase(s, sEnd); });
  return bPacked && sName.find('.') != std::string::npos ? BaseNameOfPath(sName) : sName;
}

std::unique_ptr<clsByteSource> OpenPacked(Packing packing, int nHandle, std::string_view sPath, Failure& failure) {
  if (packing == Packing::Zip) return OpenZipMember(nHandle, sPath, failure);
  auto source = std::make_unique<clsUnpacker>(packing, nHandle, sPath);
  failure = source->LastFailure();
  return failure.Failed() ? nullptr : std::move(source);
}

}  // namespace quillon
