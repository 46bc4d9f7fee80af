# Runs the steps of a test run one after the other and keeps count. To be sourced by bash in the top
# folder. How long each step took is told as well.

passed=0
failed=0
skipped=0
steps_log=$(mktemp)
trap 'rm -f "$steps_log"' EXIT

# add PASSED FAILED SKIPPED SECONDS: counts and tells what a step has found.
add() {
    echo "   $1 passed, $2 failed, $3 skipped ($4 s)"
    passed=$((passed + $1))
    failed=$((failed + $2))
    skipped=$((skipped + $3))
}

# step NAME COMMAND...: counts as one test.
step() {
    local name=$1 status=0 start=$SECONDS
    shift
    echo "== $name"
    "$@" >"$steps_log" 2>&1 || status=$?
    if [ "$status" -eq 0 ]; then
        add 1 0 0 "$((SECONDS - start))"
    else
        tail -n 100 "$steps_log"
        add 0 1 0 "$((SECONDS - start))"
    fi
}

# tests NAME PRESET COMMAND...: a command that runs the tests of a test preset. They count one by one;
# so does a failure of the command of which no test knows.
tests() {
    local name=$1 results=build/tests/$2.xml status=0 start=$SECONDS counts good bad left
    shift 2
    echo "== $name"
    mkdir -p "${results%/*}"
    rm -f "$results"
    "$@" >"$steps_log" 2>&1 || status=$?
    if counts=$(scripts/count-tests "$results" 5); then
        read -r good bad left _ <<<"$counts"
    else
        good=0 bad=0 left=0
    fi
    if [ "$status" -ne 0 ] || [ -z "$counts" ]; then
        tail -n 200 "$steps_log"
        if [ "$bad" -eq 0 ]; then bad=1; fi
    fi
    tail -n +2 <<<"$counts" | sed 's/^/   /'
    add "$good" "$bad" "$left" "$((SECONDS - start))"
}

# workflow PRESET: configures, builds and tests.
workflow() {
    tests "$1: build and tests" "$1" cmake --workflow --preset "$1"
}

# What ./test runs, and .ci/run first.
basic_steps() {
    step "configuration" cmake --preset release-tests
    tests "sources" quick ctest --preset quick
    workflow release
    workflow asan
}

# The closing line, and whether all is well.
finish_steps() {
    echo "$skipped skipped"
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
}
