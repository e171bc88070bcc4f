#!/usr/bin/env bash
# Builds every fuzz target with clang (libFuzzer + AddressSanitizer +
# UndefinedBehaviorSanitizer) and runs them one after the other.
# Usage: fuzz/build-and-run.sh [seconds] [target...]
#   seconds: total run time, shared equally by the targets (default 600)
#   targets: quickadd, hotkey, automation, files, caldav (default: all)
# FUZZ_BUILD_ONLY=1 builds without running.
# Seed corpora are fuzz/corpus/<target>/; inputs found while running go to
# fuzz/out/corpus-<target>/, crashes to fuzz/out/.
set -euo pipefail
seconds="${1:-600}"
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(quickadd hotkey automation files caldav)
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/.." && pwd)"
out="${FUZZ_OUT:-$here/out}"
mkdir -p "$out"
flags=(-std=c++20 -g -O1 -fPIC -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined
       -fno-omit-frame-pointer -DQT_NO_CAST_FROM_ASCII -I"$root/src")

build_quickadd() {
  # shellcheck disable=SC2046
  clang++ "${flags[@]}" $(pkg-config --cflags Qt6Core) \
    "$here/quickadd_fuzzer.cpp" \
    "$root/src/services/QuickAddSyntaxParser.cpp" \
    "$root/src/services/QuickAddDayVocabulary.cpp" \
    "$root/src/services/DurationParser.cpp" \
    "$root/src/kit/Calendar.cpp" \
    $(pkg-config --libs Qt6Core) \
    -o "$out/quickadd_fuzzer"
}

build_hotkey() {
  # shellcheck disable=SC2046
  clang++ "${flags[@]}" $(pkg-config --cflags Qt6Core) \
    "$here/hotkey_fuzzer.cpp" \
    "$root/src/hotkeys/HotkeyParser.cpp" \
    "$root/src/hotkeys/HotkeyConflict.cpp" \
    "$root/src/hotkeys/HotkeyAction.cpp" \
    $(pkg-config --libs Qt6Core) \
    -o "$out/hotkey_fuzzer"
}

build_automation() {
  # The import reader checks titles with the task repository's rules, so the
  # persistence layer comes along (its one QObject through moc).
  /usr/lib/qt6/libexec/moc -I"$root/src" "$root/src/persistence/StoreContext.h" -o "$out/moc_StoreContext.cpp"
  /usr/lib/qt6/libexec/moc -I"$root/src" "$root/src/persistence/StoreBackup.h" -o "$out/moc_StoreBackup.cpp"
  # The schema step files, named as the CMake build names them to StoreMigrator.
  local steps
  steps=$(cd "$root/src" && printf '%s\n' persistence/schema/*.sql | sort | paste -sd, -)
  # shellcheck disable=SC2046
  clang++ "${flags[@]}" -DTARNWELL_APP_GROUP='"org.tarnwell.Tarnwell"' -DTARNWELL_SCHEMA_STEPS="\"$steps\"" \
    $(pkg-config --cflags Qt6Core Qt6Sql) \
    "$here/automation_fuzzer.cpp" \
    "$root/src/integration/AutomationArguments.cpp" \
    "$root/src/integration/TaskExchange.cpp" \
    "$root"/src/persistence/*.cpp \
    "$root/src/kit/Calendar.cpp" "$root/src/kit/Logging.cpp" \
    "$out/moc_StoreContext.cpp" "$out/moc_StoreBackup.cpp" \
    $(pkg-config --libs Qt6Core Qt6Sql) -lsqlite3 \
    -o "$out/automation_fuzzer"
}

build_files() {
  # The link router is a QObject (its moc comes along); the widget's files
  # need only the shared JSON coder.
  /usr/lib/qt6/libexec/moc -I"$root/src" "$root/src/integration/AppURLRouter.h" -o "$out/moc_AppURLRouter.cpp"
  # shellcheck disable=SC2046
  clang++ "${flags[@]}" $(pkg-config --cflags Qt6Core) \
    "$here/files_fuzzer.cpp" \
    "$root/src/integration/AppURLRouter.cpp" \
    "$root/src/widget/WidgetCommand.cpp" \
    "$root/src/widget/WidgetSnapshot.cpp" \
    "$root/src/widget/TarnwellSharedJSON.cpp" \
    "$root/src/kit/Logging.cpp" \
    "$out/moc_AppURLRouter.cpp" \
    $(pkg-config --libs Qt6Core) \
    -o "$out/files_fuzzer"
}

build_caldav() {
  # shellcheck disable=SC2046
  clang++ "${flags[@]}" $(pkg-config --cflags Qt6Core libical) \
    "$here/caldav_fuzzer.cpp" \
    "$root/src/ical/VTodoMapping.cpp" \
    "$root/src/sync/TodoMerge.cpp" \
    "$root/src/sync/DavMultistatus.cpp" \
    $(pkg-config --libs Qt6Core libical) \
    -o "$out/caldav_fuzzer"
}

# FUZZ_SECONDS_EACH, when set, gives every target that many seconds instead
# of a share of the total.
per_target=$(( seconds / ${#targets[@]} ))
[ -n "${FUZZ_SECONDS_EACH:-}" ] && per_target="$FUZZ_SECONDS_EACH"
for target in "${targets[@]}"; do
  "build_$target"
  [ -n "${FUZZ_BUILD_ONLY:-}" ] && continue
  mkdir -p "$out/corpus-$target"
  max_len=256
  [ "$target" = automation ] && max_len=8192
  [ "$target" = hotkey ] && max_len=128
  [ "$target" = files ] && max_len=4096
  [ "$target" = caldav ] && max_len=4096
  (cd "$out" && "./${target}_fuzzer" -max_total_time="$per_target" -print_final_stats=1 -max_len="$max_len" \
    -artifact_prefix="$out/" "corpus-$target" "$here/corpus/$target")
done
