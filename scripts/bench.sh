#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    cat <<EOT
Usage: scripts/bench.sh [--full] [--here] [--only SECTION]

Installs what is missing, builds in release mode, and measures frames of the library beside bare OpenGL
calls and Qt Charts, in about five minutes. The tables are printed and left in
build/bench/results.md, what the programs printed in results.jsonl beside it.

  --full          also what takes a software renderer long: up to eight million points, half an hour
  --here          on the display of this session instead of one of its own, as a graphics card needs it
  --only SECTION  one part, see benchmarks/compare.py --help; may be repeated
  --help          show this help

Nothing else should run meanwhile.
EOT
}

display=on_virtual_display
arguments=()
while [ $# -gt 0 ]; do
    case $1 in
    --help | -h)
        usage
        exit 0
        ;;
    --full) arguments+=(--full) ;;
    --here) display=env ;;
    --only)
        [ $# -ge 2 ] || fail 2 "--only needs a section"
        arguments+=(--only "$2")
        shift
        ;;
    *) fail 2 "unknown option '$1'" ;;
    esac
    shift
done

require_packages "${build_packages[@]}" "${run_packages[@]}" "${display_packages[@]}" \
    "${bench_packages[@]}"
configure bench
build bench
"$display" python3 benchmarks/compare.py build/bench/benchmarks --output build/bench \
    ${arguments[@]+"${arguments[@]}"}
