#!/bin/sh
# Rebuilds kestovar.ico and small.ico from the icon-*.svg drawings beside this script.
# Every size has a drawing on its own pixel grid, so nothing is scaled down and blurred; only the
# 256 pixel image is the 64 pixel drawing, four times as large.
# Needs rsvg-convert (librsvg2-bin) and icotool (icoutils).
set -eu

cd "$(dirname "$0")"
images=$(mktemp -d)
trap 'rm -rf "$images"' EXIT

for size in 16 20 24 32 48 64; do
    rsvg-convert -w "$size" -h "$size" -o "$images/$size.png" "icon-$size.svg"
done
rsvg-convert -w 256 -h 256 -o "$images/256.png" icon-64.svg

# The largest image is stored as PNG, as Windows expects; all others are bitmaps, which every
# version reads.
icotool -c -o kestovar.ico "$images/16.png" "$images/24.png" "$images/32.png" "$images/48.png" \
    "$images/64.png" -r "$images/256.png"
icotool -c -o small.ico "$images/16.png" "$images/20.png" "$images/24.png"
