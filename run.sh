#!/usr/bin/env bash
# Builds the library and jobx, then shows what is in a job: ./run.sh [JOB]   (without JOB: the sample)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/packages.sh
source "$root/scripts/packages.sh"

if (($#)); then
    job=$1
else
    samples=("$root"/samples/*/matrix)
    job=${samples[0]%/matrix}
fi
if [[ ! -d $job ]]; then
    echo "error: no such job directory: $job" >&2
    exit 1
fi
job=$(cd "$job" && pwd)

need_packages "${JOBX_BUILD_PACKAGES[@]}"
cd "$root"
# A folder of its own, so that the build of the tests does not depend on what was asked for here.
cmake --preset release -B build/run -DJOBX_BUILD_TESTS=OFF -DJOBX_WERROR=OFF >/dev/null
cmake --build build/run
exec build/run/bin/jobx info "$job"
