// The task in hand: its queue, the focus timer, hand-over, time away,
// completion, and the card's clock format.
#include "FocusFixture.h"
#include "services/DurationFormat.h"
#include "services/FocusTime.h"

#include <QRegularExpression>
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
        f.service.pauseTimer(t);
        QCOMPARE(t->actualSecondsFocused(), 1530); // truncated, not rounded
        QVERIFY(!t->activeStartedAt());
        QCOMPARE(t->updatedAt(), f.time.now);
        f.service.pauseTimer(t); // stopped: no write
        QCOMPARE(f.saves, 2);

        // Resuming continues from the banked seconds; a clock set back adds nothing.
        f.service.toggleTimer(t);
        f.time.advance(-60000);
        f.service.toggleTimer(t);
        QCOMPARE(t->actualSecondsFocused(), 1530);
        QVERIFY(!t->activeStartedAt());
    }

    void queueIsTodaysOpenTasksInOrder()
    {
        FocusFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Task *b = f.add(QStringLiteral("B"));
        Task *c = f.add(QStringLiteral("C"));
        Task *d = f.add(QStringLiteral("D"));
        f.service.taskRepository().createTask(QStringLiteral("Tomorrow"), std::nullopt, false,
                                              f.service.dayRepository().fetchOrCreateDay(f.time.now.addDays(1)));
        a->setArchived(true);
        b->setCompleted(true);
        QTRY_COMPARE(f.service.queue(), (QList<Task *>{c, d})); // republished from the change notice
        QCOMPARE(f.service.activeTask(), c);
        QCOMPARE(f.service.nextTask(), d);
        c->setCompleted(true);
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
        f.time.advance(120000);
        f.service.activate(second);
        QCOMPARE(first->actualSecondsFocused(), 0); // neither banked nor kept
        QVERIFY(!first->activeStartedAt());
        QCOMPARE(first->updatedAt(), f.time.now);
        QVERIFY(!second->activeStartedAt()); // starts nothing
        QCOMPARE(f.service.activeTask(), first); // reorders nothing

        // To the task already in hand: only its updatedAt moves.
        second->setActualSecondsFocused(50);
        f.time.advance(5000);
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

    void discardTakesRunningTimeThenBanked()
    {
        struct Row
        {
            int running, banked, discard, startMoves, bankedAfter, away;
        }; // running -1: stopped; away -1: no write
        for (const Row r : {Row{120, 1000, 300, 120, 820, 300}, Row{-1, 100, 300, 0, 0, 100},
                            Row{500, 0, 300, 300, 0, 300}, Row{120, 1000, 0, 0, 1000, -1}, Row{-1, 0, 300, 0, 0, -1}}) {
            FocusFixture f;
            Task *t = f.add(QStringLiteral("T"));
            if (r.banked > 0)
                t->setActualSecondsFocused(r.banked);
            if (r.running >= 0)
                f.service.startTimer(t);
            const auto started = t->activeStartedAt();
            f.time.advance(std::max(r.running, 0) * 1000);
            f.saves = 0;
            f.service.discardAwaySeconds(t, r.discard);
            QCOMPARE(t->activeStartedAt(), started ? std::optional(started->addSecs(r.startMoves)) : std::nullopt);
            QCOMPARE(t->actualSecondsFocused().value_or(0), r.bankedAfter);
            QCOMPARE(t->awaySecondsDiscarded().value_or(-1), r.away);
            QCOMPARE(f.saves, r.away < 0 ? 0 : 1);
            QVERIFY(!f.store->viewContext().hasChanges()); // nothing left unsaved either
        }
    }

    void completionMeasuresAndBringsTheNextTaskUp()
    {
        FocusFixture f;
        Task *done = f.add(QStringLiteral("Done"), 25);
        Task *next = f.add(QStringLiteral("Next"), 40);
        done->setActualSecondsFocused(100);
        f.service.startTimer(done);
        f.time.advance(200000);
        TaskCompletionFlow::complete(done->id(), f.service, f.sound, f.rec);
        QVERIFY(done->completed());
        QCOMPARE(done->actualSecondsFocused(), 300);
        QVERIFY(!done->activeStartedAt());
        QCOMPARE(f.service.activeTask(), next);
        QVERIFY(!next->activeStartedAt());
        QCOMPARE(f.rec.nextUp,
                 (QList<NextUpModalContext>{{QStringLiteral("Done"), 300, QStringLiteral("Next"), 40, next->id()}}));
        QCOMPARE(f.rec.take(),
                 (QStringList{QStringLiteral("Glass load"), QStringLiteral("Glass volume 1"),
                              QStringLiteral("Glass play"), QStringLiteral("update")}));

        // Without the next-up screen only the update; an unknown task does nothing.
        TaskCompletionFlow::complete(next->id(), f.service, f.sound, f.rec, false);
        TaskCompletionFlow::complete(QUuid::createUuid(), f.service, f.sound, f.rec);
        QCOMPARE(f.rec.nextUp.size(), 1);
        QCOMPARE(f.rec.take().filter(QStringLiteral("update")).size(), 1);
    }

    void failedSavesAreLoggedAndKeptInMemory()
    {
        FocusFixture f;
        Task *t = f.add(QStringLiteral("T"));
        QSqlQuery(f.store->viewContext().database()).exec(QStringLiteral("PRAGMA query_only = ON"));
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression(QStringLiteral("^ActiveTaskService startTimer save failed: .+")));
        f.service.startTimer(t);
        QVERIFY(t->activeStartedAt());
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression(QStringLiteral("^TaskCompletionFlow complete failed: .+")));
        TaskCompletionFlow::complete(t->id(), f.service, f.sound, f.rec);
        QVERIFY(f.rec.log.isEmpty()); // no chime, no next-up screen
        QSqlQuery(f.store->viewContext().database()).exec(QStringLiteral("PRAGMA query_only = OFF"));
        f.store->viewContext().save(); // what failed goes out with the next save
        QVERIFY(!f.store->viewContext().hasChanges());
        Task *open = f.add(QStringLiteral("Open"));
        QCOMPARE(f.service.activeTask(), open);
        f.store->viewContext().database().close(); // unreadable: no task in hand rather than a stale one
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression(QStringLiteral("^ActiveTaskService refresh failed: .+")));
        f.service.refresh();
        QVERIFY(!f.service.activeTask());
    }

    void clockFormat()
    {
        const QList<std::pair<qint64, QString>> rows{{3599, QStringLiteral("59:59")},
                                                     {3600, QStringLiteral("1:00:00")},
                                                     {-5, QStringLiteral("+00:05")},
                                                     {-75, QStringLiteral("+01:15")},
                                                     {-3661, QStringLiteral("+1:01:01")}};
        for (const auto &[seconds, text] : rows)
            QCOMPARE(DurationFormat::clock(seconds), text);
    }
};

QTEST_GUILESS_MAIN(ActiveTaskTest)
#include "tst_active_task.moc"
