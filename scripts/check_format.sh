#!/usr/bin/env bash
# Fails when a C++ source is not formatted as .clang-format says. With --fix it formats them all.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
case ${1-} in
    '') mode=(--dry-run -Werror) ;;
    --fix) mode=(-i) ;;
    *)
        echo 'usage: scripts/check_format.sh [--fix]' >&2
        exit 2
        ;;
esac
mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp' '*.mm')
if ((${#sources[@]} == 0)); then
    echo 'check_format: found no sources' >&2
    exit 1
fi
clang-format "${mode[@]}" "${sources[@]}"
echo "${#sources[@]} sources are formatted"
