#!/usr/bin/env bash
# Builds the quick-add fuzzer with clang (libFuzzer + AddressSanitizer +
# UndefinedBehaviorSanitizer) and runs it.
# Usage: fuzz/build-and-run.sh [seconds]   (default 600)
# The seed corpus is fuzz/corpus/quickadd/; inputs found while running go to
# fuzz/out/corpus/, crashes to fuzz/out/.
set -euo pipefail
seconds="${1:-600}"
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/.." && pwd)"
out="$here/out"
mkdir -p "$out/corpus"

# shellcheck disable=SC2046
clang++ -std=c++20 -g -O1 -fPIC \
  -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer \
  -DQT_NO_CAST_FROM_ASCII \
  -I"$root/src" $(pkg-config --cflags Qt6Core) \
  "$here/quickadd_fuzzer.cpp" \
  "$root/src/services/QuickAddSyntaxParser.cpp" \
  "$root/src/services/QuickAddDayVocabulary.cpp" \
  "$root/src/services/DurationParser.cpp" \
  "$root/src/kit/Calendar.cpp" \
  $(pkg-config --libs Qt6Core) \
  -o "$out/quickadd_fuzzer"

cd "$out"
exec ./quickadd_fuzzer -max_total_time="$seconds" -print_final_stats=1 -max_len=256 \
  -artifact_prefix="$out/" corpus "$here/corpus/quickadd"
