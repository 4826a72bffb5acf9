#include "modLibraries.h"

#include <fmt/format.h>
#include <gsf/gsf-utils.h>
#include <isa-l.h>
#include <zip.h>
#include <zlib.h>

namespace quillon {

std::string WorkbookLibraries() {
  return fmt::format("libzip {}, ISA-L {}.{}.{}, zlib {}, libgsf {}.{}.{}", zip_libzip_version(), ISAL_MAJOR_VERSION,
                     ISAL_MINOR_VERSION, ISAL_PATCH_VERSION, zlibVersion(), libgsf_major_version, libgsf_minor_version,
                     libgsf_micro_version);
}

}  // namespace quillon
