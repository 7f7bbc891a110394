#!/usr/bin/env bash
# Builds the chart items and opens the gallery that shows them, with Qt 6 after --qt6. Without a display every page
# becomes a picture in pictures/. Arguments go to the gallery, for example: ./run.sh --page spectrum --size 800x480
# --docs builds the documentation as a site instead.
set -euo pipefail
cd "$(dirname "$0")"
if [ "${1:-}" = --docs ]; then
    tools/setup.sh docs
    mkdocs build --quiet
    echo "$PWD/build/site/index.html"
    exit
fi
preset=release
if [ "${1:-}" = --qt6 ]; then
    preset=release-qt6
    shift
fi
tools/setup.sh "$preset"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target gallery graph-view
exec "build/$preset/bin/graph-gallery" "$@"
