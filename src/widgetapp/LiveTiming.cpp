#include "LiveTiming.h"

#include <algorithm>

namespace tarnwell::widgetapp {

namespace {

// Seconds focused before the running stretch began.
qint64 banked(const WidgetSnapshot &s)
{
    if (s.totalSeconds && s.deadline && s.timerStart)
        return *s.totalSeconds - s.timerStart->secsTo(*s.deadline);
    return s.bankedSeconds();
}

} // namespace

LiveTiming LiveTiming::at(const WidgetSnapshot &s, const QDateTime &now)
{
    LiveTiming t;
    if (!s.anchor)
        return t;
    t.running = s.isRunning && s.timerStart;
    t.elapsedSeconds = s.elapsedSeconds;
    if (t.running)
        t.elapsedSeconds = banked(s) + std::max<qint64>(0, s.timerStart->msecsTo(now) / 1000);
    if (s.totalSeconds) {
        t.remainingSeconds = *s.totalSeconds - t.elapsedSeconds;
        t.overdue = t.elapsedSeconds > 0 && t.elapsedSeconds >= *s.totalSeconds;
        if (*s.totalSeconds > 0)
            t.percentage = int(std::clamp<qint64>(t.elapsedSeconds * 100 / *s.totalSeconds, 0, 100));
        else
            t.percentage = 100;
    }
    if (t.overdue)
        t.state = State::overdue;
    else if (t.running)
        t.state = State::running;
    else if (t.elapsedSeconds > 0)
        t.state = State::paused;
    return t;
}

std::optional<QDateTime> LiveTiming::nextChange(const WidgetSnapshot &s, const QDateTime &now, int stepSeconds)
{
    if (!s.anchor || !s.isRunning || !s.timerStart || stepSeconds <= 0)
        return std::nullopt;
    // Every figure shown is the elapsed seconds, or the plan (whole minutes)
    // less them, so each changes when the elapsed seconds reach a multiple
    // of the step.
    const qint64 start = banked(s);
    const qint64 elapsed = at(s, now).elapsedSeconds;
    const qint64 next = (elapsed / stepSeconds + 1) * stepSeconds;
    return s.timerStart->addSecs(std::max<qint64>(next - start, 0));
}

QString LiveTiming::name(State state)
{
    switch (state) {
    case State::idle:
        return QStringLiteral("idle");
    case State::running:
        return QStringLiteral("running");
    case State::paused:
        return QStringLiteral("paused");
    case State::overdue:
        return QStringLiteral("overdue");
    }
    return {};
}

} // namespace tarnwell::widgetapp
