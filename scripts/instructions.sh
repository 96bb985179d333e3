#!/usr/bin/env bash
# Counts the instructions of a few small works in the release build and compares them with the figures in
# benchmarks/instructions.txt: scripts/instructions.sh [--update | --profile]
# Fails if one takes over 5 per cent more. With --update it stores the new figures. With --profile it compares nothing
# and prints which functions take the most.
# Unlike times, instructions hardly differ from run to run or from machine to machine. They do differ between compilers.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/packages.sh
source scripts/packages.sh

works=(features eda components netlist write destroy)
figures=benchmarks/instructions.txt

update='' profile=''
case $#,${1-} in
0,) ;;
1,--update) update=yes ;;
1,--profile) profile=yes ;;
*)
    echo "usage: scripts/instructions.sh [--update | --profile]" >&2
    exit 2
    ;;
esac

need_packages "${JOBX_BUILD_PACKAGES[@]}" "${JOBX_BENCH_PACKAGES[@]}" valgrind
cmake --preset release -DJOBX_BUILD_BENCHMARKS=ON >/dev/null
cmake --build --preset release --target counted

inputs=$(mktemp -d)
trap 'rm -rf "$inputs"' EXIT
build/release/bin/counted make "$inputs"

# One thread, symbols bound before the work starts, and C library functions that every processor has.
export OMP_NUM_THREADS=1 LD_BIND_NOW=1 LC_ALL=C
export GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX512F,-AVX512VL,-AVX512BW,-BMI2,-ERMS,-FSRM,-SSSE3,-SSE4_1,-SSE4_2

# count WORK: prints how many instructions it takes.
count() {
    local log=$inputs/log counts=$inputs/counts
    if ! valgrind --tool=callgrind --toggle-collect=CountedWork --callgrind-out-file="$counts" \
        build/release/bin/counted "$1" "$inputs" >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
    sed -n 's/^totals: //p' "$counts"
}

if [[ $profile ]]; then
    for work in "${works[@]}"; do
        total=$(count "$work")
        echo "$work: $total instructions"
        # Keeps the share and the name of each line, without the files.
        callgrind_annotate "$inputs/counts" | sed -nE 's/^ *[0-9,]+ \( *([0-9.]+%)\)  [^: ]*:(.*) \[.*$/  \1  \2/p' |
            sed -E 's/\(anonymous namespace\):://g; s/std::basic_string_view<char, std::char_traits<char> >/string_view/g' |
            head -n 8
    done
    exit 0
fi

compiler="$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' build/release/CMakeCache.txt)"
compiler="$("$compiler" --version | head -n 1)"
kept_compiler=$(sed -n 's/^# counted with //p' "$figures" 2>/dev/null || true)
if [[ -z $update && $compiler != "$kept_compiler" ]]; then
    echo "not compared: the figures were counted with $kept_compiler, this is $compiler" >&2
    exit 0
fi

worse=0 better=0 lines=()
printf '%-12s %14s %14s %8s\n' work kept now change
for work in "${works[@]}"; do
    now=$(count "$work")
    if [[ ! $now =~ ^[1-9][0-9]*$ ]]; then
        echo "no instructions were counted for $work" >&2
        exit 1
    fi
    lines+=("$work $now")
    kept=$(sed -n "s/^$work //p" "$figures" 2>/dev/null || true)
    if [[ -z $kept ]]; then
        printf '%-12s %14s %14d\n' "$work" none "$now"
        worse=1
        continue
    fi
    change=$(((now - kept) * 1000 / kept)) # in tenths of a per cent
    sign=+
    ((now >= kept)) || sign=- change=$((-change))
    verdict=
    if ((now * 100 > kept * 105)); then
        verdict="MORE THAN 5 % WORSE"
        worse=1
    elif ((now * 100 < kept * 95)); then
        verdict="more than 5 % better"
        better=1
    fi
    printf '%-12s %14d %14d %8s %s\n' "$work" "$kept" "$now" "$sign$((change / 10)).$((change % 10)) %" "$verdict"
done

if [[ $update ]]; then
    {
        echo "# Instructions of each work; scripts/instructions.sh compares with them and renews them."
        echo "# counted with $compiler"
        printf '%s\n' "${lines[@]}"
    } >"$figures"
    echo "stored in $figures"
    exit 0
fi
if ((better)); then
    echo "to store the better figures: scripts/instructions.sh --update"
fi
if ((worse)); then
    echo "slower than the figures in $figures, or not in there; if this is intended: scripts/instructions.sh --update" >&2
    exit 1
fi
