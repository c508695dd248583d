#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    cat <<EOF
Usage: scripts/package.sh

Installs what is missing, builds the library and leaves the packages for Debian and its relatives in
build/packages: the library, the QML module and the development files.

  --help  show this help
EOF
}

case ${1:-} in
--help | -h)
    usage
    exit 0
    ;;
-*)
    fail 2 "unknown option '$1', see --help"
    ;;
esac
[ $# -eq 0 ] || fail 2 "takes no arguments, got '$1'"

require_packages "${build_packages[@]}" "${package_packages[@]}"
command -v dpkg-shlibdeps >/dev/null || fail 1 'packages can only be built where dpkg-shlibdeps is'
configure package
build package
rm -rf "$repository/build/packages"
cpack --preset package >"$(log_file packages)" 2>&1 ||
    { tail -n 60 "$(log_file packages)" >&2; fail 1 'cpack could not write the packages'; }
# Where CPack works is not what it makes.
rm -rf "$repository/build/packages/_CPack_Packages"
printf '%s\n' "$repository"/build/packages/*.deb
