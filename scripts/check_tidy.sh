#!/usr/bin/env bash
# clang-tidy with the project's small set of checks on the core, from the clang build's compile commands.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
if [[ ! -f build/clang/compile_commands.json ]]; then
    cmake --preset clang >/dev/null
fi
mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- \
    {base,logging,prefs,panes,timer,history,water,ui,app}/'*.cpp')
if ((${#sources[@]} == 0)); then
    echo 'check_tidy: found no sources' >&2
    exit 1
fi
printf '%s\0' "${sources[@]}" | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/clang --quiet
echo "${#sources[@]} sources are tidy"
