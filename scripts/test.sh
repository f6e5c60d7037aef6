#!/usr/bin/env bash
# Builds everything in build/ and runs every test (unit tests, the dlopen host,
# the install check).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja
cmake --build build -j2
ctest --test-dir build --output-on-failure -j2
