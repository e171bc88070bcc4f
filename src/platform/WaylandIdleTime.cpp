// Idle time on Wayland compositors that offer ext-idle-notify-v1 (the
// compositors that are neither GNOME nor KDE: wlroots-based ones and others).
//
// The protocol never tells how long the seat has been idle; it only sends
// "idled" once no input has come for a timeout the client chose, and
// "resumed" at the next input. The source asks for one notification with a
// short timeout and answers:
//   - idled:     the timeout plus the time since the "idled" event,
//   - not idled: 0 (the true figure is somewhere below the timeout).
// The idle monitor compares readings every 30 s against thresholds of 5, 10
// or 15 minutes, so a timeout of 30 s loses nothing it could see: any idle
// time it could act on is read to the second, and the range that reads as 0
// is no wider than one poll.
//
// The connection is the source's own, not the toolkit's. Qt's Wayland
// platform reads its display on a thread of its own and dispatches only its
// default queue; objects on a queue of ours would be read by that thread but
// never dispatched in time, and objects on Qt's queue depend on its
// internals. A second connection to $WAYLAND_DISPLAY costs one socket, is
// dispatched by us on the main thread the moment the compositor writes, and
// works the same whether the program draws through Wayland or through
// Xwayland (where the X server's own idle time counts only X clients).
#include "IdleTimeSources.h"

#include "kit/Logging.h"

#include "ext-idle-notify-v1-client-protocol.h"

#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <memory>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <wayland-client.h>

namespace tarnwell::platform {

namespace {

// Setting up is a few local round trips; a compositor that does not answer
// within this must not hold the program.
constexpr int setupTimeoutMs = 250;

// A socket to the compositor that $WAYLAND_DISPLAY names. wl_display_connect()
// would first take $WAYLAND_SOCKET, a descriptor handed over for the
// toolkit's own connection, so the socket is opened here.
int openCompositorSocket()
{
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    if (name.isEmpty())
        return -1;
    QByteArray path = name;
    if (!name.startsWith('/')) {
        const QByteArray runtimeDir = qgetenv("XDG_RUNTIME_DIR");
        if (runtimeDir.isEmpty())
            return -1;
        path = runtimeDir + '/' + name;
    }
    sockaddr_un address{};
    if (size_t(path.size()) >= sizeof address.sun_path)
        return -1;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return -1;
    if (::connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

// wl_display_roundtrip(), but giving up after `timeoutMs`.
bool roundtrip(wl_display *display, int timeoutMs)
{
    bool done = false;
    static const wl_callback_listener doneListener{
        [](void *data, wl_callback *, uint32_t) { *static_cast<bool *>(data) = true; }};
    wl_callback *callback = wl_display_sync(display);
    wl_callback_add_listener(callback, &doneListener, &done);
    const QDeadlineTimer deadline(timeoutMs);
    bool failed = false;
    while (!done && !failed) {
        while (wl_display_prepare_read(display) != 0) {
            if (wl_display_dispatch_pending(display) < 0) {
                failed = true;
                break;
            }
        }
        if (failed)
            break;
        if (done) {
            wl_display_cancel_read(display);
            break;
        }
        if (wl_display_flush(display) < 0 && errno != EAGAIN) {
            wl_display_cancel_read(display);
            failed = true;
            break;
        }
        pollfd readable{wl_display_get_fd(display), POLLIN, 0};
        if (::poll(&readable, 1, int(deadline.remainingTime())) <= 0) {
            wl_display_cancel_read(display);
            failed = true;
            break;
        }
        failed = wl_display_read_events(display) < 0 || wl_display_dispatch_pending(display) < 0;
    }
    wl_callback_destroy(callback);
    return done && !failed;
}

class ExtIdleNotifyTime
{
public:
    ExtIdleNotifyTime(Clock clock, std::chrono::milliseconds timeout)
        : m_clock(std::move(clock))
        , m_timeout(timeout)
    {
    }
    ExtIdleNotifyTime(const ExtIdleNotifyTime &) = delete;
    ExtIdleNotifyTime &operator=(const ExtIdleNotifyTime &) = delete;

    ~ExtIdleNotifyTime()
    {
        m_notifier.reset();
        if (m_notification)
            ext_idle_notification_v1_destroy(m_notification);
        if (m_idleNotifier)
            ext_idle_notifier_v1_destroy(m_idleNotifier);
        if (m_seat)
            wl_seat_destroy(m_seat);
        if (m_registry)
            wl_registry_destroy(m_registry);
        if (m_display) {
            wl_display_flush(m_display);
            wl_display_disconnect(m_display);
        }
    }

    // Connects, finds a seat and the idle notifier, and asks to be told of
    // idleness. False when there is no compositor or it lacks the protocol.
    bool open()
    {
        const int fd = openCompositorSocket();
        if (fd < 0)
            return false;
        m_display = wl_display_connect_to_fd(fd); // owns fd from here on, even on failure
        if (!m_display)
            return false;
        static const wl_registry_listener registryListener{
            [](void *data, wl_registry *registry, uint32_t name, const char *interface, uint32_t) {
                auto *self = static_cast<ExtIdleNotifyTime *>(data);
                if (!self->m_seat && std::strcmp(interface, wl_seat_interface.name) == 0)
                    self->m_seat = static_cast<wl_seat *>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
                else if (!self->m_idleNotifier && std::strcmp(interface, ext_idle_notifier_v1_interface.name) == 0)
                    self->m_idleNotifier = static_cast<ext_idle_notifier_v1 *>(
                        wl_registry_bind(registry, name, &ext_idle_notifier_v1_interface, 1));
            },
            [](void *, wl_registry *, uint32_t) {}};
        m_registry = wl_display_get_registry(m_display);
        wl_registry_add_listener(m_registry, &registryListener, this);
        if (!roundtrip(m_display, setupTimeoutMs) || !m_seat || !m_idleNotifier)
            return false;

        static const ext_idle_notification_v1_listener idleListener{
            [](void *data, ext_idle_notification_v1 *) {
                auto *self = static_cast<ExtIdleNotifyTime *>(data);
                self->m_idledAt = self->m_clock();
            },
            [](void *data, ext_idle_notification_v1 *) { static_cast<ExtIdleNotifyTime *>(data)->m_idledAt.reset(); }};
        m_notification =
            ext_idle_notifier_v1_get_idle_notification(m_idleNotifier, uint32_t(m_timeout.count()), m_seat);
        ext_idle_notification_v1_add_listener(m_notification, &idleListener, this);
        if (!roundtrip(m_display, setupTimeoutMs))
            return false;

        m_notifier = std::make_unique<QSocketNotifier>(wl_display_get_fd(m_display), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
        return true;
    }

    std::optional<qint64> idleSeconds() const
    {
        if (m_lost)
            return std::nullopt;
        if (!m_idledAt)
            return 0;
        const qint64 since = std::max<qint64>(0, wholeSecondsBetween(*m_idledAt, m_clock()));
        return qint64(m_timeout.count() / 1000) + since;
    }

private:
    void readEvents()
    {
        while (wl_display_prepare_read(m_display) != 0) {
            if (wl_display_dispatch_pending(m_display) < 0)
                return lost();
        }
        // A wake-up with nothing to read is not an error; a closed socket or
        // a protocol error is, and sets the display's error.
        if (wl_display_read_events(m_display) < 0 && wl_display_get_error(m_display) != 0)
            return lost();
        if (wl_display_dispatch_pending(m_display) < 0)
            return lost();
    }

    void lost()
    {
        m_lost = true;
        m_idledAt.reset();
        m_notifier->setEnabled(false);
        qCWarning(lcServices).noquote() << QStringLiteral(
                                               "The Wayland compositor closed the connection (%1); the idle time "
                                               "cannot be read any more")
                                               .arg(QString::fromLocal8Bit(
                                                   std::strerror(wl_display_get_error(m_display))));
    }

    Clock m_clock;
    std::chrono::milliseconds m_timeout;
    wl_display *m_display = nullptr;
    wl_registry *m_registry = nullptr;
    wl_seat *m_seat = nullptr;
    ext_idle_notifier_v1 *m_idleNotifier = nullptr;
    ext_idle_notification_v1 *m_notification = nullptr;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::optional<QDateTime> m_idledAt;
    bool m_lost = false;
};

} // namespace

IdleSecondsProvider IdleTimeSources::extIdleNotify(Clock clock, std::chrono::milliseconds timeout)
{
    auto source = std::make_shared<ExtIdleNotifyTime>(std::move(clock), timeout);
    if (!source->open())
        return {};
    return [source] { return source->idleSeconds(); };
}

} // namespace tarnwell::platform
