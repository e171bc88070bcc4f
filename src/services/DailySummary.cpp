#include "DailySummary.h"

#include "persistence/Day.h"
#include "persistence/Task.h"

namespace tarnwell {

DailySummary DailySummary::load(const Day *day)
{
    DailySummary summary;
    if (!day)
        return summary;
    const auto tasks = day->tasks();
    for (const Task *task : tasks) {
        if (!task->completed() || task->isDeleted())
            continue;
        ++summary.completedCount;
        summary.focusedSeconds += std::max<qint64>(0, task->actualSecondsFocused().value_or(0));
        summary.plannedMinutes += std::max<qint64>(0, task->durationMinutes().value_or(0));
    }
    return summary;
}

} // namespace tarnwell
