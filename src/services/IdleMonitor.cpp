#include "IdleMonitor.h"

#include "ActiveTaskService.h"
#include "SessionEvents.h"
#include "kit/Logging.h"
#include "persistence/StoreError.h"
#include "persistence/Task.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

IdleMonitor::IdleMonitor(ActiveTaskService &activeTaskService, AppSettingsStore &settingsStore,
                         IdleSecondsProvider idleSeconds, SessionEvents *session, Clock clock,
                         std::chrono::milliseconds pollInterval, QObject *parent)
    : QObject(parent)
    , m_activeTasks(activeTaskService)
    , m_settings(settingsStore)
    , m_idleSeconds(std::move(idleSeconds))
    , m_session(session)
    , m_clock(std::move(clock))
    , m_pollInterval(pollInterval)
{
    m_poll.setInterval(m_pollInterval);
    m_poll.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_poll, &QTimer::timeout, this, &IdleMonitor::poll);
}

IdleMonitor::~IdleMonitor()
{
    stop();
}

int IdleMonitor::effectiveThresholdMinutes(int stored)
{
    if (stored < 1)
        return 0;
    if (stored <= 7)
        return 5;
    if (stored <= 12)
        return 10;
    return 15;
}

void IdleMonitor::start()
{
    if (m_started)
        return;
    m_started = true;
    if (m_session) {
        m_connections << connect(m_session, &SessionEvents::wentAway, this, &IdleMonitor::sessionWentAway)
                      << connect(m_session, &SessionEvents::cameBack, this, &IdleMonitor::sessionCameBack);
    }
    m_connections << connect(&m_activeTasks, &ActiveTaskService::activeTaskChanged, this,
                             &IdleMonitor::activeTaskChanged);
    if (!m_idleSeconds) {
        qCWarning(lcServices).noquote() << QStringLiteral(
            "IdleMonitor could not build the any-input event type; idle checks are off");
        return;
    }
    if (m_pollInterval.count() > 0)
        m_poll.start();
}

void IdleMonitor::setIdleSource(IdleSecondsProvider idleSeconds)
{
    m_idleSeconds = std::move(idleSeconds);
    if (!m_started)
        return;
    if (!m_idleSeconds)
        m_poll.stop();
    else if (m_pollInterval.count() > 0 && !m_poll.isActive())
        m_poll.start();
}

void IdleMonitor::stop()
{
    for (const auto &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_poll.stop();
    m_started = false;
}

void IdleMonitor::poll()
{
    if (!m_idleSeconds)
        return;
    const int minutes = effectiveThresholdMinutes(m_settings.idleThresholdMinutes());
    if (minutes < 1) {
        m_awayRunSeconds.reset();
        return;
    }
    Task *task = m_activeTasks.activeTask();
    if (!task || !task->activeStartedAt()) {
        m_awayRunSeconds.reset();
        return;
    }
    if (m_trackedTaskID != task->id()) {
        // A new task starts a new stretch.
        m_awayRunSeconds.reset();
        m_trackedTaskID = task->id();
    }
    const std::optional<qint64> idle = m_idleSeconds();
    if (!idle)
        return;
    const qint64 threshold = minutes * Constants::secondsPerMinute;
    if (*idle >= threshold) {
        // The stretch is as long as the largest reading, to within one poll.
        m_awayRunSeconds = std::max(m_awayRunSeconds.value_or(0), *idle);
        return;
    }
    if (const std::optional<qint64> stretch = std::exchange(m_awayRunSeconds, std::nullopt)) {
        if (*stretch > 0 && task->id() == m_trackedTaskID)
            setPendingGap(AwayGap{*m_trackedTaskID, *stretch});
    }
}

void IdleMonitor::sessionWentAway(const QString &why)
{
    Task *task = m_activeTasks.activeTask();
    if (!task || !task->activeStartedAt())
        return;
    const QUuid id = task->id();
    m_activeTasks.pauseTimer(task);
    m_autoPausedTaskID = id;
    m_autoPausedAt = m_clock();
    qCInfo(lcServices).noquote() << QStringLiteral("IdleMonitor paused the running timer: the session went away");
    if (!why.isEmpty())
        qCDebug(lcServices).noquote() << QStringLiteral("IdleMonitor: away because of %1").arg(why);
    Q_EMIT autoPausedChanged();
}

void IdleMonitor::sessionCameBack(const QString &)
{
    if (!m_autoPausedAt || !m_autoPausedTaskID)
        return;
    // A wake behind the lock screen is not a return.
    if (m_session && m_session->screenIsLocked())
        return;
    const qint64 gap = wholeSecondsBetween(*m_autoPausedAt, m_clock());
    if (gap >= Constants::shortBreakLimitSeconds) {
        // A long break: the task stays paused; the banner offers to resume.
        m_autoPausedAt.reset();
        Q_EMIT autoPausedChanged();
        return;
    }
    Task *task = m_activeTasks.activeTask();
    if (task && task->id() == *m_autoPausedTaskID && !task->activeStartedAt()) {
        m_activeTasks.startTimer(task);
        qCInfo(lcServices).noquote() << QStringLiteral("IdleMonitor resumed the timer: the break was short");
        clearAutoPause();
    }
}

void IdleMonitor::keepGap()
{
    setPendingGap(std::nullopt);
}

void IdleMonitor::discardGap()
{
    if (!m_pendingGap)
        return;
    const AwayGap gap = *m_pendingGap;
    if (Task *task = taskWithID(gap.taskID))
        m_activeTasks.discardAwaySeconds(task, gap.seconds);
    setPendingGap(std::nullopt);
}

void IdleMonitor::resumeAutoPaused()
{
    if (!m_autoPausedTaskID)
        return;
    if (Task *task = taskWithID(*m_autoPausedTaskID))
        m_activeTasks.startTimer(task);
    clearAutoPause();
}

Task *IdleMonitor::taskWithID(const QUuid &id) const
{
    try {
        return m_activeTasks.context().existingObject<Task>(id);
    } catch (const StoreError &error) {
        qCWarning(lcServices).noquote() << QStringLiteral("IdleMonitor lookupTask failed: %1").arg(error.description());
        return nullptr;
    }
}

void IdleMonitor::setPendingGap(std::optional<AwayGap> gap)
{
    m_pendingGap = gap;
    Q_EMIT pendingGapChanged();
}

void IdleMonitor::clearAutoPause()
{
    m_autoPausedTaskID.reset();
    m_autoPausedAt.reset();
    Q_EMIT autoPausedChanged();
}

} // namespace tarnwell
