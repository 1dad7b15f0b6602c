# SPDX-License-Identifier: MIT
# Sourced by the scripts that test in stages. Counts go into `passed` and `failed`, lines for the end into `report`.

stage="" report="" passed=0 failed=0

# The closing lines stand there however the script ends.
close() {
    local status=$?
    trap - EXIT
    printf '\n'
    [ $status -eq 0 ] || echo "FAILED in stage: $stage"
    [ -z "$report" ] || printf '%s' "$report"
    echo "$passed passed, $failed failed"
    exit $status
}
trap close EXIT
trap 'exit 130' INT TERM

# stage NAME COMMAND...: runs the command under a heading, and ends the script when it fails.
stage() {
    stage=$1
    shift
    printf '\n== %s\n' "$stage"
    local start=$SECONDS
    "$@" || exit 1
    echo "== $stage: passed in $((SECONDS - start)) s"
}

# build PRESET: configured as far as needed.
build() {
    cmake --preset "$1" && cmake --build --preset "$1" -j "$(nproc)"
}

# attribute NAME FILE: the number in the first attribute of that name in a JUnit file.
attribute() {
    grep -o -m 1 "\b$1=\"[0-9]*\"" "$2" | head -n 1 | tr -dc 0-9
}

# countTests FILE: the counts that a test program left in a JUnit file. Fails when it broke off and left none.
countTests() {
    local total failures skipped
    [ -s "$1" ] || return 1
    total=$(attribute tests "$1")
    failures=$(attribute failures "$1")
    skipped=$(grep -c 'result="skipped"' "$1" || true)
    passed=$((passed + total - failures - skipped))
    failed=$((failed + failures))
    echo "$(basename "$1" .xml): $total tests, $failures failed, $skipped skipped"
}
