#pragma once
// Reports that come compressed.

#include <memory>
#include <string>
#include <string_view>

#include "clsByteSource.h"

namespace quillon {

enum class Packing { None, Gzip, Zstd, Xz, Bzip2, Zip };

/// By the first bytes of a file, whatever it is called.
Packing PackingOf(std::string_view sHead);
/// "gzip", as people call it.
std::string_view NameOf(Packing packing);

/// The bytes that a compressed file holds. Several streams behind each other are one text; a zip archive must have one
/// member that is a file, without a password. Damage, a missing end, wrong check sums and bytes of no stream are
/// failures. nHandle stays the caller's and must outlive the source. Null with the reason.
std::unique_ptr<clsByteSource> OpenPacked(Packing packing, int nHandle, std::string_view sPath, Failure& failure);

/// A report's name without folder and extension, for its output: that of "report.txt.gz" is "report".
std::string BaseNameOfReport(std::string_view sPath);

/// The zip kind of OpenPacked.
std::unique_ptr<clsByteSource> OpenZipMember(int nHandle, std::string_view sPath, Failure& failure);

}  // namespace quillon
