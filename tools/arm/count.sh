#!/usr/bin/env bash
# Counts the instructions that a 32-bit ARM processor executes for a frame of each scene of benchmarks/scenes.cpp, in
# thousands, Qt's own included. The emulator logs which blocks of instructions it translates and executes, so this is a
# count and no estimate; it takes three quarters of a minute of a processor a scene. Usage: count.sh [SCENE...]
set -euo pipefail
cd "$(dirname "$0")/../.."
tools/arm/prepare.sh
build=build/arm-count
cmake -S . -B $build -G Ninja --toolchain tools/arm/toolchain.cmake -DGRAPH_SYSROOT="$PWD/build/arm-sysroot" \
    -DCMAKE_BUILD_TYPE=None "-DCMAKE_CXX_FLAGS=-O2 -Wno-psabi" -DBUILD_TESTING=OFF -DGRAPH_BENCHMARKS=ON >/dev/null
cmake --build $build --target benchmark_scenes >/dev/null
[ $# -gt 0 ] || set -- '' # all of them, in one process
qt=$PWD/build/arm-sysroot/usr/lib/arm-linux-gnueabihf/qt5
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software QML2_IMPORT_PATH=$qt/qml QT_PLUGIN_PATH=$qt/plugins
for scene in "$@"; do
    build/arm-emulator/usr/bin/qemu-arm -L build/arm-sysroot -d in_asm,exec,nochain,strace -D /dev/fd/3 \
        $build/bin/benchmark_scenes $scene 3>&1 >/dev/null | perl tools/arm/count.pl 8
done
