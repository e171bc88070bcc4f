#include "ActiveTaskService.h"

#include "FocusTime.h"
#include "kit/Checked.h"
#include "kit/Logging.h"

#include <algorithm>

namespace tarnwell {

ActiveTaskService::ActiveTaskService(StoreContext &context, AppSettingsStore &settingsStore, Clock clock,
                                     DayRepository *dayRepository, TaskRepository *taskRepository, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_settingsStore(settingsStore)
    , m_clock(std::move(clock))
    , m_dayRepository(dayRepository)
    , m_taskRepository(taskRepository)
{
    if (!m_dayRepository) {
        m_ownDayRepository = std::make_unique<DayRepository>(context, Calendar(), m_clock);
        m_dayRepository = m_ownDayRepository.get();
    }
    if (!m_taskRepository) {
        m_ownTaskRepository =
            std::make_unique<TaskRepository>(context, m_dayRepository->calendar(), m_clock, *m_dayRepository);
        m_taskRepository = m_ownTaskRepository.get();
    }
    // With `this` as context object the connection ends with the service.
    connect(&context, &StoreContext::objectsDidChange, this, [this] { refresh(); });
    refresh();
}

ActiveTaskService::~ActiveTaskService() = default;

void ActiveTaskService::refresh()
{
    // There is no stored pointer to the current task: the head of today's
    // order is the task in hand, whatever other timer may be running.
    try {
        Day *today = m_dayRepository->day(m_clock());
        m_queue = today ? m_taskRepository->openTasks(today) : QList<Task *>();
    } catch (const StoreError &error) {
        // Unreadable store: publish no task in hand rather than a stale one.
        qCCritical(lcServices).noquote()
            << QStringLiteral("ActiveTaskService refresh failed: %1").arg(error.description());
        m_queue.clear();
    }
    Q_EMIT queueChanged(m_queue);
    m_activeTask = m_queue.isEmpty() ? nullptr : m_queue.first();
    Q_EMIT activeTaskChanged(m_activeTask);
}

void ActiveTaskService::save(const char *failureLog)
{
    try {
        m_context.save();
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QString::fromLatin1(failureLog).arg(error.description());
    }
}

void ActiveTaskService::startTimer(Task *task)
{
    if (FocusTime::isRunning(*task))
        return;
    const QDateTime now = m_clock();
    task->setActiveStartedAt(now);
    task->setUpdatedAt(now);
    save("ActiveTaskService startTimer save failed: %1");
    refresh();
}

void ActiveTaskService::pauseTimer(Task *task)
{
    if (!FocusTime::isRunning(*task))
        return;
    const QDateTime now = m_clock();
    task->setActualSecondsFocused(checkedInt32(FocusTime::focusedSeconds(*task, now), "actualSecondsFocused"));
    task->setActiveStartedAt(std::nullopt);
    task->setUpdatedAt(now);
    save("ActiveTaskService pauseTimer save failed: %1");
    refresh();
}

void ActiveTaskService::toggleTimer(Task *task)
{
    if (FocusTime::isRunning(*task))
        pauseTimer(task);
    else
        startTimer(task);
}

void ActiveTaskService::activate(Task *task)
{
    const QDateTime now = m_clock();
    if (Task *previous = m_activeTask; previous && previous != task) {
        previous->setActiveStartedAt(std::nullopt);
        if (!previous->completed())
            previous->setActualSecondsFocused(0);
        previous->setUpdatedAt(now);
    }
    task->setUpdatedAt(now);
    save("ActiveTaskService activate save failed: %1");
    refresh();
}

void ActiveTaskService::discardAwaySeconds(Task *task, qint64 seconds)
{
    const QDateTime now = m_clock();
    qint64 remaining = seconds;
    if (FocusTime::isRunning(*task)) {
        const qint64 taken = std::min(FocusTime::elapsedSeconds(*task, now), seconds);
        if (taken >= 1) {
            task->setActiveStartedAt(task->activeStartedAt()->addSecs(taken));
            remaining = seconds - taken;
        }
    }
    if (remaining >= 1) {
        const qint64 banked = task->actualSecondsFocused().value_or(0);
        const qint64 cut = std::min(banked, remaining);
        if (cut > 0) {
            task->setActualSecondsFocused(checkedInt32(banked - cut, "actualSecondsFocused"));
            remaining -= cut;
        }
    }
    const qint64 removed = seconds - remaining;
    if (removed > 0) {
        task->setAwaySecondsDiscarded(
            checkedInt32(qint64(task->awaySecondsDiscarded().value_or(0)) + removed, "awaySecondsDiscarded"));
        task->setUpdatedAt(now);
        save("ActiveTaskService discardAwaySeconds save failed: %1");
    }
    refresh();
}

} // namespace tarnwell
