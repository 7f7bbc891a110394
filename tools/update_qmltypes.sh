#!/usr/bin/env bash
# Writes the plugins.qmltypes of both modules, from which editors know the types, out of the built modules.
# Usage: tools/update_qmltypes.sh [--check] [BUILD]; BUILD is build/dev unless given. --check writes nothing and fails
# when a file is out of date.
set -euo pipefail
check=
if [ "${1:-}" = --check ]; then
    check=yes
    shift
fi
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fresh=$scratch/plugins.qmltypes

# The files name the import path as it was given, so it has to be the same for everybody.
cd "${1:-$root/build/dev}/qml"
for module in graph_plugin graph_kit; do
    kept=$root/src/plugin/plugins.qmltypes
    [ "$module" = graph_plugin ] || kept=$root/kit/plugin/plugins.qmltypes
    if ! QT_SELECT=5 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 QML2_IMPORT_PATH='' \
        qmlplugindump -nonrelocatable "$module" 1.0 . >"$fresh" 2>"$scratch/log"; then
        cat "$scratch/log" >&2
        exit 1
    fi
    if [ -z "$check" ]; then
        cat "$fresh" >"$kept"
    elif ! diff -u "$kept" "$fresh"; then
        echo "$kept is not what the module says of itself. Run tools/update_qmltypes.sh." >&2
        exit 1
    fi
done
