// The status item and its menu as a panel sees them: a stand-in
// org.kde.StatusNotifierWatcher on a second connection to a private session
// bus registers the item, reads its properties back and calls its methods.
#include "platform/DBusMenu.h"
#include "platform/StatusNotifierItem.h"
#include "support/FakeStatusNotifierWatcher.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace tarnwell::platform;

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

// Collects the signals an item or menu sends, as the panel receives them.
class Recorder : public QObject
{
    Q_OBJECT
public:
    QList<QDBusMessage> messages;
    int count(const QString &member) const
    {
        return int(std::count_if(messages.cbegin(), messages.cend(),
                                 [&](const QDBusMessage &m) { return m.member() == member; }));
    }
public Q_SLOTS:
    void record(const QDBusMessage &message) { messages.append(message); }
};

} // namespace

class TestStatusItem : public QObject
{
    Q_OBJECT
private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("watcher"));
    WatcherObject *m_watcherObject = nullptr;
    FakeWatcher *m_watcher = nullptr;

    void startWatcher()
    {
        QVERIFY(m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), m_watcherObject,
                                     QDBusConnection::ExportAdaptors));
        QVERIFY(m_bus.registerService(watcherName));
    }

    // Calls without blocking the event loop: the item answers from this thread.
    QDBusMessage call(const QDBusMessage &message)
    {
        QDBusPendingCallWatcher pending(m_bus.asyncCall(message, 5000));
        if (!pending.isFinished()) {
            QSignalSpy done(&pending, &QDBusPendingCallWatcher::finished);
            done.wait(6000);
        }
        return pending.reply();
    }

    QVariant property(const QString &service, const QString &name)
    {
        QDBusMessage get = QDBusMessage::createMethodCall(
            service, itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        get << itemInterface << name;
        const QDBusMessage reply = call(get);
        if (reply.type() != QDBusMessage::ReplyMessage)
            return {};
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    void listen(const QString &service, const QString &path, const QString &interface, const QStringList &members,
                Recorder *recorder)
    {
        for (const QString &member : members)
            QVERIFY(m_bus.connect(service, path, interface, member, recorder, SLOT(record(QDBusMessage))));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "needs a private session bus");
        QVERIFY(m_bus.isConnected());
        registerStatusNotifierTypes();
        registerDBusMenuTypes();
    }

    void init()
    {
        m_watcherObject = new WatcherObject;
        m_watcher = new FakeWatcher(m_watcherObject);
    }

    void cleanup()
    {
        m_bus.unregisterService(watcherName);
        m_bus.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
        delete m_watcherObject;
    }

    void registersWithARunningWatcher()
    {
        startWatcher();
        StatusNotifierItem item;
        QVERIFY(item.available());
        QSignalSpy registered(&item, &StatusNotifierItem::registered);
        QVERIFY(registered.wait(5000));
        QVERIFY(item.isRegistered());
        QCOMPARE(m_watcher->services, QStringList{item.serviceName()});
        QVERIFY(item.serviceName().startsWith(QStringLiteral("org.kde.StatusNotifierItem-")));
        QCOMPARE(m_watcher->senders, QStringList{QDBusConnection::sessionBus().baseService()});

        // Panels read everything at once; QtDBus leaves out what it cannot marshal.
        QDBusMessage getAll = QDBusMessage::createMethodCall(
            item.serviceName(), itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
        getAll << itemInterface;
        const auto all = qdbus_cast<QVariantMap>(call(getAll).arguments().value(0));
        for (const char *name :
             {"Category", "Id", "Title", "Status", "WindowId", "IconName", "IconPixmap", "OverlayIconName",
              "AttentionIconName", "ToolTip", "ItemIsMenu", "Menu", "XAyatanaLabel", "XAyatanaLabelGuide"})
            QVERIFY2(all.contains(QString::fromLatin1(name)), name);
    }

    void followsAWatcherThatComesAndGoes()
    {
        StatusNotifierItem item;
        QVERIFY(!item.available());
        QSignalSpy changes(&item, &StatusNotifierItem::availableChanged);
        startWatcher();
        QTRY_VERIFY_WITH_TIMEOUT(item.isRegistered(), 5000);
        QCOMPARE(m_watcher->services, QStringList{item.serviceName()});
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0).toBool(), true);

        m_bus.unregisterService(watcherName);
        QTRY_VERIFY_WITH_TIMEOUT(!item.available(), 5000);
        QVERIFY(!item.isRegistered());

        // A panel restarted: a new process owns the name now, and the item
        // registers with it.
        QDBusConnection restarted =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("restarted panel"));
        WatcherObject object;
        auto *watcher = new FakeWatcher(&object);
        QVERIFY(restarted.registerObject(QStringLiteral("/StatusNotifierWatcher"), &object,
                                         QDBusConnection::ExportAdaptors));
        QVERIFY(restarted.registerService(watcherName));
        QTRY_VERIFY_WITH_TIMEOUT(item.isRegistered() && item.available(), 5000);
        QCOMPARE(watcher->services, QStringList{item.serviceName()});
        QCOMPARE(m_watcher->services.size(), 1);
        QDBusConnection::disconnectFromBus(restarted.name());
    }

    void isUnavailableWhileNoPanelShowsItems()
    {
        m_watcher->hostRegistered = false;
        startWatcher();
        StatusNotifierItem item;
        QTRY_VERIFY_WITH_TIMEOUT(item.isRegistered() && !item.available(), 5000);
        m_watcher->hostRegistered = true;
        Q_EMIT m_watcher->StatusNotifierHostRegistered();
        QTRY_VERIFY_WITH_TIMEOUT(item.available(), 5000);
    }

    // What the panel reads: the label with its width guide, the tooltip
    // record, and icons as ARGB in network byte order, one image at two heights.
    void exportsLabelTooltipAndIcons()
    {
        StatusNotifierItem item;
        item.setLabel(QStringLiteral("Write report 25m"), QStringLiteral("Write report 1h 00m"));
        item.setToolTip(QStringLiteral("Write report"), QStringLiteral("25m left"));
        QImage image(2, 1, QImage::Format_ARGB32);
        image.setPixel(0, 0, qRgba(0x11, 0x22, 0x33, 0x44));
        image.setPixel(1, 0, qRgba(0xff, 0x00, 0x80, 0xff));
        item.setIcon(QList<QImage>{image, QImage(3, 3, QImage::Format_ARGB32)});
        const QString service = item.serviceName();
        const auto pixmaps = [&] {
            return qdbus_cast<StatusNotifierPixmaps>(property(service, QStringLiteral("IconPixmap")));
        };

        QCOMPARE(property(service, QStringLiteral("XAyatanaLabel")).toString(), QStringLiteral("Write report 25m"));
        QCOMPARE(property(service, QStringLiteral("XAyatanaLabelGuide")).toString(),
                 QStringLiteral("Write report 1h 00m"));
        const auto tip = qdbus_cast<StatusNotifierToolTip>(property(service, QStringLiteral("ToolTip")));
        QCOMPARE(tip.title, QStringLiteral("Write report"));
        QCOMPARE(tip.description, QStringLiteral("25m left"));
        QCOMPARE(pixmaps().size(), 2);
        QCOMPARE(QSize(pixmaps().at(0).width, pixmaps().at(0).height), QSize(2, 1));
        QCOMPARE(pixmaps().at(0).pixels, QByteArray::fromHex("44112233ffff0080"));
        QCOMPARE(pixmaps().at(1).pixels.size(), 3 * 3 * 4);

        QImage chip(60, 30, QImage::Format_ARGB32);
        chip.fill(qRgba(0, 0, 255, 255));
        item.setIcon(chip);
        QCOMPARE(QSize(pixmaps().at(0).width, pixmaps().at(0).height), QSize(44, 22));
        QCOMPARE(QSize(pixmaps().at(1).width, pixmaps().at(1).height), QSize(88, 44));
        QCOMPARE(pixmaps().at(1).pixels.left(4), QByteArray::fromHex("ff0000ff"));

        item.setIconName(QStringLiteral("appointment-soon"));
        QCOMPARE(property(service, QStringLiteral("IconName")).toString(), QStringLiteral("appointment-soon"));
        QVERIFY(pixmaps().isEmpty());
    }

    void announcesOnlyRealChanges()
    {
        StatusNotifierItem item;
        Recorder recorder;
        listen(item.serviceName(), itemPath, itemInterface,
               {QStringLiteral("XAyatanaNewLabel"), QStringLiteral("NewIcon"), QStringLiteral("NewToolTip"),
                QStringLiteral("NewTitle"), QStringLiteral("NewStatus")},
               &recorder);
        QImage icon(4, 4, QImage::Format_ARGB32);
        icon.fill(Qt::red);
        for (int round = 0; round < 2; ++round) {
            item.setLabel(QStringLiteral("Plan 5m"), QStringLiteral("Plan 10m"));
            item.setIcon(QList<QImage>{icon});
            item.setToolTip(QStringLiteral("Plan"), QStringLiteral("5m left"));
            item.setStatus(StatusNotifierItem::Status::active); // already active
        }
        item.setLabel(QStringLiteral("Plan 5m"), QStringLiteral("Plan 1h 00m")); // the guide alone changed
        // Signals arrive in order: once the title has arrived, all earlier ones have.
        item.setTitle(QStringLiteral("done"));
        QTRY_COMPARE_WITH_TIMEOUT(recorder.count(QStringLiteral("NewTitle")), 1, 5000);
        QCOMPARE(recorder.count(QStringLiteral("XAyatanaNewLabel")), 2);
        QCOMPARE(recorder.count(QStringLiteral("NewIcon")), 1);
        QCOMPARE(recorder.count(QStringLiteral("NewToolTip")), 1);
        QCOMPARE(recorder.count(QStringLiteral("NewStatus")), 0);
        const QDBusMessage label = recorder.messages.at(0);
        QCOMPARE(label.member(), QStringLiteral("XAyatanaNewLabel"));
        QCOMPARE(label.arguments(), (QVariantList{QStringLiteral("Plan 5m"), QStringLiteral("Plan 10m")}));
    }

    void passesClicksOn()
    {
        StatusNotifierItem item;
        QSignalSpy activated(&item, &StatusNotifierItem::activated);
        QSignalSpy menuWanted(&item, &StatusNotifierItem::contextMenuRequested);
        QSignalSpy scrolled(&item, &StatusNotifierItem::scrolled);
        QSignalSpy token(&item, &StatusNotifierItem::activationTokenProvided);
        auto method = [&](const QString &name) {
            return QDBusMessage::createMethodCall(item.serviceName(), itemPath, itemInterface, name);
        };
        QCOMPARE(call(method(QStringLiteral("ProvideXdgActivationToken")) << QStringLiteral("t1")).type(),
                 QDBusMessage::ReplyMessage);
        QCOMPARE(token.count(), 1); // already there when the click comes
        QCOMPARE(call(method(QStringLiteral("Activate")) << 10 << 20).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(call(method(QStringLiteral("ContextMenu")) << 5 << 6).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(call(method(QStringLiteral("Scroll")) << -120 << QStringLiteral("Horizontal")).type(),
                 QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(scrolled.count(), 1, 5000);
        QCOMPARE(activated.count(), 1);
        QCOMPARE(activated.at(0).at(0).toPoint(), QPoint(10, 20));
        QCOMPARE(menuWanted.at(0).at(0).toPoint(), QPoint(5, 6));
        QCOMPARE(scrolled.at(0).at(0).toInt(), -120);
        QCOMPARE(scrolled.at(0).at(1).value<Qt::Orientation>(), Qt::Horizontal);
    }

    void servesItsMenu()
    {
        StatusNotifierItem item;
        DBusMenu menu;
        const auto open = DBusMenuItem::entry(1, QStringLiteral("Open Tarnwell"));
        const auto quit = DBusMenuItem::entry(3, QStringLiteral("Quit_now"));
        const auto off = DBusMenuItem::entry(4, QStringLiteral("Not now"), false);
        menu.setItems({open, DBusMenuItem::separator(2), quit, off, DBusMenuItem::entry(1, QStringLiteral("twice"))});
        item.setMenu(&menu);
        const auto path = property(item.serviceName(), QStringLiteral("Menu")).value<QDBusObjectPath>();
        QCOMPARE(path.path(), QStringLiteral("/MenuBar"));

        auto method = [&](const QString &name) {
            return QDBusMessage::createMethodCall(item.serviceName(), path.path(), menuInterface, name);
        };
        QDBusMessage reply = call(method(QStringLiteral("GetLayout")) << 0 << -1 << QStringList());
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.arguments().at(0).toUInt(), menu.revision());
        const auto root = qdbus_cast<DBusMenuLayoutItem>(reply.arguments().at(1));
        QCOMPARE(root.id, 0);
        QCOMPARE(root.children.size(), 4); // the repeated id was dropped
        QCOMPARE(root.children.at(0).properties.value(QStringLiteral("label")).toString(),
                 QStringLiteral("Open Tarnwell"));
        QCOMPARE(root.children.at(1).properties.value(QStringLiteral("type")).toString(), QStringLiteral("separator"));
        QCOMPARE(root.children.at(2).properties.value(QStringLiteral("label")).toString(), QStringLiteral("Quit__now"));
        QCOMPARE(root.children.at(3).properties.value(QStringLiteral("enabled")), QVariant(false));

        // A disabled entry does nothing; an enabled one is triggered.
        QSignalSpy triggered(&menu, &DBusMenu::triggered);
        for (int id : {4, 3}) {
            reply = call(method(QStringLiteral("Event"))
                         << id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(0)) << 0u);
            QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        }
        // In order: had the disabled entry fired, it would come first.
        QTRY_VERIFY_WITH_TIMEOUT(!triggered.isEmpty(), 5000);
        QCOMPARE(triggered.count(), 1);
        QCOMPARE(triggered.at(0).at(0).toInt(), 3);
        // The grouped forms that newer panels use.
        reply = call(method(QStringLiteral("GetGroupProperties"))
                     << QVariant::fromValue(QList<int>{1, 3}) << QStringList{QStringLiteral("label")});
        const auto group = qdbus_cast<DBusMenuItemPropertiesList>(reply.arguments().value(0));
        QCOMPARE(group.size(), 2);
        QCOMPARE(group.at(1).properties, (QVariantMap{{QStringLiteral("label"), QStringLiteral("Quit__now")}}));
        const DBusMenuEventList events{{1, QStringLiteral("clicked"), QDBusVariant(0), 0}};
        reply = call(method(QStringLiteral("EventGroup")) << QVariant::fromValue(events));
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(triggered.count(), 2, 5000);
        QCOMPARE(triggered.at(1).at(0).toInt(), 1);
        reply = call(method(QStringLiteral("Event"))
                     << 99 << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(0)) << 0u);
        QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    }

    void announcesMenuChanges()
    {
        StatusNotifierItem item;
        DBusMenu menu;
        menu.setItems({DBusMenuItem::entry(1, QStringLiteral("Pause"))});
        item.setMenu(&menu);
        Recorder recorder;
        listen(item.serviceName(), menu.objectPath(), menuInterface,
               {QStringLiteral("LayoutUpdated"), QStringLiteral("ItemsPropertiesUpdated")}, &recorder);
        const uint before = menu.revision();

        // The owner refreshes the entries just before the menu opens.
        connect(&menu, &DBusMenu::aboutToShow, &menu, [&] {
            menu.setItems(
                {DBusMenuItem::entry(1, QStringLiteral("Pause")), DBusMenuItem::entry(2, QStringLiteral("Skip"))});
        });
        auto method = [&](const QString &name) {
            return QDBusMessage::createMethodCall(item.serviceName(), menu.objectPath(), menuInterface, name);
        };
        QDBusMessage reply = call(method(QStringLiteral("AboutToShow")) << 0);
        QCOMPARE(reply.arguments().value(0), QVariant(true));
        reply = call(method(QStringLiteral("AboutToShow")) << 0); // nothing new this time
        QCOMPARE(reply.arguments().value(0), QVariant(false));
        QCOMPARE(menu.revision(), before + 1);

        QVERIFY(menu.updateItem(DBusMenuItem::entry(1, QStringLiteral("Resume"))));
        QVERIFY(!menu.updateItem(DBusMenuItem::entry(7, QStringLiteral("nobody"))));
        QTRY_COMPARE_WITH_TIMEOUT(recorder.count(QStringLiteral("ItemsPropertiesUpdated")), 1, 5000);
        QCOMPARE(recorder.count(QStringLiteral("LayoutUpdated")), 1);
        QCOMPARE(recorder.messages.at(0).arguments(), (QVariantList{before + 1, 0}));
        const auto updated = qdbus_cast<DBusMenuItemPropertiesList>(recorder.messages.at(1).arguments().at(0));
        QCOMPARE(updated.size(), 1);
        QCOMPARE(updated.at(0).properties.value(QStringLiteral("label")).toString(), QStringLiteral("Resume"));
    }
};

QTEST_GUILESS_MAIN(TestStatusItem)
#include "tst_status_item.moc"
