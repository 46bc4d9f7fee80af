# Runs the steps of a test run one after the other and keeps count. To be sourced by bash.
#
# A step that prints how many of its tests passed and failed (as GoogleTest, unittest and the
# golden runner do) counts with those numbers, any other as one. How long it took is told as well.

passed=0
failed=0
steps_log=$(mktemp)
trap 'rm -f "$steps_log"' EXIT

# first_number PATTERN: the number in the last line of the log that matches, or nothing.
first_number() {
    sed -nE "s/$1/\1/p" "$steps_log" | tail -n 1
}

# step NAME COMMAND...
step() {
    local name=$1 status=0 good bad total start=$SECONDS
    shift
    echo "== $name"
    "$@" >"$steps_log" 2>&1 || status=$?
    good=$(first_number '^\[  PASSED  \] ([0-9]+) tests?\..*$')
    bad=$(first_number '^ *([0-9]+) FAILED TESTS?$')
    if [ -z "$good" ]; then
        good=$(first_number '^.*: ([0-9]+) passed, [0-9]+ failed$')
        bad=$(first_number '^.*: [0-9]+ passed, ([0-9]+) failed$')
    fi
    if [ -z "$good" ]; then
        total=$(first_number '^Ran ([0-9]+) tests? in .*$')
        if [ -n "$total" ] && [ "$status" -eq 0 ]; then good=$total; fi
    fi
    good=${good:-0}
    bad=${bad:-0}
    if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then bad=1; fi
    if [ "$status" -eq 0 ] && [ "$good" -eq 0 ]; then good=1; fi
    if [ "$status" -ne 0 ]; then tail -n 100 "$steps_log"; fi
    echo "   $good passed, $bad failed ($((SECONDS - start)) s)"
    passed=$((passed + good))
    failed=$((failed + bad))
}

# The closing line, and whether all is well.
finish_steps() {
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
}
