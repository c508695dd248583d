#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    cat <<EOF
Usage: scripts/demo.sh [--page NAME] [--theme THEME] [--screenshot DIR] [FILE...]

Installs what is missing, builds, and opens the gallery. Where there is no display, writes a PNG of
each page into build/screenshots instead.

  --page NAME       open this page, or take the screenshot of this page only
                    (pages: $(pages | paste -sd, | sed 's/,/, /g'))
  --theme THEME     light, dark or system, which follows the desktop (default)
  --screenshot DIR  let each page run for two seconds, write a PNG of it into DIR and exit
  --help            show this help
  FILE              CSV files of samples for the page Signal: a header row, a time column, value
                    columns; Touchstone files (.s2p, .ts, ...) for the page Network
EOF
}

# A page is a document of the gallery.
pages() {
    local document
    for document in "$repository"/examples/gallery/qml/*Page.qml; do
        basename "$document" Page.qml
    done
}

caller_directory=$PWD
arguments=()
screenshot_directory=
while [ $# -gt 0 ]; do
    case $1 in
    --help | -h)
        usage
        exit 0
        ;;
    --page | --screenshot | --theme)
        [ -n "${2:-}" ] || fail 2 "$1 needs a value"
        if [ "$1" = --page ]; then
            # Not grep -q, which would end at once and break the pipe.
            pages | grep -ixF -- "$2" >/dev/null ||
                fail 2 "unknown page '$2', there are: $(pages | paste -sd, | sed 's/,/, /g')"
            arguments+=(--page "$2")
        elif [ "$1" = --theme ]; then
            case $2 in
            light | dark | system) arguments+=(--theme "$2") ;;
            *) fail 2 "unknown theme '$2', there are: light, dark, system" ;;
            esac
        else
            screenshot_directory=$(realpath -m -- "$2")
        fi
        shift 2
        ;;
    --)
        shift
        break
        ;;
    -*)
        fail 2 "unknown option '$1', see --help"
        ;;
    *)
        break
        ;;
    esac
done
files=()
for file in "$@"; do
    case $file in -*) fail 2 "unknown option '$file', options stand before files" ;; esac
    [ -e "$file" ] || fail 2 "$file: no such file"
    files+=("$(realpath -- "$file")")
done

needed=("${build_packages[@]}" "${run_packages[@]}")
has_display=true
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    has_display=false
    needed+=("${display_packages[@]}")
    : "${screenshot_directory:=$repository/build/screenshots}"
fi
require_packages "${needed[@]}"
configure release -DCHARTS_BUILD_TESTS=OFF -DCHARTS_WARNINGS_AS_ERRORS=OFF
[ -x "$repository/build/release/examples/gallery/gallery" ] || echo 'Building, once ...'
build release gallery

[ -z "$screenshot_directory" ] || arguments+=(--screenshot "$screenshot_directory")
cd "$caller_directory"
gallery=("$repository/build/release/examples/gallery/gallery" "${arguments[@]}" -- "${files[@]}")
if $has_display; then
    "${gallery[@]}"
else
    on_virtual_display "${gallery[@]}"
fi
