#!/usr/bin/env bash
# The project's checks on its own sources.
#
#   tools/lint.sh format          rewrite every C++ file with clang-format
#   tools/lint.sh check [BUILD]   format check, qmllint, clang-tidy on what changed
#   tools/lint.sh all [BUILD]     format check, qmllint, clang-tidy on every file
#
# "What changed" is every C++ file that differs from the main branch (committed
# or not); on the main branch itself, the files of the last commit. clang-tidy
# reads the compile database of BUILD (default: build), so the tree must have
# been configured and built once (moc and resource sources are generated then).
set -euo pipefail
cd "$(dirname "$0")/.."

mode=${1:-check}
build=${2:-build}
jobs=${JOBS:-$(nproc)}
status=0

cxx_files() { git ls-files -- '*.cpp' '*.h'; }

run_format_check() {
    echo "== clang-format"
    if ! cxx_files | xargs clang-format --dry-run --Werror 2>&1; then
        echo "clang-format: the files above differ from .clang-format (run: make format)"
        status=1
    fi
}

run_qmllint() {
    echo "== qmllint"
    # The module's lint target knows the import paths and the C++ types of the module.
    if ! cmake --build "$build" --target all_qmllint; then
        echo "qmllint: warnings above"
        status=1
    fi
}

changed_files() {
    local base
    if git rev-parse --verify -q main >/dev/null && [ "$(git rev-parse HEAD)" != "$(git rev-parse main)" ]; then
        base=$(git merge-base HEAD main)
    else
        base=HEAD~1
    fi
    { git diff --name-only "$base" -- '*.cpp' '*.h'; git diff --name-only -- '*.cpp' '*.h'; } | sort -u
}

# Headers are analysed through the sources that include them.
sources_for() {
    local file
    while read -r file; do
        [ -f "$file" ] || continue
        case "$file" in
        *.cpp) echo "$file" ;;
        *.h) [ -f "${file%.h}.cpp" ] && echo "${file%.h}.cpp" ;;
        esac
    done | sort -u
}

run_tidy() {
    local scope=$1 files
    echo "== clang-tidy ($scope)"
    if [ ! -f "$build/compile_commands.json" ]; then
        echo "clang-tidy: no $build/compile_commands.json; build the tree first (make build)"
        status=1
        return
    fi
    if [ "$scope" = all ]; then
        files=$(git ls-files -- 'src/*.cpp' 'tests/*.cpp')
    else
        files=$(changed_files | grep -E '^(src|tests)/' | sources_for || true)
    fi
    # Only files the build compiles have a command line to analyse with.
    files=$(for f in $files; do grep -q "\"file\": \"$PWD/$f\"" "$build/compile_commands.json" && echo "$f"; done || true)
    if [ -z "$files" ]; then
        echo "clang-tidy: nothing to analyse"
        return
    fi
    echo "$files" | wc -l | xargs echo "clang-tidy: files:"
    local log
    log=$(mktemp)
    printf '%s\n' $files | xargs -P "$jobs" -n 1 clang-tidy -p "$build" -quiet >"$log" 2>&1 || true
    if sed 's/\x1b\[[0-9;]*m//g' "$log" | grep -E "^[^ ]+:[0-9]+:[0-9]+: (warning|error): " | sort -u | grep .; then
        echo "clang-tidy: findings above"
        status=1
    fi
    rm -f "$log"
}

case "$mode" in
format)
    cxx_files | xargs clang-format -i
    ;;
check)
    run_format_check
    run_qmllint
    run_tidy changed
    ;;
all)
    run_format_check
    run_qmllint
    run_tidy all
    ;;
*)
    echo "usage: $0 format | check [BUILD] | all [BUILD]" >&2
    exit 2
    ;;
esac
exit $status
