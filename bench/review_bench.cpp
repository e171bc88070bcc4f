// The review of estimates: one month's statistics from a store with ten
// years of history against a store that holds that month alone (target:
// ratio 1.2 or less), and the time a year's worth takes.
#include "BenchSupport.h"
#include "HistoryStore.h"
#include "services/ReviewStatistics.h"

#include <QCoreApplication>
#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace tarnwell;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    if (qEnvironmentVariableIsSet("REVIEW_BENCH_KEEP"))
        dir.setAutoRemove(false);
    const Calendar calendar;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    // Last month, whole: the days from its first to yesterday are filled.
    const ReviewPeriod month =
        ReviewPeriod::containing(ReviewPeriod::Kind::month, calendar.date(now), calendar).shifted(-1, calendar);
    const QString alone = dir.filePath(QStringLiteral("month.sqlite"));
    const QString full = dir.filePath(QStringLiteral("full.sqlite"));
    bench::fill(full, 3650, 2740); // 27.4 a day = 100,010 tasks
    // The same month's tasks alone: a copy of the full store without the rest.
    {
        QFile::copy(full, alone);
        bench::Store store(alone);
        QSqlQuery query(store.controller.viewContext().database());
        query.prepare(
            QStringLiteral("DELETE FROM tasks WHERE completed_at IS NULL OR completed_at < ? OR completed_at >= ?"));
        query.addBindValue(month.start.toMSecsSinceEpoch());
        query.addBindValue(month.end.toMSecsSinceEpoch());
        if (!query.exec() || !query.exec(QStringLiteral("VACUUM"))) {
            std::fprintf(stderr, "could not make the store of one month\n");
            return 1;
        }
    }

    const auto measure = [&](const QString &path) {
        bench::Store store(path);
        ReviewStatistics review(store.controller.viewContext(), calendar);
        int samples = 0;
        const double us = bench::medianUs(201, [&] { samples = review.compute(month).sampleCount; });
        std::fprintf(stderr, "%s: %d samples in the month, %.1f us\n", qPrintable(path), samples, us);
        return us;
    };
    // Interleaved, best of two, so that one noisy round does not decide.
    const double a1 = measure(alone), f1 = measure(full), a2 = measure(alone), f2 = measure(full);
    const double aloneUs = std::min(a1, a2), fullUs = std::min(f1, f2);
    bench::figure("review.month.alone_us", aloneUs, "us");
    bench::figure("review.month.100k_us", fullUs, "us");
    bench::figure("review.month.ratio_100k", fullUs / aloneUs, "x");

    bench::Store store(full);
    ReviewStatistics review(store.controller.viewContext(), calendar);
    const ReviewPeriod year{ReviewPeriod::Kind::month, month.first.addYears(-1), month.last,
                            calendar.startOfDay(month.first.addYears(-1)), month.end};
    bench::figure("review.year.median_ms", bench::medianUs(21, [&] { review.compute(year); }) / 1000, "ms");
    return 0;
}
