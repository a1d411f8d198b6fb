#!/usr/bin/env bash
# Captures forty frames of an HD and of a Full HD recording, each just before a key frame, and prints how long decoding
# takes, which goes on while the file is named, and how long it is from the name to the picture on the disk. Fails when
# that takes longer than it may.
# Usage: benchmarks/capture.sh [BUILD-FOLDER]; needs the preset "bench" built and ffmpeg.
set -euo pipefail

build=${1:-$(dirname "$0")/../build/bench}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for tool in "$build/bin/capture-benchmark" ffmpeg; do
    command -v "$tool" >/dev/null || { echo "capture.sh: $tool is missing" >&2; exit 1; }
done

# As recorders write: noise keeps the encoder at its rate, and there is a key frame each second.
missed=0
for size in 1280x720,8M 1920x1080,13M; do
    rate=${size#*,}
    ffmpeg -v error -y -f lavfi -i "testsrc2=s=${size%,*}:r=30,noise=alls=12:allf=t" -t 8 -c:v libx264 \
        -preset veryfast -b:v "$rate" -maxrate "$rate" -bufsize "$rate" -g 30 -sc_threshold 0 -pix_fmt yuv420p \
        "$work/video.MP4"
    "$build/bin/capture-benchmark" "$work/video.MP4" "$work" || missed=1
done
exit $missed
