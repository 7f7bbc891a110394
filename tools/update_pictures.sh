#!/usr/bin/env bash
# Draws the pictures of the documentation again: each picture that comes right before a QML document in a page shows
# that document. Usage: tools/update_pictures.sh [BUILD]; BUILD: a build folder, build/release unless named.
set -euo pipefail
cd "$(dirname "$0")/.."
viewer=$PWD/${1:-build/release}/bin/graph-view
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for page in README.md docs/*.md docs/*/*.md; do
    # The lines of the document go into a file with the name of its picture.
    awk -v work="$work" '
        /^!\[.*\]\(.*pictures\/.*\.png\)$/ { picture = $0; sub(/.*\(/, "", picture); sub(/\)$/, "", picture); next }
        inside && /^```$/ { inside = 0; picture = ""; close(file); next }
        inside { print > file; next }
        /^```qml$/ && picture != "" {
            inside = 1
            name = picture
            sub(/.*\//, "", name)
            file = work "/" name ".qml"
            print picture > (file ".path")
            close(file ".path")
            next
        }
        NF { picture = "" }' "$page"
    for document in "$work"/*.qml; do
        [ -e "$document" ] || continue
        picture=$(dirname "$page")/$(cat "$document.path")
        # What rolls fills its window before.
        "$viewer" "$document" --shot "$picture" --wait 12000
        echo "$picture"
        rm "$document" "$document.path"
    done
done
