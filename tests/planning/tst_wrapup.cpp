// The end-of-day wrap-up: its figures over a day of mixed tasks, and when it
// is offered (once a day at the workday end, never after "done for today" or
// without a workday end), across midnight and a daylight-saving change.
// Runs once per time zone (see CMakeLists).
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "services/WrapUp.h"
#include "settings/AppSettingsStore.h"
#include "support/ManualClock.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

struct Fixture
{
    Calendar calendar;
    ManualClock time{QDate(2026, 6, 10).startOfDay(calendar.timeZone()).addSecs(10 * 3600)};
    PersistenceController store{true};
    AppSettingsStore settings{store};
    DayRepository days{store.viewContext(), calendar, time.clock()};
    TaskRepository tasks{store.viewContext(), calendar, time.clock(), days};
    QTemporaryDir dir;
    QSettings defaults{dir.filePath(QStringLiteral("defaults.ini")), QSettings::IniFormat};
    WrapUpOffer offer{settings, defaults, calendar, time.clock()};

    Day *today() { return days.fetchOrCreateDay(calendar.startOfDay(time.now)); }
    Task *add(const QString &title, std::optional<qint64> minutes)
    {
        return tasks.createTask(title, minutes, false, today());
    }
    void finish(Task *task, qint64 seconds) { tasks.complete(task, time.now, seconds); }
    // Local wall time on the day of `date`.
    void setLocal(QDate date, int hour, int minute)
    {
        time.now = QDateTime(date, QTime(hour, minute), calendar.timeZone()).toUTC();
    }
};

} // namespace

class WrapUpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void figuresOfADay()
    {
        Fixture f;
        QCOMPARE(WrapUpFigures::load(nullptr, f.tasks, f.time.now).summary.completedCount, 0);

        // Done: over plan, under plan, unplanned, and planned but never timed.
        f.finish(f.add(QStringLiteral("Report"), 30), 36 * 60);
        f.finish(f.add(QStringLiteral("Mail"), 20), 18 * 60);
        f.finish(f.add(QStringLiteral("Call"), std::nullopt), 10 * 60);
        f.finish(f.add(QStringLiteral("Ticked"), 15), 0);
        // Left: a planned task with a running timer, a planned one, an untimed one.
        Task *running = f.add(QStringLiteral("Review"), 45);
        running->setActualSecondsFocused(300);
        running->setActiveStartedAt(f.time.now.addSecs(-120));
        f.add(QStringLiteral("Slides"), 25);
        f.add(QStringLiteral("Tidy"), std::nullopt);
        // Another day's work is no part of today's.
        f.tasks.complete(f.tasks.createTask(QStringLiteral("Yesterday"), 30, false,
                                            f.days.fetchOrCreateDay(f.calendar.startOfDayAdding(f.time.now, -1))),
                         f.time.now.addDays(-1), 3600);

        const WrapUpFigures figures = WrapUpFigures::load(f.today(), f.tasks, f.time.now);
        QCOMPARE(figures.summary.completedCount, 4);
        QCOMPARE(figures.summary.focusedSeconds, qint64(64 * 60));
        QCOMPARE(figures.done.size(), 4);
        QCOMPARE(figures.done.first().title, QStringLiteral("Report"));
        // Only the tasks with both a plan and a measurement: 54 min for 50 planned.
        QCOMPARE(figures.measuredCount, 2);
        QCOMPARE(figures.measuredFocusedSeconds, qint64(54 * 60));
        QCOMPARE(figures.measuredPlannedMinutes, qint64(50));
        QVERIFY(figures.accuracyRatio());
        QVERIFY(qFuzzyCompare(*figures.accuracyRatio(), 54.0 / 50.0));
        // Left, in queue order; the running timer counts up to now.
        QCOMPARE(figures.left.size(), 3);
        QCOMPARE(figures.left.at(0).title, QStringLiteral("Review"));
        QCOMPARE(figures.left.at(0).focusedSeconds, qint64(420));
        QCOMPARE(figures.leftPlannedMinutes, qint64(70));
        QCOMPARE(figures.leftUntimedCount, 1);

        // No done task with plan and measurement: no accuracy.
        Fixture g;
        g.finish(g.add(QStringLiteral("Unplanned"), std::nullopt), 600);
        g.finish(g.add(QStringLiteral("Untimed"), 10), 0);
        QVERIFY(!WrapUpFigures::load(g.today(), g.tasks, g.time.now).accuracyRatio());
    }

    void offeredOnceADayAtTheWorkdayEnd()
    {
        Fixture f;
        QSignalSpy offered(&f.offer, &WrapUpOffer::offered);
        const QDate day(2026, 6, 10);

        // Without a workday end it is never offered.
        f.setLocal(day, 23, 0);
        f.offer.check();
        QVERIFY(!f.offer.dueAt());
        QCOMPARE(offered.count(), 0);

        f.setLocal(day, 17, 0);
        f.settings.setWorkdayEndMinutes(17 * 60 + 30);
        f.offer.check();
        QCOMPARE(offered.count(), 0);
        QCOMPARE(*f.offer.dueAt(), QDateTime(day, QTime(17, 30), f.calendar.timeZone()));
        f.setLocal(day, 17, 30);
        f.offer.check();
        f.offer.check();
        QCOMPARE(offered.count(), 1);
        QVERIFY(f.offer.isPending());
        f.offer.opened();
        QVERIFY(!f.offer.isPending());
        // A restart the same evening does not offer again.
        WrapUpOffer restarted(f.settings, f.defaults, f.calendar, f.time.clock());
        QVERIFY(!restarted.isDue());

        // Past midnight the new day waits for its own workday end.
        f.setLocal(day.addDays(1), 0, 5);
        QVERIFY(!f.offer.isDue());
        f.setLocal(day.addDays(1), 17, 31);
        f.offer.check();
        QCOMPARE(offered.count(), 2);

        // "Done for today" before the end: nothing that day; the day after, again.
        f.setLocal(day.addDays(2), 16, 0);
        f.offer.finishDay();
        QVERIFY(f.offer.isFinishedToday());
        f.setLocal(day.addDays(2), 18, 0);
        f.offer.check();
        QCOMPARE(offered.count(), 2);
        f.setLocal(day.addDays(3), 18, 0);
        f.offer.check();
        QCOMPARE(offered.count(), 3);

        // A pending mark of an evening goes at midnight.
        QVERIFY(f.offer.isPending());
        f.setLocal(day.addDays(4), 0, 1);
        f.offer.check();
        QVERIFY(!f.offer.isPending());

        // Switching the workday end off stops the offer.
        f.settings.setWorkdayEndMinutes(std::nullopt);
        f.setLocal(day.addDays(4), 23, 0);
        f.offer.check();
        QCOMPARE(offered.count(), 3);
    }

    void workdayEndFollowsTheLocalClockAcrossADaylightSavingChange()
    {
        Fixture f;
        const QTimeZone zone = f.calendar.timeZone();
        const QTimeZone::OffsetData change = zone.nextTransition(QDateTime(QDate(2026, 1, 1), QTime(0, 0), zone));
        if (!change.atUtc.isValid())
            QSKIP("this time zone has no daylight-saving change");
        const QDate changeDay = change.atUtc.toTimeZone(zone).date();
        f.settings.setWorkdayEndMinutes(18 * 60);
        QSignalSpy offered(&f.offer, &WrapUpOffer::offered);

        // The evening before the change, then the day of it: each at 18:00 local.
        for (const QDate date : {changeDay.addDays(-1), changeDay}) {
            f.setLocal(date, 12, 0);
            const QDateTime end = *f.offer.dueAt();
            QCOMPARE(end.toTimeZone(zone).time(), QTime(18, 0));
            QCOMPARE(end.toTimeZone(zone).date(), date);
            f.time.now = end.addSecs(-1);
            f.offer.check();
            f.time.now = end;
            f.offer.check();
        }
        QCOMPARE(offered.count(), 2);
    }
};

QTEST_GUILESS_MAIN(WrapUpTest)
#include "tst_wrapup.moc"
