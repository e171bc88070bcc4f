#pragma once

#include "widget/WidgetSnapshot.h"

#include <QDateTime>

#include <optional>

namespace tarnwell::widgetapp {

// The timer of the task in hand at some instant, carried forward from the
// snapshot's timerStart and deadline: the application writes no snapshot
// while a timer merely runs.
struct LiveTiming
{
    enum class State { idle, running, paused, overdue };

    qint64 elapsedSeconds = 0;
    std::optional<qint64> remainingSeconds; // negative once overdue; none without a plan
    bool running = false;
    bool overdue = false;
    State state = State::idle;
    int percentage = 0; // of the plan, 0...100

    static LiveTiming at(const WidgetSnapshot &snapshot, const QDateTime &now);
    // The first instant after `now` at which a display in steps of
    // `stepSeconds` changes; none while no timer runs.
    static std::optional<QDateTime> nextChange(const WidgetSnapshot &snapshot, const QDateTime &now, int stepSeconds);

    // "idle", "running", "paused" or "overdue".
    static QString name(State state);
};

} // namespace tarnwell::widgetapp
