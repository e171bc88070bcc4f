#!/usr/bin/env bash
# The desktop's way in: with the installed desktop entry registered as the
# handler of tarnwell: links, `xdg-open tarnwell://quickadd` starts Tarnwell
# and a second `xdg-open` reaches the same process. Runs inside isolate.sh
# (private session bus, Xvfb, temporary XDG folders).
set -euo pipefail
build=$1
prefix=$(mktemp -d "${TMPDIR:-/tmp}/tarnwell-prefix.XXXXXX")
agent_log=$prefix/agent.log
cleanup() {
    pkill -f "$prefix/lib/tarnwell/tarnwell-agent" 2>/dev/null || true
    rm -rf "$prefix"
}
trap cleanup EXIT
fail() {
    echo "FAIL: $*" >&2
    [ -f "$agent_log" ] && sed 's/^/  agent: /' "$agent_log" >&2
    exit 1
}
wait_for() { # text, file
    for _ in $(seq 1 300); do
        grep -q "$1" "$2" 2>/dev/null && return 0
        sleep 0.1
    done
    return 1
}

cmake --install "$build" --prefix "$prefix" >/dev/null
export PATH=$prefix/bin:$PATH

# A user who has been through the first-run window and asked to start at login.
"$prefix/bin/tarnwell" add "Seed" >/dev/null
sqlite3 "$XDG_DATA_HOME/tarnwell/Tarnwell.sqlite" \
    "INSERT INTO app_settings(id, onboarding_completed, login_item_enabled) VALUES('2E1B3C4D-0000-4000-8000-000000000001', 1, 1)"

apps=$XDG_DATA_HOME/applications
mkdir -p "$apps"
cp "$prefix/share/applications/org.tarnwell.Tarnwell.desktop" "$apps/"
update-desktop-database "$apps"
xdg-mime default org.tarnwell.Tarnwell.desktop x-scheme-handler/tarnwell
[ "$(xdg-mime query default x-scheme-handler/tarnwell)" = org.tarnwell.Tarnwell.desktop ] ||
    fail "xdg-mime does not name Tarnwell as the handler"

# The first open starts the agent (xdg-open waits for it, so it runs aside).
QT_QPA_PLATFORM=xcb xdg-open tarnwell://quickadd >"$agent_log" 2>&1 &
wait_for "Quick add shown" "$agent_log" || fail "quick add was not shown"
[ "$(pgrep -fc "$prefix/lib/tarnwell/tarnwell-agent")" = 1 ] || fail "expected one agent"

# The second reaches the same process and leaves.
second=$(timeout 30 xdg-open tarnwell://quickadd 2>&1) || fail "second xdg-open: $second"
echo "$second" | grep -q "handing over" || fail "the second start did not hand over: $second"
[ "$(grep -c "Opening link tarnwell://quickadd" "$agent_log")" = 2 ] || fail "the agent did not get the second link"
[ "$(pgrep -fc "$prefix/lib/tarnwell/tarnwell-agent")" = 1 ] || fail "a second agent started"

# Starting at login runs the installed command, not a program of the build tree.
autostart=$XDG_CONFIG_HOME/autostart/org.tarnwell.Tarnwell.desktop
wait_for "^Exec=" "$autostart" || fail "no autostart entry was written"
grep -q "^Exec=\"$prefix/bin/tarnwell\"" "$autostart" || fail "autostart runs: $(grep '^Exec=' "$autostart")"
echo "xdg-open checked"
