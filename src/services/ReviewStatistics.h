#pragma once

#include "kit/Calendar.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>
#include <array>

namespace tarnwell {

class StoreContext;

// One week or one calendar month of local days, with its instants: from the
// start of its first day up to (not including) the start of the day after its
// last, so a week with a daylight-saving change is 167 or 169 hours long.
struct ReviewPeriod
{
    enum class Kind { week, month };

    Kind kind = Kind::week;
    QDate first;
    QDate last;
    QDateTime start;
    QDateTime end;

    // The week (beginning on `firstDayOfWeek`) or the month that holds `date`.
    static ReviewPeriod containing(Kind kind, QDate date, const Calendar &calendar,
                                   Qt::DayOfWeek firstDayOfWeek = Qt::Monday);
    // The period `steps` weeks or months later (earlier when negative).
    ReviewPeriod shifted(int steps, const Calendar &calendar, Qt::DayOfWeek firstDayOfWeek = Qt::Monday) const;

    friend bool operator==(const ReviewPeriod &, const ReviewPeriod &) = default;
};

// The four groups of planned durations the review compares.
enum class ReviewBucketId { upTo15, upTo30, upTo45, over45 };

// The tasks of one bucket: how many, and the medians of what was planned,
// what was measured and of each task's measured/planned ratio.
struct ReviewBucket
{
    ReviewBucketId id = ReviewBucketId::upTo15;
    int count = 0;
    double medianPlannedMinutes = 0;
    double medianActualSeconds = 0;
    double medianRatio = 0; // 1.0: as planned; 1.4: 40 % longer
};

// A task that ran longest past its plan.
struct ReviewOffender
{
    QUuid id;
    QString title;
    QDate date; // the local day it was completed
    int plannedMinutes = 0;
    qint64 actualSeconds = 0;
    qint64 overrunSeconds() const { return actualSeconds - qint64(plannedMinutes) * 60; }
};

struct ReviewSummary
{
    ReviewPeriod period;
    std::array<ReviewBucket, 4> buckets{};
    QList<ReviewOffender> worstOffenders; // largest overrun first, only overruns
    int sampleCount = 0; // completed, planned and measured
    int unplannedCount = 0; // completed without a plan
    int unmeasuredCount = 0; // completed with a plan but no focused second
    qint64 discardedAwaySeconds = 0; // already taken out of the measured time

    bool isEmpty() const { return sampleCount == 0 && unplannedCount == 0 && unmeasuredCount == 0; }
};

// How well the plans held: completed tasks of a period that had a planned
// duration and measured focus, compared bucket by bucket. Measured time is
// the stored focused seconds, from which discarded time away has already
// been taken. Reads the saved rows through the completion-time index (every
// service saves after each change), so a year of history costs no more than
// the period itself.
class ReviewStatistics
{
public:
    struct Limits
    {
        static constexpr int worstOffenders = 5;
        // Fewer samples than this in a bucket give no verdict.
        static constexpr int samplesForVerdict = 3;
        // A median ratio within this share of 1 counts as on the mark.
        static constexpr double onTheMark = 0.10;
    };

    ReviewStatistics(StoreContext &context, Calendar calendar);

    ReviewSummary compute(const ReviewPeriod &period) const;

    static ReviewBucketId bucketFor(int plannedMinutes);
    // The middle value, or the mean of the two middle values; 0 when empty.
    static double median(QList<double> values);

    // For the user: "tasks up to 15 minutes" and so on.
    static QString bucketTitle(ReviewBucketId id);
    // "You underestimate tasks of 16 to 30 minutes by 40 %." and its kin.
    static QString verdict(const ReviewBucket &bucket);
    // "12 – 18 May 2026", "May 2026".
    static QString periodTitle(const ReviewPeriod &period, const QLocale &locale);

private:
    StoreContext &m_context;
    Calendar m_calendar;
};

} // namespace tarnwell
