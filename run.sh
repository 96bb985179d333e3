#!/usr/bin/env bash
# Builds the library and jobx, then shows what is in a job: ./run.sh [JOB]   (without JOB: the sample)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/packages.sh
source "$root/scripts/packages.sh"

job=
if (($#)); then
    if [[ ! -d $1 ]]; then
        echo "error: no such job directory: $1" >&2
        exit 1
    fi
    job=$(cd "$1" && pwd)
fi

need_packages "${JOBX_BUILD_PACKAGES[@]}"
cd "$root"
# A separate folder, so that this does not change the build of the tests.
cmake --preset release -B build/run -DJOBX_BUILD_TESTS=OFF -DJOBX_WERROR=OFF >/dev/null
cmake --build build/run
if [[ -z $job ]]; then
    # A copy, so that the sample itself stays as it is, whatever is tried on it.
    rm -rf build/run/sample
    mkdir -p build/run/sample
    cp -R samples/blinker build/run/sample/
    job=build/run/sample/blinker
fi
exec build/run/bin/jobx info "$job"
