#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# Runs the tests that break what surrounds the program at full length: killed in the middle of
# writing, the power cut, the disk full, and whatever else lies under tests/faults.
#
# Usage: scripts/campaign.sh [-s START] [TEST…]
#   -s START   start of the random numbers (default: always the same)
#   TEST       run only these, as in "kill" for tests/faults/faults_kill.cpp (default: all)
#
# Ends with a table of what was tried, how many cases were run, what was found and how long it
# took, and with a non-zero status when anything failed.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

usage() {
    echo "Usage: scripts/campaign.sh [-s START] [TEST...]" >&2
    exit 2
}

while getopts s: option; do
    case "$option" in
    s) export TAVENOR_CAMPAIGN_START=$OPTARG ;;
    *) usage ;;
    esac
done
shift $((OPTIND - 1))
if ! [[ ${TAVENOR_CAMPAIGN_START-0} =~ ^[0-9]{1,9}$ ]]; then
    usage
fi

names=("$@")
if [ "${#names[@]}" -eq 0 ]; then
    for source in tests/faults/faults_*.cpp; do
        name=${source##*/faults_}
        names+=("${name%.cpp}")
    done
fi
for name in "${names[@]}"; do
    if ! [ -f "tests/faults/faults_$name.cpp" ]; then
        echo "There is no test '$name' in tests/faults." >&2
        usage
    fi
done

scripts/install-dependencies build test
results=$(mktemp -d "${TMPDIR:-/tmp}/tavenor-campaign.XXXXXX")
trap 'rm -rf "$results"' EXIT
export TAVENOR_CAMPAIGN=full TAVENOR_CAMPAIGN_REPORT=$results/rows
: >"$TAVENOR_CAMPAIGN_REPORT"

# The tests need no screen, and texts beyond ASCII on every machine. Their watchdog would end what
# takes long.
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=1 ASAN_OPTIONS=detect_leaks=0
export QTEST_FUNCTION_TIMEOUT=36000000

configure() {
    cmake --preset "$1" >"$results/configure" || {
        cat "$results/configure"
        return 1
    }
}

# preset_of NAME: the build in which the test runs at full length.
preset_of() {
    local labelled
    labelled=$(ctest --preset development --show-only -L '^campaign under sanitizers$')
    if grep -q ": faults_$1\$" <<<"$labelled"; then
        echo sanitizers
    else
        echo development
    fi
}

# run_test NAME: builds the test and runs it; says what failed and where.
run_test() {
    local name=$1 preset start=$SECONDS log=$results/log
    preset=$(preset_of "$name")
    echo "== $name ($preset)"
    if configure "$preset" && cmake --build --preset "$preset" --target "test_faults_$name"; then
        if nice -n 15 "build/$preset/tests/faults/test_faults_$name" -maxwarnings 0 \
            >"$log" 2>&1; then
            return 0
        fi
        grep -v -E '^(PASS|QWARN|QDEBUG|QINFO)' "$log" | head -n 500 || true
    fi
    printf '%s did not pass\t\tfailed\t%d\n' "$name" $((SECONDS - start)) >>"$TAVENOR_CAMPAIGN_REPORT"
    return 1
}

print_table() {
    awk -F '\t' '
        BEGIN { row[0] = "what" FS "cases" FS "found" FS "seconds"; width[1] = width[2] = width[3] = 0 }
        { row[NR] = $0 }
        END {
            for (i = 0; i <= NR; ++i) {
                split(row[i], cell, FS)
                for (j = 1; j <= 3; ++j) {
                    if (length(cell[j]) > width[j]) width[j] = length(cell[j])
                }
            }
            for (i = 0; i <= NR; ++i) {
                split(row[i], cell, FS)
                printf "%-" width[1] "s  %" width[2] "s  %-" width[3] "s  %7s\n", cell[1], cell[2], cell[3], cell[4]
            }
        }' "$TAVENOR_CAMPAIGN_REPORT"
}

configure development
status=0
for name in "${names[@]}"; do
    run_test "$name" || status=1
done
echo
print_table
exit "$status"
