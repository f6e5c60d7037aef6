#!/usr/bin/env bash
# Builds the project in build/ and runs the main job: `velkor demo` when the
# tool is built, otherwise the dlopen host on the built library.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja
cmake --build build -j2

if [ -x build/tools/velkor ]; then
  exec build/tools/velkor demo "$@"
fi
exec build/tests/dlopen_host build/libtn_velkor.so
