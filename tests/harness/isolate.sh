#!/usr/bin/env bash
# Runs one test binary in a sealed environment:
#   temporary XDG data/config/cache/runtime folders, no access to the user's
#   session bus, and, on request, a private D-Bus session bus (--bus), an Xvfb
#   display (--display), a private bus standing in for the system bus
#   (--system-bus; without it the system bus is out of reach), the
#   accessibility bus that screen readers listen on (--a11y: at-spi2-core's bus
#   and registry inside the private session, Qt's accessibility bridge switched
#   on; implies --bus), a headless Wayland session (--wayland: sway on its
#   headless back end, the command on QT_QPA_PLATFORM=wayland, SWAYSOCK set
#   for swaymsg) and a time zone (--tz Zone/Name).
# Where the compositor cannot start, --wayland says why and exits with 77,
# which CTest reports as a skipped test.
# Usage: isolate.sh [--bus] [--system-bus] [--display] [--wayland] [--a11y] [--tz ZONE] -- command [args...]
set -euo pipefail

want_bus=0
want_display=0
want_system_bus=0
want_a11y=0
want_wayland=0
while [ $# -gt 0 ]; do
  case "$1" in
    --bus) want_bus=1; shift ;;
    --display) want_display=1; shift ;;
    --wayland) want_wayland=1; shift ;;
    --system-bus) want_system_bus=1; shift ;;
    --a11y) want_a11y=1; want_bus=1; shift ;;
    --tz) export TZ="$2"; shift 2 ;;
    --) shift; break ;;
    *) echo "isolate.sh: unknown option $1" >&2; exit 2 ;;
  esac
done

root=$(mktemp -d "${TMPDIR:-/tmp}/tarnwell-test.XXXXXX")
xvfb_pid=""
system_bus_pid=""
sway_pid=""
sway_dir=""
cleanup() {
  if [ -n "$system_bus_pid" ]; then kill "$system_bus_pid" 2>/dev/null || true; fi
  if [ -n "$sway_pid" ]; then kill "$sway_pid" 2>/dev/null || true; wait "$sway_pid" 2>/dev/null || true; fi
  if [ -n "$sway_dir" ]; then rm -rf "$sway_dir"; fi
  if [ -n "$xvfb_pid" ]; then kill "$xvfb_pid" 2>/dev/null || true; wait "$xvfb_pid" 2>/dev/null || true; fi
  rm -rf "$root"
}
trap cleanup EXIT

mkdir -p "$root/data" "$root/config" "$root/cache" "$root/state" "$root/runtime" "$root/artifacts"
chmod 700 "$root/runtime"
export XDG_DATA_HOME="$root/data" XDG_CONFIG_HOME="$root/config" XDG_CACHE_HOME="$root/cache"
export XDG_STATE_HOME="$root/state" XDG_RUNTIME_DIR="$root/runtime"
export TARNWELL_TEST_ROOT="$root"
# Never talk to the developer's own session.
export DBUS_SESSION_BUS_ADDRESS="unix:path=$root/runtime/no-bus"
export DBUS_SYSTEM_BUS_ADDRESS="unix:path=$root/runtime/no-system-bus"
# Nor to the developer's Wayland compositor (tests that need one start a stand-in).
unset WAYLAND_DISPLAY WAYLAND_SOCKET XDG_SESSION_TYPE || true
unset JOURNAL_STREAM || true

if [ $want_system_bus -eq 1 ]; then
  # A plain bus daemon stands in for the system bus (stand-in services own their names on it).
  system_bus_pid=$(dbus-daemon --session --fork --nopidfile --print-pid=1 --address="unix:path=$root/runtime/system-bus")
  export DBUS_SYSTEM_BUS_ADDRESS="unix:path=$root/runtime/system-bus"
fi

if [ $want_display -eq 1 ]; then
  fifo="$root/displayfd"
  mkfifo "$fifo"
  Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp -auth /dev/null 3>"$fifo" >/dev/null 2>&1 &
  xvfb_pid=$!
  read -r display_number < "$fifo"
  export DISPLAY=":$display_number"
  export QT_QPA_PLATFORM=xcb
elif [ $want_wayland -eq 1 ]; then
  skip() {
    echo "isolate.sh: SKIPPED: the headless Wayland compositor cannot start: $1" >&2
    exit 77
  }
  sway=$(command -v sway) || skip "sway is not installed (scripts/setup.sh installs it)"
  # sway refuses to run as root: as root it runs as nobody, in a folder of
  # its own (root reaches the sockets there all the same).
  sway_dir=$(mktemp -d "${TMPDIR:-/tmp}/tarnwell-sway.XXXXXX")
  as_user=()
  if [ "$(id -u)" -eq 0 ]; then
    chown 65534:65534 "$sway_dir"
    as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  fi
  printf '%s\n' 'output HEADLESS-1 resolution 1280x800 background #5a6b7c solid_color' 'xwayland disable' \
    >"$sway_dir/config"
  env -i PATH=/usr/bin:/bin HOME="$sway_dir" XDG_RUNTIME_DIR="$sway_dir" \
    WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
    "${as_user[@]}" "$sway" -c "$sway_dir/config" >"$sway_dir/log" 2>&1 &
  sway_pid=$!
  socket=""
  ipc=""
  for _ in $(seq 200); do
    socket=$(find "$sway_dir" -maxdepth 1 -type s -name 'wayland-*' -printf '%f\n' | head -n 1)
    ipc=$(find "$sway_dir" -maxdepth 1 -type s -name 'sway-ipc.*' | head -n 1)
    if [ -n "$socket" ] && [ -n "$ipc" ]; then break; fi
    kill -0 "$sway_pid" 2>/dev/null || break
    sleep 0.05
  done
  if [ -z "$socket" ] || [ -z "$ipc" ]; then
    skip "sway did not open its sockets: $(tail -n 3 "$sway_dir/log" | tr '\n' ' ')"
  fi
  ln -s "$sway_dir/$socket" "$root/runtime/$socket"
  export WAYLAND_DISPLAY="$socket" SWAYSOCK="$ipc" XDG_SESSION_TYPE=wayland
  export QT_QPA_PLATFORM=wayland
else
  export QT_QPA_PLATFORM=offscreen
fi

# Inside the private session: start the accessibility bus, wait until it is
# reachable, run the command, then stop the bus again.
with_a11y_bus='
  /usr/libexec/at-spi-bus-launcher --launch-immediately --a11y=1 &
  launcher=$!
  for _ in $(seq 200); do
    if dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress \
         >/dev/null 2>&1; then break; fi
    sleep 0.05
  done
  status=0
  "$@" || status=$?
  kill "$launcher" 2>/dev/null || true
  wait "$launcher" 2>/dev/null || true
  exit $status'

if [ $want_a11y -eq 1 ]; then
  [ -x /usr/libexec/at-spi-bus-launcher ] || { echo "isolate.sh: at-spi2-core is missing" >&2; exit 2; }
  export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
  dbus-run-session -- bash -c "$with_a11y_bus" a11y-session "$@"
elif [ $want_bus -eq 1 ]; then
  dbus-run-session -- "$@"
else
  "$@"
fi
