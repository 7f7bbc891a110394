#!/usr/bin/env bash
# Unpacks Debian packages, and what they depend on, into a folder: unpack.sh ARCHITECTURE SUITE FOLDER PACKAGE...
# Nothing is installed and no script of a package is run, so the machine stays as it is: Debian cannot install Qt's
# development packages of two architectures side by side. A folder that is complete is left as it is. Ends with 77 where
# the packages cannot be had.
set -euo pipefail
architecture=$1
suite=$2
root=$3
shift 3
stamp=$root/packages
[ "$(cat "$stamp" 2>/dev/null)" != "$suite $*" ] || exit 0

rm -rf "$root"
mkdir -p "$root/apt/lists/partial" "$root/apt/cache/archives/partial"
touch "$root/apt/status"
# A package manager of its own, with this machine's mirror of the release.
mirror=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
    awk -v release="$(. /etc/os-release && echo "$VERSION_CODENAME")" '$2 == release && $3 == "main" { print $1; exit }')
echo "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror $suite main" >"$root/apt/sources.list"
cat >"$root/apt/apt.conf" <<END
#clear APT::Architectures;
APT::Architecture "$architecture";
APT::Architectures { "$architecture"; };
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
skip() {
    echo "skipped: packages of $suite for $architecture cannot be $1 from $mirror"
    exit 77
}
apt-get -qq -o APT::Update::Error-Mode=any update || skip listed
apt-get -qq --simulate install "$@" >/dev/null
apt-get -qq --download-only install "$@" >/dev/null || skip fetched
for package in "$root"/apt/cache/archives/*.deb; do
    dpkg-deb -x "$package" "$root"
done
rm -r "$root/apt"
# Absolute links would lead out of the folder.
find "$root" -type l -lname '/*' -print0 | while IFS= read -r -d '' link; do
    ln -sfnr "$root$(readlink "$link")" "$link"
done
echo "$suite $*" >"$stamp"
