#!/usr/bin/env bash
# The main job: builds the velkor tool in build/ and runs its demo, a typical
# request walked step by step on built-in samples.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja
cmake --build build -j2 --target velkor
exec build/tools/velkor demo "$@"
