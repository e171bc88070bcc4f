#!/usr/bin/env bash
# Runs every benchmark program of a build and prints one figure a line:
# "<name> <value> <unit>" (ratios have the unit "x"). Details go to
# bench/out/<program>.log.
set -uo pipefail
build="${1:-build-bench}"
here="$(cd "$(dirname "$0")" && pwd)"
out="$here/out"
mkdir -p "$out"
status=0
for program in "$build"/bench/*_bench; do
  [ -x "$program" ] || continue
  name=$(basename "$program")
  # Each program runs in its own throw-away XDG folders, like the tests.
  # The program-level and hot-key benches need a display for their windows.
  flags=(--bus)
  case "$name" in app_bench|hotkey_bench|widget_bench|rss_bench|review_window_bench) flags+=(--display) ;; esac
  if ! "$here/../tests/harness/isolate.sh" "${flags[@]}" -- "$program" >"$out/$name.out" 2>"$out/$name.log"; then
    echo "$name failed; see $out/$name.log" >&2
    status=1
  fi
  grep -E '^[A-Za-z0-9_.]+ -?[0-9.]+ [A-Za-z%/]+$' "$out/$name.out" || true
done
exit $status
