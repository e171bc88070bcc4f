#pragma once

#include "services/IdleMonitor.h"

#include <QDBusConnection>

namespace tarnwell::platform {

// The desktop's idle time (seconds since the last input of any kind). Each
// source is built only when it answers a first reading; otherwise its maker
// returns an empty provider.
namespace IdleTimeSources {

// GNOME (X11 and Wayland): org.gnome.Mutter.IdleMonitor.GetIdletime.
IdleSecondsProvider mutter(const QDBusConnection &bus);
// KDE: org.freedesktop.ScreenSaver.GetSessionIdleTime.
IdleSecondsProvider screenSaver(const QDBusConnection &bus);
// X11 sessions: the XScreenSaver extension of the X server in $DISPLAY.
IdleSecondsProvider xScreenSaver();
// Other Wayland compositors: ext-idle-notify-v1 on the compositor in
// $WAYLAND_DISPLAY. Below `timeout` the idle time reads as 0; from there on
// it is the timeout plus the time since the compositor said so, by `clock`.
// Reads nothing once the compositor has gone.
IdleSecondsProvider extIdleNotify(Clock clock, std::chrono::milliseconds timeout = std::chrono::seconds(30));

// The first source that answers, in the order above (XScreenSaver only
// outside Wayland sessions, ext-idle-notify-v1 only inside them), with the
// choice logged; an empty provider (idle checks off) when none does.
IdleSecondsProvider find(Clock clock, const QDBusConnection &bus = QDBusConnection::sessionBus());

} // namespace IdleTimeSources
} // namespace tarnwell::platform
