# shellcheck shell=bash
# Sourced by script/test: runs tests and checks one after the other and counts them.

readonly jobs=2
passed=0
failed=0
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
    failed=$((failed + 1))
    echo "FAILED: $1"
}

# check <what> <command>...: one check, counted by the command's result.
check() {
    local what=$1
    shift
    printf '\n== %s\n' "$what"
    if "$@"; then
        passed=$((passed + 1))
    else
        fail "$what"
    fi
}

# build <preset> [<target>...]: builds a preset of CMakePresets.json with g++ unless it names another compiler.
build() {
    local preset=$1
    shift
    CXX=g++ cmake --preset "$preset" && cmake --build --preset "$preset" --parallel $jobs ${1:+--target "$@"}
}

# run_tests <preset>: builds a preset and counts what ctest reports.
run_tests() {
    local preset=$1 summary of start=$SECONDS
    printf '\n== build and tests: %s\n' "$preset"
    if ! build "$preset"; then
        fail "the build of $preset"
        return
    fi
    ctest --preset "$preset" --parallel $jobs | tee "$scratch/ctest.log" || true
    summary=$(grep -oE '[0-9]+ tests failed out of [0-9]+' "$scratch/ctest.log" || true)
    if [[ -z $summary ]]; then
        fail "no test ran in $preset"
        return
    fi
    of=${summary##* }
    failed=$((failed + ${summary%% *}))
    passed=$((passed + of - ${summary%% *}))
    echo "$preset took $((SECONDS - start)) s"
}

# The last line of all; fails when anything did.
report() {
    printf '\n%d passed, %d failed\n' "$passed" "$failed"
    ((failed == 0))
}
