#!/usr/bin/env bash
# Shows that the packages hang on the sources alone: unpacks the source archive in two folders of different names, makes the packages
# in each from nothing, without a compiler cache, and compares the bytes. Takes two full builds.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

scripts/setup.sh build gui package
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH CCACHE_DISABLE=1
archive=$PWD/$(scripts/archive.sh)
places=$(mktemp -d)
trap 'rm -rf "$places"' EXIT

for place in first "second place, with a longer name"; do
  mkdir "$places/$place"
  tar -xzf "$archive" -C "$places/$place" --strip-components=1
  (cd "$places/$place" && scripts/package.sh >/dev/null)
done
status=0
for package in "$places/first/build-package/"*.deb; do
  other="$places/second place, with a longer name/build-package/$(basename "$package")"
  if cmp "$package" "$other"; then
    printf 'the same bytes twice: %s  %s\n' "$(sha256sum "$package" | cut -c1-64)" "$(basename "$package")"
  else
    status=1
  fi
done
exit $status
