#pragma once

#include "WidgetSnapshot.h"
#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "persistence/DayRepository.h"
#include "persistence/TaskRepository.h"

namespace tarnwell {

class AppSettingsStore;
class RolloverService;

// Builds the widget's snapshot from the store, the settings and the clock:
// today's queue, the timer of the task in hand, the day's counts and the
// labels, in the interface language. Fetch errors are thrown to the caller.
class WidgetSnapshotBuilder
{
public:
    // The timer part of one snapshot.
    struct Timing
    {
        std::optional<qint64> totalSeconds;
        qint64 elapsedSeconds = 0;
        std::optional<QDateTime> timerStart;
        std::optional<QDateTime> deadline;
        bool isRunning = false;
        bool isOverdue = false;

        friend bool operator==(const Timing &, const Timing &) = default;
    };

    // Without a rollover service the snapshot counts no rollover candidates.
    WidgetSnapshotBuilder(StoreContext &context, AppSettingsStore &settingsStore, Calendar calendar, Clock clock,
                          RolloverService *rollover = nullptr);

    WidgetSnapshot build(bool appRunning);

    static Timing timing(const Task *anchor, const QDateTime &now);
    // "Today, Tue 4 Mar" in the language `code`, for the day of `now`.
    static QString dayLabel(const QDateTime &now, const Calendar &calendar, const QString &code);

private:
    AppSettingsStore &m_settings;
    Calendar m_calendar;
    Clock m_clock;
    DayRepository m_days;
    TaskRepository m_tasks;
    RolloverService *m_rollover;
};

} // namespace tarnwell
