#!/usr/bin/env bash
# Builds the fuzzers and runs them: ./fuzz.sh [-j PROCESSES] [-p PRESET] [SECONDS] [TARGET...]
# Without SECONDS each runs for 60 seconds; without TARGET all run, two at a time. The inputs that they find stay in
# build/PRESET/fuzz-corpus for the next run. A fault ends the script with a non-zero status and the path of the input.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=scripts/packages.sh
source scripts/packages.sh

targets=(features eda_data components netlist matrix stephdr font info sysattr attrlist tools decompress numbers properties job)
# The longest input in bytes; 4096 for the others. Short inputs run faster and reach as much.
declare -A longest=([decompress]=16384 [numbers]=512 [properties]=70000 [job]=12288)

usage() {
    echo "usage: ./fuzz.sh [-j PROCESSES] [-p PRESET] [SECONDS] [TARGET...]" >&2
    echo "       targets: ${targets[*]}" >&2
    exit 2
}

processes=2
preset=fuzz
while getopts j:p: option; do
    case $option in
    j) processes=$OPTARG ;;
    p) preset=$OPTARG ;;
    *) usage ;;
    esac
done
shift $((OPTIND - 1))
seconds=60
if (($#)) && [[ $1 =~ ^[1-9][0-9]*$ ]]; then
    seconds=$1
    shift
fi
[[ $processes =~ ^[1-9][0-9]*$ ]] || usage
for target in "$@"; do
    [[ " ${targets[*]} " == *" $target "* ]] || usage
done
(($# == 0)) || targets=("$@")

need_packages "${JOBX_BUILD_PACKAGES[@]}" "${JOBX_TEST_PACKAGES[@]}" "${JOBX_CHECK_PACKAGES[@]}"
cmake --preset "$preset" >/dev/null
cmake --build "build/$preset" --target fuzzers

build=$PWD/build/$preset
logs=$build/fuzz-logs
artifacts=$build/fuzz-artifacts
mkdir -p "$logs" "$artifacts"
"$build/bin/jobx_fuzz_seeds" "$PWD/samples/blinker" "$build/fuzz-seeds"

# Short-lived files need no disk.
scratch=$(mktemp -d -p "$([[ -w /dev/shm ]] && echo /dev/shm || echo "${TMPDIR:-/tmp}")" jobx-fuzz-XXXXXX)
trap 'rm -rf "$scratch"' EXIT

export TMPDIR=$scratch
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1:check_initialization_order=1
export UBSAN_OPTIONS=print_stacktrace=1
export ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-14
# Waiting threads leave the processors to the other fuzzers.
export OMP_NUM_THREADS=2 OMP_WAIT_POLICY=passive

# Runs one target; its log ends with the engine's exit status.
fuzz() {
    local target=$1 corpora=("$build/fuzz-corpus/$1" "$build/fuzz-seeds/$1") folder
    for folder in "fuzz/corpus/$target" "tests/data/fuzz/$target"; do
        [[ ! -d $folder ]] || corpora+=("$PWD/$folder")
    done
    mkdir -p "$build/fuzz-corpus/$target" "$artifacts/$target" "$scratch/$target"
    local status=0
    local TIMEFORMAT='processor seconds: %1U'
    time TMPDIR=$scratch/$target "$build/bin/fuzz_$target" -max_total_time="$seconds" \
        -max_len="${longest[$target]:-4096}" -rss_limit_mb=2048 -malloc_limit_mb=1024 -timeout=60 -print_final_stats=1 -dict="fuzz/$target.dict" \
        -artifact_prefix="$artifacts/$target/" "${corpora[@]}" || status=$?
    rm -rf "${scratch:?}/$target"
    echo "exit status $status"
}

running=0
for target in "${targets[@]}"; do
    if ((running == processes)); then
        wait -n
        running=$((running - 1))
    fi
    fuzz "$target" >"$logs/$target" 2>&1 &
    running=$((running + 1))
done
wait

# The last number that the log names after a word; "-" if there is none.
number() {
    local found
    found=$(grep -aoE "$2 *[0-9.]+" "$logs/$1" | tail -n 1 | grep -oE '[0-9.]+$') || found=-
    echo "$found"
}

findings=()
printf '%-12s %12s %9s %7s %8s %7s  %s\n' target executions processor edges features new result
for target in "${targets[@]}"; do
    result=$(tail -n 1 "$logs/$target")
    case $result in
    "exit status 0") result=passed ;;
    *)
        result="failed, $result"
        findings+=("$target")
        ;;
    esac
    printf '%-12s %12s %7s s %7s %8s %7s  %s\n' "$target" "$(number "$target" stat::number_of_executed_units:)" \
        "$(number "$target" 'processor seconds:')" "$(number "$target" ' cov:')" \
        "$(number "$target" ' ft:')" "$(number "$target" stat::new_units_added:)" "$result"
done

for target in "${findings[@]}"; do
    echo
    echo "=== $target: the end of $logs/$target"
    tail -n 60 "$logs/$target"
    echo "=== $target: the input: $(grep -aoE 'Test unit written to .*' "$logs/$target" | tail -n 1 | sed 's/^Test unit written to //')"
done
((${#findings[@]} == 0))
