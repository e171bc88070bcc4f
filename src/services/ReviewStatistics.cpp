#include "ReviewStatistics.h"

#include "persistence/StoreContext.h"
#include "kit/Logging.h"

#include <QLocale>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cmath>

namespace tarnwell {

namespace {

ReviewPeriod make(ReviewPeriod::Kind kind, QDate first, QDate last, const Calendar &calendar)
{
    ReviewPeriod period;
    period.kind = kind;
    period.first = first;
    period.last = last;
    period.start = calendar.startOfDay(first);
    period.end = calendar.startOfDay(last.addDays(1));
    return period;
}

} // namespace

ReviewPeriod ReviewPeriod::containing(Kind kind, QDate date, const Calendar &calendar, Qt::DayOfWeek firstDayOfWeek)
{
    if (kind == Kind::month) {
        const QDate first(date.year(), date.month(), 1);
        return make(kind, first, first.addMonths(1).addDays(-1), calendar);
    }
    const int back = (date.dayOfWeek() - int(firstDayOfWeek) + 7) % 7;
    const QDate first = date.addDays(-back);
    return make(kind, first, first.addDays(6), calendar);
}

ReviewPeriod ReviewPeriod::shifted(int steps, const Calendar &calendar, Qt::DayOfWeek firstDayOfWeek) const
{
    const QDate date = kind == Kind::month ? first.addMonths(steps) : first.addDays(7 * qint64(steps));
    return containing(kind, date, calendar, firstDayOfWeek);
}

ReviewStatistics::ReviewStatistics(StoreContext &context, Calendar calendar)
    : m_context(context)
    , m_calendar(std::move(calendar))
{
}

ReviewBucketId ReviewStatistics::bucketFor(int plannedMinutes)
{
    if (plannedMinutes <= 15)
        return ReviewBucketId::upTo15;
    if (plannedMinutes <= 30)
        return ReviewBucketId::upTo30;
    if (plannedMinutes <= 45)
        return ReviewBucketId::upTo45;
    return ReviewBucketId::over45;
}

double ReviewStatistics::median(QList<double> values)
{
    if (values.isEmpty())
        return 0;
    const auto middle = values.begin() + values.size() / 2;
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1)
        return *middle;
    const double upper = *middle;
    const double lower = *std::max_element(values.begin(), middle);
    return (lower + upper) / 2;
}

ReviewSummary ReviewStatistics::compute(const ReviewPeriod &period) const
{
    ReviewSummary summary;
    summary.period = period;
    for (std::size_t i = 0; i < summary.buckets.size(); ++i)
        summary.buckets[i].id = ReviewBucketId(int(i));

    // From the covering index tasks_by_completed_at alone: only the period's
    // entries are read, and no row of the table.
    QSqlQuery query(m_context.database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral(
        "SELECT rowid, duration_minutes, actual_seconds_focused, away_seconds_discarded, completed_at "
        "FROM tasks WHERE completed_at >= ? AND completed_at < ? AND completed_at IS NOT NULL AND completed = 1"));
    query.addBindValue(period.start.toMSecsSinceEpoch());
    query.addBindValue(period.end.toMSecsSinceEpoch());
    if (!query.exec()) {
        qCWarning(lcServices).noquote()
            << QStringLiteral("Review statistics could not be read: %1").arg(query.lastError().text());
        return summary;
    }

    struct Overrun
    {
        qint64 rowid = 0;
        ReviewOffender offender;
    };
    // Largest overrun first; ties by the earlier completion.
    const auto before = [](const Overrun &a, const Overrun &b) {
        return a.offender.overrunSeconds() != b.offender.overrunSeconds()
            ? a.offender.overrunSeconds() > b.offender.overrunSeconds()
            : a.offender.date < b.offender.date;
    };
    QList<Overrun> worst;
    std::array<QList<double>, 4> planned, actual, ratios;
    while (query.next()) {
        summary.discardedAwaySeconds += std::max<qint64>(0, query.value(3).toLongLong());
        const QVariant minutes = query.value(1);
        if (minutes.isNull() || minutes.toInt() <= 0) {
            ++summary.unplannedCount;
            continue;
        }
        const qint64 seconds = query.value(2).isNull() ? 0 : query.value(2).toLongLong();
        if (seconds <= 0) {
            ++summary.unmeasuredCount;
            continue;
        }
        const int plannedMinutes = minutes.toInt();
        const auto bucket = std::size_t(bucketFor(plannedMinutes));
        planned[bucket].append(plannedMinutes);
        actual[bucket].append(double(seconds));
        ratios[bucket].append(double(seconds) / (plannedMinutes * 60.0));
        ++summary.sampleCount;

        Overrun overrun;
        overrun.offender.plannedMinutes = plannedMinutes;
        overrun.offender.actualSeconds = seconds;
        // Only a candidate for the few largest costs the day's lookup.
        if (overrun.offender.overrunSeconds() <= 0 ||
            (worst.size() == Limits::worstOffenders &&
             overrun.offender.overrunSeconds() < worst.last().offender.overrunSeconds()))
            continue;
        overrun.rowid = query.value(0).toLongLong();
        overrun.offender.date = m_calendar.date(QDateTime::fromMSecsSinceEpoch(query.value(4).toLongLong(), Qt::UTC));
        worst.insert(std::upper_bound(worst.begin(), worst.end(), overrun, before), overrun);
        if (worst.size() > Limits::worstOffenders)
            worst.removeLast();
    }

    // The few offenders' names from their rows.
    QSqlQuery names(m_context.database());
    names.prepare(QStringLiteral("SELECT id, title FROM tasks WHERE rowid = ?"));
    for (Overrun &overrun : worst) {
        names.addBindValue(overrun.rowid);
        if (names.exec() && names.next()) {
            overrun.offender.id = QUuid(names.value(0).toString());
            overrun.offender.title = names.value(1).toString();
        }
        summary.worstOffenders.append(overrun.offender);
    }

    for (std::size_t i = 0; i < summary.buckets.size(); ++i) {
        ReviewBucket &bucket = summary.buckets[i];
        bucket.count = int(planned[i].size());
        bucket.medianPlannedMinutes = median(planned[i]);
        bucket.medianActualSeconds = median(actual[i]);
        bucket.medianRatio = median(ratios[i]);
    }
    return summary;
}

QString ReviewStatistics::bucketTitle(ReviewBucketId id)
{
    switch (id) {
    case ReviewBucketId::upTo15:
        //: Review: the group of tasks planned for 15 minutes or less (used inside sentences and as a heading)
        //% "tasks up to 15 minutes"
        return qtTrId("review.bucket.upTo15");
    case ReviewBucketId::upTo30:
        //: Review: the group of tasks planned for 16 to 30 minutes (used inside sentences and as a heading)
        //% "tasks of 16 to 30 minutes"
        return qtTrId("review.bucket.upTo30");
    case ReviewBucketId::upTo45:
        //: Review: the group of tasks planned for 31 to 45 minutes (used inside sentences and as a heading)
        //% "tasks of 31 to 45 minutes"
        return qtTrId("review.bucket.upTo45");
    case ReviewBucketId::over45:
        //: Review: the group of tasks planned for more than 45 minutes (used inside sentences and as a heading)
        //% "tasks over 45 minutes"
        return qtTrId("review.bucket.over45");
    }
    return {};
}

QString ReviewStatistics::verdict(const ReviewBucket &bucket)
{
    if (bucket.count == 0)
        //: Review: verdict of a group of tasks without any completed, planned and timed task
        //% "No timed tasks yet."
        return qtTrId("review.verdict.none");
    if (bucket.count < Limits::samplesForVerdict)
        //: Review: verdict of a group with too few tasks to say anything; %1 = how many there are
        //% "Too few timed tasks to judge yet: %1."
        return qtTrId("review.verdict.tooFew").arg(bucket.count);
    const double off = bucket.medianRatio - 1.0;
    const QString group = bucketTitle(bucket.id);
    const int percent = int(std::lround(std::abs(off) * 100));
    if (std::abs(off) < Limits::onTheMark)
        //: Review: verdict when the plans of a group of tasks hold; %1 = the group ("tasks up to 15 minutes")
        //% "Your plans for %1 hold well."
        return qtTrId("review.verdict.onTheMark").arg(group);
    if (off > 0)
        //: Review: verdict when tasks take longer than planned; %1 = the group ("tasks of 16 to 30 minutes"), %2 = percent, a whole number
        //% "You underestimate %1 by %2 %."
        return qtTrId("review.verdict.under").arg(group).arg(percent);
    //: Review: verdict when tasks take less time than planned; %1 = the group ("tasks over 45 minutes"), %2 = percent, a whole number
    //% "You overestimate %1 by %2 %."
    return qtTrId("review.verdict.over").arg(group).arg(percent);
}

QString ReviewStatistics::periodTitle(const ReviewPeriod &period, const QLocale &locale)
{
    if (period.kind == ReviewPeriod::Kind::month)
        return locale.toString(period.first, QStringLiteral("MMMM yyyy"));
    const QString last = locale.toString(period.last, QStringLiteral("d MMM yyyy"));
    const QString first = period.first.year() == period.last.year()
        ? locale.toString(period.first, QStringLiteral("d MMM"))
        : locale.toString(period.first, QStringLiteral("d MMM yyyy"));
    return QStringLiteral("%1 – %2").arg(first, last);
}

} // namespace tarnwell
