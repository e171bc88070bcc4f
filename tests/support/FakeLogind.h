// A stand-in for systemd-logind on the test's private system bus: the
// manager (Inhibit, GetSessionByPID, PrepareForSleep) and one session whose
// LockedHint and Active the test sets. Inhibit hands out the write end of a
// pipe, so the test can see when the program lets go of its sleep delay.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QVariantMap>

#include <poll.h>
#include <unistd.h>

class FakeLogindManager : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")
public:
    explicit FakeLogindManager(QObject *owner)
        : QDBusAbstractAdaptor(owner)
    {
    }
    ~FakeLogindManager() override
    {
        for (int fd : readEnds)
            ::close(fd);
    }
    QList<int> readEnds; // one per Inhibit, in order
    QStringList inhibitions; // "what|mode" per Inhibit

    // Whether every holder of the latest inhibitor has closed it.
    bool latestReleased() const
    {
        pollfd p{readEnds.value(readEnds.size() - 1, -1), POLLIN, 0};
        return p.fd < 0 || (::poll(&p, 1, 0) == 1 && (p.revents & POLLHUP));
    }

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &, const QString &, const QString &mode)
    {
        inhibitions << what + QLatin1Char('|') + mode;
        int fds[2];
        if (::pipe(fds) != 0)
            return {};
        readEnds << fds[0];
        QDBusUnixFileDescriptor handed(fds[1]); // a duplicate
        ::close(fds[1]);
        return handed;
    }
    QDBusObjectPath GetSessionByPID(uint) { return QDBusObjectPath(sessionPath); }

Q_SIGNALS:
    void PrepareForSleep(bool start);

public:
    static inline const QString sessionPath = QStringLiteral("/org/freedesktop/login1/session/_31");
};

class FakeLogindSession : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Session")
    Q_PROPERTY(bool LockedHint MEMBER lockedHint)
    Q_PROPERTY(bool Active MEMBER active)
public:
    explicit FakeLogindSession(QObject *owner)
        : QDBusAbstractAdaptor(owner)
    {
    }
    bool lockedHint = false;
    bool active = true;
};

class FakeLogind
{
public:
    ~FakeLogind() { m_bus.unregisterService(QStringLiteral("org.freedesktop.login1")); }
    bool start()
    {
        return m_bus.registerObject(QStringLiteral("/org/freedesktop/login1"), &m_managerObject) &&
            m_bus.registerObject(FakeLogindManager::sessionPath, &m_sessionObject) &&
            m_bus.registerService(QStringLiteral("org.freedesktop.login1"));
    }
    void prepareForSleep(bool start) { Q_EMIT manager->PrepareForSleep(start); }
    void setSession(const char *property, bool value)
    {
        session->setProperty(property, value);
        QDBusMessage changed = QDBusMessage::createSignal(FakeLogindManager::sessionPath,
                                                          QStringLiteral("org.freedesktop.DBus.Properties"),
                                                          QStringLiteral("PropertiesChanged"));
        changed << QStringLiteral("org.freedesktop.login1.Session")
                << QVariantMap{{QString::fromLatin1(property), value}} << QStringList();
        m_bus.send(changed);
    }

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("fake-logind"));
    QObject m_managerObject;
    QObject m_sessionObject;

public:
    FakeLogindManager *manager = new FakeLogindManager(&m_managerObject);
    FakeLogindSession *session = new FakeLogindSession(&m_sessionObject);
};
