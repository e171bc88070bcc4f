// Desktop notifications as a notification server sees them: a stand-in
// org.freedesktop.Notifications on the private session bus records each
// Notify and CloseNotification and plays the user's clicks. Covers what the
// countdown sends, replacing and withdrawing, the done, extend and click
// actions, the settings switch, a server without buttons and no server.
#include "focus/FocusFixture.h"
#include "kit/Translations.h"
#include "platform/FreedesktopNotifications.h"
#include "services/NotificationActionRouter.h"
#include "services/NotificationService.h"
#include "support/FakeNotificationServer.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {

// The focus engine with the real notification path and (unless told not to)
// a notification server; the recorder stands in for the chimes and the popover.
struct NotifyFixture
{
    explicit NotifyFixture(bool serve = true,
                           const QStringList &capabilities = {QStringLiteral("actions"), QStringLiteral("body")})
        : serving(serve && (server.capabilities = capabilities, server.start()))
    {
    }
    Task *add(const QString &title, qint64 minutes)
    {
        return service.taskRepository().createTask(title, minutes, false,
                                                   service.dayRepository().fetchOrCreateDay(time.now));
    }

    FakeNotificationServer server;
    bool serving;
    ManualClock time{QDate(2026, 6, 10).startOfDay(QTimeZone::systemTimeZone()).addSecs(10 * 3600)};
    std::unique_ptr<PersistenceController> store = std::make_unique<PersistenceController>(true);
    AppSettingsStore settings{*store};
    ActiveTaskService service{store->viewContext(), settings, time.clock()};
    Recorder rec;
    SoundService sound{settings, rec};
    platform::FreedesktopNotifications center{QDBusConnection::sessionBus()};
    NotificationService notifications{center, settings};
    CountdownService live{service, notifications, sound, settings, time.clock(), std::chrono::milliseconds(0)};
    NotificationActionRouter router{center, service, sound, rec};

    // A running task that has just used up its plan.
    Task *overdue(const QString &title, qint64 minutes)
    {
        Task *t = add(title, minutes);
        service.startTimer(t);
        live.evaluate();
        time.advance(minutes * 60 * 1000);
        live.evaluate();
        return t;
    }
};

QString requestID(const Task *t)
{
    return QStringLiteral("tarnwell.duration.") + t->id().toString(QUuid::WithoutBraces);
}

} // namespace

class NotificationsTest : public QObject
{
    Q_OBJECT
    Translations m_translations;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "needs a private session bus");
        QVERIFY(m_translations.install(QStringLiteral("en")));
    }

    void warningCompletionReplaceAndWithdraw()
    {
        NotifyFixture f;
        auto &server = f.server;
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("Write the report"), 25);
        f.service.startTimer(t);
        f.live.evaluate();
        f.time.advance(20 * 60 * 1000);
        f.live.evaluate();
        QTRY_COMPARE(server.notifications.size(), 1);
        const auto warning = server.notifications.at(0);
        QCOMPARE(warning.appIcon, QStringLiteral("org.tarnwell.Tarnwell"));
        QCOMPARE(warning.summary, QStringLiteral("Write the report"));
        QCOMPARE(warning.body, QStringLiteral("5 minutes left"));
        QCOMPARE(warning.actions, (QStringList{QStringLiteral("default"), QString()}));
        QCOMPARE(warning.hints.value(QStringLiteral("desktop-entry")).toString(),
                 QStringLiteral("org.tarnwell.Tarnwell"));
        QCOMPARE(warning.hints.value(QStringLiteral("urgency")).userType(), QMetaType::UChar);
        QCOMPARE(warning.hints.value(QStringLiteral("urgency")).toInt(), 1);

        f.time.advance(5 * 60 * 1000);
        f.live.evaluate();
        QTRY_COMPARE(server.notifications.size(), 2);
        const auto done = server.notifications.at(1);
        QVERIFY(done.replacesId == 0 && done.id != warning.id);
        QCOMPARE(done.body, QStringLiteral("25 minutes done"));
        QCOMPARE(done.actions,
                 (QStringList{QStringLiteral("default"), QString(), QStringLiteral("DONE"), QStringLiteral("Done"),
                              QStringLiteral("PLUS_TEN"), QStringLiteral("+10 min")}));
        QCOMPARE(done.hints.value(QStringLiteral("urgency")).toInt(), 2);
        QTRY_COMPARE(f.center.serverId(requestID(t)), done.id);

        // The same task completes again (a relaunch): the server replaces it.
        f.notifications.notifyDurationComplete(*t);
        QTRY_COMPARE(server.notifications.size(), 3);
        QCOMPARE(server.notifications.at(2).replacesId, done.id);

        // Extending from the notification makes a new plan: the warning is taken back.
        server.click(done.id, QStringLiteral("PLUS_TEN"));
        QTRY_COMPARE(t->durationMinutes(), std::optional<qint32>(35));
        f.live.evaluate();
        QTRY_COMPARE(server.closed, QList<uint>{warning.id});
        QVERIFY(!f.live.isOverdue());
        // The server closed the clicked notice: its id is forgotten.
        QTRY_COMPARE(f.center.serverId(requestID(t)), 0u);
    }

    void extendFollowsThePreset()
    {
        for (const auto &[preset, added] : {std::pair{0, 10}, {15, 15}}) {
            NotifyFixture f;
            f.settings.setOvertimePresetMinutes(preset);
            Task *t = f.overdue(QStringLiteral("T"), 20);
            QTRY_COMPARE(f.server.notifications.size(), 1);
            QCOMPARE(f.server.notifications.at(0).actions.value(5), QStringLiteral("+%1 min").arg(added));
            f.server.click(f.server.notifications.at(0).id, QStringLiteral("PLUS_TEN"));
            QTRY_COMPARE(t->durationMinutes(), std::optional<qint32>(20 + added));
            QVERIFY(!t->completed());
        }
    }

    void doneCompletesAndOpensNextUp()
    {
        NotifyFixture f;
        auto &server = f.server;
        Task *t = f.overdue(QStringLiteral("First"), 15);
        f.add(QStringLiteral("Second"), 30);
        QSignalSpy opened(&f.router, &NotificationActionRouter::popoverOpenRequested);
        QTRY_COMPARE(server.notifications.size(), 1);
        f.rec.take();
        server.click(server.notifications.at(0).id, QStringLiteral("DONE"), QStringLiteral("token-1"));
        QTRY_COMPARE(opened.size(), 1);
        QVERIFY(t->completed());
        QCOMPARE(t->actualSecondsFocused(), std::optional<qint32>(15 * 60));
        QCOMPARE(f.service.activeTask()->title(), QStringLiteral("Second"));
        QCOMPARE(f.rec.nextUp.size(), 1);
        QCOMPARE(f.rec.nextUp.at(0).nextTaskTitle, std::optional<QString>(QStringLiteral("Second")));
        QCOMPARE(opened.at(0).at(0).toString(), QStringLiteral("nextUp"));
        QCOMPARE(opened.at(0).at(1).toByteArray(), QByteArray("token-1"));
    }

    void clicksAndStrangers()
    {
        NotifyFixture f;
        auto &server = f.server;
        Task *t = f.overdue(QStringLiteral("Gone soon"), 10);
        QSignalSpy opened(&f.router, &NotificationActionRouter::popoverOpenRequested);
        QTRY_COMPARE(server.notifications.size(), 1);
        const uint id = server.notifications.at(0).id;

        // Another program's notification: not ours to answer.
        Q_EMIT server.ActionInvoked(id + 100, QStringLiteral("DONE"));
        // A click on the notification itself opens the popover.
        Q_EMIT server.ActionInvoked(id, QStringLiteral("default"));
        QTRY_COMPARE(opened.size(), 1);
        QCOMPARE(opened.at(0).at(0).toString(), QStringLiteral("default"));
        QVERIFY(!t->completed());

        // The task is deleted before the user answers: a log line and nothing else.
        f.store->viewContext().deleteObject(t);
        f.store->viewContext().save();
        f.rec.take();
        QTest::ignoreMessage(QtInfoMsg, "Notification action DONE missing task lookup");
        Q_EMIT server.ActionInvoked(id, QStringLiteral("DONE"));
        QTest::qWait(200);
        QCOMPARE(opened.size(), 1);
        QVERIFY(f.rec.nextUp.isEmpty());
        QVERIFY(f.rec.log.isEmpty());
    }

    // The session bus came back: the old server's ids are forgotten, and
    // notifications and clicks go through the new connection only.
    void followsANewConnection()
    {
        NotifyFixture f;
        auto &server = f.server;
        Task *t = f.overdue(QStringLiteral("T"), 10);
        QTRY_COMPARE(server.notifications.size(), 1);
        QDBusConnection next = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("next"));
        f.center.rebind(next);
        QCOMPARE(f.center.serverId(requestID(t)), 0u);

        QSignalSpy opened(&f.router, &NotificationActionRouter::popoverOpenRequested);
        f.notifications.notifyDurationComplete(*t);
        QTRY_COMPARE(server.notifications.size(), 2);
        QCOMPARE(server.notifications.at(1).replacesId, 0u);
        QCOMPARE(server.senders.at(1), next.baseService());
        server.click(server.notifications.at(1).id, QStringLiteral("default"));
        QTRY_COMPARE(opened.size(), 1);
        QTest::qWait(200);
        QCOMPARE(opened.size(), 1); // heard once, not also on the old connection
        QDBusConnection::disconnectFromBus(next.name());
    }

    void serverWithoutButtonsGetsAHintInTheBody()
    {
        NotifyFixture f(true, {QStringLiteral("body")});
        auto &server = f.server;
        QSignalSpy known(&f.center, &platform::FreedesktopNotifications::capabilitiesKnown);
        QVERIFY(known.wait(5000));
        QVERIFY(!f.center.supportsActions());
        f.overdue(QStringLiteral("T"), 5);
        QTRY_COMPARE(server.notifications.size(), 1);
        QVERIFY(server.notifications.at(0).body.startsWith(QStringLiteral("5 minutes done\n")));
        QVERIFY(server.notifications.at(0).body.contains(QStringLiteral("tray")));
    }

    void switchedOffSendsNothing()
    {
        NotifyFixture f;
        auto &server = f.server;
        f.settings.setNotificationsEnabled(false);
        f.settings.setPreEndWarningMinutes(5);
        f.overdue(QStringLiteral("T"), 25);
        QVERIFY(f.live.isOverdue());
        QCOMPARE(f.rec.log.count(QStringLiteral("Glass play")), 1);
        QTest::qWait(200);
        QVERIFY(server.notifications.isEmpty());
    }

    void noServerKeepsTheCountdownAndChime()
    {
        const QRegularExpression absent(QStringLiteral("^No notification server answers"));
        QTest::ignoreMessage(QtWarningMsg, absent);
        QTest::failOnWarning(absent); // logged once, not once a minute
        NotifyFixture f(false);
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("T"), 25);
        f.service.startTimer(t);
        for (int minute = 1; minute <= 30; ++minute) {
            f.time.advance(60 * 1000);
            f.live.evaluate();
            f.notifications.notifyDurationComplete(*t); // once a minute, as relaunches would
            QTest::qWait(5);
        }
        QTest::qWait(200);
        QVERIFY(f.live.isOverdue());
        QCOMPARE(f.rec.log.count(QStringLiteral("Glass play")), 2); // the warning and the end
    }
};

QTEST_GUILESS_MAIN(NotificationsTest)
#include "tst_notifications.moc"
