#pragma once

#include "DailySummary.h"
#include "kit/Calendar.h"
#include "kit/Clock.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUuid>

#include <optional>

class QSettings;

namespace tarnwell {

class AppSettingsStore;
class Day;
class TaskRepository;

// One task as the wrap-up lists it.
struct WrapUpTask
{
    QUuid id;
    QString title;
    std::optional<qint32> plannedMinutes;
    qint64 focusedSeconds = 0;
};

// The figures of one day's wrap-up: what was done, focused time against the
// plan of the tasks that had one, how close the day's estimates came, and
// what is still open.
struct WrapUpFigures
{
    DailySummary summary; // done count, focused seconds, planned minutes of the done tasks
    QList<WrapUpTask> done; // by completion time
    QList<WrapUpTask> left; // the open queue, in its order
    // The done tasks that had a plan and a measurement: their focused seconds
    // against their planned minutes.
    int measuredCount = 0;
    qint64 measuredFocusedSeconds = 0;
    qint64 measuredPlannedMinutes = 0;
    qint64 leftPlannedMinutes = 0;
    int leftUntimedCount = 0;

    // Focused over planned for the measured tasks (1.2 = took 20 % longer);
    // none when no done task had both.
    std::optional<double> accuracyRatio() const;

    // The day's tasks; focus of a running timer counts up to `now`.
    static WrapUpFigures load(const Day *day, const TaskRepository &tasks, const QDateTime &now);
};

// When the wrap-up is offered: once a day, at the workday end, unless the
// user said "done for today" already; never without a workday end (then it
// opens only on demand). The day markers live in the user-defaults store, so
// a restart after the offer does not offer again.
class WrapUpOffer : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *offeredDayKey = "Tarnwell.wrapUp.offeredDay";
        static constexpr const char *finishedDayKey = "Tarnwell.wrapUp.finishedDay";
        // The longest the check sleeps: a suspended machine or a moved clock
        // is noticed within this.
        static constexpr int longestWaitMs = 5 * 60 * 1000;
    };

    WrapUpOffer(AppSettingsStore &settings, QSettings &defaults, Calendar calendar, Clock clock,
                QObject *parent = nullptr);

    // Today's workday end, when the offer is still to come today.
    std::optional<QDateTime> dueAt() const;
    bool isDue() const;
    // Offered today and neither opened nor finished since (the tray shows it).
    bool isPending() const { return m_pending; }
    bool isFinishedToday() const;

    // Offers when due (offered() once), then waits for the next check.
    void check();
    // The wrap-up was opened: the tray's mark goes.
    void opened();
    // "Done for today": no offer again today.
    void finishDay();

Q_SIGNALS:
    void offered();
    void pendingChanged(bool pending);

private:
    QString todayKey() const;
    void setPending(bool pending);

    AppSettingsStore &m_settings;
    QSettings &m_defaults;
    Calendar m_calendar;
    Clock m_clock;
    QTimer m_timer;
    bool m_pending = false;
};

} // namespace tarnwell
