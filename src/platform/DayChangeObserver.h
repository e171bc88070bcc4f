#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"

#include <QObject>

class QSocketNotifier;
class QFileSystemWatcher;

namespace tarnwell::platform {

// Tells when the local calendar day changes: a wall-clock timer to the next
// local midnight (timerfd on CLOCK_REALTIME, so it also fires after a suspend
// across midnight), re-armed when the clock is set and when the system time
// zone changes. The calendar it is given is the one the services share.
class DayChangeObserver : public QObject
{
    Q_OBJECT
public:
    DayChangeObserver(Calendar calendar, Clock clock, QObject *parent = nullptr);
    ~DayChangeObserver() override;

    void start();
    // Re-arms for the next midnight (after a wake, or a time-zone change).
    void rearm();
    // The system time zone may have changed: moves the shared calendar (and
    // so every service) to it, re-arms for its midnight and tells a new day.
    void systemTimeZoneChanged();
    QDateTime nextFire() const { return m_next; }

Q_SIGNALS:
    void dayChanged();
    void timeZoneChanged();

private:
    void onTimer();
    void checkDay();

    Calendar m_calendar;
    Clock m_clock;
    int m_fd = -1;
    QSocketNotifier *m_notifier = nullptr;
    QFileSystemWatcher *m_zoneWatcher = nullptr;
    QDate m_lastDay;
    QDateTime m_next;
};

} // namespace tarnwell::platform
