#!/usr/bin/env bash
# ThreadSanitizer proof that every catalogue type and the value types
# register safely when many threads use them first at the same time:
# configures build-tsan with TN_VELKOR_TSAN (tests only: no benchmarks, no
# tool), builds the first_registration_tsan program and runs it through
# ctest. A race report fails the run.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${TN_TSAN_BUILD_DIR:-$root/build-tsan}"
generator=()
if command -v ninja > /dev/null; then generator=(-G Ninja); fi
launcher=()
if command -v ccache > /dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi

cmake -S "$root" -B "$build" "${generator[@]}" -DTN_VELKOR_TSAN=ON -DTN_VELKOR_TESTS=ON \
  -DTN_VELKOR_BENCH=OFF -DTN_VELKOR_TOOL=OFF -DTN_VELKOR_SANITIZE=OFF -DTN_VELKOR_FUZZ=OFF "${launcher[@]}"
cmake --build "$build" --target first_registration_tsan -j 2
TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 ${TSAN_OPTIONS:-}" \
  ctest --test-dir "$build" -R '^first_registration_tsan$' --output-on-failure --no-tests=error
