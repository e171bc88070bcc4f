#pragma once

// An in-memory store with the planning services on a pinned clock.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/RoutineRepository.h"
#include "persistence/TaskRepository.h"
#include "services/RolloverService.h"
#include "services/RoutineService.h"
#include "support/ManualClock.h"

#include <QSettings>

struct PlanningFixture
{
    tarnwell::Calendar calendar;
    // Wednesday 10 June 2026, 10:00 local time.
    ManualClock time{QDate(2026, 6, 10).startOfDay(calendar.timeZone()).addSecs(10 * 3600)};
    tarnwell::PersistenceController store{true};
    tarnwell::StoreContext &context = store.viewContext();
    tarnwell::DayRepository days{context, calendar, time.clock()};
    tarnwell::TaskRepository tasks{context, calendar, time.clock(), days};
    tarnwell::RoutineRepository routines{context, time.clock()};
    tarnwell::RoutineService routineService{context, calendar, time.clock(), routines, tasks, days};
    QSettings defaults{QSettings::IniFormat, QSettings::UserScope, QStringLiteral("tarnwell"),
                       QStringLiteral("tarnwell")};
    tarnwell::RolloverService rollover{context, calendar, time.clock(), days, tasks, routines, defaults};

    // The start of the day `offset` days from today.
    QDateTime dayStart(int offset) const { return calendar.startOfDayAdding(time.now, offset); }
    tarnwell::Day *day(int offset) { return days.fetchOrCreateDay(dayStart(offset)); }
    tarnwell::Task *add(const QString &title, int dayOffset, std::optional<qint64> minutes = std::nullopt)
    {
        return tasks.createTask(title, minutes, false, day(dayOffset));
    }
    QStringList titles(const QList<tarnwell::Task *> &list) const
    {
        QStringList out;
        for (const tarnwell::Task *t : list)
            out << t->title();
        return out;
    }
    // A routine of the given item titles repeating on `mask`.
    tarnwell::Routine *routine(const QString &name, const QStringList &items, qint16 mask = 0)
    {
        QList<tarnwell::RoutineRepository::ItemDraft> drafts;
        for (const QString &title : items)
            drafts.append({title, 15, std::nullopt});
        tarnwell::Routine *r = routines.createRoutine(name, drafts);
        routines.setRepeatWeekdays(r, mask);
        return r;
    }
};
