// Rollover: the seven-day window, what is offered, rolling forward, archiving
// and hiding the offer for a day. Runs once per time zone (see CMakeLists).
#include "PlanningFixture.h"

#include <QTest>

using namespace tarnwell;

class RolloverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { PlanningFixture().defaults.clear(); }

    // June has no daylight-saving change; the first days of November follow
    // the autumn change in New York and Berlin, early April the one on Lord Howe.
    void window_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::newRow("june") << QDate(2026, 6, 10);
        QTest::newRow("after autumn change") << QDate(2026, 11, 2);
        QTest::newRow("after april change") << QDate(2026, 4, 7);
    }
    void window()
    {
        QFETCH(QDate, today);
        PlanningFixture f;
        f.time.now = today.startOfDay(f.calendar.timeZone()).addSecs(30 * 60); // 00:30
        f.add(QStringLiteral("eight days ago"), -8);
        f.add(QStringLiteral("seven days ago"), -7);
        f.tasks.complete(f.add(QStringLiteral("done"), -3), f.time.now, 60);
        f.add(QStringLiteral("archived"), -2)->setArchived(true);
        f.add(QStringLiteral("yesterday b"), -1);
        f.tasks.createTask(QStringLiteral("yesterday a"), std::nullopt, true, f.day(-1)); // urgent: first
        f.add(QStringLiteral("today"), 0);
        const auto candidate = f.rollover.candidate();
        QVERIFY(candidate);
        QCOMPARE(f.titles(candidate->tasks),
                 (QStringList{QStringLiteral("seven days ago"), QStringLiteral("yesterday a"),
                              QStringLiteral("yesterday b")}));
        QCOMPARE(candidate->oldestDate, f.dayStart(-7));
        QVERIFY(!f.rollover.isFromYesterday(*candidate));
        f.rollover.archive(candidate->tasks.mid(0, 1));
        QVERIFY(f.rollover.isFromYesterday(*f.rollover.candidate()));
    }

    void routineItemsOfToday()
    {
        PlanningFixture f; // a Wednesday
        Routine *wednesday = f.routine(QStringLiteral("w"), {QStringLiteral("standup")}, 8);
        f.time.now = f.dayStart(-7).addSecs(9 * 3600); // the Wednesday before
        QCOMPARE(f.routineService.applyDueRoutines(), 1);
        f.time.now = f.dayStart(7).addSecs(9 * 3600);
        QVERIFY(!f.rollover.candidate()); // the routine brings it again today
        f.routines.setRepeatWeekdays(wednesday, 16); // Thursdays from now on
        QCOMPARE(f.titles(f.rollover.candidate()->tasks), QStringList{QStringLiteral("standup")});
    }

    void dismissedUntilMidnight()
    {
        PlanningFixture f;
        f.add(QStringLiteral("old"), -2);
        f.time.now = f.dayStart(1).addSecs(-60); // 23:59
        QVERIFY(!f.rollover.isDismissedToday());
        f.rollover.dismissForToday();
        QVERIFY(f.rollover.isDismissedToday());
        QCOMPARE(f.defaults.value(QStringLiteral("Tarnwell.rollover.dismissedDay")).toString(), f.rollover.todayKey());
        f.time.advance(59 * 1000);
        QVERIFY(f.rollover.isDismissedToday());
        f.time.advance(2 * 1000); // 00:00:01 the next day
        QVERIFY(!f.rollover.isDismissedToday());
        QVERIFY(f.rollover.candidate());
    }

    void rollForwardAndArchive()
    {
        PlanningFixture f;
        Task *existing = f.add(QStringLiteral("today"), 0);
        Task *a = f.add(QStringLiteral("a"), -3, 30);
        f.add(QStringLiteral("b"), -3);
        f.add(QStringLiteral("c"), -1);
        a->setActiveStartedAt(f.time.now.addSecs(-600));
        a->setActualSecondsFocused(300);
        f.context.save();

        f.time.advance(1000);
        const auto candidate = f.rollover.candidate();
        QVERIFY(candidate);
        f.rollover.rollForward(candidate->tasks);
        QVERIFY(!f.context.hasChanges());
        const auto queue = f.tasks.openTasks(f.day(0));
        QCOMPARE(f.titles(queue),
                 (QStringList{QStringLiteral("today"), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QCOMPARE(queue[0], existing);
        QCOMPARE(a->actualSecondsFocused(), 0);
        QCOMPARE(a->activeStartedAt(), std::nullopt);
        QCOMPARE(a->rolledFromDate(), f.dayStart(-3));
        QCOMPARE(queue[3]->rolledFromDate(), f.dayStart(-1));
        QCOMPARE(a->updatedAt(), f.time.now);
        QVERIFY(!f.rollover.candidate());

        Task *old = f.add(QStringLiteral("old"), -2);
        f.rollover.archive(f.rollover.candidate()->tasks);
        QVERIFY(old->archived());
        QVERIFY(!f.rollover.candidate());
    }
};

QTEST_GUILESS_MAIN(RolloverTest)
#include "tst_rollover.moc"
