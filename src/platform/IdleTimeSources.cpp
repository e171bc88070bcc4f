#include "IdleTimeSources.h"

#include "kit/Logging.h"

#include <QDBusMessage>
#include <QDBusReply>

#include <memory>

#include <X11/Xlib.h>
#include <X11/extensions/scrnsaver.h>

namespace tarnwell::platform::IdleTimeSources {

namespace {

// The reading is a local call the desktop answers at once; a desktop that
// hangs must not hold the program for long.
constexpr int callTimeoutMs = 250;

// A D-Bus method that answers the idle time in milliseconds.
template<typename Millis>
IdleSecondsProvider dbusSource(const QDBusConnection &bus, const QString &service, const QString &path,
                               const QString &interface, const QString &method)
{
    if (!bus.isConnected())
        return {};
    auto read = [bus, service, path, interface, method]() -> std::optional<qint64> {
        const QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
        const QDBusReply<Millis> reply = QDBusConnection(bus).call(call, QDBus::Block, callTimeoutMs);
        if (!reply.isValid())
            return std::nullopt;
        return qint64(reply.value() / 1000);
    };
    if (!read())
        return {};
    return read;
}

bool waylandSession()
{
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
        qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland");
}

} // namespace

IdleSecondsProvider mutter(const QDBusConnection &bus)
{
    return dbusSource<quint64>(bus, QStringLiteral("org.gnome.Mutter.IdleMonitor"),
                               QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"),
                               QStringLiteral("org.gnome.Mutter.IdleMonitor"), QStringLiteral("GetIdletime"));
}

IdleSecondsProvider screenSaver(const QDBusConnection &bus)
{
    return dbusSource<uint>(bus, QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/ScreenSaver"),
                            QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("GetSessionIdleTime"));
}

IdleSecondsProvider xScreenSaver()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return {};
    Display *opened = XOpenDisplay(nullptr);
    if (!opened)
        return {};
    std::shared_ptr<Display> display(opened, [](Display *d) { XCloseDisplay(d); });
    int eventBase = 0;
    int errorBase = 0;
    if (!XScreenSaverQueryExtension(display.get(), &eventBase, &errorBase))
        return {};
    auto read = [display]() -> std::optional<qint64> {
        XScreenSaverInfo *info = XScreenSaverAllocInfo();
        if (!info)
            return std::nullopt;
        std::optional<qint64> seconds;
        if (XScreenSaverQueryInfo(display.get(), DefaultRootWindow(display.get()), info))
            seconds = qint64(info->idle / 1000);
        XFree(info);
        return seconds;
    };
    if (!read())
        return {};
    return read;
}

IdleSecondsProvider find(Clock clock, const QDBusConnection &bus)
{
    if (IdleSecondsProvider source = mutter(bus)) {
        qCInfo(lcServices).noquote() << QStringLiteral("Idle time from org.gnome.Mutter.IdleMonitor");
        return source;
    }
    if (IdleSecondsProvider source = screenSaver(bus)) {
        qCInfo(lcServices).noquote() << QStringLiteral("Idle time from org.freedesktop.ScreenSaver");
        return source;
    }
    // On Wayland the X server (Xwayland) sees only its own clients' input.
    if (!waylandSession()) {
        if (IdleSecondsProvider source = xScreenSaver()) {
            qCInfo(lcServices).noquote() << QStringLiteral("Idle time from the XScreenSaver extension");
            return source;
        }
    } else if (IdleSecondsProvider source = extIdleNotify(std::move(clock))) {
        qCInfo(lcServices).noquote() << QStringLiteral("Idle time from the compositor's ext-idle-notify-v1");
        return source;
    }
    qCInfo(lcServices).noquote() << QStringLiteral("No idle-time source answers");
    return {};
}

} // namespace tarnwell::platform::IdleTimeSources
