#include "CountdownService.h"

#include "ActiveTaskService.h"
#include "DurationCompletionNotifier.h"
#include "FocusTime.h"
#include "SoundService.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

CountdownService::CountdownService(ActiveTaskService &activeTaskService, DurationCompletionNotifier &notifier,
                                   SoundService &soundService, AppSettingsStore &settingsStore, Clock clock,
                                   std::chrono::milliseconds tickInterval, QObject *parent)
    : QObject(parent)
    , m_activeTaskService(activeTaskService)
    , m_notifier(notifier)
    , m_soundService(soundService)
    , m_settingsStore(settingsStore)
    , m_clock(std::move(clock))
{
    connect(&activeTaskService, &ActiveTaskService::activeTaskChanged, this, [this](Task *task) { evaluate(task); });
    evaluate(activeTaskService.activeTask());
    if (tickInterval.count() > 0) {
        m_tick.setInterval(tickInterval);
        connect(&m_tick, &QTimer::timeout, this, qOverload<>(&CountdownService::evaluate));
        m_tick.start();
    }
}

void CountdownService::evaluate()
{
    evaluate(m_activeTaskService.activeTask());
}

void CountdownService::evaluate(Task *task)
{
    reconcileShownWarning(task);
    if (!task || !task->durationMinutes()) {
        publish(std::nullopt, false, false);
        return;
    }
    const qint64 total = qint64(*task->durationMinutes()) * 60;
    const bool running = FocusTime::isRunning(*task);
    const qint64 focused = FocusTime::focusedSeconds(*task, m_clock());
    const qint64 remaining = total - focused;
    // A plan of 0 minutes with no focused time is not overdue.
    publish(remaining, FocusTime::isPaused(*task), focused >= 1 && remaining <= 0);

    // A paused task fires nothing; its figures are still published.
    if (running && remaining <= 0)
        checkCompletion(*task, total);
    if (running)
        checkWarning(*task, total, remaining);
}

void CountdownService::publish(std::optional<qint64> remaining, bool paused, bool overdue)
{
    m_remainingSeconds = remaining;
    Q_EMIT remainingSecondsChanged(remaining);
    m_isPaused = paused;
    Q_EMIT isPausedChanged(paused);
    m_isOverdue = overdue;
    Q_EMIT isOverdueChanged(overdue);
}

void CountdownService::checkCompletion(Task &task, qint64 total)
{
    // Only the last plan is remembered: switching between two overdue tasks
    // fires again on each switch.
    const FireKey key{&task, total};
    if (m_lastFiredKey == key)
        return;
    m_lastFiredKey = key;
    m_notifier.notifyDurationComplete(task);
    m_soundService.play(SoundService::Cue::end);
}

void CountdownService::reconcileShownWarning(const Task *task)
{
    if (!m_shownWarning)
        return;
    const FireKey &shown = m_shownWarning->key;
    if (task && task == shown.objectID && !task->completed() && task->durationMinutes() &&
        qint64(*task->durationMinutes()) * 60 == shown.totalSeconds)
        return;
    const std::optional<QUuid> taskID = m_shownWarning->taskID;
    m_shownWarning.reset();
    m_notifier.withdrawEndingSoon(taskID);
}

void CountdownService::checkWarning(Task &task, qint64 total, qint64 remaining)
{
    const int minutes = m_settingsStore.preEndWarningMinutes();
    if (minutes < 1)
        return; // warnings are off
    const qint64 span = qint64(minutes) * 60;
    if (total <= span)
        return; // a plan no longer than the span never warns
    const FireKey key{&task, total};
    if (remaining > span) {
        // Only a countdown seen above the span arms the warning, so a task
        // started, resumed or extended inside the span does not warn.
        m_warningArmedKey = key;
        return;
    }
    if (remaining < 1)
        return; // the completion takes over
    if (m_warningArmedKey != key || m_warningFiredKey == key)
        return;
    m_warningFiredKey = key;
    m_notifier.notifyEndingSoon(task, minutes);
    m_shownWarning = ShownWarning{key, task.id().isNull() ? std::nullopt : std::optional<QUuid>(task.id())};
    m_soundService.play(SoundService::Cue::warning);
}

} // namespace tarnwell
