#!/usr/bin/env bash
# Starts the program on a card of 5,000 recordings with rear videos, each time with an empty thumbnail cache: how long
# until the list is painted with its rows, and how late events are handled on the interface thread while the list is
# scrolled, the window resized, recordings play, and thumbnails and telemetry load. Then the command line on the same card.
# Usage: benchmarks/window.sh [BUILD-FOLDER]; needs the preset "bench" built, ffmpeg and Xvfb.
set -euo pipefail

build=${1:-$(dirname "$0")/../build/bench}
starts=9
listings=9
seconds=20
work=$(mktemp -d)
display=
trap '[ -z "$display" ] || kill "$display" || true; rm -rf "$work"' EXIT
card=$work/card

for tool in "$build/bin/sample-card" "$build/bin/window-benchmark" "$build/bin/cardreel" ffmpeg Xvfb mawk; do
    command -v "$tool" >/dev/null || { echo "window.sh: $tool is missing" >&2; exit 1; }
done
"$build/bin/sample-card" --recordings 5000 --pictures 500 --distinct-videos 2 --seconds 5 --size 320x180 --bitrate 60k \
    "$card" 2>/dev/null

mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1920x1200x24 3>"$work/display" 2>/dev/null &
display=$!
read -r number <"$work/display"
export DISPLAY=:$number QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$work/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"

# Settings and thumbnails of its own, and new ones each time.
window() {
    rm -rf "$work/cache" "$work/config"
    mkdir -p "$work/cache" "$work/config/Cardreel"
    printf '[General]\nMapTiles=\n' >"$work/config/Cardreel/cardreel.conf" # asks no server
    XDG_CACHE_HOME=$work/cache XDG_CONFIG_HOME=$work/config STARTED_AT=${EPOCHREALTIME/[.,]/} \
        "$build/bin/window-benchmark" "$card" "$1" 2>"$work/messages"
}

median() { sort -n | mawk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

window 0 >/dev/null # fills the system's caches
for ((i = 0; i < starts; i++)); do
    window 0 | mawk '$1 == "list-shown" { print $2 }'
done >"$work/starts"
printf '%-58s %7.0f ms   (%.0f to %.0f in %d starts)\n' "from start to the painted list, median" \
    "$(median <"$work/starts")" "$(sort -n "$work/starts" | head -n 1)" "$(sort -n "$work/starts" | tail -n 1)" $starts

window $seconds >"$work/events"
made=$(find "$work/cache" -name '*.jpg' | wc -l)
mawk -v seconds=$seconds -v made="$made" '
    $1 != "event" { value[$1] = $2; next }
    { longest = $2; processor = $3; receiver = $4 }
    END {
        printf "%d recordings, %d s, %d thumbnails made meanwhile, %d events probed\n", value["rows"], seconds, made, value["probes"]
        printf "%-58s %7.2f ms\n", "lateness of events, median", value["median"]
        printf "%-58s %7.2f ms\n", "lateness of events, 99 of 100", value["p99"]
        printf "%-58s %7.2f ms   (%d later than 50 ms)\n", "lateness of events, greatest", value["latest"], value["over-50ms"]
        printf "%-58s %7.2f ms   (%.2f ms of processor time, %s)\n", "longest event", longest, processor, receiver
    }' "$work/events"

# The command line, by turns with find as in scan.sh.
now() { echo "${EPOCHREALTIME/[.,]/}"; }
timed() {
    local start end
    start=$(now)
    "$@" >"$work/output"
    end=$(now)
    echo $(((end - start) / 10)) | mawk '{ print $1 / 100 }'
}
for ((i = 0; i < listings; i++)); do
    timed find "$card" -printf '%p %s %T@\n' >>"$work/find"
    timed "$build/bin/cardreel" list "$card" >>"$work/list"
    timed "$build/bin/cardreel" list "$card" --json >>"$work/json"
done
printf '%-58s %7.1f ms\n' "find CARD -printf '%p %s %T@\\n'" "$(median <"$work/find")"
printf '%-58s %7.1f ms\n' "cardreel list CARD" "$(median <"$work/list")"
printf '%-58s %7.1f ms\n' "cardreel list CARD --json" "$(median <"$work/json")"
