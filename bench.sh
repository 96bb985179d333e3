#!/usr/bin/env bash
# Builds in release mode, measures everything and prints one table: ./bench.sh [OPTIONS]   (--scale 0.1: quick and rough)
# JOBX_REAL_JOBS: a folder of real jobs. The default is beside the sources.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=scripts/packages.sh
source scripts/packages.sh

need_packages "${JOBX_BUILD_PACKAGES[@]}" "${JOBX_BENCH_PACKAGES[@]}"
cmake --preset release -B build/bench -DJOBX_BUILD_TESTS=OFF -DJOBX_BUILD_BENCHMARKS=ON -DJOBX_PRECOMPILE=OFF \
    -DJOBX_WERROR=OFF >/dev/null
cmake --build build/bench --target bench_table jobx

commit=$(git rev-parse --short HEAD 2>/dev/null || echo unknown)
[[ -z $(git status --porcelain --untracked-files=no 2>/dev/null) ]] || commit+=" with changes"
model=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo 2>/dev/null | head -n 1)
echo
echo "commit $commit, $(c++ --version | head -n 1), $(nproc) processors: ${model:-unknown}, $(date -u +%F)"
exec build/bench/bin/bench_table --jobx build/bench/bin/jobx \
    --real-jobs "${JOBX_REAL_JOBS:-../shared/jobs}" "$@"
