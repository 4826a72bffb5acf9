#!/bin/sh
# with_theme.sh THEME PROGRAM [ARGUMENT...]: runs it on a screen of its own with a window manager, under the platform
# theme of a desktop, which brings the order of buttons and what Enter does. 77: this machine has no such screen.
theme=$1
if ! command -v xvfb-run >/dev/null || ! command -v openbox >/dev/null; then
  echo "SKIPPED: the window under the theme $theme: xvfb or openbox is not installed" >&2
  exit 77
fi
shift
QT_QPA_PLATFORM=xcb QT_QPA_PLATFORMTHEME=$theme
# A theme talks to the desktop's bus, whose library keeps what it took: no leak of ours.
LSAN_OPTIONS="suppressions=$(cd "$(dirname "$0")" && pwd)/leaks_of_others.supp:print_suppressions=0${LSAN_OPTIONS:+:$LSAN_OPTIONS}"
export QT_QPA_PLATFORM QT_QPA_PLATFORMTHEME LSAN_OPTIONS
exec xvfb-run -a -s "-screen 0 1600x1200x24" sh -c 'openbox & manager=$!; sleep 1; "$@"; status=$?; kill $manager; exit $status' sh "$@"
