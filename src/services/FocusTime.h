#pragma once

#include "persistence/Task.h"

#include <QDateTime>

namespace tarnwell {

// The focus timer of a task is a start instant plus banked whole seconds;
// nothing ticks in the store. Every reader derives the current figures from
// these functions and the clock.
namespace FocusTime {

enum class TimerState { ready, focusing, paused };

inline bool isRunning(const Task &task)
{
    return task.activeStartedAt().has_value();
}

// Whole seconds from the start instant to `now`, truncated toward zero and
// never negative (a clock set back gives 0); 0 when the timer is stopped.
qint64 elapsedSeconds(const Task &task, const QDateTime &now);

// Banked seconds plus, while running, the elapsed seconds.
qint64 focusedSeconds(const Task &task, const QDateTime &now);

// Stopped with banked time (what the card shows as paused).
inline bool isPaused(const Task &task)
{
    return !isRunning(task) && task.actualSecondsFocused().value_or(0) > 0;
}

inline TimerState timerState(const Task &task)
{
    if (isRunning(task))
        return TimerState::focusing;
    return isPaused(task) ? TimerState::paused : TimerState::ready;
}

} // namespace FocusTime
} // namespace tarnwell
