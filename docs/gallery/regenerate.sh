#!/usr/bin/env bash
# regenerate.sh - draws all pictures of docs/ anew and writes the gallery's page. Needs g++, CMake, Python, ImageMagick.
set -euo pipefail
cd "$(dirname "$0")/../.."

mkdir -p build
cmake --preset release >build/gallery.log && cmake --build --preset release -j "$(nproc)" >>build/gallery.log
python3 docs/gallery/gallery.py build/release/qbchart docs
