#pragma once

#include "kit/Calendar.h"
#include "persistence/Task.h"

#include <QDateTime>
#include <QList>

#include <optional>

namespace tarnwell {

// Whether the work still queued for a day fits before the end of the workday.
struct DayPlan
{
    qint64 totalSeconds = 0; // planned seconds still ahead, never negative
    std::optional<QDateTime> finishDate; // now + total; only for today and a total above 0
    qint64 untimedCount = 0; // open tasks without a planned duration
    QList<Task *> overflow; // tasks that end after the workday end, in queue order
    bool runsPastWorkday = false;

    static const DayPlan &empty();

    friend bool operator==(const DayPlan &, const DayPlan &) = default;
};

// Pure calculation over a day's open tasks in queue order.
class DayPlanCalculator
{
public:
    struct Limits
    {
        static constexpr int lastMinuteOfDay = 1439;
    };

    // The end of the workday on the day of `now`: the start of that day plus
    // `minutes`. None when the workday has no end (no value, or a value
    // outside 0...1439).
    static std::optional<QDateTime> workdayEnd(std::optional<int> minutes, const QDateTime &now,
                                               const Calendar &calendar);

    // `runningRemainingSeconds` is the countdown of the task in hand; pass it
    // only for today. On today the first task is the task in hand: it counts
    // only what is left of its plan (nothing once in overtime) and never
    // overflows itself. Once one task overflows, every later one does too.
    static DayPlan plan(const QList<Task *> &tasks, std::optional<qint64> runningRemainingSeconds, bool isToday,
                        const QDateTime &now, const std::optional<QDateTime> &workdayEnd);
};

} // namespace tarnwell
