#!/usr/bin/env bash
# Makes the source archive of the last commit, build-package/quillon-VERSION.tar.gz, the same bytes for the same commit.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

version=$(sed -nE 's/^project\(quillon VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
mkdir -p build-package
archive=build-package/quillon-$version.tar.gz
git archive --format=tar --prefix="quillon-$version/" HEAD | gzip -9n >"$archive"
echo "$archive"
