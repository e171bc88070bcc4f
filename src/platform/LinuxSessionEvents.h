#pragma once

#include "services/SessionEvents.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QVariantMap>

namespace tarnwell::platform {

// The session going away and coming back, from systemd-logind on the system
// bus (PrepareForSleep, held back by a delay inhibitor until the receivers
// have paused and saved; the session's LockedHint and Active) and from
// org.freedesktop.ScreenSaver's ActiveChanged on the session bus. Either bus
// may be missing: that is logged once and the other keeps working.
class LinuxSessionEvents final : public SessionEvents
{
    Q_OBJECT
public:
    LinuxSessionEvents(QDBusConnection systemBus = QDBusConnection::systemBus(),
                       QDBusConnection sessionBus = QDBusConnection::sessionBus(), QObject *parent = nullptr);
    ~LinuxSessionEvents() override;

    // Follows the screen saver on a new session bus connection (the bus came
    // back after a loss).
    void rebindSessionBus(QDBusConnection sessionBus);

    bool screenIsLocked() const override { return m_locked || m_screenSaverActive; }
    // Whether a sleep delay inhibitor is held now.
    bool holdsSleepInhibitor() const { return m_inhibitor.isValid(); }
    // The logind session object followed, once found.
    QString sessionPath() const { return m_sessionPath; }

Q_SIGNALS:
    // The session object was found and its state read.
    void sessionFound();

private Q_SLOTS:
    void onPrepareForSleep(bool sleeping);
    void onSessionPropertiesChanged(const QString &interface, const QVariantMap &changed,
                                    const QStringList &invalidated);
    void onScreenSaverActiveChanged(bool active);

private:
    void followScreenSaver(bool connect);
    void takeSleepInhibitor();
    void findSession();
    void followSession(const QString &path);
    void applySessionState(const QVariantMap &properties);

    QDBusConnection m_system;
    QDBusConnection m_session;
    QDBusUnixFileDescriptor m_inhibitor;
    QString m_sessionPath;
    bool m_locked = false;
    bool m_active = true;
    bool m_screenSaverActive = false;
};

} // namespace tarnwell::platform
