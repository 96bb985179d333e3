#!/usr/bin/env bash
# Installs the optimised build under a prefix, moves it and uses it there.
# The example host is built with find_package, pkg-config and add_subdirectory, and run on the sample.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
built=$root/build/release
work=$root/build/install_check
host=$root/examples/convert_units

fail() {
    echo "error: $*" >&2
    exit 1
}

cmake --preset release >/dev/null
cmake --build --preset release --target JOBXCLSDLL jobx | tail -n 1
rm -rf "$work/installed" "$work/moved" "$work/run" "$work/found" "$work/by_hand"
mkdir -p "$work/run" "$work/by_hand"
cmake --install "$built" --prefix "$work/installed" >/dev/null
mv "$work/installed" "$work/moved" # nothing may depend on where it was installed first
prefix=$work/moved

echo "-- headers: JOBXCLSDLL.h and JOBXCLSDLL_fields.h, what they include, and the host's macros"
include=$prefix/include/JOBXCLSDLL
cat >"$work/run/all.cpp" <<'END'
#include "JOBXCLSDLL.h"
#include "JOBXCLSDLL_fields.h"
#include "foundation/framework/HostMacros.h"
END
${CXX:-g++} -std=c++20 -I"$include" -MM "$work/run/all.cpp" | grep -o "$include/[^ ]*" |
    sed "s|^$include/||" | sort >"$work/run/included"
(cd "$include" && find . -type f | sed 's|^\./||' | sort) >"$work/run/headers"
diff "$work/run/included" "$work/run/headers" || fail "the installed headers (>) are not those that hosts include (<)"

echo "-- jobx finds the library in the moved prefix"
# A fresh copy for every reader, because reading unpacks compressed symbols in place.
fresh_sample() {
    rm -rf "$work/run/blinker"
    cp -R samples/blinker "$work/run/"
}
jobx=$prefix/bin/jobx
version=$("$jobx" --version)
version=${version#jobx }
fresh_sample
"$jobx" write "$work/run/blinker" -o "$work/run/wanted" --steps pcb,panel --scale 25.4 --quiet
MANPATH=$prefix/share/man man jobx 2>/dev/null | grep -q 'ignore-line-numbers' || fail "man does not show the manual page"
grep -q '^#compdef jobx$' "$prefix/share/zsh/site-functions/_jobx" || fail "no zsh completion"
grep -q '^complete -c jobx ' "$prefix/share/fish/vendor_completions.d/jobx.fish" || fail "no fish completion"
bash -c "source '$prefix/share/bash-completion/completions/jobx' && complete -p jobx" >/dev/null || fail "no bash completion"

# run_host PROGRAM: checks that it reports progress and writes the same job as jobx.
run_host() {
    rm -rf "$work/run/out"
    fresh_sample
    "$1" "$work/run/blinker" "$work/run/out" 25.4 >"$work/run/said" || fail "$1 failed"
    diff "$host/expected.txt" "$work/run/said" || fail "$1 printed (>) other lines than expected (<)"
    diff -r "$work/run/wanted" "$work/run/out" || fail "$1 wrote another job than jobx"
    if "$1" "$work/run/no_job" "$work/run/out" 25.4 >/dev/null 2>&1; then fail "$1 read a job that is not there"; fi
}

# Whether the CMake package accepts a version: TRUE or FALSE.
compatible() {
    cat >"$work/run/version.cmake" <<END
set(PACKAGE_FIND_VERSION $1)
string(REGEX MATCH "^[0-9]+" PACKAGE_FIND_VERSION_MAJOR $1)
include($config/JOBXCLSDLLConfigVersion.cmake)
message("\${PACKAGE_VERSION_COMPATIBLE}")
END
    cmake -P "$work/run/version.cmake" 2>&1
}

echo "-- find_package"
config=$(dirname "$(find "$prefix" -name JOBXCLSDLLConfig.cmake)")
[[ $(compatible "$version") == TRUE ]] || fail "the CMake package refuses its own version, $version"
[[ $(compatible 99.0) == FALSE ]] || fail "the CMake package passes for version 99"
cmake -S "$host" -B "$work/found" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/found" >/dev/null
grep -qF "JOBXCLSDLL_DIR:PATH=$config" "$work/found/CMakeCache.txt" || fail "another package was found than the installed one"
run_host "$work/found/convert_units"

echo "-- pkg-config"
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name jobxclsdll.pc)")
export PKG_CONFIG_PATH
[[ $(pkg-config --modversion jobxclsdll) == "$version" ]] || fail "pkg-config says another version than $version"
read -ra flags < <(pkg-config --cflags --libs jobxclsdll)
library_directory=$(pkg-config --variable=libdir jobxclsdll)
${CXX:-g++} -std=c++20 "$host/main.cpp" "${flags[@]}" -Wl,-rpath,"$library_directory" -o "$work/by_hand/convert_units"
run_host "$work/by_hand/convert_units"

echo "-- add_subdirectory"
# Kept from run to run, not optimised, several sources at once: this only checks that a host can do it.
cmake -S "$host" -B "$work/embedded" -G Ninja -DJOBX_SOURCES="$root" -DJOBX_PRECOMPILE=ON -DCMAKE_UNITY_BUILD=ON \
    -DCMAKE_CXX_FLAGS=-O0 >/dev/null
cmake --build "$work/embedded" | tail -n 1
run_host "$work/embedded/convert_units"
if [[ -n $(find "$work/embedded" -name 'jobx' -type f -o -name '*_tests') ]]; then
    fail "a host that compiles the library along got more than the library"
fi
cmake --install "$work/embedded" --prefix "$work/run/host_prefix" >/dev/null
[[ ! -e $work/run/host_prefix ]] || fail "the library installs itself along with a host"
echo "installed and used in three ways: version $version"
