# Installs what the scripts need on a Debian system. Meant to be sourced.
# shellcheck shell=bash disable=SC2034

JOBX_BUILD_PACKAGES=(g++ cmake ninja-build libcli11-dev libfmt-dev rapidjson-dev zlib1g-dev)
JOBX_TEST_PACKAGES=(libgtest-dev libgmock-dev libbenchmark-dev ncompress locales python3 python3-jsonschema)
JOBX_BENCH_PACKAGES=(libbenchmark-dev)
JOBX_CHECK_PACKAGES=(binutils clang-14 clang-format-14 clang-tidy-14 cppcheck doxygen libclang-rt-14-dev libomp-14-dev
    lld-14 llvm-14 shellcheck valgrind)
JOBX_INSTALL_PACKAGES=(dpkg-dev file man-db pkg-config) # to install the library, and to make packages of it
JOBX_SHELL_PACKAGES=(fish zsh) # their completion is tested where they are installed

# need_packages NAME...: installs the missing ones, or prints the command that does and fails.
need_packages() {
    command -v dpkg-query >/dev/null || return 0 # not Debian: the build reports what it does not find
    local missing=() package as_root=()
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    if ((EUID != 0)); then
        if ! sudo -n true 2>/dev/null; then
            echo "error: these Debian packages are missing: ${missing[*]}" >&2
            echo "       install them with: sudo apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo -n)
    fi
    echo "installing: ${missing[*]}"
    "${as_root[@]}" apt-get -qq update </dev/null || return 1
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -y --no-install-recommends install "${missing[@]}" </dev/null >/dev/null || return 1
}

# want_packages NAME...: the same, but without them the tests that use them are skipped.
want_packages() {
    timeout 120 bash -c "$(declare -f need_packages); need_packages \"\$@\"" want "$@" ||
        echo "SKIPPED: what is tested with these packages, which cannot be installed: $*"
}
