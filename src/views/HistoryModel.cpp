#include "HistoryModel.h"

#include "PopoverModel.h"
#include "ViewTexts.h"
#include "persistence/Day.h"
#include "persistence/StoreContext.h"
#include "persistence/Task.h"
#include "services/ActiveTaskService.h"
#include "services/DailySummary.h"
#include "services/DayPlanFooterText.h"
#include "services/DurationParser.h"
#include "services/TaskHistory.h"
#include "settings/AppSettingsStore.h"

#include <QVariantMap>

namespace tarnwell {

HistoryModel::HistoryModel(PopoverModel &popover, ActiveTaskService &activeTasks, AppSettingsStore &settings,
                           TaskHistory &history, Calendar calendar, Clock clock, QObject *parent)
    : QObject(parent)
    , m_popover(popover)
    , m_activeTasks(activeTasks)
    , m_settings(settings)
    , m_history(history)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
    connect(&m_popover, &PopoverModel::dayChanged, this, &HistoryModel::dayChanged);
    connect(&m_activeTasks.context(), &StoreContext::objectsDidChange, this, &HistoryModel::dayChanged);
    connect(&m_settings, &AppSettingsStore::settingChanged, this, [this](const QString &setting) {
        if (setting == QLatin1String("editHistoryEnabled"))
            Q_EMIT dayChanged();
    });
}

bool HistoryModel::isPast() const
{
    return m_popover.dayOffset() < 0;
}

bool HistoryModel::canEdit() const
{
    return !isPast() || m_settings.editHistoryEnabled();
}

QString HistoryModel::daySummary() const
{
    if (!isPast())
        return {};
    const DailySummary summary = DailySummary::load(m_popover.shownDay());
    if (summary.completedCount == 0)
        //: Popover, a past day: nothing was completed that day
        //% "Nothing was completed this day"
        return qtTrId("history.day.none");
    //: Popover, a past day: its completed tasks and their focused time; %1 = as 2h 5m
    //% "%n done · %1 focused"
    return qtTrId("history.day.summary", summary.completedCount)
        .arg(DayPlanFooterText::formatDuration(summary.focusedSeconds));
}

void HistoryModel::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    m_query = query;
    runSearch();
}

void HistoryModel::runSearch()
{
    m_results.clear();
    const QDate today = m_calendar.date(m_clock());
    const auto hits = m_history.search(m_query);
    for (const TaskHistoryHit &hit : hits) {
        QString detail;
        if (hit.completed)
            //: History search: a result's focused time, when the task was done; %1 = as 25m
            //% "done · %1"
            detail = qtTrId("history.result.done").arg(DayPlanFooterText::formatDuration(hit.focusedSeconds));
        else if (hit.plannedMinutes.value_or(0) > 0)
            detail = DayPlanFooterText::formatDuration(qint64(*hit.plannedMinutes) * 60);
        m_results.append(QVariantMap{
            {QStringLiteral("id"), hit.id.toString(QUuid::WithoutBraces)},
            {QStringLiteral("title"), hit.title},
            {QStringLiteral("date"), ViewTexts::dayTitle(hit.day, today)},
            {QStringLiteral("detail"), detail},
            {QStringLiteral("completed"), hit.completed},
            {QStringLiteral("dayOffset"), int(today.daysTo(hit.day))},
        });
    }
    Q_EMIT resultsChanged();
}

QString HistoryModel::resultsLine() const
{
    if (m_query.trimmed().isEmpty())
        return {};
    if (m_results.isEmpty())
        //: History search: no task title contains the typed text
        //% "No task matches."
        return qtTrId("history.search.none");
    //: History search: how many tasks were found (at most 50, newest first)
    //% "%n task(s) found"
    return qtTrId("history.search.count", int(m_results.size()));
}

void HistoryModel::openResult(int dayOffset)
{
    m_popover.showDay(dayOffset);
}

Task *HistoryModel::task(const QString &id) const
{
    const QUuid uuid = QUuid::fromString(id);
    return uuid.isNull() ? nullptr : m_activeTasks.context().existingObject<Task>(uuid);
}

QString HistoryModel::focusText(const QString &id) const
{
    const Task *t = task(id);
    if (!t || !t->actualSecondsFocused())
        return {};
    const qint64 minutes = (std::max<qint64>(0, *t->actualSecondsFocused()) + 30) / 60;
    return DayPlanFooterText::formatDuration(minutes * 60);
}

QString HistoryModel::correctFocus(const QString &id, const QString &duration)
{
    Task *t = task(id);
    if (!t || duration.trimmed().isEmpty() || duration.trimmed() == focusText(id))
        return {};
    if (!TaskHistory::editable(*t, m_activeTasks.dayRepository().today(), m_settings.editHistoryEnabled()))
        return {};
    const std::optional<int> minutes = DurationParser::parse(duration.trimmed());
    if (!minutes)
        //: Task editor: the typed focused time cannot be read
        //% "Type the focused time like 25, 25m or 1h 5m."
        return qtTrId("history.edit.focusInvalid");
    try {
        m_activeTasks.taskRepository().setActualFocus(t, qint64(*minutes) * 60);
    } catch (const StoreError &error) {
        return error.description();
    }
    return {};
}

} // namespace tarnwell
