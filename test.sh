#!/usr/bin/env bash
# Builds everything and runs all tests. Further arguments go to ctest, for example: ./test.sh -R axis
# The first argument may choose something else:
#   --qt6                     all tests, with Qt 6 instead of Qt 5
#   --sanitizers              all tests, with clang's address, undefined behaviour and leak checks
#   --threads                 the tests of what works in several threads, with clang's check for data races
#   --arm                     all tests on an emulated 32-bit ARM processor
#   --tidy [FILE.cpp...]      clang-tidy on the product, or on these files
#   --package                 the Debian packages, built and used in a clean root
#   --fuzz SECONDS            feeds whatever reads foreign bytes with damaged ones, each reader for that long
#   --attack [SOAK_SECONDS]   attacks a live chart, and uses it for that long
set -euo pipefail
cd "$(dirname "$0")"
preset=dev
targets=()
choice=()
script=
case "${1:-}" in
    --qt6) preset=dev-qt6 ;;
    --sanitizers) preset=asan ;;
    --threads)
        preset=tsan
        targets=(--target thread_tests)
        choice=(-R '^tst_bus_|^tst_heatmapplot$|^tst_streams$|_render_thread$')
        ;;
    --arm) script=tools/arm/test.sh ;;
    --tidy) script=tools/tidy.sh ;;
    --package) script=tools/package/test.sh ;;
    --fuzz) script=tests/fuzz/run.sh ;;
    --attack) script=tests/attack/run.sh ;;
esac
if [ -n "$script" ]; then
    shift
    exec "$script" "$@"
fi
[ "$preset" = dev ] || shift
tools/setup.sh "$preset"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" "${targets[@]}"
ctest --preset "$preset" -j "$(nproc)" "${choice[@]}" "$@"
