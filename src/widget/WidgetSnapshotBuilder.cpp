#include "WidgetSnapshotBuilder.h"

#include "WidgetTexts.h"
#include "kit/Translations.h"
#include "services/DailySummary.h"
#include "services/DayPlanCalculator.h"
#include "services/DayPlanFooterText.h"
#include "services/FocusTime.h"
#include "services/RolloverService.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

namespace {

WidgetSnapshot::Item item(const Task *task)
{
    return {task->id(), task->title(), task->durationMinutes(), task->rolledFromDate().has_value()};
}

} // namespace

WidgetSnapshotBuilder::WidgetSnapshotBuilder(StoreContext &context, AppSettingsStore &settingsStore, Calendar calendar,
                                             Clock clock, RolloverService *rollover)
    : m_settings(settingsStore)
    , m_calendar(calendar)
    , m_clock(clock)
    , m_days(context, calendar, clock)
    , m_tasks(context, calendar, clock, m_days)
    , m_rollover(rollover)
{
}

WidgetSnapshotBuilder::Timing WidgetSnapshotBuilder::timing(const Task *anchor, const QDateTime &now)
{
    Timing t;
    if (!anchor)
        return t;
    const qint64 banked = anchor->actualSecondsFocused().value_or(0);
    t.elapsedSeconds = banked + FocusTime::elapsedSeconds(*anchor, now);
    if (const auto minutes = anchor->durationMinutes())
        t.totalSeconds = qint64(*minutes) * 60;
    t.timerStart = anchor->activeStartedAt();
    t.isRunning = t.timerStart.has_value();
    if (t.isRunning && t.totalSeconds)
        t.deadline = t.timerStart->addSecs(*t.totalSeconds - banked);
    t.isOverdue = t.totalSeconds && t.elapsedSeconds > 0 && t.elapsedSeconds >= *t.totalSeconds;
    return t;
}

QString WidgetSnapshotBuilder::dayLabel(const QDateTime &now, const Calendar &calendar, const QString &code)
{
    const QLocale locale = Translations::locale(code);
    // Weekday, day and short month in the order of the language.
    QString format;
    if (code == QLatin1String("de"))
        format = QStringLiteral("ddd, d. MMM");
    else if (code == QLatin1String("tr"))
        format = QStringLiteral("d MMM ddd");
    else if (code == QLatin1String("es"))
        format = QStringLiteral("ddd, d MMM");
    else if (code == QLatin1String("fr"))
        format = QStringLiteral("ddd d MMM");
    else if (locale.dateFormat(QLocale::ShortFormat).startsWith(QLatin1Char('M')))
        format = QStringLiteral("ddd, MMM d");
    else
        format = QStringLiteral("ddd d MMM");
    return WidgetTexts::today() + QStringLiteral(", ") + locale.toString(calendar.date(now), format);
}

WidgetSnapshot WidgetSnapshotBuilder::build(bool appRunning)
{
    const QDateTime now = m_clock();
    WidgetSnapshot s;

    Day *today = m_days.day(now);
    const QList<Task *> queue = m_tasks.openTasks(today);
    if (!queue.isEmpty())
        s.anchor = item(queue.first());
    for (qsizetype i = 1; i < queue.size() && s.upNext.size() < WidgetSnapshot::Limits::upNext; ++i)
        s.upNext << item(queue.at(i));
    s.totalQueued = queue.size();

    const Timing t = timing(queue.isEmpty() ? nullptr : queue.first(), now);
    s.totalSeconds = t.totalSeconds;
    s.elapsedSeconds = t.elapsedSeconds;
    s.timerStart = t.timerStart;
    s.deadline = t.deadline;
    s.isRunning = t.isRunning;
    s.isOverdue = t.isOverdue;

    s.languageCode = Translations::resolve(storedText(m_settings.language()));
    s.dayLabel = dayLabel(now, m_calendar, s.languageCode);

    // Today's finished work: how many tasks, and their focused seconds.
    const DailySummary done = DailySummary::load(today);
    s.completedCount = done.completedCount;
    const qint64 focused = done.focusedSeconds;
    s.totalCount = s.completedCount + s.totalQueued;
    s.summaryLine = s.completedCount <= 0 ? WidgetTexts::summaryZero() : WidgetTexts::summaryDone(s.completedCount);
    if (s.completedCount > 0 && focused > 0)
        s.summaryLine += QStringLiteral(" \u00B7 ") + DayPlanFooterText::formatDuration(focused);

    std::optional<qint64> runningRemaining;
    if (t.totalSeconds)
        runningRemaining = *t.totalSeconds - t.elapsedSeconds;
    const DayPlan plan = DayPlanCalculator::plan(queue, runningRemaining, true, now, std::nullopt);
    if (plan.totalSeconds > 0)
        s.plannedLabel = DayPlanFooterText::formatDuration(plan.totalSeconds);

    if (m_rollover) {
        if (const auto candidate = m_rollover->candidate())
            s.rolledOverCount = candidate->tasks.size();
    }
    s.minutesUnit = WidgetTexts::minutesUnit();
    s.appearance = storedText(m_settings.theme());
    s.appRunning = appRunning;
    s.validUntil = m_calendar.startOfDayAdding(now, 1);
    s.updatedAt = now;
    return s;
}

} // namespace tarnwell
