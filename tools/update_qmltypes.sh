#!/usr/bin/env bash
# Writes src/plugin/plugins.qmltypes, from which editors know the types, out of the built module.
# Usage: tools/update_qmltypes.sh [--check] [BUILD]; BUILD is build/dev unless given. --check writes nothing and fails
# when the file is out of date.
set -euo pipefail
check=
if [ "${1:-}" = --check ]; then
    check=yes
    shift
fi
root=$(cd "$(dirname "$0")/.." && pwd)
kept=$root/src/plugin/plugins.qmltypes
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fresh=$scratch/plugins.qmltypes

# The file names the import path as it was given, so it has to be the same for everybody.
cd "${1:-$root/build/dev}/qml"
if ! QT_SELECT=5 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 QML2_IMPORT_PATH= \
    qmlplugindump -nonrelocatable graph_plugin 1.0 . >"$fresh" 2>"$scratch/log"; then
    cat "$scratch/log" >&2
    exit 1
fi

if [ -z "$check" ]; then
    cat "$fresh" >"$kept"
elif ! diff -u "$kept" "$fresh"; then
    echo "src/plugin/plugins.qmltypes is not what the module says of itself. Run tools/update_qmltypes.sh." >&2
    exit 1
fi
