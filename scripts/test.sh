#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    cat <<EOF
Usage: scripts/test.sh [OPTION...] [CTEST OPTION...]

Installs what is missing, builds, and runs all tests on a display of its own. Further options go to
ctest, for instance -R chart, -V or --repeat until-fail:3.

  --preset NAME  dev (default), release, asan, tsan or coverage
  --soak         the long forms of the reliability tests, which take about two hours, and nothing else
  --tidy         clang-tidy over the library, which takes minutes, and nothing else
  --coverage     all tests in the preset coverage, then how much of the library they ran; fails below
                 95 % of its lines
  --help         show this help
EOF
}

preset=dev
kind=all
needed=("${build_packages[@]}" "${run_packages[@]}" "${display_packages[@]}" "${package_packages[@]}"
    "${test_packages[@]}")
while [ $# -gt 0 ]; do
    case $1 in
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
    --soak | --tidy | --coverage)
        [ "$kind" = all ] || fail 2 "--$kind and $1 exclude each other"
        kind=${1#--}
        shift
        ;;
    *)
        break
        ;;
    esac
done

# More at a time than there are processors: tests wait for frames and ticks half of their time.
selection=(--parallel "$(($(nproc) * 2))")
targets=()
case $kind in
soak)
    selection=(--build-config Soak --tests-regex '\.long$' --verbose)
    ;;
tidy)
    needed+=("${tidy_packages[@]}")
    selection=(--build-config Tidy --tests-regex '^tooling\.clang-tidy' --parallel "$(nproc)")
    targets=(ChartsLibrary)
    ;;
coverage)
    case $preset in
    dev | coverage) preset=coverage ;;
    *) fail 2 "--coverage has a preset of its own, not $preset" ;;
    esac
    needed+=("${coverage_packages[@]}")
    ;;
esac

require_packages "${needed[@]}"
configure "$preset" -DCHARTS_BUILD_TESTS=ON
build "$preset" "${targets[@]}"
[ "$kind" != coverage ] || find "$repository/build/coverage" -name '*.gcda' -delete
on_virtual_display ctest --preset "$preset" "${selection[@]}" "$@"

if [ "$kind" = coverage ]; then
    # Objects of the library alone. Branches that only an exception takes, which the compiler adds to every
    # call, are left out: the library throws none.
    cd "$repository"
    gcovr --root . --filter src/ --object-directory build/coverage/src --exclude-throw-branches \
        -j "$(nproc)" --txt "$(log_file coverage)" --print-summary --fail-under-line 95 \
        build/coverage/src || fail 1 "too little of the library was run, see $(log_file coverage)"
    echo "Lines that were not run: $(log_file coverage)"
fi
