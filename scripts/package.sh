#!/usr/bin/env bash
# Makes the .deb packages in build-package/, the same bytes for the same sources.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build gui package
# An archive has the date of its commit in this file; in a clone git knows it, and else the newest source tells.
committed=$(grep -xE '[0-9]+' packaging/commit-date || git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$committed}
export SOURCE_DATE_EPOCH
build_preset package
rm -f build-package/*.deb
quietly build-package/cpack.log cpack --config build-package/CPackConfig.cmake -B build-package
ls build-package/*.deb
