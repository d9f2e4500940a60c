#!/usr/bin/env bash
# Runs tests of a build beside each other, the longest first; see the help below.
set -euo pipefail

usage() {
    cat <<'HELP'
usage: scripts/run_tests.sh BUILD [CTEST-OPTION]...

Runs the tests of a build folder. One that needs a real desktop (its label is desktop or wayland) and fails is run a
second time, alone, since whatever else the machine does can make it late; that is said at the end, and written into
the file that KELPA_SECOND_RUNS names. Every other test has to pass at once: it has nothing to wait for.
HELP
}

# The names in a list of ctest's, one a line.
listed() {
    sed -nE 's/^ *Test +#[0-9]+: //p'
}

# The names of the tests that failed in the last run.
failed_tests() {
    sed 's/^[0-9]*://' "$build/Testing/Temporary/LastTestsFailed.log" 2>/dev/null | sort -u
}

run_once_more() {
    local pattern
    pattern=$(paste -sd '|' <<<"$1" | sed 's/[][\.*^$+?(){}]/\\&/g')
    echo "Once more, since they need a real desktop and it may have been too busy: $(paste -sd ' ' <<<"$1")"
    ctest --test-dir "$build" --output-on-failure --no-tests=error -R "^($pattern)\$" || return 1
    echo "Passed only in a second run: $(paste -sd ' ' <<<"$1")"
}

case ${1---help} in
    --help | -h)
        usage
        exit 0
        ;;
esac
build=$1
shift
rm -f "$build/Testing/Temporary/LastTestsFailed.log"
# Those that wait for what happens on a desktop leave the processors to others, and say so by their number of them.
if ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$((2 * $(nproc)))" "$@"; then
    exit 0
fi
failed=$(failed_tests)
desktop=$(comm -12 <(echo "$failed") <(ctest --test-dir "$build" -N -L '^(desktop|wayland)$' | listed | sort -u))
[[ -n $desktop ]] || exit 1
[[ -z ${KELPA_SECOND_RUNS:-} ]] || echo "$desktop" >>"$KELPA_SECOND_RUNS"
run_once_more "$desktop" && [[ $desktop = "$failed" ]]
