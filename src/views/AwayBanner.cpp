#include "AwayBanner.h"

#include "persistence/Task.h"
#include "services/ActiveTaskService.h"
#include "services/IdleMonitor.h"

namespace tarnwell {

AwayBanner::AwayBanner(IdleMonitor &monitor, ActiveTaskService &activeTaskService, QObject *parent)
    : QObject(parent)
    , m_monitor(monitor)
    , m_activeTasks(activeTaskService)
{
    connect(&m_monitor, &IdleMonitor::pendingGapChanged, this, &AwayBanner::changed);
    connect(&m_monitor, &IdleMonitor::autoPausedChanged, this, &AwayBanner::changed);
    connect(&m_activeTasks, &ActiveTaskService::activeTaskChanged, this, &AwayBanner::changed);
}

bool AwayBanner::gapVisible() const
{
    return m_monitor.pendingGap().has_value();
}

QString AwayBanner::awayDuration(qint64 seconds)
{
    const qint64 minutes = std::max<qint64>(1, (seconds + 30) / 60);
    if (minutes < 60)
        //% "%n min"
        //: Length of an idle gap under an hour, in minutes
        return qtTrId("activeTask.away.minutes", int(minutes));
    //% "%1 h %2 min"
    //: Length of an idle gap of an hour or more: %1 hours, %2 minutes (two digits)
    return qtTrId("activeTask.away.hoursMinutes").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

QString AwayBanner::promptText() const
{
    if (!m_monitor.pendingGap())
        return {};
    //% "You were away for %1 while the timer ran."
    //: Idle gap notice, takes a formatted duration
    return qtTrId("activeTask.away.prompt").arg(awayDuration(m_monitor.pendingGap()->seconds));
}

bool AwayBanner::autoPausedVisible() const
{
    const Task *task = m_activeTasks.activeTask();
    return task && m_monitor.autoPausedTaskID() == task->id() && !task->activeStartedAt();
}

QString AwayBanner::keepText() const
{
    //% "Keep"
    //: Leave the focused tally as measured
    return qtTrId("activeTask.away.keep");
}

QString AwayBanner::discardText() const
{
    //% "Discard"
    //: Subtract away time from the tally
    return qtTrId("activeTask.away.discard");
}

QString AwayBanner::noteText() const
{
    //% "The timer paused while you were away."
    //: Explains a pause the app performed on the user's behalf
    return qtTrId("activeTask.autoPaused.note");
}

QString AwayBanner::resumeText() const
{
    //% "Resume"
    //: Resume the auto-paused timer
    return qtTrId("activeTask.autoPaused.resume");
}

void AwayBanner::keep()
{
    m_monitor.keepGap();
}

void AwayBanner::discard()
{
    m_monitor.discardGap();
}

void AwayBanner::resume()
{
    m_monitor.resumeAutoPaused();
}

} // namespace tarnwell
