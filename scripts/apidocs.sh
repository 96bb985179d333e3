#!/usr/bin/env bash
# Makes the API documentation of the public headers in build/apidocs/html. Fails if anything is undocumented.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The public headers are those that the umbrella header reaches.
JOBX_PUBLIC_HEADERS=$("${CXX:-g++}" -std=c++20 -Isrc -MM src/JOBXCLSDLL.h | tr -d '\\\n' | cut -d: -f2-)
export JOBX_PUBLIC_HEADERS
mkdir -p build
doxygen docs/Doxyfile
echo "build/apidocs/html/index.html"
