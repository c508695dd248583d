#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

distributions=(bookworm trixie)
joined_distributions() { printf '%s\n' "${distributions[@]}" | paste -sd, | sed 's/,/, /g'; }

usage() {
    cat <<EOF
Usage: scripts/check-root.sh [OPTION...] DISTRIBUTION [CTEST OPTION...]

In a fresh installation of DISTRIBUTION ($(joined_distributions)), below a folder: runs scripts/test.sh
and scripts/package.sh. In a second one: installs the packages with what they depend on, builds
examples/minimal against them and runs it. Needs root and downloads from Debian. Further options go to
ctest.

  --cache DIR    keeps what was downloaded and compiled, and takes the room (default: build/roots)
  --head         check the last commit instead of the working tree
  --mirror URL   where Debian lies (default: where apt of this machine finds it)
  --no-tests     build and try the packages only
  --help         show this help
EOF
}

arguments=("$@")
cache=$repository/build/roots
from_head=false
mirror=
run_tests=true
while [ $# -gt 0 ]; do
    case $1 in
    --help | -h)
        usage
        exit 0
        ;;
    --cache | --mirror)
        [ -n "${2:-}" ] || fail 2 "$1 needs a value"
        if [ "$1" = --cache ]; then
            cache=$(realpath -m -- "$2")
        else
            mirror=$2
        fi
        shift 2
        ;;
    --head)
        from_head=true
        shift
        ;;
    --no-tests)
        run_tests=false
        shift
        ;;
    -*)
        fail 2 "unknown option '$1', see --help"
        ;;
    *)
        break
        ;;
    esac
done
distribution=${1:-}
# Not grep -q, which would end at once and break the pipe.
printf '%s\n' "${distributions[@]}" | grep -xF -- "$distribution" >/dev/null ||
    fail 2 "unknown distribution '$distribution', there are: $(joined_distributions)"
shift
[ "$(id -u)" -eq 0 ] || fail 1 'needs root, as debootstrap and chroot do'
require_packages debootstrap

# In namespaces of its own, where they are allowed: whatever was mounted or started ends with this script,
# however it ends.
if [ -z "${CHARTS_IN_NAMESPACE:-}" ] && unshare --mount --pid --fork true 2>/dev/null; then
    CHARTS_IN_NAMESPACE=1 exec unshare --mount --pid --fork --kill-child "$0" "${arguments[@]}"
fi

if [ -z "$mirror" ]; then
    # shellcheck disable=SC2016 # apt fills these in
    mirror=$(apt-get indextargets --format '$(ORIGIN)|$(LABEL)|$(REPO_URI)' 'Created-By: Packages' |
        sed -n 's/^Debian|Debian|//p' | sort -u | sed -n 1p)
    [ -n "$mirror" ] || fail 1 'apt of this machine knows no mirror of Debian, name one with --mirror'
fi
mkdir -p "$cache/$distribution.archives" "$cache/$distribution.ccache"
work=$(mktemp -d "$cache/$distribution.XXXXXX")

leave() {
    local mounted
    for mounted in "$work"/*/{proc,root/.cache/ccache}; do
        if mountpoint -q "$mounted"; then umount "$mounted"; fi
    done
    # Should something still be mounted, it is not ours to remove.
    rm -rf --one-file-system "$work"
}
trap leave EXIT
trap 'exit 130' INT TERM

step() { printf '\n== %s: %s\n' "$distribution" "$1"; }

# The log of a command, shown when it fails: quietly MESSAGE COMMAND...
quietly() {
    local message=$1
    shift
    "$@" >"$work/log" 2>&1 || { tail -n 60 "$work/log" >&2; fail 1 "$message"; }
}

base=$cache/$distribution.tar
if [ ! -f "$base" ]; then
    step 'a fresh installation'
    include=()
    case $mirror in https:*) include=(--include=ca-certificates) ;; esac
    quietly 'debootstrap failed' debootstrap --variant=minbase "${include[@]}" \
        "$distribution" "$work/base" "$mirror"
    chroot "$work/base" apt-get clean
    tar -C "$work/base" -cf "$work/base.tar" .
    mv "$work/base.tar" "$base"
    rm -rf "$work/base"
fi

# Unpacks an installation in which programs can run: new_root NAME
new_root() {
    local root=$work/$1
    mkdir "$root"
    tar -C "$root" -xf "$base"
    cp -L /etc/resolv.conf "$root/etc/resolv.conf"
    apt-config dump --format '%f "%v";%n' Acquire::http::Proxy Acquire::https::Proxy \
        >"$root/etc/apt/apt.conf.d/90host"
    # Programs look themselves up there, and the gallery the load of the cores. A mount of its own fits
    # the namespace of processes; without one the machine's serves. Where nothing may be mounted, a copy
    # of what can be copied has to do: everything builds and runs with it, but tests that watch the
    # machine or themselves may fail.
    if ! mount -t proc proc "$root/proc" 2>/dev/null &&
        ! mount --bind /proc "$root/proc" 2>/dev/null; then
        echo "$(basename "$0"): nothing can be mounted here, /proc is a copy" >&2
        cp /proc/cpuinfo /proc/meminfo /proc/stat /proc/uptime /proc/filesystems "$root/proc"
    fi
    # Downloads and compiled objects are kept from one run to the next.
    cp -al "$cache/$distribution.archives/." "$root/var/cache/apt/archives/" 2>/dev/null ||
        cp -a "$cache/$distribution.archives/." "$root/var/cache/apt/archives/"
    # Without a pseudo terminal, which there is none of.
    printf '%s\n' 'APT::Keep-Downloaded-Packages "true";' 'Dpkg::Use-Pty "false";' \
        >"$root/etc/apt/apt.conf.d/90keep"
    # Nothing is started because it was installed.
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    mkdir -p "$root/root/.cache/ccache"
    mount --bind "$cache/$distribution.ccache" "$root/root/.cache/ccache" 2>/dev/null || true
}

keep_archives() { # NAME
    find "$work/$1/var/cache/apt/archives" -maxdepth 1 -name '*.deb' \
        -exec cp -n -t "$cache/$distribution.archives" {} +
}

# In a namespace without a network, where that is possible: X servers are found by names that belong to the
# network, and those of the machine are not to be taken for ours.
alone=()
if [ -n "${CHARTS_IN_NAMESPACE:-}" ] && unshare --net true 2>/dev/null; then
    alone=(unshare --net)
fi

inside() { # NAME COMMAND...
    local root=$work/$1
    shift
    env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} \
        ${https_proxy:+https_proxy="$https_proxy"} "${prefix[@]}" chroot "$root" "$@"
}
prefix=()

inside_alone() { # NAME COMMAND...
    local prefix=("${alone[@]}")
    inside "$@"
}

step 'unpacked'
new_root build
# Not a name that stands in what is installed: a test looks there for the folder of the sources.
mkdir "$work/build/checkout"
cd "$repository"
if $from_head; then
    git archive HEAD
else
    git ls-files -z --cached --others --exclude-standard |
        tar -c --null --ignore-failed-read -T - 2>/dev/null
fi | tar -C "$work/build/checkout" -xf -

if $run_tests; then
    step 'scripts/test.sh'
    # First all that it does but for the tests, which then run without a network.
    inside build /checkout/scripts/test.sh --show-only "$@" >"$work/log" ||
        fail 1 "scripts/test.sh could not build on $distribution"
    keep_archives build
    inside_alone build /checkout/scripts/test.sh "$@" || fail 1 "the tests failed on $distribution"
fi

step 'scripts/package.sh'
inside build /checkout/scripts/package.sh || fail 1 "no packages on $distribution"
keep_archives build
results=$repository/build/packages-$distribution
rm -rf "$results"
mkdir -p "$results"
cp "$work"/build/checkout/build/packages/*.deb "$results"

step 'the packages, in another fresh installation'
new_root use
mkdir "$work/use/packages" "$work/use/example"
cp "$results"/*.deb "$work/use/packages"
cp "$work"/build/checkout/examples/minimal/* "$work/use/example"
cp "$work"/build/checkout/tests/consumer/Plain.qml "$work/use"
# No package list is named that the packages themselves ought to bring along.
quietly 'apt could not read its lists' inside use apt-get -qq update
quietly 'apt could not install the packages' inside use bash -c \
    'apt-get -qq install -y --no-install-recommends /packages/*.deb'
quietly 'apt could not install the tools' inside use apt-get -qq install -y --no-install-recommends \
    g++ cmake make pkg-config "${display_packages[@]}" libgl1-mesa-dri qml-qt6 \
    qml6-module-qtquick-window
keep_archives use

step 'examples/minimal against the packages'
quietly 'the example could not be configured' inside use cmake -S /example -B /example-build
if grep -i warning "$work/log"; then fail 1 'warnings while the example was configured'; fi
quietly 'the example could not be built' inside use cmake --build /example-build
if grep -i warning "$work/log"; then fail 1 'warnings while the example was built'; fi
quietly 'pkg-config does not find the library' inside use pkg-config --cflags --libs ChartsLibrary

# It shows its window until it is stopped, and has nothing to say. A plain document leaves with 42.
run_inside() { # COMMAND...
    inside_alone use env QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=/run/charts \
        xvfb-run -a -f /run/charts/authority -s '-screen 0 800x600x24' timeout 10 "$@" \
        >"$work/log" 2>&1
}
# With a file of its own: where xvfb-run cannot remove its folder, that hides the program's status.
mkdir -m 700 "$work/use/run/charts"
touch "$work/use/run/charts/authority"
status=0
run_inside /example-build/minimal || status=$?
if [ "$status" -ne 124 ] || [ -s "$work/log" ]; then
    cat "$work/log" >&2
    fail 1 "the example ended with $status instead of being stopped, or said the above"
fi
status=0
run_inside /usr/lib/qt6/bin/qml /Plain.qml || status=$?
if [ "$status" -ne 42 ] || [ "$(cat "$work/log")" != 'qml: the chart module works' ]; then
    cat "$work/log" >&2
    fail 1 "the plain document ended with $status instead of 42, or said the above"
fi

step 'all is well; the packages:'
printf '%s\n' "$results"/*.deb
