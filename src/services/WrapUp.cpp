#include "WrapUp.h"

#include "DayPlanCalculator.h"
#include "FocusTime.h"
#include "kit/Logging.h"
#include "persistence/Day.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"
#include "settings/AppSettingsStore.h"

#include <QSettings>

#include <algorithm>

namespace tarnwell {

std::optional<double> WrapUpFigures::accuracyRatio() const
{
    if (measuredCount == 0 || measuredPlannedMinutes <= 0)
        return std::nullopt;
    return double(measuredFocusedSeconds) / (double(measuredPlannedMinutes) * 60.0);
}

WrapUpFigures WrapUpFigures::load(const Day *day, const TaskRepository &tasks, const QDateTime &now)
{
    WrapUpFigures figures;
    if (!day)
        return figures;
    figures.summary = DailySummary::load(day);

    QList<const Task *> done;
    const auto all = day->tasks();
    for (const Task *task : all)
        if (task->completed() && !task->isDeleted())
            done.append(task);
    std::stable_sort(done.begin(), done.end(), [](const Task *a, const Task *b) {
        return a->completedAt().value_or(QDateTime()) < b->completedAt().value_or(QDateTime());
    });
    for (const Task *task : done) {
        const qint64 focused = std::max<qint64>(0, task->actualSecondsFocused().value_or(0));
        figures.done.append({task->id(), task->title(), task->durationMinutes(), focused});
        const qint32 planned = task->durationMinutes().value_or(0);
        if (planned > 0 && focused > 0) {
            ++figures.measuredCount;
            figures.measuredFocusedSeconds += focused;
            figures.measuredPlannedMinutes += planned;
        }
    }

    const auto open = tasks.openTasks(day);
    for (const Task *task : open) {
        figures.left.append(
            {task->id(), task->title(), task->durationMinutes(), FocusTime::focusedSeconds(*task, now)});
        if (task->durationMinutes().value_or(0) > 0)
            figures.leftPlannedMinutes += *task->durationMinutes();
        else
            ++figures.leftUntimedCount;
    }
    return figures;
}

WrapUpOffer::WrapUpOffer(AppSettingsStore &settings, QSettings &defaults, Calendar calendar, Clock clock,
                         QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_defaults(defaults)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &WrapUpOffer::check);
    // Once started (the first check arms the timer): a workday end set
    // during onboarding waits for the interface that shows the offer.
    connect(&m_settings, &AppSettingsStore::settingChanged, this, [this](const QString &setting) {
        if (setting == QLatin1String("workdayEndMinutes") && m_timer.isActive())
            check();
    });
}

QString WrapUpOffer::todayKey() const
{
    return m_calendar.date(m_clock()).toString(Qt::ISODate);
}

bool WrapUpOffer::isFinishedToday() const
{
    return m_defaults.value(QLatin1String(Constants::finishedDayKey)).toString() == todayKey();
}

std::optional<QDateTime> WrapUpOffer::dueAt() const
{
    std::optional<QDateTime> end = DayPlanCalculator::workdayEnd(m_settings.workdayEndMinutes(), m_clock(), m_calendar);
    if (!end || isFinishedToday() || m_defaults.value(QLatin1String(Constants::offeredDayKey)).toString() == todayKey())
        return std::nullopt;
    return end;
}

bool WrapUpOffer::isDue() const
{
    const std::optional<QDateTime> at = dueAt();
    return at && m_clock() >= *at;
}

void WrapUpOffer::check()
{
    const QDateTime now = m_clock();
    // A mark of an earlier day goes with that day.
    if (m_pending && m_defaults.value(QLatin1String(Constants::offeredDayKey)).toString() != todayKey())
        setPending(false);
    if (isDue()) {
        m_defaults.setValue(QLatin1String(Constants::offeredDayKey), todayKey());
        qCInfo(lcServices).noquote() << QStringLiteral("Offering the day's wrap-up");
        setPending(true);
        Q_EMIT offered();
    }
    // Until the workday end, or the next day's (checked again after midnight).
    const std::optional<QDateTime> at = dueAt();
    const QDateTime next = at ? *at : m_calendar.nextStartOfDay(now);
    m_timer.start(int(std::clamp<qint64>(now.msecsTo(next) + 1, 1000, Constants::longestWaitMs)));
}

void WrapUpOffer::opened()
{
    setPending(false);
}

void WrapUpOffer::finishDay()
{
    m_defaults.setValue(QLatin1String(Constants::finishedDayKey), todayKey());
    setPending(false);
}

void WrapUpOffer::setPending(bool pending)
{
    if (pending == m_pending)
        return;
    m_pending = pending;
    Q_EMIT pendingChanged(pending);
}

} // namespace tarnwell
