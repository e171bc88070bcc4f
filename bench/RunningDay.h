#pragma once

// The day the program-level benches start from: a task in hand whose timer
// runs, planned for `plannedMinutes`, and eight tasks after it, written into
// the store under `home` before the program starts.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"

namespace bench {

inline void writeRunningDay(const QString &home, int plannedMinutes)
{
    using namespace tarnwell;
    PersistenceController store(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"));
    Calendar calendar;
    DayRepository days(store.viewContext(), calendar, systemClock());
    TaskRepository tasks(store.viewContext(), calendar, systemClock(), days);
    Day *today = days.fetchOrCreateDay(QDateTime::currentDateTimeUtc());
    Task *running = tasks.createTask(QStringLiteral("Write the report"), plannedMinutes, false, today);
    for (int i = 0; i < 8; ++i)
        tasks.createTask(QStringLiteral("Later task %1").arg(i), 25, false, today);
    running->setActiveStartedAt(QDateTime::currentDateTimeUtc());
    store.viewContext().save();
}

} // namespace bench
