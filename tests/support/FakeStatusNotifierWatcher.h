// A stand-in for the panel's org.kde.StatusNotifierWatcher, exported on a
// second connection to the test's private session bus, and the panel that
// reads and clicks the item registered with it.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QStringList>

// The exported object; QtDBus gives the call's context to it, not to the adaptor.
class WatcherObject : public QObject, public QDBusContext
{
    Q_OBJECT
};

class FakeWatcher : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hostRegistered)
public:
    explicit FakeWatcher(WatcherObject *owner)
        : QDBusAbstractAdaptor(owner)
        , m_owner(owner)
    {
    }
    bool hostRegistered = true;
    QStringList services; // as passed to RegisterStatusNotifierItem
    QStringList senders; // the callers' unique names

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service)
    {
        services.append(service);
        senders.append(m_owner->message().service());
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();

private:
    WatcherObject *m_owner;
};

// The panel's side of the status item: the watcher on a connection of its
// own, and the calls a panel makes to the item registered last.
class Panel
{
public:
    Panel()
        : Panel(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel")), false)
    {
    }
    // On the bus at `address`, over a connection of this name that ends with the panel.
    Panel(const QString &address, const QString &name)
        : Panel(QDBusConnection::connectToBus(address, name), true)
    {
    }
    ~Panel()
    {
        m_bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher"));
        if (m_ownConnection)
            QDBusConnection::disconnectFromBus(m_bus.name());
    }
    Panel(const Panel &) = delete;
    Panel &operator=(const Panel &) = delete;

    bool isStarted() const { return m_started; }
    QDBusConnection &bus() { return m_bus; }
    QString item() const { return m_watcher->services.value(m_watcher->services.size() - 1); }
    int registrations() const { return int(m_watcher->services.size()); }
    QStringList senders() const { return m_watcher->senders; }

    // A call that lets the event loop run meanwhile (the watcher answers from here).
    QDBusMessage call(const QDBusMessage &message)
    {
        QDBusPendingCallWatcher pending(m_bus.asyncCall(message, 20000));
        if (!pending.isFinished())
            QSignalSpy(&pending, &QDBusPendingCallWatcher::finished).wait(21000);
        return pending.reply();
    }
    QVariant property(const QString &name)
    {
        QDBusMessage get =
            QDBusMessage::createMethodCall(item(), QStringLiteral("/StatusNotifierItem"),
                                           QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        get << QStringLiteral("org.kde.StatusNotifierItem") << name;
        return call(get).arguments().value(0).value<QDBusVariant>().variant();
    }
    QString label() { return property(QStringLiteral("XAyatanaLabel")).toString(); }
    void activate(int x, int y)
    {
        QDBusMessage m =
            QDBusMessage::createMethodCall(item(), QStringLiteral("/StatusNotifierItem"),
                                           QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"));
        m << x << y;
        call(m);
    }
    // A click on an entry of the status item's menu.
    enum MenuEntry { menuTimer = 3, menuComplete = 4 };
    void clickMenu(int id)
    {
        const QString path = property(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
        QDBusMessage m = QDBusMessage::createMethodCall(item(), path, QStringLiteral("com.canonical.dbusmenu"),
                                                        QStringLiteral("Event"));
        m << id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(QString())) << 0u;
        call(m);
    }

private:
    Panel(QDBusConnection bus, bool ownConnection)
        : m_bus(std::move(bus))
        , m_ownConnection(ownConnection)
    {
        m_started = m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &m_object,
                                         QDBusConnection::ExportAdaptors) &&
            m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }

    QDBusConnection m_bus;
    bool m_ownConnection;
    bool m_started = false;
    WatcherObject m_object;
    FakeWatcher *m_watcher = new FakeWatcher(&m_object);
};
