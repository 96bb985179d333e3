#!/usr/bin/env bash
# Checks that libraries or programs were built hardened: check_hardening.sh [--fortified] FILE...
# With --fortified it also checks for the checked string functions, which only optimised builds have.
set -euo pipefail

fortified=0
if [[ ${1-} == --fortified ]]; then
    fortified=1
    shift
fi

failed=0
# require FILE WHAT PATTERN READELF_OPTION...
require() {
    local file=$1 what=$2 pattern=$3
    shift 3
    if ! readelf "$@" -- "$file" | grep -E "$pattern" >/dev/null; then
        echo "$file: no $what" >&2
        failed=1
    fi
}

for file in "$@"; do
    require "$file" "relocations that become read-only" 'GNU_RELRO' -lW
    require "$file" "binding of all symbols at the start" 'FLAGS_1.*\bNOW\b|BIND_NOW' -dW
    require "$file" "stack protector" '__stack_chk_(fail|guard)' --dyn-syms -W
    require "$file" "position-independent code" 'Type:\s+DYN' -hW
    require "$file" "stack that cannot be executed" 'GNU_STACK\s.*\sRW\s' -lW
    if ((fortified)); then
        require "$file" "checked string functions" '__(mem|str|v?s?n?v?f?printf|fread|fgets|read)[a-z]*_chk' --dyn-syms -W
    fi
done
exit "$failed"
