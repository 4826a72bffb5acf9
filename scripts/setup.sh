#!/usr/bin/env bash
# Installs the Debian packages that are missing, and does nothing when all are there.
#
#   scripts/setup.sh [build] [demo] [tests] [gui] [screenshots] [checks] [fuzz] [valgrind] [bench] [package]      default: build tests gui
#
# Works as root and as a user with sudo, on a machine that has nothing but apt.
set -euo pipefail

build="g++ cmake ninja-build pkg-config libfmt-dev libcli11-dev nlohmann-json3-dev libzip-dev libisal-dev libgsf-1-dev zlib1g-dev libzstd-dev liblzma-dev libbz2-dev cmark-gfm"
demo="python3"
# The workbooks that the tests make are read back by programs of other makers.
tests="python3 python3-openpyxl python3-xlrd python3-xlwt python3-xlsxwriter python3-lxml libgtest-dev libreoffice-calc-nogui gnumeric poppler-utils zstd"
# Batches on many machines are tried under what starts them there, completions in the shells themselves.
tests+=" parallel munge slurm-client slurmctld slurmd python3-yaml bash-completion zsh fish"
gui="qt6-base-dev"
screenshots="xvfb openbox xdotool imagemagick optipng pngquant fonts-dejavu-core fonts-noto-cjk"
checks="clang-format clang-tidy git"
fuzz="clang llvm python3"
valgrind="valgrind"
bench="gawk csvkit python3-pandas libxlsxwriter-dev libbenchmark-dev python3"
package="python3 dpkg-dev file gzip"

wanted=""
for set in "${@:-build tests gui}"; do
  for name in $set; do
    case "$name" in
      build | demo | tests | gui | screenshots | checks | fuzz | valgrind | bench | package) wanted+=" ${!name}" ;;
      *) echo "setup.sh: no set of packages is called '$name' (build, demo, tests, gui, screenshots, checks, fuzz, valgrind, bench, package)" >&2; exit 2 ;;
    esac
  done
done

missing=""
for package in $wanted; do
  case " $missing " in *" $package "*) continue ;; esac
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=" $package"
done
[ -n "$missing" ] || exit 0

root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup.sh: packages are missing and there is no sudo. As root, run:" >&2
    echo "  apt-get install -y --no-install-recommends$missing" >&2
    exit 1
  fi
  root=(sudo)
fi

log=$(mktemp)
policy=/usr/sbin/policy-rc.d
own_policy=""
trap 'rm -f "$log"; [ -z "$own_policy" ] || "${root[@]}" rm -f "$policy"' EXIT
# The tests start the daemons that they need; none starts by being installed.
if ! [ -e "$policy" ] && [[ " $missing " == *" munge "* || " $missing " == *" slurm"* ]]; then
  own_policy=yes
  printf '#!/bin/sh\nexit 101\n' | "${root[@]}" tee "$policy" >/dev/null
  "${root[@]}" chmod 755 "$policy"
fi
apt() {
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 \
    -o Dpkg::Use-Pty=0 "$@" </dev/null >>"$log" 2>&1
}
# Lists may be absent or too old to fetch by; the first failure is therefore no failure yet.
install() {
  # shellcheck disable=SC2086
  apt install --no-install-recommends $missing
}
echo "Installing once:$missing" >&2
if ! install && ! { apt update && install; }; then
  cat "$log" >&2
  echo "setup.sh: apt could not install the packages above" >&2
  exit 1
fi
