#!/usr/bin/env bash
# Builds the chart items and opens the gallery that shows them, with Qt 6 after --qt6. Without a display every page
# becomes a picture in pictures/. Arguments go to the gallery, for example: ./run.sh --page spectrum --size 800x480
set -euo pipefail
cd "$(dirname "$0")"
preset=release
if [ "${1:-}" = --qt6 ]; then
    preset=release-qt6
    shift
fi
tools/setup.sh "$preset"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target gallery
exec "build/$preset/bin/graph-gallery" "$@"
