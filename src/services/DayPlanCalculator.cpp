#include "DayPlanCalculator.h"

#include <algorithm>

namespace tarnwell {

const DayPlan &DayPlan::empty()
{
    static const DayPlan plan;
    return plan;
}

std::optional<QDateTime> DayPlanCalculator::workdayEnd(std::optional<int> minutes, const QDateTime &now,
                                                       const Calendar &calendar)
{
    if (!minutes || *minutes < 0 || *minutes > Limits::lastMinuteOfDay)
        return std::nullopt;
    return calendar.atMinuteOfDay(now, *minutes);
}

DayPlan DayPlanCalculator::plan(const QList<Task *> &tasks, std::optional<qint64> runningRemainingSeconds, bool isToday,
                                const QDateTime &now, const std::optional<QDateTime> &workdayEnd)
{
    if (tasks.isEmpty())
        return DayPlan::empty();

    DayPlan result;
    bool pastEnd = false;
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        const Task *task = tasks[i];
        const bool inHand = isToday && i == 0;
        const auto planned = task->durationMinutes();
        if (!planned) {
            ++result.untimedCount;
            if (pastEnd && !inHand)
                result.overflow.append(tasks[i]);
            continue;
        }
        const qint64 seconds = inHand ? std::max<qint64>(0, runningRemainingSeconds.value_or(0))
                                      : std::max<qint64>(0, qint64(*planned) * 60);
        result.totalSeconds += seconds;
        if (isToday && workdayEnd) {
            const QDateTime finish = now.addSecs(result.totalSeconds);
            if (finish > *workdayEnd) {
                pastEnd = true;
                result.runsPastWorkday = true;
                if (!inHand)
                    result.overflow.append(tasks[i]);
            }
        }
    }
    if (isToday && result.totalSeconds > 0)
        result.finishDate = now.addSecs(result.totalSeconds);
    return result;
}

} // namespace tarnwell
