#!/bin/sh
# with_theme.sh THEME PROGRAM [ARGUMENT...]: runs it on a screen of its own with a window manager, under the platform
# theme of a desktop, which brings the order of buttons and what Enter does. 77: this machine has no such screen.
command -v xvfb-run >/dev/null && command -v openbox >/dev/null || exit 77
theme=$1
shift
QT_QPA_PLATFORM=xcb QT_QPA_PLATFORMTHEME=$theme
export QT_QPA_PLATFORM QT_QPA_PLATFORMTHEME
exec xvfb-run -a -s "-screen 0 1600x1200x24" sh -c 'openbox & manager=$!; sleep 1; "$@"; status=$?; kill $manager; exit $status' sh "$@"
