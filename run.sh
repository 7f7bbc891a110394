#!/usr/bin/env bash
# Builds the chart items and opens the gallery that shows them. Without a display every page becomes a picture in
# pictures/. Arguments go to the gallery, for example: ./run.sh --page spectrum --size 800x480
set -euo pipefail
cd "$(dirname "$0")"
tools/setup.sh release
cmake --preset release >/dev/null
cmake --build --preset release --target gallery
exec build/release/bin/gallery "$@"
