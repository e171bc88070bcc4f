#include "WrapUpModel.h"

#include "UiEngine.h"
#include "ViewTexts.h"
#include "kit/Logging.h"
#include "persistence/Day.h"
#include "persistence/Task.h"
#include "services/ActiveTaskService.h"
#include "services/DayPlanFooterText.h"
#include "services/FocusTime.h"
#include "services/WrapUp.h"

#include <QQuickWindow>
#include <QVariantMap>

#include <cmath>

namespace tarnwell {

namespace {

// Within this share of the plan the estimates count as on the mark (as in the review).
constexpr double onTheMark = 0.10;

QString duration(qint64 seconds)
{
    return DayPlanFooterText::formatDuration(std::max<qint64>(0, seconds));
}

QVariantList rows(const QList<WrapUpTask> &tasks, bool done)
{
    QVariantList list;
    for (const WrapUpTask &task : tasks) {
        QString detail;
        if (done && task.plannedMinutes.value_or(0) > 0)
            //: Wrap-up: a done task's focused time against its plan; %1 = focused, %2 = planned (as 1h 5m)
            //% "%1 of %2"
            detail = qtTrId("wrapUp.task.focusedOfPlanned")
                         .arg(duration(task.focusedSeconds), duration(qint64(*task.plannedMinutes) * 60));
        else if (done || task.focusedSeconds > 0)
            detail = duration(task.focusedSeconds);
        else if (task.plannedMinutes.value_or(0) > 0)
            detail = duration(qint64(*task.plannedMinutes) * 60);
        list.append(QVariantMap{{QStringLiteral("title"), task.title}, {QStringLiteral("detail"), detail}});
    }
    return list;
}

} // namespace

WrapUpModel::WrapUpModel(ActiveTaskService &activeTasks, WrapUpOffer *offer, Calendar calendar, Clock clock,
                         QObject *parent)
    : QObject(parent)
    , m_activeTasks(activeTasks)
    , m_offer(offer)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
}

QString WrapUpModel::dayTitle() const
{
    const QDate today = m_calendar.date(m_clock());
    return ViewTexts::dayDate(today);
}

QString WrapUpModel::doneLine() const
{
    if (doneCount() == 0)
        //: Wrap-up: nothing was completed today
        //% "Nothing done yet today"
        return qtTrId("wrapUp.done.none");
    //: Wrap-up: how many tasks were completed today
    //% "%n task(s) done"
    return qtTrId("wrapUp.done.count", doneCount());
}

QString WrapUpModel::focusedText() const
{
    //: Wrap-up: the seconds of focus measured on today's done tasks; %1 = as 2h 35m
    //% "%1 focused"
    return qtTrId("wrapUp.focused").arg(duration(m_figures.summary.focusedSeconds));
}

QString WrapUpModel::plannedLine() const
{
    if (m_figures.measuredCount == 0)
        //: Wrap-up: no done task had both a plan and measured focus
        //% "No planned task was timed today."
        return qtTrId("wrapUp.planned.none");
    //: Wrap-up: focused time against the plan of the done tasks that had one; %1 = focused, %2 = planned
    //% "Planned tasks: %1 for %2 planned"
    return qtTrId("wrapUp.planned")
        .arg(duration(m_figures.measuredFocusedSeconds), duration(m_figures.measuredPlannedMinutes * 60));
}

QString WrapUpModel::accuracyTone() const
{
    const std::optional<double> ratio = m_figures.accuracyRatio();
    if (!ratio)
        return {};
    if (std::abs(*ratio - 1.0) <= onTheMark)
        return QStringLiteral("good");
    return *ratio > 1.0 ? QStringLiteral("over") : QStringLiteral("under");
}

QString WrapUpModel::accuracyLine() const
{
    const std::optional<double> ratio = m_figures.accuracyRatio();
    if (!ratio)
        return {};
    const int percent = int(std::lround(std::abs(*ratio - 1.0) * 100.0));
    const QString tone = accuracyTone();
    if (tone == QLatin1String("good"))
        //: Wrap-up: the day's estimates were within 10 percent; %1 = the difference in percent
        //% "Your estimates were on the mark (%1% off)."
        return qtTrId("wrapUp.accuracy.good").arg(percent);
    if (tone == QLatin1String("over"))
        //: Wrap-up: the day's planned tasks took longer than planned; %1 = percent
        //% "Tasks took %1% longer than planned."
        return qtTrId("wrapUp.accuracy.over").arg(percent);
    //: Wrap-up: the day's planned tasks took less time than planned; %1 = percent
    //% "Tasks took %1% less time than planned."
    return qtTrId("wrapUp.accuracy.under").arg(percent);
}

QVariantList WrapUpModel::done() const
{
    return rows(m_figures.done, true);
}

QVariantList WrapUpModel::left() const
{
    return rows(m_figures.left, false);
}

QString WrapUpModel::leftLine() const
{
    const int count = int(m_figures.left.size());
    if (count == 0)
        //: Wrap-up: no open task is left today
        //% "Nothing left for today."
        return qtTrId("wrapUp.left.none");
    //: Wrap-up: how many tasks are still open today
    //% "%n task(s) left"
    QString line = qtTrId("wrapUp.left.count", count);
    if (m_figures.leftPlannedMinutes > 0)
        //: Wrap-up: planned time of the open tasks, after the count; %1 = as 1h 15m
        //% "%1 planned"
        line += QStringLiteral(" · ") + qtTrId("wrapUp.left.planned").arg(duration(m_figures.leftPlannedMinutes * 60));
    if (m_figures.leftUntimedCount > 0)
        //: Wrap-up: how many open tasks have no planned time, after the count
        //% "%n without a plan"
        line += QStringLiteral(" · ") + qtTrId("wrapUp.left.untimed", m_figures.leftUntimedCount);
    return line;
}

void WrapUpModel::refresh()
{
    const QDateTime now = m_clock();
    DayRepository &days = m_activeTasks.dayRepository();
    try {
        m_figures = WrapUpFigures::load(days.day(days.today()), m_activeTasks.taskRepository(), now);
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Wrap-up failed to load: %1").arg(error.description());
        m_figures = {};
    }
    Q_EMIT changed();
}

void WrapUpModel::pauseRunningTimer()
{
    Task *task = m_activeTasks.activeTask();
    if (task && FocusTime::timerState(*task) == FocusTime::TimerState::focusing)
        m_activeTasks.pauseTimer(task);
}

void WrapUpModel::moveRestToTomorrow()
{
    DayRepository &days = m_activeTasks.dayRepository();
    TaskRepository &tasks = m_activeTasks.taskRepository();
    Day *today = days.day(days.today());
    if (!today)
        return;
    // The focus measured so far is kept in the placement, so undo brings it back.
    pauseRunningTimer();
    const QList<Task *> open = tasks.openTasks(today);
    if (open.isEmpty())
        return;
    QList<Moved> moved;
    for (Task *task : open)
        moved.append({task, tasks.placement(task)});
    try {
        tasks.moveOpenTasksToNextDay(today);
    } catch (const StoreError &error) {
        m_toast = error.description();
        Q_EMIT toastChanged();
        refresh();
        return;
    }
    qCInfo(lcServices).noquote() << QStringLiteral("Wrap-up moved %1 open tasks to tomorrow").arg(open.size());
    m_moved = moved;
    m_toast = ViewTexts::movedOverflow(int(open.size()));
    Q_EMIT toastChanged();
    m_activeTasks.refresh();
    refresh();
}

void WrapUpModel::undo()
{
    const QList<Moved> moved = std::exchange(m_moved, {});
    m_toast.clear();
    Q_EMIT toastChanged();
    if (moved.isEmpty())
        return;
    TaskRepository &tasks = m_activeTasks.taskRepository();
    try {
        // In their old order, each at its old rank.
        for (const Moved &entry : moved)
            if (!entry.task->isDeleted())
                tasks.restore(entry.task, entry.placement);
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Wrap-up undo failed: %1").arg(error.description());
    }
    m_activeTasks.refresh();
    refresh();
}

void WrapUpModel::dismissToast()
{
    m_moved.clear();
    if (m_toast.isEmpty())
        return;
    m_toast.clear();
    Q_EMIT toastChanged();
}

void WrapUpModel::doneForToday()
{
    pauseRunningTimer();
    if (m_offer)
        m_offer->finishDay();
    qCInfo(lcServices).noquote() << QStringLiteral("Wrap-up: done for today");
    dismissToast();
    Q_EMIT finished();
}

WrapUpWindowController::WrapUpWindowController(WrapUpModel &model, UiEngine &ui, QObject *parent)
    : WindowController(ui, QStringLiteral("WrapUpWindow.qml"), QStringLiteral("Wrap-up shown"), parent)
    , m_model(model)
{
    connect(&m_model, &WrapUpModel::finished, this, &WrapUpWindowController::hide);
}

void WrapUpWindowController::show()
{
    if (!makeWindow([this] {
            return QVariantMap{{QStringLiteral("wrapUp"), QVariant::fromValue<QObject *>(&m_model)}};
        }))
        return;
    if (!isVisible()) {
        m_model.dismissToast();
        m_model.refresh();
    }
    bringForward();
}

} // namespace tarnwell
