#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks what the desktop will
# read there: the desktop entry, the AppStream metadata, the D-Bus activation
# file, the icons, and that the installed programs run from the prefix.
set -euo pipefail
build=$1
prefix=$(mktemp -d "${TMPDIR:-/tmp}/tarnwell-prefix.XXXXXX")
trap 'rm -rf "$prefix"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$prefix" >/dev/null

share=$prefix/share
desktop-file-validate "$share/applications/org.tarnwell.Tarnwell.desktop" || fail "desktop entry"
grep -qx 'MimeType=x-scheme-handler/tarnwell;' "$share/applications/org.tarnwell.Tarnwell.desktop" ||
    fail "the desktop entry does not claim tarnwell: links"
appstreamcli validate --no-net --explain "$share/metainfo/org.tarnwell.Tarnwell.metainfo.xml" || fail "metainfo"

service=$share/dbus-1/services/org.tarnwell.Tarnwell.service
exec_line=$(sed -n 's/^Exec=//p' "$service")
[ -x "$exec_line" ] || fail "the activation file runs '$exec_line', which is not an installed program"
grep -qx 'Name=org.tarnwell.Tarnwell' "$service" || fail "activation file name"

[ -f "$share/icons/hicolor/scalable/apps/org.tarnwell.Tarnwell.svg" ] || fail "no scalable icon"
for size in 16 22 24 32 48 64 128 256 512; do
    png=$share/icons/hicolor/${size}x${size}/apps/org.tarnwell.Tarnwell.png
    [ -f "$png" ] || fail "no ${size}x${size} icon"
    # Width and height from the PNG header.
    read -r w h < <(od -An -tu1 -j16 -N8 "$png" |
        awk '{ print $1 * 16777216 + $2 * 65536 + $3 * 256 + $4, $5 * 16777216 + $6 * 65536 + $7 * 256 + $8 }')
    [ "$w" = "$size" ] && [ "$h" = "$size" ] || fail "the ${size}x${size} icon is ${w}x${h}"
done

for f in man/man1/tarnwell.1.gz doc/tarnwell/copyright doc/tarnwell/changelog.gz \
    bash-completion/completions/tarnwell zsh/vendor-completions/_tarnwell fish/vendor_completions.d/tarnwell.fish; do
    [ -f "$share/$f" ] || fail "missing $f"
done
gzip -t "$share/man/man1/tarnwell.1.gz" || fail "man page"

# The installed command runs from the prefix, and finds the installed agent.
"$prefix/bin/tarnwell" --version | grep -q '^tarnwell ' || fail "tarnwell --version"
log=$(QT_QPA_PLATFORM=offscreen TARNWELL_EXIT_AFTER_INSTALL=1 timeout 60 "$prefix/bin/tarnwell" --ui-test 2>&1) ||
    fail "the installed agent did not start: $log"
echo "$log" | grep -q "Interface installed" || fail "the installed agent did not install its interface: $log"
# The command line maps neither Qt DBus nor libical for the store commands; its
# module with both is installed where it looks.
if ldd "$prefix/bin/tarnwell" | grep -E 'libQt6DBus|libical'; then fail "tarnwell links the bus or libical"; fi
[ -f "$prefix/lib/tarnwell/libtarnwell-cli-extras.so" ] || fail "the command line's module is not installed"
ics=$(XDG_DATA_HOME="$prefix/data" "$prefix/bin/tarnwell" export --format ics) || fail "the installed ICS export: $ics"
[[ $ics == BEGIN:VCALENDAR* ]] || fail "the installed ICS export wrote: $ics"
echo "installed tree checked"
