#!/usr/bin/env bash
# Looks for mistakes with clang-tidy, by the checks of .clang-tidy: in the files that are named, else in all of the
# product, which takes about 20 minutes of a processor. Usage: tools/tidy.sh [FILE.cpp...]
set -euo pipefail
cd "$(dirname "$0")/.."
command -v clang-tidy >/dev/null || { echo "skipped: clang-tidy is missing"; exit 0; }
cmake --preset dev >/dev/null
files=("$@")
[ $# -gt 0 ] || mapfile -t files < <(git ls-files 'src/*.cpp' 'kit/*.cpp' 'viewer/*.cpp')
database=$(mktemp -d)
trap 'rm -rf "$database"' EXIT
# A precompiled header is of use only to the compiler that made it, and so are options that clang does not know.
sed -E 's# -Winvalid-pch -include [^ ]+/cmake_pch\.hxx##; s# -fvect-cost-model=[a-z]+##' build/dev/compile_commands.json \
    >"$database/compile_commands.json"
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p "$database" 2>/dev/null
echo "${#files[@]} files, nothing found"
