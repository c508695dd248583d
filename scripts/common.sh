# SPDX-License-Identifier: MIT
# Shared by the scripts beside it; sourced, not run.
# shellcheck shell=bash

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

build_packages=(
    g++ cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-declarative-dev qt6-shadertools-dev
    libgl-dev libvulkan-dev libxkbcommon-dev libcsv-dev
)
run_packages=(
    libgl1-mesa-dri libegl1 libgles2 libgl1 fonts-dejavu-core
    qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
    qml6-module-qtquick qml6-module-qtquick-window qml6-module-qtquick-layouts
    qml6-module-qtquick-templates qml6-module-qtquick-controls
)
display_packages=(xvfb xauth)
package_packages=(dpkg-dev file)
bench_packages=(libbenchmark-dev qt6-charts-dev qml6-module-qtcharts python3)
test_packages=(
    libbenchmark-dev qml6-module-qttest mesa-vulkan-drivers libvulkan1 qml-qt6 qmlscene-qt6 python3
    clang-format
    qt6-documentation-tools
)
tidy_packages=(clang-tidy)
coverage_packages=(gcovr)

fail() { # EXIT_CODE MESSAGE
    printf '%s: %s\n' "$(basename "$0")" "$2" >&2
    exit "$1"
}

# Installs those of the named packages that are missing.
require_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        if have_tools; then
            return
        fi
        printf '%s: this system has no apt. Install what these Debian packages hold, then call again:\n' \
            "$(basename "$0")" >&2
        printf '  %s\n' "$@" >&2
        exit 1
    fi
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail 1 "not root and no sudo; install as root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get -qq update >/dev/null || fail 1 'apt-get update failed'
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null ||
        fail 1 "apt-get could not install: ${missing[*]}"
}

# On a system without apt somebody else has installed things under other names: good enough when
# the tools answer. What is still missing CMake names.
have_tools() {
    local tool
    for tool in cmake ninja c++; do
        command -v "$tool" >/dev/null || return 1
    done
    command -v qmake6 >/dev/null || command -v qtpaths6 >/dev/null
}

# configure PRESET [CMAKE_OPTION...]: a build folder that is configured already keeps as it is.
configure() {
    local preset=$1
    shift
    CHARTS_COMPILER_LAUNCHER=$(command -v ccache || true)
    export CHARTS_COMPILER_LAUNCHER
    cd "$repository" || exit 1
    [ -f "build/$preset/build.ninja" ] && return
    cmake --preset "$preset" "$@" >"$(log_file "configure-$preset")" 2>&1 ||
        { cat "$(log_file "configure-$preset")" >&2; fail 1 'cmake could not configure the build'; }
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    cd "$repository" || exit 1
    cmake --build --preset "$preset" ${1:+--target "$@"} >"$(log_file "build-$preset")" 2>&1 ||
        { tail -n 60 "$(log_file "build-$preset")" >&2
          fail 1 "the build failed, all of its output is in $(log_file "build-$preset")"; }
}

log_file() {
    mkdir -p "$repository/build"
    printf '%s/build/%s.log' "$repository" "$1"
}

# Qt wants a private folder for sockets; a machine without a session has none.
ensure_runtime_directory() {
    [ -n "${XDG_RUNTIME_DIR:-}" ] && [ -d "$XDG_RUNTIME_DIR" ] && return
    XDG_RUNTIME_DIR=$(mktemp -d)
    chmod 700 "$XDG_RUNTIME_DIR"
    export XDG_RUNTIME_DIR
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
}

on_virtual_display() {
    ensure_runtime_directory
    # With a file of its own: where xvfb-run cannot remove its folder, that hides the program's status.
    local authority status=0
    authority=$(mktemp "$XDG_RUNTIME_DIR/xauthority.XXXXXX")
    env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb \
        xvfb-run -a -f "$authority" -s '-screen 0 1600x1200x24' "$@" || status=$?
    rm -f "$authority"
    return "$status"
}
