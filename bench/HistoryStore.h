#pragma once

// A store with years of history for the benchmark programs: one file at a
// path, filled through the store context with past days of mostly completed
// tasks and one today of open tasks.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"

namespace bench {

using namespace tarnwell;

struct Store
{
    explicit Store(const QString &path)
        : controller(path)
        , days(controller.viewContext(), calendar, systemClock())
        , tasks(controller.viewContext(), calendar, systemClock(), days)
    {
    }
    Calendar calendar;
    PersistenceController controller;
    DayRepository days;
    TaskRepository tasks;
};

// tasksPerDayTimes100 / 100 history tasks a day over `historyDays` past days,
// and `todayTasks` open tasks today.
inline void fill(const QString &path, int historyDays, int tasksPerDayTimes100, int todayTasks = 10)
{
    Store store(path);
    auto &context = store.controller.viewContext();
    const QDateTime now = QDateTime::currentDateTimeUtc();
    long made = 0;
    for (int d = historyDays; d >= 1; --d) {
        Day *day = context.insertNew<Day>();
        day->setDate(store.calendar.startOfDayAdding(now, -d));
        // Spread tasksPerDayTimes100 / 100 tasks a day evenly.
        const long target = long(historyDays - d + 1) * tasksPerDayTimes100 / 100;
        for (int order = 0; made < target; ++made, ++order) {
            Task *task = context.insertNew<Task>();
            task->setTitle(QStringLiteral("History task %1").arg(made));
            task->setDurationMinutes(int(made % 90) + 5);
            task->setOrderIndex(order);
            task->setCompleted(made % 10 != 0);
            if (task->completed())
                task->setCompletedAt(day->date().addSecs(8 * 3600 + order * 900));
            task->setActualSecondsFocused(int(made % 5000));
            task->setCreatedAt(day->date());
            task->setUpdatedAt(day->date());
            task->setDay(day);
        }
    }
    Day *today = store.days.fetchOrCreateDay(now);
    for (int i = 0; i < todayTasks; ++i) {
        Task *task = context.insertNew<Task>();
        task->setTitle(QStringLiteral("Today %1").arg(i));
        task->setOrderIndex(i);
        task->setCreatedAt(now);
        task->setUpdatedAt(now);
        task->setDay(today);
    }
    context.save();
}

} // namespace bench
