#!/usr/bin/env bash
# Makes Debian packages of the optimised build, installs them in a test root and runs jobx there.
# Needs root or user namespaces. Without either it says so and exits with 0.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
built=$PWD/build/release
work=$PWD/build/package_check

fail() {
    echo "error: $*" >&2
    exit 1
}

if ! command -v dpkg-shlibdeps >/dev/null; then
    echo "SKIPPED: dpkg-shlibdeps is not installed"
    exit 0
fi
rm -rf "$work" "$built/packages" "$built/_CPack_Packages"
mkdir -p "$work"
cmake --preset package >/dev/null
cmake --build --preset package --target JOBXCLSDLL jobx | tail -n 1
(cd "$built" && cpack -G DEB >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log" && fail "cpack failed"; }
packages=("$built"/packages/*.deb)
for package in "${packages[@]}"; do
    echo "-- $(dpkg-deb --show --showformat "\${Package} \${Version} \${Architecture}, depends: \${Depends}" "$package")"
done
((${#packages[@]} == 3)) || fail "there are ${#packages[@]} packages, not three"

# has PACKAGE FILE: a shell pattern for one of its files.
has() {
    local name names
    mapfile -t names < <(dpkg-deb --fsys-tarfile "$built"/packages/"$1"_*.deb | tar -t)
    for name in "${names[@]}"; do
        # shellcheck disable=SC2053 # a pattern is meant
        if [[ $name == ./usr/$2 ]]; then return; fi
    done
    fail "the package $1 does not have $2"
}
has jobx bin/jobx
has jobx share/man/man1/jobx.1.gz
has jobx share/bash-completion/completions/jobx
has jobx share/zsh/site-functions/_jobx
has jobx share/fish/vendor_completions.d/jobx.fish
has libjobxclsdll-dev '*/JOBXCLSDLLConfig.cmake'
has libjobxclsdll-dev '*/JOBXCLSDLLConfigVersion.cmake'
has libjobxclsdll-dev '*/pkgconfig/jobxclsdll.pc'
has libjobxclsdll-dev include/JOBXCLSDLL/JOBXCLSDLL.h
has libjobxclsdll-dev '*/libJOBXCLSDLL.so'
has libjobxclsdll0 'lib/*-linux-gnu*/libJOBXCLSDLL.so.0'
if command -v lintian >/dev/null; then
    # CPack itself writes scripts that call ldconfig.
    lintian --allow-root --fail-on error,warning --suppress-tags maintscript-calls-ldconfig "${packages[@]}" ||
        fail "lintian complains"
else
    echo "SKIPPED: lintian is not installed"
fi

as_root=()
if ((EUID != 0)); then
    if ! unshare --map-root-user true 2>/dev/null; then
        echo "SKIPPED: installing the packages needs root or user namespaces"
        exit 0
    fi
    as_root=(unshare --map-root-user)
fi

# A root with only the libraries that jobx needs, a shell and ldconfig for the scripts of the library's package, and a list
# of the packages that are installed outside, so that dpkg checks the dependencies.
test_root=$work/root
mkdir -p "$test_root"/{etc,job,usr/bin,usr/sbin,usr/lib,usr/lib64} "$test_root"/var/lib/dpkg/{info,updates}
for directory in bin sbin lib lib64; do
    ln -s "usr/$directory" "$test_root/$directory"
done
ldd "$built/bin/jobx" | sed -nE 's,.*[[:space:]](/[^ ]+) \(0x.*,\1,p' | grep -v JOBXCLSDLL >"$work/libraries"
cp -L "$(command -v sh)" "$test_root/usr/bin/sh"
cp -L "$(PATH=$PATH:/usr/sbin:/sbin command -v ldconfig)" "$test_root/usr/sbin/ldconfig"
while read -r library; do
    mkdir -p "$test_root$(dirname "$library")"
    cp -L "$library" "$test_root$library"
done <"$work/libraries"
cp /var/lib/dpkg/status "$test_root/var/lib/dpkg/status"
while read -r name; do
    : >"$test_root/var/lib/dpkg/info/$name.list"
done < <(dpkg-query --show --showformat "\${binary:Package}\n")
cp -R samples/blinker "$test_root/job/"

echo "-- installing in a test root"
"${as_root[@]}" dpkg --root="$test_root" --install "${packages[@]}" >"$work/dpkg.log" 2>&1 ||
    { cat "$work/dpkg.log" && fail "dpkg does not install the packages"; }
for name in libjobxclsdll0 libjobxclsdll-dev jobx; do
    [[ $(dpkg-query --admindir="$test_root/var/lib/dpkg" -W -f '${db:Status-Abbrev}' "$name") == ii* ]] ||
        fail "$name is not installed"
done
in_root() {
    "${as_root[@]}" chroot "$test_root" "$@"
}
in_root /usr/bin/jobx --version
in_root /usr/bin/jobx info /job/blinker --quiet >"$work/info"
grep -q '^Board .* 40.64 x 25.4 mm ' "$work/info" || fail "jobx of the package does not read the sample"
in_root /usr/bin/jobx write /job/blinker -o /job/out --quiet
[[ -f $test_root/job/out/blinker/matrix/matrix ]] || fail "jobx of the package does not write the sample"

echo "-- manual page"
MANPATH=$test_root/usr/share/man man --warnings jobx >"$work/manual" 2>"$work/manual_warnings"
[[ ! -s $work/manual_warnings ]] || { cat "$work/manual_warnings" && fail "man warns of the manual page"; }
grep -q '^EXIT STATUS' "$work/manual" || fail "man does not show the manual page"

"${as_root[@]}" dpkg --root="$test_root" --purge jobx libjobxclsdll-dev libjobxclsdll0 >>"$work/dpkg.log" 2>&1 ||
    { cat "$work/dpkg.log" && fail "dpkg does not remove the packages"; }
remaining=$(find "$test_root" -iname '*jobx*' -not -path '*/var/*')
[[ -z $remaining ]] || fail "left behind: $remaining"
echo "installed, run and removed"
