#!/usr/bin/env bash
# Takes the pictures of the opening page's tiles (gallery/tiles) again, after pages have changed. Needs a built gallery
# and the package imagemagick. Usage: tools/update_tiles.sh [path of the gallery]
set -euo pipefail
cd "$(dirname "$0")/.."
gallery=${1:-build/release/bin/graph-gallery}
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
awk 'BEGIN { print "# format: replay-csv 1\n# kind: y\n# x-first: 0\n# x-step: 1\n# points: 600\n# x-unit: ms"
             for (i = 0; i < 600; ++i) print sin(i / 9) * exp(-(i - 250) ^ 2 / 9000) + 0.03 * sin(i * i) }' >"$folder/burst"

# What of a page its tile shows.
part() {
    case $1 in
    persistence) echo 516x274+8+50 ;;
    points) echo 372x198+8+44 ;;
    axes) echo 334x168+8+50 ;;
    stress) echo 398x212+60+98 ;;
    *) echo 504x268+8+50 ;;
    esac
}

for scheme in "" -light; do
    options=(--replay "$folder/burst" ${scheme:+--light})
    "$gallery" --size 520x400 "${options[@]}" --shots "$folder/all$scheme" >/dev/null
    # Its panel takes the room of the chart.
    "$gallery" --size 720x400 "${options[@]}" --page persistence --shot "$folder/all$scheme/persistence.png" >/dev/null
    for picture in "$folder/all$scheme"/*.png; do
        page=$(basename "$picture" .png)
        [ "$page" = home ] && continue
        convert "$picture" -crop "$(part "$page")" +repage -resize 464x247^ -gravity center -extent 464x247 \
            -dither None -colors 48 -strip -define png:compression-level=9 "PNG8:gallery/tiles/$page$scheme.png"
    done
done
