#!/usr/bin/env bash
# Configures a preset where that has not been done yet, and builds it. What the tools have to say is shown only when
# it is long in coming or when something goes wrong.
# usage: scripts/build.sh PRESET [TARGET]...
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
if (($# == 0)); then
    echo 'usage: scripts/build.sh PRESET [TARGET]...' >&2
    exit 2
fi
preset=$1
shift

log=$(mktemp)
trap 'rm -f "$log"' EXIT
if [[ ! -f build/$preset/build.ninja ]]; then
    echo "Configuring build/$preset"
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        cat "$log" >&2
        echo "Configuring build/$preset failed." >&2
        exit 1
    fi
fi
targets=()
if (($#)); then
    targets=(--target "$@")
fi
# Ninja tells before it starts whether there is anything to do, so an idle call stays silent.
if [[ $(ninja -C "build/$preset" -n "$@" 2>/dev/null | tail -n 1) != 'ninja: no work to do.' ]]; then
    echo "Building build/$preset"
    cmake --build --preset "$preset" "${targets[@]}"
fi
