#!/usr/bin/env bash
# Installs what is missing, builds, starts the station and opens the client on it. Without arguments the demo units
# are shown live. With GPX files each file becomes a unit, moved by whole days so that it ends today. Without a display
# the client runs under Xvfb and leaves a screenshot, pallomir.png.
#
# Everything that the run writes lies below build/run: the user's own settings and data are not touched.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
files=()
for file in "$@"; do files+=("$(realpath -e "$file")"); done
cd "$top"

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target pallomir pallomir-station pallomir_web

if [ ${#files[@]} -gt 0 ]; then run=$top/build/run/recorded; else run=$top/build/run/demo; fi
rm -rf "$run"
mkdir -p "$run/profile" "$run/share/pallomir/Data" "$run/config"
export UserProfile=$run/profile XDG_DATA_HOME=$run/share XDG_CONFIG_HOME=$run/config
# Running as root, as containers do, the web engine has no sandbox to use.
[ "$(id -u)" != 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1

pids=()
finish() { for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done; wait 2>/dev/null || true; }
trap finish EXIT

station=build/release/pallomir-station/pallomir-station
data=$run/share/pallomir/Data
demo=on
printf '"pallomir browser~Startup~Live","True"\r\n' >"$run/share/pallomir/Registry.txt"
if [ ${#files[@]} -gt 0 ]; then
  demo=off
  number=0
  for file in "${files[@]}"; do
    number=$((number + 1))
    name=$(basename "$file")
    "$station" import --data "$data" --unit "$(printf 'A%011X' "$number")" --description "${name%.*}" --today "$file"
  done
  {
    printf '"pallomir browser~Startup~Demo Mode","False"\r\n'
    printf '"pallomir browser~Startup~LoadOnStartup","Load Data Since Midnight"\r\n'
    printf '"pallomir browser~Startup~Mobile Units","%s"\r\n' "$("$station" units --data "$data" --client-list)"
  } >"$run/share/pallomir/Registry.txt"
  echo "showing ${#files[@]} recorded track(s), moved to today; demo mode is off"
fi

# Waits until a line is in a log of ours; gives up after two minutes, or when its writer has ended.
await() {
  local log=$1 line=$2 pid=$3 until=$((SECONDS + 120))
  while ! grep -q -e "$line" "$log"; do
    if ! kill -0 "$pid" 2>/dev/null || [ $SECONDS -gt $until ]; then
      echo "nothing said \"$line\":" >&2
      tail -n 20 "$log" >&2
      return 1
    fi
    sleep 0.1
  done
}

"$station" --data "$data" --demo "$demo" >"$run/station.log" 2>&1 &
pids+=($!)
await "$run/station.log" "pallomir-station ready" $!
grep "pallomir-station ready" "$run/station.log"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  build/release/pallomir/pallomir 2>"$run/client.log"
  exit
fi

: >"$run/display"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$run/display" 2>"$run/xvfb.log" &
pids+=($!)
await "$run/display" "[0-9]" $!
export DISPLAY=:$(cat "$run/display")
build/release/pallomir/pallomir 2>"$run/client.log" &
client=$!
pids+=("$client")
await "$run/client.log" "track tile .* handed to the page" "$client"
await "$run/client.log" "map page ready" "$client"
sleep 1 # the page draws what it was handed
import -window root "$top/pallomir.png"
kill "$client"
wait "$client"
echo "screenshot: pallomir.png"
