#pragma once

#include "DayRepository.h"
#include "RepositoryError.h"
#include "Task.h"

#include <optional>

namespace tarnwell {

// Creates, orders, moves, completes and edits tasks, keeping each day's queue
// consistent. Every operation that changes data stamps `updatedAt` and saves
// before it returns; a save error is thrown to the caller.
class TaskRepository
{
public:
    struct Limits
    {
        static constexpr int titleCharacters = 200;
    };

    // Where a task stood before a move, so that the move can be undone.
    struct TaskDayPlacement
    {
        QDateTime dayDate;
        int rank = 0;
        std::optional<QDateTime> activeStartedAt;
        std::optional<qint32> actualSecondsFocused;

        friend bool operator==(const TaskDayPlacement &, const TaskDayPlacement &) = default;
    };

    enum class Direction { up, down };

    TaskRepository(StoreContext &context, Calendar calendar, Clock clock, DayRepository &dayRepository);

    StoreContext &context() const { return m_context; }
    DayRepository &dayRepository() const { return m_days; }

    // The day's tasks that are neither archived nor completed, by orderIndex.
    QList<Task *> openTasks(const Day *day) const;
    int nextOrderIndex(const Day *day) const;

    Task *createTask(const QString &title, std::optional<qint64> durationMinutes, bool urgent, Day *day);
    void updateTask(Task *task, const QString &title, const std::optional<QString> &notes,
                    std::optional<qint64> durationMinutes, const std::optional<QDateTime> &dueDate);
    void complete(Task *task, const QDateTime &instant, qint64 focusedSeconds,
                  const std::optional<QDateTime> &activeStartedAt = std::nullopt);
    void reopen(Task *task);
    void setActualFocus(Task *task, qint64 seconds);

    TaskDayPlacement placement(Task *task) const;
    void moveToNextDay(Task *task);
    void moveToPreviousDay(Task *task);
    void moveOpenTasksToNextDay(Day *day);
    void restore(Task *task, const TaskDayPlacement &placement);
    void reorderTasks(Day *day, const QList<QUuid> &orderedIDs);
    void moveTask(Task *task, Direction direction);

    // Trims the title and checks its length in user-perceived characters.
    static QString validatedTitle(const QString &title);
    static int characterCount(const QString &text);

private:
    void moveByDays(Task *task, int days);
    void insert(Task *task, Day *day, qint64 position);
    static void renumber(const QList<Task *> &queue);
    void save();

    StoreContext &m_context;
    Calendar m_calendar;
    Clock m_clock;
    DayRepository &m_days;
};

} // namespace tarnwell
