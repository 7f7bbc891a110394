#!/usr/bin/env bash
# Unpacks the libraries that the project needs on a 32-bit ARM instrument into a folder: sysroot.sh FOLDER.
# Debian cannot install Qt's development packages of two architectures side by side, hence the folder. No script of a
# package is run. A folder that is complete is left as it is.
set -euo pipefail
root=$1
packages=(
    libc6-dev libstdc++-12-dev libgcc-12-dev qtbase5-dev qtdeclarative5-dev libqt5quicktest5
    qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtquick-layouts qml-module-qtqml-models2
    qml-module-qttest libdbus-1-dev dbus-daemon fontconfig-config fonts-roboto-unhinted fonts-dejavu-core
)
stamp=$root/packages
[ "$(cat "$stamp" 2>/dev/null)" != "${packages[*]}" ] || exit 0

rm -rf "$root"
mkdir -p "$root/apt/lists/partial" "$root/apt/cache/archives/partial"
touch "$root/apt/status"
# A package manager of its own, with this machine's mirror of the release: what comes after it differs between
# architectures for hours.
apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
    awk -v release="$(. /etc/os-release && echo "$VERSION_CODENAME")" \
        '$2 == release && $3 == "main" { print "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]", $0; exit }' \
        >"$root/apt/sources.list"
cat >"$root/apt/apt.conf" <<END
#clear APT::Architectures;
APT::Architecture "armhf";
APT::Architectures { "armhf"; };
APT::Install-Recommends "false";
APT::Sandbox::User "root";
Acquire::Languages "none";
Debug::NoLocking "true";
Dir::State::status "$root/apt/status";
Dir::State::lists "$root/apt/lists";
Dir::Cache "$root/apt/cache";
Dir::Etc::sourcelist "$root/apt/sources.list";
Dir::Etc::sourceparts "-";
END
export APT_CONFIG=$root/apt/apt.conf
apt-get -qq update
apt-get -qq --download-only install "${packages[@]}" >/dev/null
for package in "$root"/apt/cache/archives/*.deb; do
    dpkg-deb -x "$package" "$root"
done
rm -r "$root/apt"

# Absolute links would lead out of the folder.
find "$root" -type l -lname '/*' -print0 | while IFS= read -r -d '' link; do
    ln -sfnr "$root$(readlink "$link")" "$link"
done
# The generators of Qt run here.
for tool in /usr/lib/qt5/bin/*; do
    ln -sfn "$tool" "$root/usr/lib/qt5/bin/$(basename "$tool")"
done
echo "${packages[*]}" >"$stamp"
