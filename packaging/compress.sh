#!/bin/sh
# compress.sh PAGES TREE VERSION: manual pages and the change log in the form of packages, the same bytes each time.
set -eu
cd "$1"
for page in *.1 *.5; do gzip -9nkf "$page"; done
stamp=$(LC_ALL=C date -u -R -d "@${SOURCE_DATE_EPOCH:-0}")
{
  printf 'quillon (%s) stable; urgency=medium\n\n' "$3"
  printf '  * See CHANGELOG.md of the sources.\n\n'
  printf ' -- Quillon maintainers <maintainers@brindlemark.example>  %s\n' "$stamp"
} | gzip -9n >changelog.gz
