#pragma once

#include "kit/Clock.h"

#include <QObject>
#include <QTimer>
#include <QUuid>

#include <chrono>
#include <optional>

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class DurationCompletionNotifier;
class SoundService;
class Task;

// One plan: a task together with its planned length. Extending a task makes
// a new plan, for which the warning and the completion may fire again.
struct FireKey
{
    const Task *objectID = nullptr;
    qint64 totalSeconds = 0;

    friend bool operator==(const FireKey &, const FireKey &) = default;
};

// The ending-soon warning currently shown to the user.
struct ShownWarning
{
    FireKey key;
    std::optional<QUuid> taskID;

    friend bool operator==(const ShownWarning &, const ShownWarning &) = default;
};

// The live countdown of the task in hand against its planned duration. Fires
// the ending-soon warning and the duration-complete event at most once per
// plan, plays the chimes, and never writes to the store. Evaluates on every
// change of the task in hand and on every tick.
class CountdownService : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr std::chrono::milliseconds tickInterval{1000};
    };

    // A zero tick interval starts no tick; the owner then calls evaluate().
    CountdownService(ActiveTaskService &activeTaskService, DurationCompletionNotifier &notifier,
                     SoundService &soundService, AppSettingsStore &settingsStore, Clock clock,
                     std::chrono::milliseconds tickInterval = Constants::tickInterval, QObject *parent = nullptr);

    // Planned minus focused seconds, negative beyond the plan; none without a
    // task in hand or without a plan.
    std::optional<qint64> remainingSeconds() const { return m_remainingSeconds; }
    // The task has focused time and nothing remains.
    bool isOverdue() const { return m_isOverdue; }
    // The task is stopped with banked time.
    bool isPaused() const { return m_isPaused; }

    const std::optional<FireKey> &lastFiredKey() const { return m_lastFiredKey; }
    const std::optional<FireKey> &warningArmedKey() const { return m_warningArmedKey; }
    const std::optional<FireKey> &warningFiredKey() const { return m_warningFiredKey; }
    const std::optional<ShownWarning> &shownWarning() const { return m_shownWarning; }

    // Evaluates the current task in hand (what each tick does).
    void evaluate();
    void evaluate(Task *task);

Q_SIGNALS:
    // Emitted on every assignment, also when the value did not change.
    void remainingSecondsChanged(std::optional<qint64> remainingSeconds);
    void isOverdueChanged(bool isOverdue);
    void isPausedChanged(bool isPaused);

private:
    void reconcileShownWarning(const Task *task);
    void checkCompletion(Task &task, qint64 total);
    void checkWarning(Task &task, qint64 total, qint64 remaining);
    void publish(std::optional<qint64> remaining, bool paused, bool overdue);

    ActiveTaskService &m_activeTaskService;
    DurationCompletionNotifier &m_notifier;
    SoundService &m_soundService;
    AppSettingsStore &m_settingsStore;
    Clock m_clock;
    QTimer m_tick;

    std::optional<qint64> m_remainingSeconds;
    bool m_isOverdue = false;
    bool m_isPaused = false;

    std::optional<FireKey> m_lastFiredKey;
    std::optional<FireKey> m_warningArmedKey;
    std::optional<FireKey> m_warningFiredKey;
    std::optional<ShownWarning> m_shownWarning;
};

} // namespace tarnwell
