#!/bin/sh
# Rebuilds buttons.bmp, the strip of button faces, from the drawings in faces, which it joins from
# left to right in the order of their numbers.
# Every face is 26 by 21 pixels in the sixteen standard colours, on the colour of the button itself.
# Needs convert (ImageMagick).
set -eu

cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The colour table always holds all sixteen colours, whichever of them the faces use.
convert -size 1x1 xc:'#000000' xc:'#800000' xc:'#008000' xc:'#808000' xc:'#000080' xc:'#800080' \
    xc:'#008080' xc:'#808080' xc:'#C0C0C0' xc:'#FF0000' xc:'#00FF00' xc:'#FFFF00' xc:'#0000FF' \
    xc:'#FF00FF' xc:'#00FFFF' xc:'#FFFFFF' +append "$work/colours.ppm"

convert faces/[0-9][0-9]-*.xpm +append +dither -remap "$work/colours.ppm" -type Palette \
    -compress None "BMP3:$work/buttons.bmp"
mv "$work/buttons.bmp" buttons.bmp
