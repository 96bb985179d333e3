#!/usr/bin/env bash
# Builds and runs all tests: ./test.sh [PRESET [PROGRAM...]]   (without PRESET: debug; see CMakePresets.json)
# With names of test programs (job_tests ...) it builds and runs those only.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=scripts/packages.sh
source scripts/packages.sh

preset=${1:-debug}
programs=("${@:2}")
need_packages "${JOBX_BUILD_PACKAGES[@]}" "${JOBX_TEST_PACKAGES[@]}"
case $preset in
asan | clang | tsan) need_packages "${JOBX_CHECK_PACKAGES[@]}" ;;
esac

run=()
# The race detector needs addresses that the randomisation of some kernels uses.
if [[ $preset == tsan ]] && setarch -R true 2>/dev/null; then
    run=(setarch -R)
fi

cmake --preset "$preset"
build=() only=()
if ((${#programs[@]})); then
    build=(--target "${programs[@]}")
    only=(--tests-regex "^($(
        IFS='|'
        echo "${programs[*]}"
    ))\\.")
fi
cmake --build --preset "$preset" "${build[@]}"
"${run[@]}" ctest --preset "$preset" --parallel "$(nproc)" "${only[@]}"
