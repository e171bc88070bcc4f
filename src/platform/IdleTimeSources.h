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

// The first source that answers, in the order above, with the choice logged;
// an empty provider (idle checks off) when none does.
IdleSecondsProvider find(const QDBusConnection &bus = QDBusConnection::sessionBus());

} // namespace IdleTimeSources
} // namespace tarnwell::platform
