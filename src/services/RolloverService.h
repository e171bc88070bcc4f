#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "persistence/DayRepository.h"
#include "persistence/RoutineRepository.h"
#include "persistence/TaskRepository.h"

#include <QSettings>

#include <optional>

namespace tarnwell {

// Unfinished tasks of the seven days before today, offered for carrying over.
struct RolloverCandidate
{
    QList<Task *> tasks; // oldest day first, queue order within a day
    QDateTime oldestDate; // date of the oldest day that gave a task

    friend bool operator==(const RolloverCandidate &, const RolloverCandidate &) = default;
};

// Finds the unfinished work of the past week, moves it onto today or archives
// it, and remembers when the offer was hidden for the day. Fetch and save
// failures are thrown to the caller.
class RolloverService
{
public:
    struct Constants
    {
        static constexpr const char *dismissedDayKey = "Tarnwell.rollover.dismissedDay";
        static constexpr int lookBackDays = 7;
    };

    RolloverService(StoreContext &context, Calendar calendar, Clock clock, DayRepository &dayRepository,
                    TaskRepository &taskRepository, RoutineRepository &routineRepository, QSettings &defaults);

    // None when nothing is left to offer. Tasks of a routine that repeats
    // today are left out: the routine brings them again.
    std::optional<RolloverCandidate> candidate();
    bool isDismissedToday() const;
    // Whether all the offered work is from yesterday (the banner words it so).
    bool isFromYesterday(const RolloverCandidate &candidate) const;

    // Appends the tasks to today's queue in the given order, records the day
    // each came from and starts their focus afresh; saves once.
    void rollForward(const QList<Task *> &tasks);
    void archive(const QList<Task *> &tasks);
    void dismissForToday();

    // A whole number for the day of now, stable for that local day.
    QString todayKey() const;

private:
    StoreContext &m_context;
    Calendar m_calendar;
    Clock m_clock;
    DayRepository &m_days;
    TaskRepository &m_tasks;
    RoutineRepository &m_routines;
    QSettings &m_defaults;
};

} // namespace tarnwell
