#!/bin/bash
# Makes the pictures of the docs anew: plays the tour offscreen, in the light theme that it begins with, beside a print
# server of its own, and takes what it needs from it into docs/pictures.
#   tools/pictures.sh [NORVANE]    the program, build/dev/bin/norvane by default
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

norvane=${1:-build/dev/bin/norvane}
if [ ! -x "$norvane" ]; then
    echo "pictures: there is no $norvane. Build first: cmake --preset dev && cmake --build build/dev" >&2
    exit 1
fi
folder=$(mktemp -d)
trap 'rm -rf -- "$folder"' EXIT
QT_QPA_PLATFORM=offscreen tests/printing/with-print-server.sh "$norvane" --tour "$folder" >"$folder/log" 2>&1 || { cat "$folder/log" >&2; exit 1; }

shopt -s nullglob
# The window after the last step of that name.
windows=("$folder"/[0-9]*-stamp-aligned.png)
cp -- "${windows[-1]}" docs/pictures/norvane.png
for bar in brush eraser stamp spot-healing blur dodge red-eye fill gradient text selection wand picker sampler ruler zoom crop-start crop move transform; do
    cp -- "$folder/$bar-bar.png" docs/pictures/
done
for panel in brush history navigator sample zoom; do
    cp -- "$folder/$panel-panel.png" docs/pictures/
done
for other in auto-crop batch-scan canvas-size color-range gradient-editor image-size layer-prompt print-preview \
    warp-text; do
    cp -- "$folder/$other.png" docs/pictures/
done
ls -l docs/pictures
