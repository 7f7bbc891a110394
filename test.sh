#!/usr/bin/env bash
# Builds everything and runs all tests. --sanitizers does the same with clang's address, undefined behaviour and
# leak checks. Further arguments go to ctest, for example: ./test.sh -R axis
# --fuzz SECONDS feeds whatever reads foreign bytes with damaged ones instead, each reader for that long.
set -euo pipefail
cd "$(dirname "$0")"
if [ "${1:-}" = --fuzz ]; then
    shift
    exec tests/fuzz/run.sh "$@"
fi
preset=dev
if [ "${1:-}" = --sanitizers ]; then
    preset=asan
    shift
fi
tools/setup.sh "$preset"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset" -j "$(nproc)" "$@"
