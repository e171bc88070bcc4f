#include "ReviewModel.h"

#include "UiEngine.h"
#include "kit/Logging.h"
#include "services/DayPlanFooterText.h"

#include <QLocale>
#include <QQuickWindow>
#include <algorithm>
#include <cmath>

namespace tarnwell {

namespace {

QString minutesText(double seconds)
{
    return DayPlanFooterText::formatDuration(qint64(std::lround(seconds)));
}

} // namespace

ReviewModel::ReviewModel(ReviewStatistics &statistics, Calendar calendar, Clock clock, QObject *parent)
    : QObject(parent)
    , m_statistics(statistics)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
    m_period =
        ReviewPeriod::containing(ReviewPeriod::Kind::week, m_calendar.date(m_clock()), m_calendar, firstDayOfWeek());
}

Qt::DayOfWeek ReviewModel::firstDayOfWeek() const
{
    return QLocale().firstDayOfWeek();
}

void ReviewModel::setMonthly(bool monthly)
{
    if (monthly == this->monthly())
        return;
    // The new period holds the first day of the old one.
    load(ReviewPeriod::containing(monthly ? ReviewPeriod::Kind::month : ReviewPeriod::Kind::week,
                                  isCurrent() ? m_calendar.date(m_clock()) : m_period.first, m_calendar,
                                  firstDayOfWeek()));
}

QString ReviewModel::periodTitle() const
{
    return ReviewStatistics::periodTitle(m_period, QLocale());
}

bool ReviewModel::isCurrent() const
{
    const QDate today = m_calendar.date(m_clock());
    return today >= m_period.first && today <= m_period.last;
}

void ReviewModel::previous()
{
    load(m_period.shifted(-1, m_calendar, firstDayOfWeek()));
}

void ReviewModel::next()
{
    if (!isCurrent())
        load(m_period.shifted(1, m_calendar, firstDayOfWeek()));
}

void ReviewModel::current()
{
    load(ReviewPeriod::containing(m_period.kind, m_calendar.date(m_clock()), m_calendar, firstDayOfWeek()));
}

void ReviewModel::refresh()
{
    load(m_period);
}

void ReviewModel::load(const ReviewPeriod &period)
{
    m_period = period;
    m_summary = m_statistics.compute(period);
    m_buckets.clear();
    m_chartMax = 0;
    for (const ReviewBucket &bucket : m_summary.buckets) {
        const double planned = bucket.medianPlannedMinutes;
        const double actual = bucket.medianActualSeconds / 60.0;
        m_chartMax = std::max({m_chartMax, planned, actual});
        const bool judged = bucket.count >= ReviewStatistics::Limits::samplesForVerdict;
        const double off = bucket.medianRatio - 1;
        const QString tone = !judged || std::abs(off) < ReviewStatistics::Limits::onTheMark ? QStringLiteral("neutral")
            : off > 0                                                                       ? QStringLiteral("danger")
                                                                                            : QStringLiteral("accent");
        m_buckets.append(QVariantMap{
            {QStringLiteral("title"), ReviewStatistics::bucketTitle(bucket.id)},
            {QStringLiteral("count"), bucket.count},
            {QStringLiteral("plannedMinutes"), planned},
            {QStringLiteral("actualMinutes"), actual},
            {QStringLiteral("plannedText"), bucket.count ? minutesText(planned * 60) : QString()},
            {QStringLiteral("actualText"), bucket.count ? minutesText(bucket.medianActualSeconds) : QString()},
            //: Review: the median of measured time over planned time, as a multiple ("×1.4")
            //% "×%1"
            {QStringLiteral("ratioText"),
             bucket.count ? qtTrId("review.ratio").arg(QLocale().toString(bucket.medianRatio, 'f', 2)) : QString()},
            {QStringLiteral("verdict"), ReviewStatistics::verdict(bucket)},
            {QStringLiteral("tone"), tone},
        });
    }
    m_offenders.clear();
    for (const ReviewOffender &offender : std::as_const(m_summary.worstOffenders)) {
        m_offenders.append(QVariantMap{
            {QStringLiteral("title"), offender.title},
            {QStringLiteral("date"), QLocale().toString(offender.date, QStringLiteral("ddd d MMM"))},
            {QStringLiteral("plannedText"), minutesText(offender.plannedMinutes * 60.0)},
            {QStringLiteral("actualText"), minutesText(double(offender.actualSeconds))},
            //: Review: how far a task ran past its plan; %1 = a duration ("25m")
            //% "+%1"
            {QStringLiteral("overrunText"),
             qtTrId("review.overrun").arg(minutesText(double(offender.overrunSeconds())))},
        });
    }
    Q_EMIT changed();
}

QString ReviewModel::summaryLine() const
{
    if (m_summary.sampleCount == 0)
        //: Review: under the period's title when it has no completed task with a plan and measured time
        //% "No completed task with a plan and measured time in this period."
        return qtTrId("review.summary.empty");
    //: Review: under the period's title; %1 = how many completed tasks had a plan and measured time
    //% "Completed tasks with a plan and measured time: %1"
    return qtTrId("review.summary").arg(m_summary.sampleCount);
}

QString ReviewModel::unplannedLine() const
{
    QString line;
    if (m_summary.unplannedCount > 0)
        //: Review: completed tasks without a planned duration, counted apart; %1 = how many
        //% "Completed without a plan: %1"
        line = qtTrId("review.unplanned").arg(m_summary.unplannedCount);
    if (m_summary.unmeasuredCount > 0) {
        if (!line.isEmpty())
            line += QStringLiteral(" · ");
        //: Review: completed planned tasks whose timer never ran, left out of the figures; %1 = how many
        //% "Ticked off without the timer: %1"
        line += qtTrId("review.unmeasured").arg(m_summary.unmeasuredCount);
    }
    return line;
}

ReviewWindowController::ReviewWindowController(ReviewModel &model, UiEngine &ui, QObject *parent)
    : WindowController(ui, QStringLiteral("ReviewWindow.qml"), QStringLiteral("Review shown"), parent)
    , m_model(model)
{
}

void ReviewWindowController::show()
{
    if (!makeWindow([this] {
            return QVariantMap{{QStringLiteral("review"), QVariant::fromValue<QObject *>(&m_model)}};
        }))
        return;
    if (!isVisible())
        m_model.current();
    bringForward();
}

} // namespace tarnwell
