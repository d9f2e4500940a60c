#!/usr/bin/env bash
# Builds the macOS face over GNUstep, with the address and undefined-behaviour sanitizers, and runs its tests. Installs what
# is missing (on Debian).
# usage: scripts/test_macos.sh [OPTION OF CTEST]...
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
kelpa_need_packages "${KELPA_MACOS_PACKAGES[@]}"

started=$SECONDS
scripts/build.sh macos-check
built=$SECONDS
ctest --test-dir build/macos-check/tests/macos --output-on-failure --no-tests=error -j "$(nproc)" "$@"
echo "test_macos: built in $((built - started)) s, tested in $((SECONDS - built)) s"
