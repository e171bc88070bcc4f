#include "RoutineService.h"

#include "PlanningTexts.h"
#include "kit/Checked.h"
#include "kit/Logging.h"
#include "persistence/RepositoryError.h"
#include "persistence/StoreError.h"

#include <QSet>

namespace tarnwell {

RoutineService::RoutineService(StoreContext &context, Calendar calendar, Clock clock, RoutineRepository &routines,
                               TaskRepository &tasks, DayRepository &days)
    : m_context(context)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
    , m_routines(routines)
    , m_tasks(tasks)
    , m_days(days)
{
}

RoutineSchedule RoutineService::schedule(const Task *task)
{
    if (!task)
        return RoutineSchedule::never();
    const auto itemID = task->routineItemID();
    if (!itemID)
        return RoutineSchedule::never();
    const RoutineItem *item = m_routines.item(*itemID);
    const Routine *routine = item ? item->routine() : nullptr;
    if (!routine || routine->isDeleted())
        return RoutineSchedule::never();
    return RoutineSchedule{routine->repeatWeekdays()};
}

bool RoutineService::changeRepeat(const Task *task, RoutineSchedule schedule)
{
    try {
        const auto itemID = task ? task->routineItemID() : std::nullopt;
        const RoutineItem *item = itemID ? m_routines.item(*itemID) : nullptr;
        Routine *routine = item ? item->routine() : nullptr;
        if (!routine || routine->isDeleted())
            return false;
        m_routines.setRepeatWeekdays(routine, schedule.mask);
        return true;
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Repeat change failed: %1").arg(error.description());
        return false;
    }
}

int RoutineService::load(Routine *routine, Day *day)
{
    QSet<QUuid> present;
    const auto onDay = day->tasks();
    for (const Task *task : onDay) {
        if (const auto id = task->routineItemID())
            present.insert(*id);
    }

    struct Pending
    {
        const RoutineItem *item;
        QString title;
    };
    QList<Pending> adding;
    const auto items = RoutineRepository::items(routine);
    for (const RoutineItem *item : items) {
        if (present.contains(item->id()))
            continue;
        adding.append({item, TaskRepository::validatedTitle(item->title())});
    }
    if (adding.isEmpty())
        return 0;

    const QDateTime now = m_clock();
    qint64 next = m_tasks.nextOrderIndex(day);
    for (const Pending &pending : std::as_const(adding)) {
        Task *task = m_context.insertNew<Task>();
        task->setTitle(pending.title);
        task->setDurationMinutes(pending.item->durationMinutes());
        task->setNotes(pending.item->notes());
        task->setRoutineItemID(pending.item->id());
        task->setOrderIndex(checkedInt32(next++, "orderIndex"));
        task->setCreatedAt(now);
        task->setUpdatedAt(now);
        task->setDay(day);
    }
    m_context.save();
    return int(adding.size());
}

Routine *RoutineService::saveQueue(const QList<Task *> &queue, const QString &name)
{
    QList<RoutineRepository::ItemDraft> drafts;
    drafts.reserve(queue.size());
    for (const Task *task : queue)
        drafts.append({task->title(), task->durationMinutes(), task->notes()});
    const QString trimmed = name.trimmed();
    return m_routines.createRoutine(trimmed.isEmpty() ? PlanningTexts::routineDefaultName() : trimmed, drafts);
}

int RoutineService::applyDueRoutines()
{
    const QDateTime now = m_clock();
    const QDateTime today = m_calendar.startOfDay(now);
    const int weekday = m_calendar.weekday(today);
    int added = 0;

    const QList<Routine *> all = m_routines.routines();
    for (Routine *routine : all) {
        if (!RoutineSchedule{routine->repeatWeekdays()}.contains(weekday))
            continue;
        // Applied today already; a date in the future (clock set back) counts too.
        if (const auto last = routine->lastAppliedDate(); last && m_calendar.startOfDay(*last) >= today)
            continue;
        try {
            Day *day = m_days.fetchOrCreateDay(now);
            added += load(routine, day);
            routine->setLastAppliedDate(now);
            m_context.save();
        } catch (const StoreError &error) {
            qCCritical(lcServices).noquote()
                << QStringLiteral("Routine materialize failed: %1").arg(error.description());
        } catch (const RepositoryError &error) {
            qCCritical(lcServices).noquote()
                << QStringLiteral("Routine materialize failed: %1").arg(error.localizedDescription());
        }
    }
    return added;
}

} // namespace tarnwell
