#!/usr/bin/env bash
# Installs the packages that building and running need on Debian 12, and only those that are missing: setup.sh PRESET.
set -euo pipefail
preset=${1:-dev}
packages=(
    cmake ninja-build g++ libdbus-1-dev dbus-daemon pkg-config fontconfig fonts-roboto-unhinted fonts-dejavu-core
)
case "$preset" in
    *-qt6)
        packages+=(
            qt6-base-dev qt6-svg-dev qt6-declarative-dev qt6-declarative-dev-tools libgl-dev
            qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-window
            qml6-module-qttest
        )
        ;;
    *)
        packages+=(
            qtbase5-dev libqt5svg5-dev qtdeclarative5-dev qtdeclarative5-dev-tools
            qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtquick-layouts qml-module-qtqml-models2
            qml-module-qttest
        )
        ;;
esac
case "$preset" in
    asan | fuzz) packages+=(clang libclang-rt-14-dev) ;;
    arm) packages+=(g++-arm-linux-gnueabihf) ;;
    package) packages=(mmdebstrap lintian) ;;
    tsan) packages+=(clang libclang-rt-14-dev xvfb xauth libgl1-mesa-dri) ;;
    docs) packages=(mkdocs) ;;
esac
missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
    [ "$status" = "install ok installed" ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
root=()
[ "$(id -u)" -eq 0 ] || root=(sudo)
"${root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c \
    'apt-get -q update && apt-get -q install -y --no-install-recommends "$@"' sh "${missing[@]}"
