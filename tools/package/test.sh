#!/usr/bin/env bash
# Builds the Debian packages in a root that has nothing but what they ask for, checks them with lintian, installs them
# into another clean root and draws a document and a page of the gallery there. Asks sudo to be root. The packages are left
# in build/package. Ends with 77 where it cannot run.
set -euo pipefail
cd "$(dirname "$0")/../.."
[ "$(id -u)" -eq 0 ] || exec sudo "$0" "$@"
skip() {
    echo "skipped: $*"
    exit 77
}
# Alone with what is mounted in the roots: that is gone with this process, whatever ends it.
if [ "${1:-}" != --alone ]; then
    unshare --mount true 2>/dev/null || skip 'clean roots need a machine where root may mount'
    exec unshare --mount "$0" --alone
fi
tools/setup.sh package || skip 'mmdebstrap and lintian cannot be installed'
work=$PWD/build/package
rm -rf --one-file-system "$work"
mkdir -p "$work"
release=$(. /etc/os-release && echo "$VERSION_CODENAME")
/usr/lib/apt/apt-helper -qq -o APT::Sandbox::User=root download-file "http://deb.debian.org/debian/dists/$release/InRelease" "$work/InRelease" ||
    skip "there are no packages for clean roots: deb.debian.org has no answer for $release"
bootstrap() {
    mmdebstrap --quiet --mode=root --skip=check/qemu --variant=minbase --aptopt='APT::Install-Recommends "false"' \
        "$@" "$release" "$root"
}
make_root() {
    bootstrap "$@" && return
    # Is it what was asked for, or this machine?
    rm -rf --one-file-system "$root"
    bootstrap || skip 'clean roots cannot be made here'
    return 1
}

# In a clean root, with nothing of the caller's environment: a compiler launcher is not installed there.
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 "$@"; }

root=$work/build-root
wanted=$(awk '/^Build-Depends:/ { on = 1; next } /^[^ ]/ { on = 0 } on { print $1 }' debian/control | tr -d ,)
make_root --include="build-essential $(echo $wanted | sed 's/debhelper-compat/debhelper/')"
mkdir "$root/build"
git ls-files -z --cached --others --exclude-standard | tar -c --null --files-from=- --transform 's,^,graph-plugin/,' |
    tar -x -C "$root/build"
inside sh -c 'cd /build/graph-plugin && dpkg-buildpackage -us -uc' >"$work/log" 2>&1 ||
    { tail -n 60 "$work/log"; exit 1; }
mv "$root"/build/*.* "$work"
(cd "$work" && lintian --allow-root --fail-on error,warning --tag-display-limit 0 ./*.changes)

# Programs in C++ are built with nothing but the packages.
cp "$work"/lib*.deb "$root/build"
rm -f "$root"/build/*dbgsym*
inside sh -c 'dpkg -i /build/*.deb' >>"$work/log" 2>&1
inside sh -c 'cmake -G Ninja -S /usr/share/doc/graph_plugin/examples -B /build/examples && cmake --build /build/examples' \
    >>"$work/log" 2>&1 || { tail -n 30 "$work/log"; exit 1; }
rm -rf "$root"

root=$work/root
mkdir "$work/debs"
cp "$work"/*.deb "$work/debs"
rm -f "$work"/debs/*dbgsym* "$work"/debs/*-dev_*
make_root --customize-hook="copy-in $work/debs /" \
    --customize-hook='chroot "$1" sh -c "DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends /debs/*.deb"' \
    >>"$work/log" 2>&1 || { tail -n 30 "$work/log"; exit 1; }
cp tools/package/chart.qml "$root"
inside graph-view --shot /chart.png /chart.qml 2>&1 | tee "$work/said"
inside graph-gallery --page spectrum --shot /spectrum.png 2>&1 | tee -a "$work/said"
mv "$root/chart.png" "$root/spectrum.png" "$work"
# The picture that was drawn, and nothing else, is told.
if grep -v '^/spectrum.png$' "$work/said"; then
    echo "The programs complain" >&2
    exit 1
fi
echo 'Installed, in KiB:'
chroot "$root" sh -c 'du -k /usr/lib/*/libgraph_charts.so.*.* /usr/lib/*/libtoskorn*.so.*.* /usr/lib/*/qt5/qml/graph_*/*.so /usr/bin/graph-*'
rm -rf "$root" "$work/debs"
