// Routines: weekday schedules, loading without duplicates, repeating on
// weekdays, and what a deleted routine leaves behind.
#include "PlanningFixture.h"

#include <QTest>

using namespace tarnwell;

class RoutineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void schedule_data()
    {
        QTest::addColumn<int>("mask");
        QTest::addColumn<QString>("days"); // weekdays 0...8, '1' = contained
        QTest::addColumn<int>("kind");
        QTest::newRow("never") << 0 << QStringLiteral("000000000") << int(RoutineSchedule::Kind::never);
        QTest::newRow("every day") << 127 << QStringLiteral("011111110") << int(RoutineSchedule::Kind::everyDay);
        QTest::newRow("weekdays") << 62 << QStringLiteral("001111100") << int(RoutineSchedule::Kind::weekdays);
        QTest::newRow("sunday") << 1 << QStringLiteral("010000000") << int(RoutineSchedule::Kind::custom);
        QTest::newRow("unused high bits")
            << 0x7F80 << QStringLiteral("000000000") << int(RoutineSchedule::Kind::custom);
    }
    void schedule()
    {
        QFETCH(int, mask);
        QFETCH(QString, days);
        QFETCH(int, kind);
        const RoutineSchedule s{qint16(mask)};
        QString got;
        for (int w = 0; w <= 8; ++w)
            got += s.contains(w) ? u'1' : u'0';
        QCOMPARE(got, days);
        QCOMPARE(int(s.kind()), kind);
    }

    void repeatingItems()
    {
        PlanningFixture f;
        f.routine(QStringLiteral("never"), {QStringLiteral("n")}, 0);
        Routine *weekdays = f.routine(QStringLiteral("weekdays"), {QStringLiteral("a"), QStringLiteral("b")}, 62);
        Routine *saturday = f.routine(QStringLiteral("saturday"), {QStringLiteral("s")}, 64);
        const auto ids = [](Routine *r) {
            QSet<QUuid> out;
            for (const RoutineItem *i : RoutineRepository::items(r))
                out.insert(i->id());
            return out;
        };
        QCOMPARE(f.routines.itemIDsRepeating(2), ids(weekdays));
        QCOMPARE(f.routines.itemIDsRepeating(7), ids(saturday));
        QVERIFY(f.routines.itemIDsRepeating(1).isEmpty());
        QVERIFY(f.routines.itemIDsRepeating(0).isEmpty());
        QVERIFY(f.routines.itemIDsRepeating(8).isEmpty());
        const QUuid first = RoutineRepository::items(weekdays).first()->id();
        QCOMPARE(f.routines.item(first)->title(), QStringLiteral("a"));
        QCOMPARE(f.routines.item(QUuid::createUuid()), nullptr);
    }

    void loadTwiceAddsNothingTwice()
    {
        PlanningFixture f;
        f.add(QStringLiteral("already here"), 0);
        Routine *morning = f.routine(QStringLiteral("morning"), {QStringLiteral("stretch"), QStringLiteral("plan")});
        Day *today = f.day(0);
        QCOMPARE(f.routineService.load(morning, today), 2);
        const auto queue = f.tasks.openTasks(today);
        QCOMPARE(f.titles(queue),
                 (QStringList{QStringLiteral("already here"), QStringLiteral("stretch"), QStringLiteral("plan")}));
        QCOMPARE(queue[1]->durationMinutes(), 15);
        QVERIFY(!f.context.hasChanges());
        // A finished routine task still counts as loaded.
        f.tasks.complete(queue[1], f.time.now, 60);
        QCOMPARE(f.routineService.load(morning, today), 0);
        QCOMPARE(f.tasks.openTasks(today).size(), 2);
        // A new item is the only one added.
        f.routines.appendItem(morning, {QStringLiteral("review"), std::nullopt, QStringLiteral("notes")});
        QCOMPARE(f.routineService.load(morning, today), 1);
        QCOMPARE(f.tasks.openTasks(today).last()->notes(), QStringLiteral("notes"));
    }

    void scheduleOfTasks()
    {
        PlanningFixture f;
        Routine *r = f.routine(QStringLiteral("r"), {QStringLiteral("a")}, 62);
        f.routineService.load(r, f.day(0));
        Task *fromRoutine = f.tasks.openTasks(f.day(0)).first();
        Task *plain = f.add(QStringLiteral("plain"), 0);
        QCOMPARE(f.routineService.schedule(fromRoutine), RoutineSchedule::weekdays());
        QCOMPARE(f.routineService.schedule(plain), RoutineSchedule::never());
        QVERIFY(f.routineService.changeRepeat(fromRoutine, RoutineSchedule::everyDay()));
        QCOMPARE(r->repeatWeekdays(), 127);
        QVERIFY(!f.routineService.changeRepeat(plain, RoutineSchedule::everyDay()));
        f.routines.deleteRoutine(r);
        QCOMPARE(f.routineService.schedule(fromRoutine), RoutineSchedule::never());
        QVERIFY(!fromRoutine->isDeleted()); // the task stays
        QVERIFY(f.routines.itemIDsRepeating(4).isEmpty());
        QVERIFY(!f.routineService.changeRepeat(fromRoutine, RoutineSchedule::weekdays()));
    }

    void saveQueueKeepsOrder()
    {
        PlanningFixture f;
        f.add(QStringLiteral("one"), 0, 25);
        f.add(QStringLiteral("two"), 0);
        Routine *older = f.routineService.saveQueue(f.tasks.openTasks(f.day(0)), QStringLiteral("  Focus  "));
        QCOMPARE(older->name(), QStringLiteral("Focus"));
        const auto items = RoutineRepository::items(older);
        QCOMPARE(items.size(), 2);
        QCOMPARE(items[0]->title(), QStringLiteral("one"));
        QCOMPARE(items[0]->durationMinutes(), 25);
        QCOMPARE(items[1]->durationMinutes(), std::nullopt);
        Routine *unnamed = f.routineService.saveQueue({}, QStringLiteral(" "));
        QCOMPARE(unnamed->name(), QStringLiteral("settings.routines.defaultName"));
        QCOMPARE(f.routines.routines(), (QList<Routine *>{older, unnamed}));
    }

    void applyDueRoutines()
    {
        PlanningFixture f; // a Wednesday
        Routine *weekdays = f.routine(QStringLiteral("weekdays"), {QStringLiteral("standup")}, 62);
        f.routine(QStringLiteral("saturday"), {QStringLiteral("groceries")}, 64);
        Routine *byHand = f.routine(QStringLiteral("by hand"), {QStringLiteral("mail")}, 127);
        f.routineService.load(byHand, f.day(0));

        QCOMPARE(f.routineService.applyDueRoutines(), 1);
        QCOMPARE(f.titles(f.tasks.openTasks(f.day(0))),
                 (QStringList{QStringLiteral("mail"), QStringLiteral("standup")}));
        QCOMPARE(weekdays->lastAppliedDate(), f.time.now);
        QCOMPARE(byHand->lastAppliedDate(), f.time.now);

        f.time.advance(3600 * 1000); // later the same day: nothing again
        QCOMPARE(f.routineService.applyDueRoutines(), 0);
        QCOMPARE(weekdays->lastAppliedDate(), f.time.now.addSecs(-3600));

        f.time.now = f.dayStart(3).addSecs(8 * 3600); // Saturday
        QCOMPARE(f.routineService.applyDueRoutines(), 2);
        QCOMPARE(f.titles(f.tasks.openTasks(f.day(0))),
                 (QStringList{QStringLiteral("groceries"), QStringLiteral("mail")}));

        // A date in the future (the clock was set back) counts as applied.
        const QDateTime saturday = f.time.now;
        f.time.now = f.dayStart(-1).addSecs(8 * 3600); // Friday
        QCOMPARE(f.routineService.applyDueRoutines(), 1); // weekdays only
        QCOMPARE(byHand->lastAppliedDate(), saturday);
    }

    void oneFailingRoutineDoesNotStopTheOthers()
    {
        PlanningFixture f;
        Routine *broken = f.routine(QStringLiteral("broken"), {QStringLiteral("x")}, 127);
        f.routine(QStringLiteral("fine"), {QStringLiteral("y")}, 127);
        RoutineRepository::items(broken).first()->setTitle(QStringLiteral("  "));
        f.context.save();
        QTest::ignoreMessage(QtCriticalMsg, "Routine materialize failed: error.repository.titleEmpty");
        QCOMPARE(f.routineService.applyDueRoutines(), 1);
        QCOMPARE(f.titles(f.tasks.openTasks(f.day(0))), QStringList{QStringLiteral("y")});
        QCOMPARE(broken->lastAppliedDate(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(RoutineTest)
#include "tst_routines.moc"
