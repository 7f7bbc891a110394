#!/usr/bin/env bash
# tests/fuzz/run.sh SECONDS [TARGET...]
# Builds the fuzz targets, runs each of them for that long and fails when one finds something. What it found lies below
# build/fuzz/findings then, and the target run with that file repeats it.
set -euo pipefail
cd "$(dirname "$0")/../.."
seconds=${1:?seconds for each target}
shift
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(tests/fuzz/fuzz_*.cpp)
    targets=("${targets[@]#*fuzz_}")
    targets=("${targets[@]%.cpp}")
fi
tools/setup.sh fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${targets[@]/#/fuzz_}"

export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=0
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export LSAN_OPTIONS=suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0
export DBUS_SESSION_BUS_ADDRESS=unix:path=/proc/no-bus-in-tests
mkdir -p build/fuzz/findings
failed=0
for target in "${targets[@]}"; do
    # The inputs that it grows from are left as they are.
    corpus=$(mktemp -d)
    words=()
    if [ -f "tests/fuzz/$target.dict" ]; then
        words=("-dict=tests/fuzz/$target.dict")
    fi
    log=build/fuzz/findings/$target.log
    if nice build/fuzz/bin/fuzz_"$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 \
        -malloc_limit_mb=512 -print_final_stats=1 "${words[@]}" -artifact_prefix="build/fuzz/findings/$target-" \
        "$corpus" "tests/fuzz/corpus/$target" >"$log" 2>&1; then
        echo "$target: $(sed -n 's/^Done \(.*\)/\1/p' "$log"), nothing found"
    else
        tail -n 40 "$log"
        echo "$target: see $log"
        failed=1
    fi
    rm -r "$corpus"
done
exit $failed
