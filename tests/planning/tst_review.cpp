// The review of estimates: periods across daylight-saving changes and a year
// boundary, the bucket edges, medians, what counts as measured time, and the
// day's summary. Runs once per time zone (see CMakeLists).
#include "PlanningFixture.h"
#include "kit/Translations.h"
#include "services/DailySummary.h"
#include "services/ReviewStatistics.h"

#include <QSqlQuery>
#include <QTest>

using namespace tarnwell;

namespace {

struct Fixture : PlanningFixture
{
    ReviewStatistics review{store.viewContext(), calendar};

    // A task planned for `minutes` (none: unplanned), completed at `at` after
    // `seconds` of focus.
    Task *done(const QDateTime &at, std::optional<qint64> minutes, qint64 seconds, const QString &title = {})
    {
        Day *day = days.fetchOrCreateDay(at);
        Task *task = tasks.createTask(title.isEmpty() ? QStringLiteral("task") : title, minutes, false, day);
        tasks.complete(task, at, seconds);
        return task;
    }
    QDateTime at(QDate date, int hour, int minute = 0) const
    {
        return QDateTime(date, QTime(hour, minute), calendar.timeZone());
    }
    ReviewSummary week(QDate date)
    {
        return review.compute(ReviewPeriod::containing(ReviewPeriod::Kind::week, date, calendar));
    }
};

} // namespace

class ReviewTest : public QObject
{
    Q_OBJECT

    Translations m_translations;

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_translations.install(QStringLiteral("en"))); }

    void bucketEdgesAndMedians()
    {
        QCOMPARE(ReviewStatistics::bucketFor(1), ReviewBucketId::upTo15);
        QCOMPARE(ReviewStatistics::bucketFor(15), ReviewBucketId::upTo15);
        QCOMPARE(ReviewStatistics::bucketFor(16), ReviewBucketId::upTo30);
        QCOMPARE(ReviewStatistics::bucketFor(30), ReviewBucketId::upTo30);
        QCOMPARE(ReviewStatistics::bucketFor(31), ReviewBucketId::upTo45);
        QCOMPARE(ReviewStatistics::bucketFor(45), ReviewBucketId::upTo45);
        QCOMPARE(ReviewStatistics::bucketFor(46), ReviewBucketId::over45);
        QCOMPARE(ReviewStatistics::median({}), 0.0);
        QCOMPARE(ReviewStatistics::median({7}), 7.0);
        QCOMPARE(ReviewStatistics::median({9, 1, 5}), 5.0);
        QCOMPARE(ReviewStatistics::median({10, 1, 4, 2}), 3.0);
        QCOMPARE(ReviewStatistics::median({5, 5, 1, 9, 9, 9}), 7.0);

        // Each edge pair through the store lands in two buckets.
        Fixture f;
        const QDate monday(2026, 6, 8);
        for (int minutes : {1, 15, 16, 30, 31, 45, 46, 600})
            f.done(f.at(monday, 9), minutes, minutes * 60);
        const ReviewSummary s = f.week(monday);
        QCOMPARE(s.sampleCount, 8);
        for (const ReviewBucket &bucket : s.buckets) {
            QCOMPARE(bucket.count, 2);
            QCOMPARE(bucket.medianRatio, 1.0);
        }
        QCOMPARE(s.buckets[0].medianPlannedMinutes, 8.0);
        QCOMPARE(s.buckets[3].medianPlannedMinutes, 323.0);
        QCOMPARE(ReviewStatistics::verdict(s.buckets[3]), QStringLiteral("Too few timed tasks to judge yet: 2."));
    }

    void mediansThroughTheStore()
    {
        Fixture f;
        const QDate day(2026, 6, 9);
        // Three 20-minute tasks (odd count): 20, 30 and 40 minutes measured.
        f.done(f.at(day, 9), 20, 40 * 60);
        f.done(f.at(day, 10), 20, 20 * 60);
        f.done(f.at(day, 11), 20, 30 * 60);
        // Four over 45 (even count): ratios 0.5, 1, 1.5 and 2.
        f.done(f.at(day, 12), 60, 30 * 60);
        f.done(f.at(day, 13), 60, 60 * 60);
        f.done(f.at(day, 14), 50, 75 * 60);
        f.done(f.at(day, 15), 50, 100 * 60);
        const ReviewSummary s = f.week(day);
        const ReviewBucket &thirty = s.buckets[1];
        QCOMPARE(thirty.count, 3);
        QCOMPARE(thirty.medianPlannedMinutes, 20.0);
        QCOMPARE(thirty.medianActualSeconds, 30.0 * 60);
        QCOMPARE(thirty.medianRatio, 1.5);
        QCOMPARE(ReviewStatistics::verdict(thirty),
                 QStringLiteral("You underestimate tasks of 16 to 30 minutes by 50 %."));
        const ReviewBucket &long_ = s.buckets[3];
        QCOMPARE(long_.count, 4);
        QCOMPARE(long_.medianPlannedMinutes, 55.0);
        QCOMPARE(long_.medianActualSeconds, (60 + 75) * 60 / 2.0);
        QCOMPARE(long_.medianRatio, 1.25);
        QCOMPARE(s.buckets[0].count, 0);
        QCOMPARE(ReviewStatistics::verdict(s.buckets[0]), QStringLiteral("No timed tasks yet."));

        // Worst offenders: overruns only, largest first.
        QCOMPARE(s.worstOffenders.size(), 4);
        QCOMPARE(s.worstOffenders[0].overrunSeconds(), 50 * 60);
        QCOMPARE(s.worstOffenders[1].overrunSeconds(), 25 * 60);
        QCOMPARE(s.worstOffenders[2].overrunSeconds(), 20 * 60);
        QCOMPARE(s.worstOffenders[3].overrunSeconds(), 10 * 60);
        QCOMPARE(s.worstOffenders[0].date, day);
    }

    void whatCountsAsMeasured()
    {
        Fixture f;
        const QDate day(2026, 6, 9);
        // Discarded time away is already out of the focused seconds: it is
        // not added back.
        Task *away = f.done(f.at(day, 9), 30, 30 * 60);
        away->setAwaySecondsDiscarded(20 * 60);
        f.store.viewContext().save();
        f.done(f.at(day, 10), std::nullopt, 600); // unplanned
        f.done(f.at(day, 11), 25, 0); // ticked off without the timer
        Task *open = f.tasks.createTask(QStringLiteral("open"), 30, false, f.days.fetchOrCreateDay(f.at(day, 8)));
        open->setActualSecondsFocused(5000);
        f.store.viewContext().save();
        const ReviewSummary s = f.week(day);
        QCOMPARE(s.sampleCount, 1);
        QCOMPARE(s.buckets[1].medianActualSeconds, 30.0 * 60);
        QCOMPARE(s.discardedAwaySeconds, 20 * 60);
        QCOMPARE(s.unplannedCount, 1);
        QCOMPARE(s.unmeasuredCount, 1);
        QVERIFY(s.worstOffenders.isEmpty());
    }

    void periodsAcrossDstAndYears_data()
    {
        QTest::addColumn<QDate>("inside");
        QTest::addColumn<QDate>("first");
        QTest::addColumn<QDate>("last");
        QTest::newRow("spring change in Europe") << QDate(2026, 3, 29) << QDate(2026, 3, 23) << QDate(2026, 3, 29);
        QTest::newRow("spring change in America") << QDate(2026, 3, 8) << QDate(2026, 3, 2) << QDate(2026, 3, 8);
        QTest::newRow("autumn change on Lord Howe") << QDate(2026, 4, 5) << QDate(2026, 3, 30) << QDate(2026, 4, 5);
        QTest::newRow("year boundary") << QDate(2026, 1, 1) << QDate(2025, 12, 29) << QDate(2026, 1, 4);
    }
    void periodsAcrossDstAndYears()
    {
        QFETCH(QDate, inside);
        QFETCH(QDate, first);
        QFETCH(QDate, last);
        Fixture f;
        const ReviewPeriod week = ReviewPeriod::containing(ReviewPeriod::Kind::week, inside, f.calendar);
        QCOMPARE(week.first, first);
        QCOMPARE(week.last, last);
        QCOMPARE(week.start, f.calendar.startOfDay(first));
        QCOMPARE(week.end, f.calendar.startOfDay(last.addDays(1)));
        QCOMPARE(week.shifted(1, f.calendar).first, first.addDays(7));
        QCOMPARE(week.shifted(-1, f.calendar).last, first.addDays(-1));

        // The first and last minutes of the week are in it, their neighbours not.
        f.done(f.at(first, 0, 0), 10, 600, QStringLiteral("first minute"));
        f.done(f.at(last, 23, 59), 10, 1200, QStringLiteral("last minute"));
        f.done(f.at(first.addDays(-1), 23, 59), 10, 6000);
        f.done(f.at(last.addDays(1), 0, 0), 10, 6000);
        const ReviewSummary s = f.week(inside);
        QCOMPARE(s.sampleCount, 2);
        QCOMPARE(s.worstOffenders.size(), 1);
        QCOMPARE(s.worstOffenders[0].title, QStringLiteral("last minute"));
        QCOMPARE(s.worstOffenders[0].date, last);

        const ReviewPeriod month = ReviewPeriod::containing(ReviewPeriod::Kind::month, last, f.calendar);
        QCOMPARE(month.first, QDate(last.year(), last.month(), 1));
        QCOMPARE(month.shifted(-1, f.calendar).last, month.first.addDays(-1));
    }

    void emptyPeriodAndIndex()
    {
        Fixture f;
        const ReviewSummary s = f.week(QDate(2026, 6, 9));
        QVERIFY(s.isEmpty());
        for (const ReviewBucket &bucket : s.buckets)
            QCOMPARE(bucket.count, 0);
        // The period is read from the completion-time index alone.
        QSqlQuery plan(f.store.viewContext().database());
        QVERIFY(plan.exec(QStringLiteral("EXPLAIN QUERY PLAN SELECT rowid, duration_minutes, actual_seconds_focused, "
                                         "away_seconds_discarded, completed_at FROM tasks WHERE completed_at >= 1 AND "
                                         "completed_at < 2 AND completed_at IS NOT NULL AND completed = 1")));
        QString detail;
        while (plan.next())
            detail += plan.value(3).toString();
        QVERIFY2(detail.contains(QLatin1String("COVERING INDEX tasks_by_completed_at")), qPrintable(detail));
    }

    void dailySummary()
    {
        Fixture f;
        QCOMPARE(DailySummary::load(nullptr).completedCount, 0);
        Day *today = f.days.fetchOrCreateDay(f.time.now);
        f.done(f.time.now, 30, 1500);
        f.done(f.time.now, std::nullopt, 300);
        f.tasks.createTask(QStringLiteral("open"), 45, false, today)->setActualSecondsFocused(900);
        f.done(f.time.now.addDays(-1), 30, 9999); // yesterday's
        const DailySummary s = DailySummary::load(today);
        QCOMPARE(s.completedCount, 2);
        QCOMPARE(s.focusedSeconds, 1800);
        QCOMPARE(s.plannedMinutes, 30);
    }
};

QTEST_GUILESS_MAIN(ReviewTest)
#include "tst_review.moc"
