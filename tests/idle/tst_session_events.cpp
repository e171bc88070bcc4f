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
        service.startTimer(task);
        monitor.start();
    }
    Task *task = add(QStringLiteral("Focus"), 60);
    platform::LinuxSessionEvents events;
    IdleMonitor monitor{service, settings, {}, &events, time.clock(), std::chrono::milliseconds(0)};
};

void screenSaverActive(bool active)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/ScreenSaver"),
                                   QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("ActiveChanged"));
    QDBusConnection::sessionBus().send(signal << active);
}

} // namespace

class SessionEventsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QDBusConnection::systemBus().isConnected(), "needs a private system bus");
        // The screen saver's signal comes from a name the monitor follows.
        QVERIFY(QDBusConnection::sessionBus().registerService(QStringLiteral("org.freedesktop.ScreenSaver")));
    }

    void sleepIsHeldUntilThePauseIsSaved()
    {
        FakeLogind logind;
        QVERIFY(logind.start());
        SessionFixture f;
        QTRY_VERIFY(f.events.holdsSleepInhibitor());
        QCOMPARE(logind.manager->inhibitions, QStringList{QStringLiteral("sleep|delay")});
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
    }

    void lockAndUserSwitch()
    {
        FakeLogind logind;
        QVERIFY(logind.start());
        SessionFixture f;
        QVERIFY(QSignalSpy(&f.events, &platform::LinuxSessionEvents::sessionFound).wait(5000));

        logind.setSession("LockedHint", true);
        QTRY_VERIFY(!f.task->activeStartedAt());
        QVERIFY(f.events.screenIsLocked());
        f.time.advance(60 * 1000);
        logind.prepareForSleep(true);
        logind.prepareForSleep(false); // woken behind the lock screen
        QTest::qWait(100);
        QVERIFY(!f.task->activeStartedAt());
        logind.setSession("LockedHint", false);
        QTRY_VERIFY(f.task->activeStartedAt());

        // Another user takes the seat for ten minutes.
        logind.setSession("Active", false);
        QTRY_VERIFY(!f.task->activeStartedAt());
        f.time.advance(600 * 1000);
        logind.setSession("Active", true);
        QTRY_VERIFY(!f.monitor.autoPausedAt());
        QVERIFY(!f.task->activeStartedAt());
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
    }
};

QTEST_GUILESS_MAIN(SessionEventsTest)
#include "tst_session_events.moc"
