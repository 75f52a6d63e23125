#!/usr/bin/env bash
# regenerate.sh - draws the specimen sheets of docs/fonts anew. Needs g++, CMake and ImageMagick.
set -euo pipefail
cd "$(dirname "$0")/../.."

mkdir -p build
cmake --preset release >build/specimen.log
cmake --build --preset release --target specimen -j "$(nproc)" >>build/specimen.log
for font in Small8 Geneva12 Helvetica10; do
    build/release/docs/fonts/specimen "$font" "build/$font.gif"
    convert "build/$font.gif" -strip -define png:exclude-chunks=all "docs/fonts/${font,,}.png"
done
