// The two D-Bus back ends against stand-ins on the test's private bus: the
// desktop portal's GlobalShortcuts and KDE's kglobalaccel. The stand-ins run
// on their own connection in a second thread, as a real service would answer
// from another process. Shows which back end is chosen, the calls made, that
// a signalled press fires the action, and that a refused key is reported.
#include "platform/HotkeyBackendChooser.h"
#include "support/HotkeyHarness.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QGuiApplication>
#include <QMutex>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace tarnwell;

struct StandInShortcut
{
    QString id;
    QVariantMap properties;
};
Q_DECLARE_METATYPE(StandInShortcut)
QDBusArgument &operator<<(QDBusArgument &a, const StandInShortcut &s)
{
    a.beginStructure();
    a << s.id << s.properties;
    a.endStructure();
    return a;
}
const QDBusArgument &operator>>(const QDBusArgument &a, StandInShortcut &s)
{
    a.beginStructure();
    a >> s.id >> s.properties;
    a.endStructure();
    return a;
}

namespace {

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

// What the stand-ins were asked, readable from the test's thread.
struct CallLog
{
    QMutex mutex;
    QStringList calls;
    QStringList taken; // triggers or key codes the desktop keeps for itself
    void add(const QString &call)
    {
        QMutexLocker lock(&mutex);
        calls << call;
    }
    QStringList read()
    {
        QMutexLocker lock(&mutex);
        return calls;
    }
};

class PortalStandIn : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")
    Q_PROPERTY(uint version READ version)
public:
    PortalStandIn(QObject *owner, QDBusConnection bus, CallLog &log)
        : QDBusAbstractAdaptor(owner)
        , m_bus(bus)
        , m_log(log)
    {
    }
    uint version() const { return 1; }

public Q_SLOTS:
    QDBusObjectPath CreateSession(const QVariantMap &options, const QDBusMessage &message)
    {
        const QString session = portalPath + QStringLiteral("/session/x/") +
            options.value(QStringLiteral("session_handle_token")).toString();
        m_log.add(QStringLiteral("CreateSession ") + session);
        return respond(message, options, {{QStringLiteral("session_handle"), session}});
    }
    QDBusObjectPath BindShortcuts(const QDBusObjectPath &session, const QList<StandInShortcut> &shortcuts,
                                  const QString &, const QVariantMap &options, const QDBusMessage &message)
    {
        QStringList bound;
        QList<StandInShortcut> answer;
        for (const StandInShortcut &s : shortcuts) {
            const QString trigger = s.properties.value(QStringLiteral("preferred_trigger")).toString();
            bound << s.id + u'=' + trigger;
            QMutexLocker lock(&m_log.mutex);
            answer.append(
                {s.id, {{QStringLiteral("trigger_description"), m_log.taken.contains(trigger) ? QString() : trigger}}});
        }
        m_log.add(QStringLiteral("BindShortcuts ") + session.path() + u' ' + bound.join(u' '));
        return respond(message, options, {{QStringLiteral("shortcuts"), QVariant::fromValue(answer)}});
    }

Q_SIGNALS:
    void Activated(const QDBusObjectPath &session, const QString &id, qulonglong timestamp, const QVariantMap &options);

private:
    // Answers on the request object after the reply, as the portal does.
    QDBusObjectPath respond(const QDBusMessage &message, const QVariantMap &options, const QVariantMap &results)
    {
        QString sender = message.service().mid(1);
        sender.replace(u'.', u'_');
        const QString request = portalPath + QStringLiteral("/request/") + sender + u'/' +
            options.value(QStringLiteral("handle_token")).toString();
        QMetaObject::invokeMethod(
            this,
            [this, request, results] {
                QDBusMessage response = QDBusMessage::createSignal(
                    request, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
                response << 0u << results;
                m_bus.send(response);
            },
            Qt::QueuedConnection);
        return QDBusObjectPath(request);
    }
    QDBusConnection m_bus;
    CallLog &m_log;
};

class SessionStandIn : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Session")
public:
    SessionStandIn(QObject *owner, CallLog &log)
        : QDBusAbstractAdaptor(owner)
        , m_log(log)
    {
    }
public Q_SLOTS:
    void Close(const QDBusMessage &message) { m_log.add(QStringLiteral("Close ") + message.path()); }

private:
    CallLog &m_log;
};

class KGlobalAccelStandIn : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.KGlobalAccel")
public:
    KGlobalAccelStandIn(QObject *owner, CallLog &log)
        : QDBusAbstractAdaptor(owner)
        , m_log(log)
    {
    }
public Q_SLOTS:
    void doRegister(const QStringList &id) { m_log.add(QStringLiteral("doRegister ") + id.join(u'|')); }
    QList<int> setShortcut(const QStringList &id, const QList<int> &keys, uint flags)
    {
        QList<int> given;
        QStringList texts;
        QMutexLocker lock(&m_log.mutex);
        for (int key : keys) {
            texts << QString::number(key, 16);
            if (!m_log.taken.contains(QString::number(key, 16)))
                given << key;
        }
        m_log.calls
            << QStringLiteral("setShortcut %1 %2 %3").arg(id.value(1), texts.join(u','), QString::number(flags));
        return given;
    }
    bool unregister(const QString &component, const QString &action)
    {
        m_log.add(QStringLiteral("unregister ") + component + u' ' + action);
        return true;
    }
    QDBusObjectPath getComponent(const QString &)
    {
        return QDBusObjectPath(QStringLiteral("/component/org_tarnwell_Tarnwell"));
    }

private:
    CallLog &m_log;
};

class ComponentStandIn : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kglobalaccel.Component")
public:
    explicit ComponentStandIn(QObject *owner)
        : QDBusAbstractAdaptor(owner)
    {
    }
Q_SIGNALS:
    void globalShortcutPressed(const QString &component, const QString &shortcut, qlonglong timestamp);
};

// Both services, served from their own thread.
class Desktop
{
public:
    explicit Desktop(bool portal, bool kglobalaccel)
    {
        qDBusRegisterMetaType<StandInShortcut>();
        qDBusRegisterMetaType<QList<StandInShortcut>>();
        // Adaptors first: they move to the thread with their objects.
        portalAdaptor = new PortalStandIn(&m_portal, m_bus, log);
        new SessionStandIn(&m_session1, log);
        new SessionStandIn(&m_session2, log);
        new KGlobalAccelStandIn(&m_accel, log);
        component = new ComponentStandIn(&m_component);
        m_thread.start();
        for (QObject *o : {&m_portal, &m_session1, &m_session2, &m_accel, &m_component})
            o->moveToThread(&m_thread);
        if (portal) {
            m_bus.registerObject(portalPath, &m_portal, QDBusConnection::ExportAdaptors);
            m_bus.registerObject(portalPath + QStringLiteral("/session/x/tarnwell_session1"), &m_session1,
                                 QDBusConnection::ExportAdaptors);
            m_bus.registerObject(portalPath + QStringLiteral("/session/x/tarnwell_session3"), &m_session2,
                                 QDBusConnection::ExportAdaptors);
            m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
        }
        if (kglobalaccel) {
            m_bus.registerObject(QStringLiteral("/kglobalaccel"), &m_accel, QDBusConnection::ExportAdaptors);
            m_bus.registerObject(QStringLiteral("/component/org_tarnwell_Tarnwell"), &m_component,
                                 QDBusConnection::ExportAdaptors);
            m_bus.registerService(QStringLiteral("org.kde.kglobalaccel"));
        }
    }
    ~Desktop()
    {
        m_bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        m_bus.unregisterService(QStringLiteral("org.kde.kglobalaccel"));
        const QStringList paths{portalPath, QStringLiteral("/kglobalaccel"),
                                QStringLiteral("/component/org_tarnwell_Tarnwell"),
                                portalPath + QStringLiteral("/session/x/tarnwell_session1"),
                                portalPath + QStringLiteral("/session/x/tarnwell_session3")};
        for (const QString &path : paths)
            m_bus.unregisterObject(path);
        // Back to the test's thread, so they end where they are destroyed.
        QMetaObject::invokeMethod(
            &m_portal,
            [this] {
                for (QObject *o : {&m_portal, &m_session1, &m_session2, &m_accel, &m_component})
                    o->moveToThread(QCoreApplication::instance()->thread());
            },
            Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
    }
    template<typename Fn>
    void inThread(QObject *o, Fn fn)
    {
        QMetaObject::invokeMethod(o, fn, Qt::BlockingQueuedConnection);
    }

    CallLog log;
    PortalStandIn *portalAdaptor = nullptr;
    ComponentStandIn *component = nullptr;

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop"));
    QThread m_thread;
    QObject m_portal, m_session1, m_session2, m_accel, m_component;
};

struct ChosenBackend
{
    std::unique_ptr<GlobalHotkeyBackend> backend = platform::chooseHotkeyBackend(QDBusConnection::sessionBus());
};
struct Client : ChosenBackend, HotkeyHarness
{
    Client()
        : HotkeyHarness(backend.get())
    {
    }
};

} // namespace

class HotkeyBackendsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void portalBindsPreferredTriggersAndReportsPresses()
    {
        Desktop desktop(true, true);
        {
            QMutexLocker lock(&desktop.log.mutex);
            desktop.log.taken << QStringLiteral("CTRL+ALT+space");
        }
        Client client;
        QVERIFY(client.backend);
        QCOMPARE(client.backend->name(), QStringLiteral("portal")); // preferred over kglobalaccel
        client.manager.reload();
        const QString session1 = portalPath + QStringLiteral("/session/x/tarnwell_session1");
        QTRY_COMPARE(desktop.log.read(),
                     (QStringList{QStringLiteral("CreateSession ") + session1,
                                  QStringLiteral("BindShortcuts ") + session1 +
                                      QStringLiteral(" togglePopover=SHIFT+LOGO+j quickAdd=SHIFT+LOGO+a")}));

        desktop.inThread(desktop.portalAdaptor, [&] {
            Q_EMIT desktop.portalAdaptor->Activated(QDBusObjectPath(portalPath + QStringLiteral("/session/x/other")),
                                                    QStringLiteral("togglePopover"), 1, {});
            Q_EMIT desktop.portalAdaptor->Activated(QDBusObjectPath(session1), QStringLiteral("quickAdd"), 2, {});
        });
        QTRY_COMPARE(client.fired, QStringList{QStringLiteral("quickAdd")}); // another session's press is not ours

        // A new binding: the old session closes, a new one binds; a trigger the desktop keeps is reported.
        QSignalSpy taken(&client.manager, &HotkeyManager::takenBySystem);
        client.settings.setHotkeyQuickAdd(QStringLiteral("ctrl+alt+space"));
        client.manager.reload();
        QTRY_COMPARE(taken.size(), 1);
        QCOMPARE(taken[0][0].value<HotkeyAction>(), HotkeyAction::quickAdd);
        const QStringList calls = desktop.log.read();
        QCOMPARE(calls.mid(2, 2),
                 (QStringList{QStringLiteral("Close ") + session1,
                              QStringLiteral("CreateSession ") + portalPath +
                                  QStringLiteral("/session/x/tarnwell_session3")}));
        QVERIFY(calls.value(4).endsWith(QStringLiteral("quickAdd=CTRL+ALT+space")));
    }

    void kglobalaccelSetsKeysAndReportsPresses()
    {
        Desktop desktop(false, true);
        const int superShiftA = int(Qt::META | Qt::SHIFT) | Qt::Key_A;
        {
            QMutexLocker lock(&desktop.log.mutex);
            desktop.log.taken << QString::number(superShiftA, 16);
        }
        Client client;
        QCOMPARE(client.backend->name(), QStringLiteral("kglobalaccel"));
        QSignalSpy taken(&client.manager, &HotkeyManager::takenBySystem);
        client.manager.reload();
        const QStringList calls = desktop.log.read();
        QCOMPARE(calls.size(), 4);
        QVERIFY(calls[0].startsWith(QStringLiteral("doRegister org.tarnwell.Tarnwell|togglePopover|")));
        QCOMPARE(calls[1],
                 QStringLiteral("setShortcut togglePopover %1 6")
                     .arg(QString::number(int(Qt::META | Qt::SHIFT) | Qt::Key_J, 16)));
        QCOMPARE(calls[3], QStringLiteral("setShortcut quickAdd %1 6").arg(QString::number(superShiftA, 16)));
        // The daemon kept Super+Shift+A for something else.
        QCOMPARE(taken.size(), 1);
        QCOMPARE(taken[0][0].value<HotkeyAction>(), HotkeyAction::quickAdd);

        desktop.inThread(desktop.component, [&] {
            Q_EMIT desktop.component->globalShortcutPressed(QStringLiteral("org.tarnwell.Tarnwell"),
                                                            QStringLiteral("togglePopover"), 5);
            Q_EMIT desktop.component->globalShortcutPressed(QStringLiteral("org.kde.kwin"), QStringLiteral("quickAdd"),
                                                            6);
        });
        QTRY_COMPARE(client.fired, QStringList{QStringLiteral("togglePopover")});

        client.manager.unregisterAll();
        QCOMPARE(desktop.log.read().mid(4),
                 (QStringList{QStringLiteral("unregister org.tarnwell.Tarnwell togglePopover"),
                              QStringLiteral("unregister org.tarnwell.Tarnwell quickAdd")}));
    }

    void nothingOfferedMeansNoBackEnd()
    {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^No global hotkey service on platform offscreen")));
        QVERIFY(!platform::chooseHotkeyBackend(QDBusConnection::sessionBus()));
    }
};

QTEST_MAIN(HotkeyBackendsTest)
#include "tst_hotkey_backends.moc"
