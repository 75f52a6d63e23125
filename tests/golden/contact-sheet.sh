#!/usr/bin/env bash
# contact-sheet.sh FOLDER SHEET - all GIFs of a folder with their names, nine to a picture: SHEET-00.png, SHEET-01.png, ...
set -euo pipefail

folder=$1
sheet=$2
mkdir -p "$(dirname "$sheet")"
rm -f "$sheet"-*.png
# The font by its file: not every installation has one that ImageMagick finds by itself.
montage -label '%t' -font /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf -background white -fill black \
    -pointsize 14 -tile 3x3 -geometry '500x400>+6+6' "$folder"/*.gif PNG8:"$sheet-%02d.png"
