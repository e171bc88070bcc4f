// Sleep, screen lock and user switches as the desktop reports them: a
// stand-in logind on a private system bus and a screen saver signal on the
// private session bus drive the real idle monitor.
#include "focus/FocusFixture.h"
#include "platform/LinuxSessionEvents.h"
#include "services/IdleMonitor.h"
#include "support/FakeLogind.h"

#include <QSignalSpy>
#include <QTest>

namespace {

struct SessionFixture : FocusFixture
{
    SessionFixture()
    {
        task = add(QStringLiteral("Focus"), 60);
        service.startTimer(task);
        monitor.start();
    }
    platform::LinuxSessionEvents events;
    IdleMonitor monitor{service, settings, {}, &events, time.clock(), std::chrono::milliseconds(0)};
    Task *task = nullptr;
};

void screenSaverActive(bool active)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/ScreenSaver"),
                                   QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("ActiveChanged"));
    signal << active;
    QDBusConnection::sessionBus().send(signal);
}

} // namespace

class SessionEventsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QDBusConnection::systemBus().isConnected(), "needs a private system bus");
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "needs a private session bus");
        // The screen saver's signal comes from a name the monitor follows.
        QVERIFY(QDBusConnection::sessionBus().registerService(QStringLiteral("org.freedesktop.ScreenSaver")));
    }

    void sleepIsHeldUntilThePauseIsSaved()
    {
        FakeLogind logind;
        QVERIFY(logind.start());
        SessionFixture f;
        QTRY_COMPARE(logind.manager->readEnds.size(), 1);
        QCOMPARE(logind.manager->inhibitions.first().section(QLatin1Char('|'), 0, 0), QStringLiteral("sleep"));
        QCOMPARE(logind.manager->inhibitions.first().section(QLatin1Char('|'), 3), QStringLiteral("delay"));
        QTRY_VERIFY(f.events.holdsSleepInhibitor());
        QVERIFY(!logind.manager->latestReleased());

        f.time.advance(600 * 1000);
        logind.prepareForSleep(true);
        QTRY_VERIFY(!f.task->activeStartedAt());
        QCOMPARE(f.task->actualSecondsFocused(), std::optional<qint32>(600));
        QTRY_VERIFY(logind.manager->latestReleased()); // only after the pause

        f.time.advance(120 * 1000);
        logind.prepareForSleep(false);
        QTRY_VERIFY(f.task->activeStartedAt()); // a short break resumes
        QTRY_COMPARE(logind.manager->readEnds.size(), 2); // ready for the next sleep
        QTRY_VERIFY(f.events.holdsSleepInhibitor());
    }

    void lockAndUserSwitch()
    {
        FakeLogind logind;
        QVERIFY(logind.start());
        SessionFixture f;
        QSignalSpy found(&f.events, &platform::LinuxSessionEvents::sessionFound);
        QVERIFY(found.wait(5000));
        QCOMPARE(f.events.sessionPath(), FakeLogind::sessionPath());

        logind.setSession(QStringLiteral("LockedHint"), true);
        QTRY_VERIFY(!f.task->activeStartedAt());
        QVERIFY(f.events.screenIsLocked());
        f.time.advance(60 * 1000);
        logind.prepareForSleep(true);
        logind.prepareForSleep(false); // woken behind the lock screen
        QTest::qWait(100);
        QVERIFY(!f.task->activeStartedAt());
        logind.setSession(QStringLiteral("LockedHint"), false);
        QTRY_VERIFY(f.task->activeStartedAt());
        QVERIFY(!f.events.screenIsLocked());

        // Another user takes the seat for ten minutes.
        logind.setSession(QStringLiteral("Active"), false);
        QTRY_VERIFY(!f.task->activeStartedAt());
        f.time.advance(600 * 1000);
        logind.setSession(QStringLiteral("Active"), true);
        QTRY_VERIFY(!f.monitor.autoPausedAt());
        QVERIFY(!f.task->activeStartedAt());
        QCOMPARE(f.monitor.autoPausedTaskID(), std::optional<QUuid>(f.task->id()));
    }

    void screenSaverWithoutLogind()
    {
        QTest::ignoreMessage(QtWarningMsg,
                             "logind is not on the system bus; sleep, screen lock and user switches are not seen");
        SessionFixture f;
        screenSaverActive(true);
        QTRY_VERIFY(!f.task->activeStartedAt());
        QVERIFY(f.events.screenIsLocked());
        f.time.advance(30 * 1000);
        screenSaverActive(false);
        QTRY_VERIFY(f.task->activeStartedAt());
        QVERIFY(!f.events.holdsSleepInhibitor());
    }
};

QTEST_GUILESS_MAIN(SessionEventsTest)
#include "tst_session_events.moc"
