#!/usr/bin/env bash
# Builds the desktop program and starts it. A job file or a switch may follow: scripts/window.sh MyJob.QLN
set -euo pipefail
here=$PWD
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build gui
build_preset release -DQUILLON_GUI=ON -DQUILLON_TESTS=OFF -- quillon-gui quillon_help
program=$PWD/build/bin/quillon-gui
cd "$here"
exec "$program" "$@"
