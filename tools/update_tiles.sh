#!/usr/bin/env bash
# Takes the pictures of the opening page's tiles (gallery/tiles) again, after pages have changed. Needs a built gallery
# and the package imagemagick. Usage: tools/update_tiles.sh [path of the gallery]
set -euo pipefail
cd "$(dirname "$0")/.."
gallery=${1:-build/release/bin/gallery}
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
awk 'BEGIN { print "# format: replay-csv 1\n# kind: y\n# x-first: 0\n# x-step: 1\n# points: 600\n# x-unit: ms"
             for (i = 0; i < 600; ++i) print sin(i / 9) * exp(-(i - 250) ^ 2 / 9000) + 0.03 * sin(i * i) }' >"$folder/burst"

# What of a page its tile shows.
part() {
    case $1 in
    persistence) echo 446x212+2+47 ;;
    points) echo 460x188+8+52 ;;
    axes) echo 410x168+8+52 ;;
    stress) echo 480x196+90+100 ;;
    events) echo 490x200+100+48 ;;
    *) echo 624x255+8+48 ;;
    esac
}

for scheme in "" -light; do
    "$gallery" --size 640x400 --replay "$folder/burst" --shots "$folder$scheme" ${scheme:+--light} >/dev/null
    for picture in "$folder$scheme"/*.png; do
        page=$(basename "$picture" .png)
        [ "$page" = home ] && continue
        convert "$picture" -crop "$(part "$page")" +repage -resize 464x190! -dither None -colors 48 -strip \
            -define png:compression-level=9 "PNG8:gallery/tiles/$page$scheme.png"
    done
    [ -z "$scheme" ] || rm -r "$folder$scheme"
done
