#!/usr/bin/env bash
# Builds everything for a 32-bit ARM processor and runs all tests on an emulated one. Arguments go to ctest.
# Libraries and emulator are unpacked to build/, half a gigabyte.
set -euo pipefail
cd "$(dirname "$0")/../.."
tools/setup.sh arm
sysroot=$PWD/build/arm-sysroot
tools/arm/unpack.sh armhf bookworm "$sysroot" \
    libc6-dev libstdc++-12-dev libgcc-12-dev qtbase5-dev libqt5svg5-dev qtdeclarative5-dev libqt5quicktest5 \
    qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtqml-models2 qml-module-qttest libdbus-1-dev
# The generators of Qt run here.
for tool in /usr/lib/qt5/bin/*; do
    ln -sfn "$tool" "$sysroot/usr/lib/qt5/bin/$(basename "$tool")"
done
# That of Debian 12 cannot start child processes of Qt.
emulator=$PWD/build/arm-emulator
tools/arm/unpack.sh "$(dpkg --print-architecture)" bookworm-backports "$emulator" qemu-user

cmake --preset arm >/dev/null
cmake --build --preset arm
# ARM programs start through the emulator for the tests and what they start, and for nothing else on this machine.
export QEMU=$emulator/usr/bin/qemu-arm QEMU_LD_PREFIX=$sysroot
exec unshare --user --map-root-user --mount bash -c '
    mount -t binfmt_misc binfmt_misc /proc/sys/fs/binfmt_misc
    magic="\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x28\x00"
    mask="\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff"
    echo ":arm:M::$magic:$mask:$QEMU:F" >/proc/sys/fs/binfmt_misc/register
    exec ctest --preset arm -j "$(nproc)" "$@"' bash "$@"
