#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    cat <<EOF
Usage: scripts/test.sh [--preset NAME] [--soak] [CTEST OPTION...]

Installs what is missing, builds, and runs all tests on a display of its own. Further options go to
ctest, for instance -R chart, -V or --repeat until-fail:3.

  --preset NAME  dev (default), release, asan, tsan or coverage
  --soak         the long forms of the reliability tests, which take about two hours, and nothing else
  --help         show this help
EOF
}

preset=dev
case ${1:-} in
--help | -h)
    usage
    exit 0
    ;;
--preset)
    preset=${2:-}
    case $preset in
    dev | release | asan | tsan | coverage) ;;
    *) fail 2 "unknown preset '$preset', there are: dev, release, asan, tsan, coverage" ;;
    esac
    shift 2
    ;;
esac

# More at a time than there are processors: tests wait for frames and ticks half of their time.
selection=(--parallel "$(($(nproc) * 2))")
if [ "${1:-}" = --soak ]; then
    selection=(--build-config Soak --tests-regex '\.long$' --verbose)
    shift
fi

require_packages "${build_packages[@]}" "${run_packages[@]}" "${display_packages[@]}" \
    "${test_packages[@]}"
configure "$preset" -DCHARTS_BUILD_TESTS=ON
build "$preset"
on_virtual_display ctest --preset "$preset" "${selection[@]}" "$@"
