# Runs the stages of the checks. Meant to be sourced; each stage is a function stage_NAME.
# shellcheck shell=bash

# test_totals LOG: prints "N passed, N failed" from the last totals of ctest in LOG, or nothing if there are none.
test_totals() {
    [[ -f $1 ]] || return 0
    sed -nE 's/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/p' "$1" | tail -n 1 |
        while read -r failed all; do
            echo "$((all - failed)) passed, $failed failed"
        done
}

# run_stages LOG NAME...: runs every stage, even after a failure, and lists the failed ones at the end. Fails if any did.
# LOG is the output of ctest in the stage "tests"; its totals are the last line, whatever ran after it.
run_stages() {
    local log=$1 name begin status failed=()
    shift
    rm -f "$log"
    for name in "$@"; do
        begin=$SECONDS
        echo "=== $name"
        # In a condition, set -e would not work inside the stage. So it is off here and on in there.
        set +e
        (
            set -e
            "stage_$name"
        )
        status=$?
        set -e
        if ((status)); then
            failed+=("$name")
            echo "=== $name: FAILED after $((SECONDS - begin)) s"
        else
            echo "=== $name: passed in $((SECONDS - begin)) s"
        fi
    done
    if ((${#failed[@]})); then
        echo "=== failed: ${failed[*]}"
    else
        echo "=== all passed: $*"
    fi
    test_totals "$log"
    ((${#failed[@]} == 0))
}
