#pragma once

#include "persistence/RoutineSchedule.h"
#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "persistence/DayRepository.h"
#include "persistence/RoutineRepository.h"
#include "persistence/TaskRepository.h"

namespace tarnwell {

// Loads routines into days, by hand or on their weekdays, and saves a day's
// queue as a routine. Tasks made from a routine item carry its identifier in
// routineItemID, so loading the same routine twice adds nothing twice.
class RoutineService
{
public:
    RoutineService(StoreContext &context, Calendar calendar, Clock clock, RoutineRepository &routines,
                   TaskRepository &tasks, DayRepository &days);

    // The schedule of the routine the task was made from; never when it was
    // not made from one, or that item or routine no longer exists.
    RoutineSchedule schedule(const Task *task);

    // The task editor's Repeat row: gives the routine the task was made from
    // a new schedule. False when the task has no routine any more, or the
    // change could not be saved (logged).
    bool changeRepeat(const Task *task, RoutineSchedule schedule);

    // Appends the routine's items that are not on the day yet to its queue,
    // saves once, and returns how many were added. Titles are checked like
    // task titles (RepositoryError); nothing is added when one is refused.
    int load(Routine *routine, Day *day);

    // A new routine whose items copy the queue's tasks (title, duration,
    // notes) in queue order. A blank name gets the default routine name.
    Routine *saveQueue(const QList<Task *> &queue, const QString &name);

    // Loads every routine that repeats on today's weekday and was not applied
    // today yet. One routine's failure is logged and the others still run.
    // Returns how many tasks were added in all.
    int applyDueRoutines();

private:
    StoreContext &m_context;
    Calendar m_calendar;
    Clock m_clock;
    RoutineRepository &m_routines;
    TaskRepository &m_tasks;
    DayRepository &m_days;
};

} // namespace tarnwell
