#include "RolloverService.h"

#include "kit/Checked.h"

namespace tarnwell {

RolloverService::RolloverService(StoreContext &context, Calendar calendar, Clock clock, DayRepository &dayRepository,
                                 TaskRepository &taskRepository, RoutineRepository &routineRepository,
                                 QSettings &defaults)
    : m_context(context)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
    , m_days(dayRepository)
    , m_tasks(taskRepository)
    , m_routines(routineRepository)
    , m_defaults(defaults)
{
}

std::optional<RolloverCandidate> RolloverService::candidate()
{
    const QDateTime now = m_clock();
    const QDateTime today = m_calendar.startOfDay(now);
    // Calendar days, not 24-hour steps: the window stays seven days across a
    // daylight-saving change. Today never contributes.
    const QList<Day *> window = m_days.days(today, -Constants::lookBackDays, -1);
    if (window.isEmpty())
        return std::nullopt;
    const QSet<QUuid> repeatingToday = m_routines.itemIDsRepeating(m_calendar.weekday(today));

    RolloverCandidate candidate;
    for (const Day *day : window) {
        bool contributed = false;
        const auto open = m_tasks.openTasks(day);
        for (Task *task : open) {
            if (const auto item = task->routineItemID(); item && repeatingToday.contains(*item))
                continue;
            candidate.tasks.append(task);
            contributed = true;
        }
        if (contributed && !candidate.oldestDate.isValid())
            candidate.oldestDate = day->date();
    }
    if (candidate.tasks.isEmpty())
        return std::nullopt;
    return candidate;
}

bool RolloverService::isFromYesterday(const RolloverCandidate &candidate) const
{
    return candidate.oldestDate == m_calendar.startOfDayAdding(m_clock(), -1);
}

void RolloverService::rollForward(const QList<Task *> &tasks)
{
    if (tasks.isEmpty())
        return;
    const QDateTime now = m_clock();
    Day *today = m_days.fetchOrCreateDay(now);
    qint64 next = m_tasks.nextOrderIndex(today);
    for (Task *task : tasks) {
        const Day *from = task->day();
        std::optional<QDateTime> fromDate;
        if (from && from->date().isValid())
            fromDate = from->date();
        task->setRolledFromDate(fromDate);
        task->setDay(today);
        task->setOrderIndex(checkedInt32(next++, "orderIndex"));
        task->setActiveStartedAt(std::nullopt);
        task->setActualSecondsFocused(0);
        task->setUpdatedAt(now);
    }
    m_context.save();
}

void RolloverService::archive(const QList<Task *> &tasks)
{
    if (tasks.isEmpty())
        return;
    const QDateTime now = m_clock();
    for (Task *task : tasks) {
        task->setArchived(true);
        task->setUpdatedAt(now);
    }
    m_context.save();
}

QString RolloverService::todayKey() const
{
    // Seconds from the epoch to the local start of today.
    const QDateTime start = m_calendar.startOfDay(m_clock());
    if (!start.isValid())
        qFatal("Rollover day key: the start of today is not a valid instant");
    return QString::number(start.toSecsSinceEpoch());
}

bool RolloverService::isDismissedToday() const
{
    return m_defaults.value(QLatin1String(Constants::dismissedDayKey)).toString() == todayKey();
}

void RolloverService::dismissForToday()
{
    m_defaults.setValue(QLatin1String(Constants::dismissedDayKey), todayKey());
}

} // namespace tarnwell
