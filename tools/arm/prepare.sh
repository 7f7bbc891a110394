#!/usr/bin/env bash
# Installs the cross compiler and unpacks what programs for a 32-bit ARM processor are built and run with: libraries to
# build/arm-sysroot and the emulator to build/arm-emulator, half a gigabyte. Ends with 77 where they cannot be had.
set -euo pipefail
cd "$(dirname "$0")/../.."
if ! tools/setup.sh arm; then
    echo 'skipped: the cross compiler cannot be installed'
    exit 77
fi
sysroot=$PWD/build/arm-sysroot
tools/arm/unpack.sh armhf bookworm "$sysroot" \
    libc6-dev libstdc++-12-dev libgcc-12-dev qtbase5-dev libqt5svg5-dev qtdeclarative5-dev libqt5quicktest5 \
    qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtqml-models2 qml-module-qttest libdbus-1-dev
# The generators of Qt run here.
for tool in /usr/lib/qt5/bin/*; do
    ln -sfn "$tool" "$sysroot/usr/lib/qt5/bin/$(basename "$tool")"
done
# That of Debian 12 cannot start child processes of Qt.
tools/arm/unpack.sh "$(dpkg --print-architecture)" bookworm-backports "$PWD/build/arm-emulator" qemu-user
