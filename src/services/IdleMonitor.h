#pragma once

#include "kit/Clock.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUuid>

#include <chrono>
#include <functional>
#include <optional>

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class SessionEvents;
class Task;

// A stretch of idle time on a running timer, offered to the user to keep or
// to discard.
struct AwayGap
{
    QUuid taskID;
    qint64 seconds = 0;

    friend bool operator==(const AwayGap &, const AwayGap &) = default;
};

// Seconds since the last input of any kind; none when it cannot be read.
using IdleSecondsProvider = std::function<std::optional<qint64>()>;

// Keeps the focus timer honest while the user is away. When the session goes
// away (sleep, lock, user switch) it pauses the running timer, and resumes it
// on return when the break was short. While the timer runs it polls the idle
// time; an idle stretch longer than the threshold is offered on return as an
// AwayGap. It changes task data only through ActiveTaskService.
class IdleMonitor : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr int defaultThresholdMinutes = 10;
        static constexpr std::chrono::milliseconds pollInterval{30000};
        static constexpr qint64 secondsPerMinute = 60;
        static constexpr qint64 shortBreakLimitSeconds = 300;
    };

    // Without an idle-time provider idle checks are off; without session
    // events nothing pauses on sleep or lock. A zero poll interval starts no
    // poll timer (tests call poll()).
    IdleMonitor(ActiveTaskService &activeTaskService, AppSettingsStore &settingsStore, IdleSecondsProvider idleSeconds,
                SessionEvents *session, Clock clock, std::chrono::milliseconds pollInterval = Constants::pollInterval,
                QObject *parent = nullptr);
    ~IdleMonitor() override;

    // The stored threshold mapped into 5, 10, 15 or 0 (off): negative values
    // are off, 1-7 give 5, 8-12 give 10, 13 and more give 15.
    static int effectiveThresholdMinutes(int stored);

    void start();
    void stop();
    bool isStarted() const { return m_started; }
    bool idleChecksAvailable() const { return bool(m_idleSeconds); }
    // Another source of the idle time (the desktop's service moved to a new
    // session bus); an empty one turns idle checks off.
    void setIdleSource(IdleSecondsProvider idleSeconds);

    const std::optional<AwayGap> &pendingGap() const { return m_pendingGap; }
    const std::optional<QUuid> &autoPausedTaskID() const { return m_autoPausedTaskID; }
    const std::optional<QDateTime> &autoPausedAt() const { return m_autoPausedAt; }
    const std::optional<qint64> &awayRunSeconds() const { return m_awayRunSeconds; }

    // One poll of the idle time (what the poll timer does).
    void poll();
    void sessionWentAway(const QString &why = {});
    void sessionCameBack(const QString &why = {});

    // The banner's choices.
    void keepGap();
    void discardGap();
    void resumeAutoPaused();

Q_SIGNALS:
    void pendingGapChanged();
    void autoPausedChanged();
    // The task in hand changed (the banner's auto-paused note depends on it).
    void activeTaskChanged();

private:
    Task *taskWithID(const QUuid &id) const;
    void setPendingGap(std::optional<AwayGap> gap);
    void clearAutoPause();

    ActiveTaskService &m_activeTasks;
    AppSettingsStore &m_settings;
    IdleSecondsProvider m_idleSeconds;
    QPointer<SessionEvents> m_session;
    Clock m_clock;
    std::chrono::milliseconds m_pollInterval;
    QTimer m_poll;
    QList<QMetaObject::Connection> m_connections;
    bool m_started = false;

    std::optional<AwayGap> m_pendingGap;
    std::optional<QUuid> m_autoPausedTaskID;
    std::optional<QDateTime> m_autoPausedAt;
    std::optional<qint64> m_awayRunSeconds;
    std::optional<QUuid> m_trackedTaskID;
};

} // namespace tarnwell
