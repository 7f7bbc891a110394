#!/usr/bin/env bash
# Builds everything for a 32-bit ARM processor and runs all tests on an emulated one. Arguments go to ctest. Ends with 77
# where the libraries of that processor cannot be had.
set -euo pipefail
cd "$(dirname "$0")/../.."
tools/arm/prepare.sh
export QEMU=$PWD/build/arm-emulator/usr/bin/qemu-arm QEMU_LD_PREFIX=$PWD/build/arm-sysroot

cmake --preset arm -DCMAKE_CROSSCOMPILING_EMULATOR="$QEMU" | sed -n 's/^-- Left out on an emulated processor/skipped/p'
cmake --build --preset arm
choice=()
# Where that is allowed (Linux 6.7), ARM programs start through the emulator for the tests and what they start, and for
# nothing else on this machine. Elsewhere tests do without those that start programs.
register='
    mount -t binfmt_misc binfmt_misc /proc/sys/fs/binfmt_misc
    magic="\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x28\x00"
    mask="\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff"
    echo ":arm:M::$magic:$mask:$QEMU:F" >/proc/sys/fs/binfmt_misc/register
    exec "$@"'
within=(unshare --user --map-root-user --mount bash -ec "$register" bash)
if ! "${within[@]}" true 2>/dev/null; then
    echo 'skipped: tests that start programs, as those of ARM cannot start by themselves here'
    within=()
    choice=(--label-exclude '^starts-programs$')
fi
# Some tests feel how fast data come in, which an emulated processor may be too slow for once.
exec "${within[@]}" ctest --preset arm --repeat until-pass:3 -j "$(nproc)" "${choice[@]}" "$@"
