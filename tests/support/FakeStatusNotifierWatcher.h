// A stand-in for the panel's org.kde.StatusNotifierWatcher, exported on a
// second connection to the test's private session bus.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QDBusMessage>
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
