#pragma once

#include "kit/Clock.h"
#include "persistence/DayRepository.h"
#include "persistence/TaskRepository.h"

#include <QList>
#include <QObject>

#include <memory>

namespace tarnwell {

class AppSettingsStore;

// The task in hand: today's queue of open tasks and the task at its head.
// The only writer of a task's focus-timer fields (activeStartedAt,
// actualSecondsFocused, awaySecondsDiscarded). A failed save is logged and
// swallowed: the change stays in memory for the next save.
class ActiveTaskService : public QObject
{
    Q_OBJECT
public:
    // Without repositories, a DayRepository and a TaskRepository are built on
    // `context`. Refreshes once, so activeTask() and queue() are valid at once,
    // and again on every change notice of `context`.
    ActiveTaskService(StoreContext &context, AppSettingsStore &settingsStore, Clock clock,
                      DayRepository *dayRepository = nullptr, TaskRepository *taskRepository = nullptr,
                      QObject *parent = nullptr);
    ~ActiveTaskService() override;

    // The head of the queue, or none.
    Task *activeTask() const { return m_activeTask; }
    // Today's open tasks by orderIndex.
    const QList<Task *> &queue() const { return m_queue; }
    // The second task of the queue, or none.
    Task *nextTask() const { return m_queue.size() >= 2 ? m_queue.at(1) : nullptr; }

    StoreContext &context() const { return m_context; }
    DayRepository &dayRepository() const { return *m_dayRepository; }
    TaskRepository &taskRepository() const { return *m_taskRepository; }
    AppSettingsStore &settingsStore() const { return m_settingsStore; }
    const Clock &clock() const { return m_clock; }

    // Recomputes the queue and the task in hand; publishes both every time.
    void refresh();

    // Starts the task's timer unless it runs already; banked seconds stay.
    void startTimer(Task *task);
    // Banks the whole seconds since the start and stops the timer.
    void pauseTimer(Task *task);
    void toggleTimer(Task *task);
    // Hands the task in hand over to `task`. The previous task's running time
    // is dropped and, unless it is completed, its banked seconds are wiped:
    // leaving unfinished work for other work deliberately discards its tally
    // (pause, by contrast, banks). Starts nothing and reorders nothing.
    void activate(Task *task);
    // Removes up to `seconds` of time away, from the running segment first,
    // then from the banked seconds; records what was actually removed.
    void discardAwaySeconds(Task *task, qint64 seconds);

Q_SIGNALS:
    // Emitted on every assignment, also when the value did not change.
    void activeTaskChanged(tarnwell::Task *task);
    void queueChanged(const QList<tarnwell::Task *> &queue);

private:
    // Saves; a failure is logged with `failureLog` (%1: the error) and swallowed.
    void save(const char *failureLog);

    StoreContext &m_context;
    AppSettingsStore &m_settingsStore;
    Clock m_clock;
    std::unique_ptr<DayRepository> m_ownDayRepository;
    std::unique_ptr<TaskRepository> m_ownTaskRepository;
    DayRepository *m_dayRepository;
    TaskRepository *m_taskRepository;
    QList<Task *> m_queue;
    Task *m_activeTask = nullptr;
};

} // namespace tarnwell
