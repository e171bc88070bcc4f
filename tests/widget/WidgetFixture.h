// The application side of the widget over an in-memory store on a pinned
// clock in UTC: the queue, settings, rollover, and a recorder standing in for
// the chimes and the popover.
#pragma once

#include "focus/FocusFixture.h"
#include "persistence/RoutineRepository.h"
#include "services/RolloverService.h"
#include "widget/TarnwellAppGroup.h"
#include "widget/WidgetSnapshotBuilder.h"
#include "widget/WidgetSnapshotWriter.h"

#include <QDir>
#include <QSettings>
#include <QTimeZone>

struct WidgetFixture
{
    WidgetFixture()
    {
        // Each case starts with an empty container.
        QDir(*TarnwellAppGroup::containerPath()).removeRecursively();
    }

    Calendar calendar{QTimeZone::utc()};
    // Wednesday 4 March 2026, 10:00 UTC.
    ManualClock time;
    PersistenceController store{true};
    StoreContext &context = store.viewContext();
    AppSettingsStore settings{store};
    DayRepository days{context, calendar, time.clock()};
    TaskRepository tasks{context, calendar, time.clock(), days};
    RoutineRepository routines{context, time.clock()};
    QSettings defaults{QSettings::IniFormat, QSettings::UserScope, QStringLiteral("tarnwell"),
                       QStringLiteral("tarnwell")};
    RolloverService rollover{context, calendar, time.clock(), days, tasks, routines, defaults};
    ActiveTaskService service{context, settings, time.clock(), &days, &tasks};
    Recorder rec;
    SoundService sound{settings, rec};

    std::unique_ptr<WidgetSnapshotBuilder> builder()
    {
        return std::make_unique<WidgetSnapshotBuilder>(context, settings, calendar, time.clock(), &rollover);
    }
    Task *add(const QString &title, std::optional<qint64> minutes = std::nullopt, int dayOffset = 0)
    {
        return tasks.createTask(title, minutes, false, days.fetchOrCreateDay(time.now.addDays(dayOffset)));
    }
    static QString id(const Task *task) { return task->id().toString(QUuid::WithoutBraces).toUpper(); }
};
