#!/usr/bin/env bash
# Writes debian/*.symbols, the lists of what the libraries export, from the packages that test.sh has left in
# build/package. What comes from templates and inline functions depends on the compiler, and is optional.
set -euo pipefail
cd "$(dirname "$0")/../.."
version=$(dpkg-parsechangelog -S Version)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export LC_ALL=C

# list LIBRARY PACKAGE DEPENDENCY
list() {
    dpkg-deb -x build/package/"$2"_"$version"_*.deb "$scratch/$2"
    {
        echo "$1 $2 $3"
        echo '* Build-Depends-Package: libgraph-charts-dev'
        # Several symbols have one name, such as the constructors of a class: one that is not weak counts.
        nm -D --defined-only "$scratch/$2"/usr/lib/*/"$1" | sed -E 's/^[0-9a-f]+ (.) /\1 /' | c++filt |
            awk -v version="$version" '
                { type = $1; sub(/^. /, ""); sub(/@@.*/, "") }
                !($0 in strong) { strong[$0] = 0 }
                type ~ /[A-TX-Z]/ { strong[$0] = 1 }
                END {
                    for (name in strong)
                        printf " (%sc++)\"%s@Base\" %s\n", strong[name] ? "" : "optional=inline|", name, version
                }' | sort -t '"' -k 2
    } >debian/"$2".symbols
}
# Between versions only what the instrument replaces is kept compatible.
list libgraph_charts.so.0 libgraph-charts0 "(= $version)"
list libtoskorn.so.2.0 libtoskorn2.0 '#MINVER#'
list libtoskornui.so.2.0 libtoskornui2.0 '#MINVER#'
