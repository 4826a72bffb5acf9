# shellcheck shell=bash
# Shared by the scripts beside it; the current folder is the top of the tree.

# A second build tree of the same sources, or a fresh clone, finds its objects again.
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR="${CCACHE_BASEDIR:-$PWD}" CCACHE_NOHASHDIR=1
fi

# quietly LOG COMMAND...: the command's output goes to LOG, and to the screen only if it fails.
quietly() {
  local log=$1
  shift
  mkdir -p "$(dirname "$log")"
  "$@" >"$log" 2>&1 </dev/null || { local status=$?; cat "$log" >&2; return "$status"; }
}

# build_preset PRESET [configure arguments] [-- targets]
build_preset() {
  local preset=$1 folder=build-$1 configure=() targets=()
  shift
  [ "$preset" = release ] && folder=build
  while [ $# -gt 0 ] && [ "$1" != -- ]; do configure+=("$1"); shift; done
  [ $# -gt 0 ] && shift && targets=(--target "$@")
  # A tree that was moved or copied here keeps the paths of its old place.
  if [ -e "$folder/CMakeCache.txt" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$folder/CMakeCache.txt"; then
    rm -rf "$folder"
  fi
  quietly "$folder/configure.log" cmake --preset "$preset" "${configure[@]}"
  if [ -t 1 ]; then
    cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}"
  else
    quietly "$folder/build.log" cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}"
  fi
}
