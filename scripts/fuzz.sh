#!/usr/bin/env bash
# A fuzz campaign: builds the libFuzzer targets (build-fuzz, clang, with
# AddressSanitizer and UndefinedBehaviorSanitizer) and runs every target in
# turn for SECONDS each, starting from its seed corpus fuzz/corpus/<target>/
# and its dictionary fuzz/<target>.dict when there is one.
#
# Afterwards the seed corpus is made anew and minimal: the hand-made seeds
# (every file not named by its SHA-1, as libFuzzer names what it finds) stay,
# and libFuzzer's -merge=1 adds from the old seeds and this run's finds only
# the inputs that reach code edges those do not (hit counts are not told
# apart: -use_counters=0), so the next run starts where this one ended
# without the corpus growing by inputs that only run a loop more often. An input that crashed, leaked or hung is copied
# into fuzz/regressions/<target>/, where the ordinary tests replay it
# (ctest fuzz_replay_<target>), and fails the campaign.
#
# Usage: scripts/fuzz.sh [--no-merge] [SECONDS]
#   SECONDS     per target; default 600, which gives records_fuzz well over
#               10 million executions on a 2-core machine
#   --no-merge  leave the tree alone (CI): scratch corpora, artifacts under
#               build-fuzz/artifacts/ only
# Environment: TN_FUZZ_TARGETS="records_fuzz hex_fuzz" runs only those;
#              TN_FUZZ_BUILD_DIR (default build-fuzz).
set -euo pipefail
cd "$(dirname "$0")/.."
root="$(pwd)"

merge=1
if [ "${1:-}" = "--no-merge" ]; then
  merge=0
  shift
fi
seconds="${1:-600}"
build="${TN_FUZZ_BUILD_DIR:-$root/build-fuzz}"
launcher=()
if command -v ccache > /dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi

CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DTN_VELKOR_FUZZ=ON -DTN_VELKOR_TESTS=OFF \
  -DTN_VELKOR_BENCH=OFF -DTN_VELKOR_TOOL=ON "${launcher[@]}" > /dev/null
cmake --build "$build" -j2

scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$build/artifacts"

# The last "cov: N ft: M" libFuzzer printed: edges and features reached.
coverage() { grep -oE 'cov: [0-9]+ ft: [0-9]+' "$1" | tail -n 1 | sed -E 's/cov: ([0-9]+) ft: ([0-9]+)/\1 \2/'; }
# A final statistic libFuzzer printed (-print_final_stats=1).
final_stat() { grep -E "^stat::$2:" "$1" | awk '{print $2}' | tail -n 1; }

targets=()
for program in "$build"/fuzz/*_fuzz; do
  [ -x "$program" ] || continue
  name="$(basename "$program")"
  if [ -n "${TN_FUZZ_TARGETS:-}" ] && [[ " $TN_FUZZ_TARGETS " != *" $name "* ]]; then continue; fi
  targets+=("$name")
done
if [ ${#targets[@]} -eq 0 ]; then
  echo "fuzz: no fuzz target was built" >&2
  exit 1
fi

summary=()
failed=()
for name in "${targets[@]}"; do
  program="$build/fuzz/$name"
  seeds="fuzz/corpus/$name"
  corpus="$scratch/$name"
  log="$scratch/$name.log"
  mkdir -p "$corpus" "$seeds"
  options=(-max_total_time="$seconds" -timeout=25 -print_final_stats=1 -artifact_prefix="$build/artifacts/$name-")
  # The build's copy, where the build completes a dictionary, else the tree's.
  if [ -f "$build/fuzz/$name.dict" ]; then
    options+=(-dict="$build/fuzz/$name.dict")
  elif [ -f "fuzz/$name.dict" ]; then
    options+=(-dict="fuzz/$name.dict")
  fi
  before=$(find "$seeds" -type f | wc -l)

  printf '\n==== fuzz %s for %ss (%d seeds)\n' "$name" "$seconds" "$before"
  finding=0
  # New inputs go to the scratch corpus; the seed corpus is only read.
  "$program" "${options[@]}" "$corpus" "$seeds" > "$log" 2>&1 || finding=1
  if [ "$finding" -eq 1 ]; then
    tail -n 40 "$log"
    failed+=("$name")
    for artifact in "$build/artifacts/$name-"*; do
      [ -f "$artifact" ] || continue
      echo "finding: $artifact"
      if [ "$merge" -eq 1 ]; then
        mkdir -p "fuzz/regressions/$name"
        cp "$artifact" "fuzz/regressions/$name/$(basename "$artifact" | sed "s/^$name-//")"
      fi
    done
  fi

  added=0
  if [ "$merge" -eq 1 ]; then
    minimal="$scratch/$name.minimal"
    mkdir -p "$minimal"
    find "$seeds" -regextype posix-extended -type f ! -regex '.*/[0-9a-f]{40}' -exec cp {} "$minimal/" \;
    if "$program" -merge=1 -use_counters=0 "$minimal" "$seeds" "$corpus" > "$scratch/$name.merge.log" 2>&1; then
      find "$seeds" -regextype posix-extended -type f -regex '.*/[0-9a-f]{40}' -delete
      find "$minimal" -regextype posix-extended -type f -regex '.*/[0-9a-f]{40}' -exec cp {} "$seeds/" \;
    else
      echo "fuzz: merging $name's corpus failed; seeds left as they were (see below)"
      tail -n 5 "$scratch/$name.merge.log"
    fi
    added=$(($(find "$seeds" -type f | wc -l) - before))
  fi
  read -r edges features <<< "$(coverage "$log")"
  line="$(printf '%-20s %12s executions %8s exec/s  cov %6s  ft %7s  seeds %5d %+-5d findings %d' "$name" \
    "$(final_stat "$log" number_of_executed_units)" "$(final_stat "$log" average_exec_per_sec)" "${edges:-?}" "${features:-?}" \
    "$before" "$added" "$finding")"
  echo "$line"
  summary+=("$line")
  # A target may say more about its run on lines of its own.
  grep -E '^fuzz-summary: ' "$log" | tail -n 1 | sed "s/^fuzz-summary:/  $name:/" || true
done

printf '\n==== fuzz summary (%ss per target)\n' "$seconds"
printf '%s\n' "${summary[@]}"
if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz: findings in ${failed[*]}; inputs under $build/artifacts/" \
    "$([ "$merge" -eq 1 ] && echo "and fuzz/regressions/<target>/")" >&2
  exit 1
fi
echo "fuzz: ${#targets[@]} targets ran ${seconds}s each without a finding"
