#!/usr/bin/env bash
# Plays two Full HD files of 60 s and 13 Mbit/s in two panes of a window and reads from the frames' own numbers what the
# panes show: in step, dropped frames, processor time, rates, exact seeks, scrubbing, choosing another recording. Beside
# them ffmpeg decodes the same files and mpv plays and seeks in them.
# Usage: benchmarks/playback.sh [BUILD-FOLDER]; needs the preset "bench" built, ffmpeg, mpv and Xvfb.
set -euo pipefail

build=${1:-$(dirname "$0")/../build/bench}
work=$(mktemp -d)
display=
trap '[ -z "$display" ] || kill "$display" || true; rm -rf "$work"' EXIT
card=$work/card

for tool in "$build/bin/sample-card" "$build/bin/playback-benchmark" "$build/bin/clock-benchmark" ffmpeg mpv Xvfb mawk; do
    command -v "$tool" >/dev/null || { echo "playback.sh: $tool is missing" >&2; exit 1; }
done

# The sample card's pictures are too plain for this bitrate: noise over them makes the decoder work as a road does.
"$build/bin/sample-card" --recordings 1 --pictures 0 --seconds 60 --size 1920x1080 --bitrate 13M "$work/plain" 2>/dev/null
mkdir -p "$card/NORMAL" "$card/REAR/NORMAL"
for side in "" REAR/; do
    ffmpeg -nostdin -v error -i "$work/plain/${side}"NORMAL/*.MP4 -vf noise=alls=14:allf=t -c:v libx264 -preset superfast \
        -b:v 13M -maxrate 15M -bufsize 13M -g 15 -sc_threshold 0 -pix_fmt yuv420p -c:a copy -video_track_timescale 15360 \
        "$card/${side}NORMAL/250614080310.MP4"
    for i in 1 2 3; do
        ln "$card/${side}NORMAL/250614080310.MP4" "$card/${side}NORMAL/25061408031$i.MP4"
    done
done
front=$card/NORMAL/250614080310.MP4
rear=$card/REAR/NORMAL/250614080310.MP4

mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1920x1200x24 3>"$work/display" 2>/dev/null &
display=$!
read -r number <"$work/display"
export DISPLAY=:$number QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$work/runtime XDG_CONFIG_HOME=$work/config XDG_CACHE_HOME=$work/cache
mkdir -m 700 "$XDG_RUNTIME_DIR"

measure() { "$build/bin/playback-benchmark" "$card" "$1" 2>"$work/messages" >"$work/$1"; }
value() { mawk -v name="$2" '$1 == name { print $2; exit }' "$work/$1"; }
row() { printf '%-62s %10s %-4s %s\n' "$1" "$2" "$3" "${4:-}"; }
ratio() { mawk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }

# Processor seconds of a command: user and system.
processor() {
    local TIMEFORMAT='%U %S'
    { time "$@" >"$work/output" 2>&1; } 2>&1 | mawk '{ print $1 + $2 }'
}
elapsed() {
    local TIMEFORMAT='%R'
    { time "$@" >"$work/output" 2>&1; } 2>&1
}
median() { sort -n | mawk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

decode_both() {
    ffmpeg -nostdin -v error -i "$front" -an -f null - &
    ffmpeg -nostdin -v error -i "$rear" -an -f null -
    wait $!
}
play_both() {
    mpv --no-config --vo=null --ao=null --really-quiet "$front" &
    mpv --no-config --vo=null --ao=null --really-quiet "$rear"
    wait $!
}
seek_both() { # SECONDS
    mpv --no-config --vo=null --no-audio --really-quiet --hr-seek=yes --start="$1" --frames=1 "$front" &
    mpv --no-config --vo=null --no-audio --really-quiet --hr-seek=yes --start="$1" --frames=1 "$rear"
    wait $!
}

decoding=$(processor decode_both)
measure play
playing=$(processor play_both)
row "rate 1: frames that the panes are apart at most" "$(value play frames-apart)" "" "(target 1; more than one for $(value play more-than-one-ms) ms)"
row "frames left out after the first second, front and rear" "$(value play front-left-out), $(value play rear-left-out)" "" "(target 0)"
row "processor time, against ffmpeg -f null of both files" "$(ratio "$(value play processor)" "$decoding")" x "(target 1.6; $(value play processor) s, ffmpeg $decoding s)"
row "the same, against mpv --vo=null of both files" "$(ratio "$(value play processor)" "$playing")" x "($playing s)"

measure rates
for rate in 2 4; do
    row "rate $rate: kept by front and rear" "$(value rates "rate-$rate-front"), $(value rates "rate-$rate-rear")" "" "(target $rate ± 2 %)"
done
for rate in 8 16; do
    row "rate $rate: 60 s end after, front and rear" "$(value rates "end-$rate-front"), $(value rates "end-$rate-rear")" s "(target $(mawk -v r="$rate" 'BEGIN { print 60 / r }') ± 4 %)"
    row "rate $rate: pictures a second, front and rear" "$(value rates "pictures-$rate-front"), $(value rates "pictures-$rate-rear")" "" "(target 10)"
done

measure seek
for at in 7.01 21.37 33.9 48.55 52.2; do
    elapsed seek_both $at
done | median >"$work/mpv-seek"
row "exact seek until both panes show it, median of 100" "$(value seek seek-ms)" ms "(target 160; worst $(value seek seek-worst-ms) ms, never shown: $(value seek seek-missed))"
row "two mpv that start there, in times that" "$(ratio "$(mawk '{ print $1 * 1000 }' "$work/mpv-seek")" "$(value seek seek-ms)")" x
row "a frame on or back until both panes show it, median of 60" "$(value seek step-ms)" ms "(never shown: $(value seek step-missed))"
row "pauses after which the panes show different moments" "$(value seek pause-missed)" "" "(of 20, target 0)"

measure scrub
row "scrubbing: pictures a second, front and rear" "$(value scrub scrub-pictures-front), $(value scrub scrub-pictures-rear)" "" "(target 8; the exact frame at rest: $(value scrub scrub-rests-exactly))"
measure choose
row "another recording's first frame in both panes, median of 40" "$(value choose choose-ms)" ms "(target 250; worst $(value choose choose-worst-ms) ms)"

"$build/bin/clock-benchmark" 2>/dev/null
"$build/bin/clock-benchmark" --leak
