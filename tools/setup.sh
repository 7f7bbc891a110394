#!/usr/bin/env bash
# Installs the packages that building and running need on Debian 12, and only those that are missing.
set -euo pipefail
packages=(
    cmake ninja-build g++
    qtbase5-dev qtdeclarative5-dev qtdeclarative5-dev-tools
    qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtquick-layouts qml-module-qtqml-models2
    qml-module-qttest
    libdbus-1-dev dbus-daemon pkg-config fontconfig fonts-roboto-unhinted fonts-dejavu-core
)
if [ "${1:-dev}" = asan ]; then
    packages+=(clang libclang-rt-14-dev)
fi
if [ "${1:-dev}" = fuzz ]; then
    packages+=(clang libclang-rt-14-dev libdbus-1-dev pkg-config)
fi
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
