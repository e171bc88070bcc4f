#!/usr/bin/env bash
# Builds the fuzzers with clang (libFuzzer + AddressSanitizer +
# UndefinedBehaviorSanitizer) and runs each in turn: the quick-add grammar,
# then the hot-key grammar.
# Usage: fuzz/build-and-run.sh [seconds per fuzzer] [quickadd|hotkey]   (default 600, both)
# The seed corpora are fuzz/corpus/<name>/; inputs found while running go to
# fuzz/out/<name>/corpus/, crashes to fuzz/out/<name>/.
set -euo pipefail
seconds="${1:-600}"
only="${2:-}"
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/.." && pwd)"

build() {
  local name="$1"; shift
  mkdir -p "$here/out/$name/corpus"
  # shellcheck disable=SC2046
  clang++ -std=c++20 -g -O1 -fPIC \
    -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer \
    -DQT_NO_CAST_FROM_ASCII \
    -I"$root/src" $(pkg-config --cflags Qt6Core) \
    "$here/${name}_fuzzer.cpp" "$@" \
    $(pkg-config --libs Qt6Core) \
    -o "$here/out/$name/${name}_fuzzer"
}

run() {
  local name="$1" max_len="$2"
  (cd "$here/out/$name" && ./"${name}_fuzzer" -max_total_time="$seconds" -print_final_stats=1 -max_len="$max_len" \
    -artifact_prefix="$here/out/$name/" corpus "$here/corpus/$name")
}

if [ -z "$only" ] || [ "$only" = quickadd ]; then
  build quickadd "$root/src/services/QuickAddSyntaxParser.cpp" "$root/src/services/QuickAddDayVocabulary.cpp" \
    "$root/src/services/DurationParser.cpp" "$root/src/kit/Calendar.cpp"
  run quickadd 256
fi
if [ -z "$only" ] || [ "$only" = hotkey ]; then
  build hotkey "$root/src/hotkeys/HotkeyParser.cpp" "$root/src/hotkeys/HotkeyConflict.cpp" "$root/src/hotkeys/HotkeyAction.cpp"
  run hotkey 128
fi
