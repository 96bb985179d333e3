#!/usr/bin/env bash
# Runs all tests in a build with counters and prints how much of src/ they execute: ./coverage.sh [--no-run]
# Fails below 95 per cent of the lines or 90 per cent of the branches. docs/coverage.md says what is not covered and why.
# With --no-run it evaluates the counts of the last run again.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=scripts/packages.sh
source scripts/packages.sh

build=$PWD/build/coverage
counts=$build/counts

need_packages "${JOBX_BUILD_PACKAGES[@]}" "${JOBX_TEST_PACKAGES[@]}" "${JOBX_CHECK_PACKAGES[@]}"
if [[ ${1-} != --no-run ]]; then
    cmake --preset coverage
    cmake --build --preset coverage
fi

# The tests of the program run it as other users and in places where it could not write its counts.
programs=()
for program in "$build"/bin/*_tests; do
    [[ $program == */app_tests ]] || programs+=("$program")
done
if [[ ${1-} != --no-run ]]; then
    rm -rf "$counts"
    # Every process adds to one file per program and library when it ends. Whole programs run, not single tests, because
    # thousands of processes would wait for those files.
    export LLVM_PROFILE_FILE=$counts/%m.profraw OMP_WAIT_POLICY=passive
    [[ ! -w /dev/shm ]] || export TMPDIR=/dev/shm # thousands of small files are made
    for program in "${programs[@]}"; do
        echo "=== ${program##*/}"
        "$program" --gtest_brief=1
    done
fi

llvm-profdata-14 merge -sparse -o "$build/tests.profdata" "$counts"/*.profraw
measured=("$build/lib/libJOBXCLSDLL.so")
for program in "${programs[@]}"; do
    measured+=(-object "$program")
done
llvm_cov() {
    llvm-cov-14 "$1" -instr-profile "$build/tests.profdata" "${@:2}" "${measured[@]}" src
}
llvm_cov show -show-instantiations=false -show-branches=count -format=html -output-dir="$build/coverage"
llvm_cov export >"$build/coverage.json"
python3 scripts/coverage_report.py --lines 95 --branches 90 --uncovered "$build/uncovered.txt" <"$build/coverage.json"
echo "what is not executed: $build/uncovered.txt and $build/coverage/index.html"
