#!/usr/bin/env bash
# Runs shellcheck on every shell script of the project.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
mapfile -t scripts < <(git ls-files --cached --others --exclude-standard -- run test .ci/run '*.sh' packaging/arch/PKGBUILD 'packaging/completions/*.bash')
if ((${#scripts[@]} == 0)); then
    echo 'check_shell: found no scripts' >&2
    exit 1
fi
shellcheck --external-sources "${scripts[@]}"
echo "${#scripts[@]} scripts are clean"
