#!/bin/sh
# regenerate.sh - makes the pictures of docs/raster.md from the kept sheets, twice enlarged. Needs ImageMagick.
set -eu
cd "$(dirname "$0")"
for sheet in ../../tests/golden/raster/*.gif; do
    convert "$sheet" -scale 200% -define png:exclude-chunks=date,time +set date:create +set date:modify \
        "$(basename "$sheet" .gif).png"
done
