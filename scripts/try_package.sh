#!/usr/bin/env bash
# Follows the first page of the manual as an ordinary user who has nothing but the package.
#
#   try_package.sh [quillon_VERSION_amd64.deb | FOLDER]    the package of scripts/package.sh if none is named
#
# The package is unpacked into a folder of its own (or lies unpacked in FOLDER); nothing of the machine is changed.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

package=${1:-$(ls build-package/quillon_*.deb)}
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
if [ -d "$package" ]; then cp -r "$package/." "$root"; else dpkg-deb -x "$package" "$root"; fi
cp -r tests/golden/run_docs.py tests/golden/golden.py "$root"
chmod -R a+rX "$root"
user=()
[ "$(id -u)" != 0 ] || user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
"${user[@]}" /usr/bin/python3 -B "$root/run_docs.py" --program "$root/usr/bin/quillon" \
  --files "$root/usr/share/doc/quillon/examples" "$root/usr/share/doc/quillon/manual/tutorial.md"
