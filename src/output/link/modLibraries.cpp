#include "modLibraries.h"

#include <fmt/format.h>
#include <isa-l.h>
#include <zip.h>
#include <zlib.h>

#include "modLateGsf.h"

namespace quillon {

std::string WorkbookLibraries() {
  return fmt::format("libzip {}, ISA-L {}.{}.{}, zlib {}, libgsf {}", zip_libzip_version(), ISAL_MAJOR_VERSION,
                     ISAL_MINOR_VERSION, ISAL_PATCH_VERSION, zlibVersion(), GsfVersion());
}

}  // namespace quillon
