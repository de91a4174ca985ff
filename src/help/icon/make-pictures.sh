#!/bin/sh
# Makes the icon's PNG files from its drawings. Needs rsvg-convert (Debian: librsvg2-bin).
set -eu
cd "$(dirname "$0")"

for size in 16 24; do
  rsvg-convert --width=$size --height=$size kelvara-small.svg --output=kelvara-$size.png
done
for size in 32 48 64 128 256; do
  rsvg-convert --width=$size --height=$size kelvara.svg --output=kelvara-$size.png
done
