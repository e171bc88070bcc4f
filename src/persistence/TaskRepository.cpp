#include "TaskRepository.h"

#include "Day.h"
#include "kit/Checked.h"

#include <QSet>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace tarnwell {

TaskRepository::TaskRepository(StoreContext &context, Calendar calendar, Clock clock, DayRepository &dayRepository)
    : m_context(context)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
    , m_days(dayRepository)
{
}

int TaskRepository::characterCount(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

QString TaskRepository::validatedTitle(const QString &title)
{
    QString trimmed = title.trimmed();
    if (trimmed.isEmpty())
        throw RepositoryError::titleEmpty();
    if (characterCount(trimmed) > Limits::titleCharacters)
        throw RepositoryError::titleTooLong(Limits::titleCharacters);
    return trimmed;
}

QList<Task *> TaskRepository::openTasks(const Day *day) const
{
    if (!day)
        return {};
    QList<Task *> open;
    const auto tasks = day->tasks();
    for (Task *t : tasks)
        if (!t->archived() && !t->completed())
            open.append(t);
    std::stable_sort(open.begin(), open.end(),
                     [](const Task *a, const Task *b) { return a->orderIndex() < b->orderIndex(); });
    return open;
}

int TaskRepository::nextOrderIndex(const Day *day) const
{
    const auto open = openTasks(day);
    if (open.isEmpty())
        return 0;
    return checkedInt32(qint64(open.last()->orderIndex()) + 1, "orderIndex");
}

void TaskRepository::save()
{
    if (m_context.hasChanges())
        m_context.save();
}

Task *TaskRepository::createTask(const QString &title, std::optional<qint64> durationMinutes, bool urgent, Day *day)
{
    const QString stored = validatedTitle(title);
    std::optional<qint32> minutes;
    if (durationMinutes)
        minutes = checkedInt32(*durationMinutes, "durationMinutes");

    const QList<Task *> open = openTasks(day);
    const QDateTime now = m_clock();
    Task *task = m_context.insertNew<Task>();
    task->setTitle(stored);
    task->setCreatedAt(now);
    task->setUpdatedAt(now);
    task->setUrgent(urgent);
    task->setDurationMinutes(minutes);
    if (urgent) {
        for (Task *other : open)
            other->setOrderIndex(checkedInt32(qint64(other->orderIndex()) + 1, "orderIndex"));
        task->setOrderIndex(0);
    } else {
        task->setOrderIndex(open.isEmpty() ? 0 : checkedInt32(qint64(open.last()->orderIndex()) + 1, "orderIndex"));
    }
    task->setDay(day);
    save();
    return task;
}

void TaskRepository::updateTask(Task *task, const QString &title, const std::optional<QString> &notes,
                                std::optional<qint64> durationMinutes, const std::optional<QDateTime> &dueDate)
{
    const QString stored = validatedTitle(title);
    std::optional<qint32> minutes;
    if (durationMinutes)
        minutes = checkedInt32(*durationMinutes, "durationMinutes");
    task->setTitle(stored);
    task->setNotes(notes);
    task->setDurationMinutes(minutes);
    task->setDueDate(dueDate);
    task->setUpdatedAt(m_clock());
    save();
}

void TaskRepository::complete(Task *task, const QDateTime &instant, qint64 focusedSeconds,
                              const std::optional<QDateTime> &activeStartedAt)
{
    task->setCompleted(true);
    task->setCompletedAt(instant);
    task->setActualSecondsFocused(checkedInt32(focusedSeconds, "actualSecondsFocused"));
    task->setActiveStartedAt(activeStartedAt);
    task->setUpdatedAt(m_clock());
    save();
}

void TaskRepository::reopen(Task *task)
{
    if (!task->completed())
        return;
    task->setCompleted(false);
    task->setCompletedAt(std::nullopt);
    task->setUpdatedAt(m_clock());
    if (Day *day = task->day())
        insert(task, day, std::numeric_limits<qint32>::max());
    save();
}

void TaskRepository::setActualFocus(Task *task, qint64 seconds)
{
    task->setActualSecondsFocused(checkedInt32(seconds, "actualSecondsFocused"));
    task->setActualEditedManually(true);
    task->setUpdatedAt(m_clock());
    save();
}

TaskRepository::TaskDayPlacement TaskRepository::placement(Task *task) const
{
    TaskDayPlacement placement;
    const Day *day = task->day();
    if (day) {
        placement.dayDate = day->date();
        const auto open = openTasks(day);
        const auto index = open.indexOf(task);
        placement.rank = int(index < 0 ? open.size() : index);
    }
    placement.activeStartedAt = task->activeStartedAt();
    placement.actualSecondsFocused = task->actualSecondsFocused();
    return placement;
}

void TaskRepository::renumber(const QList<Task *> &queue)
{
    for (qsizetype i = 0; i < queue.size(); ++i)
        queue[i]->setOrderIndex(checkedInt32(i, "orderIndex"));
}

void TaskRepository::insert(Task *task, Day *day, qint64 position)
{
    QList<Task *> queue = openTasks(day);
    queue.removeAll(task);
    const qsizetype at = qsizetype(std::clamp<qint64>(position, 0, queue.size()));
    queue.insert(at, task);
    renumber(queue);
}

void TaskRepository::moveByDays(Task *task, int days)
{
    const Day *from = task->day();
    const QDateTime base = from ? from->date() : m_days.today();
    Day *target = m_days.fetchOrCreateDay(m_calendar.startOfDayAdding(base, days));
    task->setDay(target);
    task->setActiveStartedAt(std::nullopt);
    if (!task->completed())
        task->setActualSecondsFocused(std::nullopt);
    task->setUpdatedAt(m_clock());
    insert(task, target, 0);
    save();
}

void TaskRepository::moveToNextDay(Task *task)
{
    moveByDays(task, 1);
}

void TaskRepository::moveToPreviousDay(Task *task)
{
    moveByDays(task, -1);
}

void TaskRepository::moveOpenTasksToNextDay(Day *day)
{
    const QList<Task *> moving = openTasks(day);
    if (moving.isEmpty())
        return;
    Day *target = m_days.fetchOrCreateDay(m_calendar.startOfDayAdding(day->date(), 1));
    const QList<Task *> waiting = openTasks(target);
    const QDateTime now = m_clock();
    for (Task *task : moving) {
        task->setDay(target);
        task->setActiveStartedAt(std::nullopt);
        task->setActualSecondsFocused(std::nullopt);
        task->setUpdatedAt(now);
    }
    renumber(moving + waiting);
    save();
}

void TaskRepository::restore(Task *task, const TaskDayPlacement &placement)
{
    Day *day = m_days.fetchOrCreateDay(placement.dayDate);
    task->setDay(day);
    task->setActiveStartedAt(placement.activeStartedAt);
    task->setActualSecondsFocused(placement.actualSecondsFocused);
    task->setUpdatedAt(m_clock());
    insert(task, day, placement.rank);
    save();
}

void TaskRepository::reorderTasks(Day *day, const QList<QUuid> &orderedIDs)
{
    const auto open = openTasks(day);
    QHash<QUuid, Task *> byId;
    for (Task *t : open)
        byId.insert(t->id(), t);
    const QSet<QUuid> wanted(orderedIDs.begin(), orderedIDs.end());
    const QSet<QUuid> present(byId.keyBegin(), byId.keyEnd());
    if (wanted != present || orderedIDs.size() != open.size())
        throw RepositoryError::reorderMismatch();
    const QDateTime now = m_clock();
    for (qsizetype i = 0; i < orderedIDs.size(); ++i) {
        Task *t = byId.value(orderedIDs[i]);
        t->setOrderIndex(checkedInt32(i, "orderIndex"));
        t->setUpdatedAt(now);
    }
    save();
}

void TaskRepository::moveTask(Task *task, Direction direction)
{
    QList<Task *> queue = openTasks(task->day());
    const qsizetype at = queue.indexOf(task);
    if (at < 0)
        return;
    const qsizetype other = direction == Direction::up ? at - 1 : at + 1;
    if (other < 0 || other >= queue.size())
        return;
    queue.swapItemsAt(at, other);
    renumber(queue);
    task->setUpdatedAt(m_clock());
    save();
}

} // namespace tarnwell
