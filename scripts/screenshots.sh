#!/usr/bin/env bash
# Makes the pictures of the documents from the real program on a screen of its own.
#
#   scripts/screenshots.sh [FOLDER] [NAME...]     default: docs/images, all pictures
#
# QUILLON_WINDOW=PROGRAM takes that one and builds nothing; QUILLON_SCREEN=1024x600 shows how it looks on a small screen,
# QUILLON_LANGUAGE=German and QUILLON_COLOURS=dark in another language or other colours, QT_SCALE_FACTOR=1.5 enlarged.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

folder=$(realpath -m "${1:-docs/images}")
wanted=("${@:2}")
window_program=${QUILLON_WINDOW:-build/bin/quillon-gui}
if [ -z "${QUILLON_WINDOW:-}" ]; then
  scripts/setup.sh build gui screenshots
  build_preset release -DQUILLON_GUI=ON -DQUILLON_TESTS=OFF -- quillon-gui quillon_help
fi

# A short path, as the pictures show it.
home=/tmp/quillon-pictures
rm -rf "$home"
mkdir -p "$home" "$folder"
mkdir -m 700 "$home/run"
started=()
finish() {
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  rm -rf "$home"
}
trap finish EXIT

mkfifo "$home/display"
exec 3<>"$home/display"
Xvfb -displayfd 3 -screen 0 "${QUILLON_SCREEN:-1600x1350}x24" >/dev/null 2>&1 &
started+=($!)
read -r number <&3
export DISPLAY=:$number XDG_RUNTIME_DIR=$home/run APPDATA=$home/data LC_ALL=C.UTF-8 HOME=$home
unset QT_QPA_PLATFORM QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME DBUS_SESSION_BUS_ADDRESS
openbox >/dev/null 2>&1 &
started+=($!)

data="$APPDATA/Brindlemark, Inc/Quillon"
program=

language=${QUILLON_LANGUAGE:-}
looks="${QUILLON_COLOURS:+sColours=$QUILLON_COLOURS\\r\\n}${language:+[Language]\\r\\nLanguage_Code=$language\\r\\n}"

# text TEXT: in the language of the pictures
text() {
  if [ -z "$language" ]; then echo "$1"; return; fi
  sed -n "s/^\"$1\",\"\(.*\)\"\r\$/\1/p" "data/Languages/$language-Quillon.txt" | head -1
}
# access TEXT: the key that clicks on what has this caption
access() {
  echo "alt+$(text "$1" | sed -n 's/.*&\(.\).*/\1/p' | tr '[:upper:]' '[:lower:]')"
}

# fresh [SETTINGS]: a data folder that has seen its first start
fresh() {
  rm -rf "$APPDATA"
  mkdir -p "$data"
  cp -r data/Example* data/Profiles "$data"
  printf '[Settings]\r\nbFirstTimeUser=FALSE\r\n' >"$data/Store.ini"
  printf '%b' "${1:-[General]\\r\\n$looks}" >"$data/QLN.INI"
}

# Windows come and go while they are looked for.
window() {
  local found
  for _ in $(seq 100); do
    found=$({ xdotool search --onlyvisible --name "$1" 2>/dev/null || true; } | tail -1)
    [ -n "$found" ] && echo "$found" && return
    sleep 0.1
  done
  echo "screenshots.sh: no window is called '$1'" >&2
  return 1
}

# open TITLE [ARGUMENT...]: starts the program and waits for its window and the end of the banner
open() {
  "$window_program" "${@:2}" 2>/dev/null &
  program=$!
  main=$(window "$1")
  timeout 5 xdotool windowactivate --sync "$main" || true
  sleep 0.7
}
close() {
  kill "$program" 2>/dev/null || true
  wait "$program" 2>/dev/null || true
}
keys() {
  for key in "$@"; do
    xdotool key --clearmodifiers "$key"
    sleep 0.15
  done
}
# shot NAME [WINDOW]: the window with its frame; "root" is all that stands on the screen
shot() {
  sleep 0.4
  if [ "${2:-}" = root ]; then
    import -window root -trim "$folder/$1.png"
  else
    import -frame -window "${2:-$main}" "$folder/$1.png"
  fi
  pngquant --force --ext .png --skip-if-larger 128 "$folder/$1.png" || true
  optipng -quiet -o3 "$folder/$1.png"
}
# job FILE METHOD INPUT OUTPUT: a job file in the data folder
job() {
  printf '[QLN]\r\nsInputFile=%s\r\nsOutputFile=%s\r\nlConversionMethod=%s\r\n' "$3" "$4" "$2" >"$data/$1"
}
# editor TITLE WIDTH HEIGHT [STEPS]: opens the editor of the job's method, whose button is the third before the first box,
# or the fifth where options are told
editor() {
  times "${4:-3}" shift+Tab
  keys space
  editor=$(window "$1")
  local screen=${QUILLON_SCREEN:-1600x1350}
  local room=$((${screen#*x} - 40))
  xdotool windowsize --sync "$editor" "$2" $(($3 < room ? $3 : room))
  sleep 0.5
}
# recipe NAME REPORT: the recipe editor over a report of the golden cases
recipe() {
  fresh "[General]\\r\\nbUnix=True\\r\\n$looks"
  cp "tests/golden/$1/$1.rcp" "tests/golden/$1/$2" "$home"
  job Report.QLN 1 "$home/$2" "$home/$1.csv"
  printf 'sRecipeFile=%s\r\nbUnix=TRUE\r\n' "$home/$1.rcp" >>"$data/Report.QLN"
  open Report.QLN "$data/Report.QLN"
  editor "$(text 'Recipe Editor')" 900 860 5
}
# found FOLDER REPORT [SETTINGS]: Find Tables over a report of the golden cases, in a window of that title
found() {
  fresh "${3:-}"
  local language=$language
  case "${3:-}" in *German*) language=German ;; esac
  cp "tests/golden/$1/$2" "$home"
  job Report.QLN 1 "$home/$2" ''
  open Report.QLN "$data/Report.QLN"
  keys "$(access 'Find &Tables..')"
  found=$(window "${4:-^$(text 'Find Tables')$}")
  sleep 0.8
}
# tidy NAME REPORT: the recipe editor over a report with a tidy recipe
tidy() {
  fresh
  cp "tests/golden/tidy_reports/$1.rcp" "tests/golden/tidy_reports/$2" "$home"
  job Report.QLN 1 "$home/$2" "$home/$1.xlsx"
  printf 'sRecipeFile=%s\r\n' "$home/$1.rcp" >>"$data/Report.QLN"
  open Report.QLN "$data/Report.QLN"
  editor "$(text 'Recipe Editor')" 1000 860
  sleep 0.5
}
# profile NAME REPORT: the profile editor over a report
profile() {
  job Report.QLN 0 "$2" "$home/report.csv"
  printf 'sFixedWidthProfile=%s\r\nbUnix=TRUE\r\n' "$1" >>"$data/Report.QLN"
  open Report.QLN "$data/Report.QLN"
  editor 'Fixed Width Text File' 1340 560 5
}
# times N KEY...
times() {
  for _ in $(seq "$1"); do keys "${@:2}"; done
}
want() {
  [ ${#wanted[@]} -eq 0 ] && return 0
  local name
  for name in "${wanted[@]}"; do [ "$name" = "$1" ] && return 0; done
  return 1
}

converted() {
  fresh "${1:-}"
  open "Example2-Recipe.QLN" "$data/Example2-Recipe.QLN"
  keys F5
}

if want first-start; then
  rm -rf "$APPDATA"
  "$window_program" 2>/dev/null &
  program=$!
  sleep 2; shot first-start-guide root
  keys Return; sleep 1.5; shot first-start root
  close
fi
if want main-window; then converted; shot main-window; close; fi
if want profile; then fresh; open Example1-Profile.QLN "$data/Example1-Profile.QLN"; shot profile; close; fi
if want markup; then fresh; open Example4 "$data/Example4-File-Marking.QLN"; shot markup; close; fi
if want wildcard; then
  fresh
  job Bills.QLN 1 'C:\bills\*.txt' 'C:\out\*.xlsx'
  open Bills.QLN "$data/Bills.QLN"; shot wildcard; close
fi
if want running; then
  fresh
  { echo '>>1'; echo '-------- ----------------------------'; seq -f '%8.0f a line of a report that is long' 1 9000000; echo '<<1'; } >"$home/ledger.txt"
  job Ledger.QLN 2 "$home/ledger.txt" "$home/ledger.csv"
  open Ledger.QLN "$data/Ledger.QLN"; keys F5; sleep 0.6; shot running; close
fi
if want errors; then
  fresh
  printf '[Table 1]\r\nReadStartLine=NOT IN THE REPORT\r\nReadStartLineOffset=1\r\nReadEndLine=x\r\nReadEndLineOffset=1\r\nParsing=----\r\nWriteColumn=A\r\n' >"$home/wrong.rcp"
  sed -i "s|^sRecipeFile=.*|sRecipeFile=$home/wrong.rcp\r|" "$data/Example2-Recipe.QLN"
  open Example2-Recipe.QLN "$data/Example2-Recipe.QLN"; keys F5
  for _ in 1 2 3 4 5; do keys Return; done
  shot errors; close
fi
if want menu; then converted; keys alt+h; shot menu root; close; fi
if want german; then converted '[Language]\r\nLanguage_Code=German\r\n'; shot german; close; fi
if want japanese; then converted '[Language]\r\nLanguage_Code=Japanese\r\n'; shot japanese; close; fi
if want dark; then converted '[General]\r\nsColours=dark\r\n'; shot dark; close; fi
if want scale-150; then export QT_SCALE_FACTOR=1.5; converted; shot scale-150; close; unset QT_SCALE_FACTOR; fi
if want options; then
  converted
  keys alt+c o; shot options-input "$(window 'Quillon Options')"
  keys Right; shot options "$(window 'Quillon Options')"
  close
fi
if want getting-started; then converted; keys alt+h g; shot getting-started "$(window 'Getting Started Guide')"; close; fi
if want about; then converted; keys alt+h a; shot about "$(window '^Quillon$')"; close; fi
if want language; then converted; keys alt+h l; shot language "$(window '^Language$')"; close; fi
if want find-tables; then found epanet_net1_pages epanet_net1_pages.rpt; shot find-tables "$found"; close; fi
if want find-tables-german; then
  found epanet_net1_pages epanet_net1_pages.rpt '[Language]\r\nLanguage_Code=German\r\n' '^Tabellen suchen$'
  shot find-tables-german "$found"; close
fi
if want find-tables-dark; then
  found epanet_net1_pages epanet_net1_pages.rpt '[General]\r\nsColours=dark\r\n'; shot find-tables-dark "$found"; close
fi
if want closing || want proof; then
  found tidy_reports regional_temps.txt; keys Return; sleep 0.5; keys F5; sleep 0.7
  if want closing; then shot closing; fi
  keys "$(access 'P&roof..')"; proof=$(window "^$(text Proof)$"); sleep 1
  if want proof; then shot proof "$proof"; fi
  close
fi
if want recipe-kinds; then tidy regional_temps regional_temps.txt; shot recipe-kinds "$editor"; close; fi
if want recipe-editor; then recipe account_limits account_limits.prt; shot recipe-editor "$editor"; close; fi
if want recipe-proposal; then
  recipe cf6_anchorage cf6_anchorage.txt
  keys Tab Tab space; sleep 0.5; times 3 shift+Tab; keys space
  shot recipe-proposal "$editor"; close
fi
if want recipe-losses; then
  recipe epanet_net1_pages epanet_net1_pages.rpt
  keys ctrl+End; sleep 0.5; keys Tab Tab Tab; times 4 ctrl+Right; times 2 Left
  shot recipe-losses "$editor"; close
fi
if want profile-editor; then
  fresh '[General]\r\nbShowAdvancedOptions_Profile_Editor=TRUE\r\n'
  cp tests/golden/profile_ach/ach_entry.txt "$data/Profiles/Payments.txt"
  grep '^6' tests/golden/profile_ach/ach_payments.txt >"$home/entries.txt"
  profile Payments "$home/entries.txt"
  times 5 Down
  shot profile-editor "$editor"; close
fi
if want profile-proposal; then
  fresh
  cp tests/golden/dwd_stations_latin1/dwd_stations_latin1.txt "$home/stations.txt"
  profile Default-Profile "$home/stations.txt"
  times 5 Tab; keys space
  shot profile-proposal "$editor"; close
fi
if want please-wait; then
  fresh
  "$window_program" 2>/dev/null &
  program=$!
  banner=$(window '^Quillon$')
  sleep 0.1  # until it is painted
  import -window "$banner" "$folder/please-wait.png"
  optipng -quiet "$folder/please-wait.png"
  close
fi
