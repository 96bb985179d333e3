#!/usr/bin/env bash
# Every stage runs although others fail, the failed ones are listed, and the totals of the tests are the last line.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=scripts/stages.sh
source "$root/scripts/stages.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "error: $*" >&2
    cat "$work/said" >&2
    exit 1
}

stage_tests() {
    {
        echo "99% tests passed, 1 tests failed out of 100"
        echo "Total Test time (real) = 1 sec"
    } | tee "$work/log"
    return 1
}
stage_broken() {
    false # a failure in the middle ends the stage
    echo "went on"
}
stage_sound() {
    echo "100% tests passed, 0 tests failed out of 4" # of another test run
}
stage_good_tests() {
    echo "100% tests passed, 0 tests failed out of 1656" >"$work/log"
}

# expect STATUS LAST_LINES STAGE...: what running the stages answers, and how its output ends.
expect() {
    local wanted=$1 end=$2 status
    shift 2
    set +e
    (run_stages "$work/log" "$@") >"$work/said" 2>&1
    status=$?
    set -e
    ((status == wanted)) || fail "$*: status $status, not $wanted"
    [[ $(tail -n "$(wc -l <<<"$end")" "$work/said") == "$end" ]] || fail "$*: ends otherwise than: $end"
    if grep -q "went on" "$work/said"; then fail "$*: a stage went on after its failure"; fi
}

expect 1 $'=== failed: tests broken\n99 passed, 1 failed' tests broken sound
grep -q "^=== sound: passed in" "$work/said" || fail "the stage after a failed one did not run"
expect 0 $'=== all passed: good_tests sound\n1656 passed, 0 failed' good_tests sound
expect 0 '=== all passed: sound' sound # the totals of an earlier run are not shown

# The stages of the project: each that is listed is there, an unknown one is refused before anything runs.
"$root/.ci/run" --list >"$work/said"
[[ $(head -n 1 "$work/said") == tests ]] || fail "the ordinary tests are not the first stage"
while read -r stage; do
    grep -q "^stage_$stage() {" "$root/.ci/run" || fail "no such stage: $stage"
done <"$work/said"
status=0
"$root/.ci/run" layout nonesuch >"$work/said" 2>&1 </dev/null || status=$?
((status == 2)) || fail "an unknown stage: status $status"
grep -q "no stage is named nonesuch" "$work/said" || fail "an unknown stage is not named"
if grep -q "^===" "$work/said"; then fail "a stage ran beside an unknown one"; fi
[[ $(grep -c "^stage_" "$root/.ci/run") == $("$root/.ci/run" --list | wc -l) ]] || fail "a stage is not listed"
