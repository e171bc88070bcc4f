// The idle monitor on a pinned clock with a scripted idle time and session:
// idle stretches measured by the largest reading and offered on return, the
// threshold, the automatic pause on sleep or lock with its short-break
// resume, a wake behind the lock screen, and discarding a gap.
#include "focus/FocusFixture.h"
#include "services/FocusTime.h"
#include "services/IdleMonitor.h"
#include "services/SessionEvents.h"

#include <QTest>

namespace {

struct FakeSession : SessionEvents
{
    bool locked = false;
    bool screenIsLocked() const override { return locked; }
    void away() { Q_EMIT wentAway(QStringLiteral("test")); }
    void back() { Q_EMIT cameBack(QStringLiteral("test")); }
};

struct IdleFixture : FocusFixture
{
    IdleFixture()
    {
        task = add(QStringLiteral("Focus"), 90);
        service.startTimer(task);
        monitor.start();
    }
    // One poll interval later, with the user idle for `seconds`.
    void pollAfter30s(qint64 seconds)
    {
        time.advance(30 * 1000);
        idle = seconds;
        monitor.poll();
    }
    // Idle from now on, polled every 30 s until `seconds` have gone by.
    void idleFor(qint64 seconds)
    {
        for (qint64 at = 30; at <= seconds; at += 30)
            pollAfter30s(at);
    }
    qint64 focused() const { return FocusTime::focusedSeconds(*task, time.now); }

    qint64 idle = 0;
    FakeSession session;
    IdleMonitor monitor{service,  settings,     [this] { return std::optional<qint64>(idle); },
                        &session, time.clock(), std::chrono::milliseconds(0)};
    Task *task = nullptr;
};

} // namespace

class IdleMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLongIdleStretchIsOfferedOnReturn()
    {
        IdleFixture f;
        // Away for 25 minutes from 10:00:10; the polls fall every 30 s.
        for (qint64 at = 30; at <= 1500; at += 30)
            f.pollAfter30s(at - 10);
        QVERIFY(!f.monitor.pendingGap());
        f.pollAfter30s(15); // back
        QCOMPARE(f.monitor.pendingGap(), std::optional<AwayGap>(AwayGap{f.task->id(), 1490}));

        const qint64 before = f.focused();
        f.monitor.keepGap();
        QCOMPARE(f.focused(), before);
    }

    void shortStretchesOffAndStrangersOfferNothing()
    {
        IdleFixture f;
        // 9 minutes idle against the default 10.
        f.idleFor(540);
        f.pollAfter30s(1);
        QVERIFY(!f.monitor.pendingGap());

        // 7 is no allowed value: it counts as 5, so 6 minutes are a stretch.
        f.settings.setIdleThresholdMinutes(7);
        f.idleFor(360);
        f.pollAfter30s(2);
        QVERIFY(f.monitor.pendingGap());
        f.monitor.keepGap();

        // Threshold 0: idle checks are off, however long the stretch.
        f.settings.setIdleThresholdMinutes(0);
        f.idleFor(1800);
        f.pollAfter30s(1);
        QVERIFY(!f.monitor.pendingGap());

        // A stretch that ends on another task is dropped.
        f.settings.setIdleThresholdMinutes(5);
        f.idleFor(600);
        QVERIFY(f.monitor.awayRunSeconds());
        Task *other = f.add(QStringLiteral("Other"), 30);
        f.service.taskRepository().reorderTasks(f.service.dayRepository().fetchOrCreateDay(f.time.now),
                                                {other->id(), f.task->id()});
        f.service.startTimer(other);
        f.pollAfter30s(3);
        QVERIFY(!f.monitor.pendingGap());
    }

    void shortBreaksResumeLongOnesWait()
    {
        IdleFixture f;
        f.time.advance(600 * 1000);
        QTest::ignoreMessage(QtInfoMsg, "IdleMonitor paused the running timer: the session went away");
        f.session.away(); // lid closed
        QCOMPARE(f.task->actualSecondsFocused(), std::optional<qint32>(600));
        f.session.away(); // the lock that follows changes nothing
        f.time.advance(180 * 1000);
        QTest::ignoreMessage(QtInfoMsg, "IdleMonitor resumed the timer: the break was short");
        f.session.back();
        f.time.advance(60 * 1000);
        QCOMPARE(f.focused(), 660); // the 3 minutes away are not focus

        // Ten minutes away: the task stays paused and the banner offers resume.
        QTest::ignoreMessage(QtInfoMsg, "IdleMonitor paused the running timer: the session went away");
        f.session.away();
        f.time.advance(600 * 1000);
        f.session.back();
        QCOMPARE(f.monitor.autoPausedTaskID(), std::optional<QUuid>(f.task->id()));
        f.session.back(); // a second return does not resume either
        QVERIFY(!f.task->activeStartedAt());
        f.monitor.resumeAutoPaused();
        QVERIFY(f.task->activeStartedAt());
        QVERIFY(!f.monitor.autoPausedTaskID());
        QCOMPARE(f.focused(), 660); // nor are the 10 minutes
    }

    void aWakeBehindTheLockScreenIsNoReturn()
    {
        IdleFixture f;
        f.session.locked = true;
        QTest::ignoreMessage(QtInfoMsg, "IdleMonitor paused the running timer: the session went away");
        f.session.away(); // locked, then asleep
        f.time.advance(60 * 1000);
        f.session.back(); // awake, still locked
        QVERIFY(!f.task->activeStartedAt());
        f.time.advance(60 * 1000);
        f.session.locked = false;
        f.session.back(); // unlocked two minutes after the pause
        QVERIFY(f.task->activeStartedAt());

        QTest::ignoreMessage(QtInfoMsg, "IdleMonitor paused the running timer: the session went away");
        f.session.locked = true;
        f.session.away();
        f.time.advance(290 * 1000);
        f.session.back();
        f.time.advance(20 * 1000);
        f.session.locked = false;
        f.session.back(); // unlocked after 310 s: too late to resume by itself
        QVERIFY(!f.task->activeStartedAt());
        QVERIFY(f.monitor.autoPausedTaskID());
    }

    void discardTakesTheRunningSegmentFirst()
    {
        IdleFixture f;
        f.service.pauseTimer(f.task);
        f.task->setActualSecondsFocused(800);
        f.service.startTimer(f.task);
        // The user was idle since 530 s before this start (it came from elsewhere).
        for (const auto &[after, idle] : {std::pair{940, 1470}, {30, 1500}, {30, 2}}) {
            f.time.advance(after * 1000);
            f.idle = idle;
            f.monitor.poll();
        }
        QCOMPARE(f.monitor.pendingGap(), std::optional<AwayGap>(AwayGap{f.task->id(), 1500}));
        const QDateTime started = *f.task->activeStartedAt();
        f.monitor.discardGap();
        QVERIFY(!f.monitor.pendingGap());
        QCOMPARE(*f.task->activeStartedAt(), started.addSecs(1000));
        QCOMPARE(f.task->actualSecondsFocused(), std::optional<qint32>(300));
        QCOMPARE(f.task->awaySecondsDiscarded(), std::optional<qint32>(1500));
        QCOMPARE(f.focused(), 300);
    }

    void withoutAnIdleSourceSleepStillPauses()
    {
        FocusFixture f;
        Task *t = f.add(QStringLiteral("T"), 30);
        f.service.startTimer(t);
        FakeSession session;
        IdleMonitor monitor(f.service, f.settings, {}, &session, f.time.clock(), std::chrono::milliseconds(30000));
        QTest::ignoreMessage(QtWarningMsg, "IdleMonitor could not build the any-input event type; idle checks are off");
        monitor.start();
        monitor.start(); // once only: no second log line, no second connection
        monitor.poll();
        QTest::ignoreMessage(QtInfoMsg, "IdleMonitor paused the running timer: the session went away");
        session.away();
        QVERIFY(!t->activeStartedAt());
        monitor.stop();
        f.service.startTimer(t);
        session.away(); // stopped: no longer listening
        QVERIFY(t->activeStartedAt());
    }
};

QTEST_GUILESS_MAIN(IdleMonitorTest)
#include "tst_idle_monitor.moc"
