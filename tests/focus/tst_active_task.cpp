// The task in hand: its queue, the focus timer, hand-over, time away,
// completion, and the card's clock format.
#include "FocusFixture.h"
#include "services/DurationFormat.h"
#include "services/FocusTime.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTest>

class ActiveTaskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void timerBanksWholeSecondsAndIgnoresRepeats()
    {
        FocusFixture f;
        Task *t = f.add(QStringLiteral("Write"));
        const QDateTime started = f.time.now;
        f.saves = 0;
        f.service.startTimer(t);
        f.time.advance((25 * 60 + 30) * 1000 + 900);
        f.service.startTimer(t); // already running: no write
        QCOMPARE(t->activeStartedAt(), started);
        QCOMPARE(f.saves, 1);

        f.service.pauseTimer(t);
        QCOMPARE(t->actualSecondsFocused(), 1530); // truncated, not rounded
        QVERIFY(!t->activeStartedAt());
        QCOMPARE(t->updatedAt(), f.time.now);
        f.service.pauseTimer(t); // stopped: no write
        QCOMPARE(f.saves, 2);
        QCOMPARE(FocusTime::timerState(*t), FocusTime::TimerState::paused);

        // Resuming continues from the banked seconds; a clock set back adds nothing.
        f.service.toggleTimer(t);
        f.advanceSeconds(-60);
        QCOMPARE(FocusTime::focusedSeconds(*t, f.time.now), 1530);
        f.service.toggleTimer(t);
        QCOMPARE(t->actualSecondsFocused(), 1530);
        QVERIFY(!t->activeStartedAt());
    }

    void queueIsTodaysOpenTasksInOrder()
    {
        FocusFixture f;
        QVERIFY(!f.service.activeTask());
        Task *a = f.add(QStringLiteral("A"));
        Task *b = f.add(QStringLiteral("B"));
        Task *c = f.add(QStringLiteral("C"));
        Task *d = f.add(QStringLiteral("D"));
        a->setArchived(true);
        b->setCompleted(true);
        // Tomorrow's tasks are not in today's queue.
        f.service.taskRepository().createTask(QStringLiteral("Later"), std::nullopt, false,
                                              f.service.dayRepository().fetchOrCreateDay(f.time.now.addDays(1)));
        QSignalSpy taskSpy(&f.service, &ActiveTaskService::activeTaskChanged);
        QSignalSpy queueSpy(&f.service, &ActiveTaskService::queueChanged);
        f.service.refresh();
        f.service.refresh(); // repeats are published too
        QCOMPARE(taskSpy.count(), 2);
        QCOMPARE(queueSpy.count(), 2);
        QCOMPARE(f.service.queue(), (QList<Task *>{c, d}));
        QCOMPARE(f.service.activeTask(), c);
        QCOMPARE(f.service.nextTask(), d);

        // A change in the store republishes by itself, from the event loop.
        c->setCompleted(true);
        QTRY_COMPARE(f.service.activeTask(), d);
        QVERIFY(!f.service.nextTask());
        d->setCompleted(true);
        QTRY_VERIFY(f.service.queue().isEmpty());
        QVERIFY(!f.service.activeTask());
    }

    void handOverWipesTheTallyOfUnfinishedWork()
    {
        FocusFixture f;
        Task *first = f.add(QStringLiteral("First"));
        Task *second = f.add(QStringLiteral("Second"));
        first->setActualSecondsFocused(900);
        f.service.startTimer(first);
        f.advanceSeconds(120);
        f.service.activate(second);
        QCOMPARE(first->actualSecondsFocused(), 0); // neither banked nor kept
        QVERIFY(!first->activeStartedAt());
        QCOMPARE(first->updatedAt(), f.time.now);
        QVERIFY(!second->activeStartedAt()); // hand-over starts nothing
        QCOMPARE(f.service.activeTask(), first); // nor reorders

        // To the task already in hand: only its updatedAt moves.
        second->setActualSecondsFocused(50);
        f.advanceSeconds(5);
        f.service.activate(first);
        QCOMPARE(first->updatedAt(), f.time.now);
        QCOMPARE(second->actualSecondsFocused(), 50);

        // Away from a task completed before the queue caught up: its seconds stay.
        first->setActualSecondsFocused(700);
        f.service.startTimer(first);
        first->setCompleted(true);
        f.service.activate(second);
        QCOMPARE(first->actualSecondsFocused(), 700);
        QVERIFY(!first->activeStartedAt());
    }

    void discardTakesRunningTimeThenBanked_data()
    {
        QTest::addColumn<qint64>("running");
        QTest::addColumn<int>("banked");
        QTest::addColumn<qint64>("discard");
        QTest::addColumn<qint64>("startMoves");
        QTest::addColumn<int>("bankedAfter");
        QTest::addColumn<int>("awayAfter"); // -1: nothing written
        QTest::newRow("running and banked") << qint64(120) << 1000 << qint64(300) << qint64(120) << 820 << 300;
        QTest::newRow("stopped, less banked than asked") << qint64(-1) << 100 << qint64(300) << qint64(0) << 0 << 100;
        QTest::newRow("running only") << qint64(500) << 0 << qint64(300) << qint64(300) << 0 << 300;
        QTest::newRow("zero") << qint64(120) << 1000 << qint64(0) << qint64(0) << 1000 << -1;
        QTest::newRow("nothing to take") << qint64(-1) << 0 << qint64(300) << qint64(0) << 0 << -1;
    }
    void discardTakesRunningTimeThenBanked()
    {
        QFETCH(qint64, running);
        QFETCH(int, banked);
        QFETCH(qint64, discard);
        QFETCH(qint64, startMoves);
        QFETCH(int, bankedAfter);
        QFETCH(int, awayAfter);
        FocusFixture f;
        Task *t = f.add(QStringLiteral("T"));
        t->setActualSecondsFocused(banked);
        t->setAwaySecondsDiscarded(awayAfter < 0 ? std::nullopt : std::optional<qint32>(0));
        if (running >= 0)
            f.service.startTimer(t);
        const auto started = t->activeStartedAt();
        f.advanceSeconds(std::max<qint64>(running, 0));
        f.saves = 0;
        f.service.discardAwaySeconds(t, discard);
        if (started)
            QCOMPARE(*t->activeStartedAt(), started->addSecs(startMoves));
        QCOMPARE(t->actualSecondsFocused().value_or(0), bankedAfter);
        QCOMPARE(t->awaySecondsDiscarded().value_or(-1), awayAfter);
        QCOMPARE(f.saves, awayAfter < 0 ? 0 : 1);
    }

    void completionMeasuresAndBringsTheNextTaskUp()
    {
        FocusFixture f;
        FakePresenter popover;
        Task *done = f.add(QStringLiteral("Done"), 25);
        Task *next = f.add(QStringLiteral("Next"), 40);
        done->setActualSecondsFocused(100);
        f.service.startTimer(done);
        f.advanceSeconds(200);
        TaskCompletionFlow::complete(done->id(), f.service, f.sound, popover);
        QVERIFY(done->completed());
        QCOMPARE(done->actualSecondsFocused(), 300);
        QVERIFY(!done->activeStartedAt());
        QCOMPARE(f.service.activeTask(), next);
        QVERIFY(!next->activeStartedAt());
        QCOMPARE(popover.presented,
                 (QList<NextUpModalContext>{{QStringLiteral("Done"), 300, QStringLiteral("Next"), 40, next->id()}}));
        QCOMPARE(popover.updates, 1);
        QCOMPARE(f.chimes.log.last(), QStringLiteral("Glass play"));

        // The last task: no next one; without the screen only the update.
        TaskCompletionFlow::complete(next->id(), f.service, f.sound, popover, false);
        QCOMPARE(popover.presented.size(), 1);
        QCOMPARE(popover.updates, 2);
        TaskCompletionFlow::complete(QUuid::createUuid(), f.service, f.sound, popover);
        QCOMPARE(popover.updates, 2);
    }

    void failedSavesAreLoggedAndKeptInMemory()
    {
        FocusFixture f;
        FakePresenter popover;
        Task *t = f.add(QStringLiteral("T"));
        QSqlQuery(f.store.viewContext().database()).exec(QStringLiteral("PRAGMA query_only = ON"));
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^ActiveTaskService startTimer save failed: .+")));
        f.service.startTimer(t);
        QVERIFY(t->activeStartedAt());
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^TaskCompletionFlow complete failed: .+")));
        TaskCompletionFlow::complete(t->id(), f.service, f.sound, popover);
        QVERIFY(f.chimes.log.isEmpty());
        QCOMPARE(popover.updates, 0);
        QSqlQuery(f.store.viewContext().database()).exec(QStringLiteral("PRAGMA query_only = OFF"));
        f.store.viewContext().save(); // what failed goes out with the next save
        QVERIFY(!f.store.viewContext().hasChanges());
    }

    void clockFormat_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << QStringLiteral("00:00");
        QTest::newRow("under an hour") << qint64(3599) << QStringLiteral("59:59");
        QTest::newRow("an hour") << qint64(3600) << QStringLiteral("1:00:00");
        QTest::newRow("long day") << qint64(12 * 3600 + 5) << QStringLiteral("12:00:05");
        QTest::newRow("over by 5") << qint64(-5) << QStringLiteral("+00:05");
        QTest::newRow("over by 75") << qint64(-75) << QStringLiteral("+01:15");
        QTest::newRow("over by hours") << qint64(-3661) << QStringLiteral("+1:01:01");
    }
    void clockFormat()
    {
        QFETCH(qint64, seconds);
        QFETCH(QString, text);
        QCOMPARE(DurationFormat::clock(seconds), text);
    }
};

QTEST_GUILESS_MAIN(ActiveTaskTest)
#include "tst_active_task.moc"
