#!/usr/bin/env bash
# Builds everything and runs all tests. Further arguments go to ctest, for example: ./test.sh -R axis
# The first argument may choose another way:
#   --qt6               with Qt 6 instead of Qt 5
#   --sanitizers        with clang's address, undefined behaviour and leak checks
#   --fuzz SECONDS      feeds whatever reads foreign bytes with damaged ones, each reader for that long
set -euo pipefail
cd "$(dirname "$0")"
preset=dev
case "${1:-}" in
    --qt6) preset=dev-qt6 ;;
    --sanitizers) preset=asan ;;
    --fuzz)
        shift
        exec tests/fuzz/run.sh "$@"
        ;;
esac
[ "$preset" = dev ] || shift
tools/setup.sh "$preset"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset" -j "$(nproc)" "$@"
