#include "TaskAutomation.h"

#include "TaskSnapshot.h"
#include "kit/Logging.h"
#include "persistence/Day.h"
#include "persistence/Task.h"
#include "services/ActiveTaskService.h"
#include "services/QuickAddSyntaxParser.h"
#include "services/PlanningTexts.h"
#include "services/TaskCompletionFlow.h"

namespace tarnwell {

TaskAutomation::TaskAutomation(ActiveTaskService &activeTasks, SoundService &sounds, CompletionPresenter &presenter,
                               Calendar calendar, CalendarWriter calendarWriter, QObject *parent)
    : QObject(parent)
    , m_activeTasks(activeTasks)
    , m_sounds(sounds)
    , m_presenter(presenter)
    , m_calendar(std::move(calendar))
    , m_calendarWriter(std::move(calendarWriter))
    , m_runner(activeTasks.dayRepository(), activeTasks.taskRepository())
{
    // Every change of the queue or a timer is a store change.
    connect(&m_activeTasks.context(), &StoreContext::objectsDidChange, this, [this] { Q_EMIT changed(); });
}

QString TaskAutomation::noTaskInHandText()
{
    //: A script or the command line asked to drive the task in hand, but today's queue is empty
    //% "There is no task in hand: today's queue is empty."
    return qtTrId("automation.error.noTaskInHand");
}

Task *TaskAutomation::taskInHand() const
{
    Task *task = m_activeTasks.activeTask();
    if (!task)
        throw AutomationError(AutomationError::Kind::noTaskInHand, noTaskInHandText());
    return task;
}

QString TaskAutomation::addChecked(AddTaskIntentRunner &runner, const QString &title, qint64 durationMinutes,
                                   bool urgent)
{
    const AddTaskIntent intent{AutomationArguments::text(title, QStringLiteral("title")),
                               AutomationArguments::plannedMinutes(durationMinutes), urgent};
    return runner.run(intent.title, intent.durationMinutes, intent.urgent).title;
}

QString TaskAutomation::addQuickLine(DayRepository &days, TaskRepository &tasks, const Calendar &calendar,
                                     const QDateTime &now, const QString &line)
{
    const QString text = AutomationArguments::text(line, QStringLiteral("line"));
    const auto parsed = QuickAddSyntaxParser::parse(text, now, calendar);
    if (!parsed)
        throw ArgumentError(PlanningTexts::quickAddTitleRequired());
    TaskRepository::validatedTitle(parsed->title);
    Day *day = days.fetchOrCreateDay(calendar.startOfDayAdding(now, parsed->dayOffset.value_or(0)));
    const std::optional<qint64> minutes =
        parsed->durationMinutes ? std::optional<qint64>(*parsed->durationMinutes) : std::nullopt;
    return tasks.createTask(parsed->title, minutes, parsed->urgent, day)->title();
}

QString TaskAutomation::addTask(const QString &title, qint64 durationMinutes, bool urgent)
{
    const QString stored = addChecked(m_runner, title, durationMinutes, urgent);
    qCInfo(lcServices).noquote() << QStringLiteral("Added a task from outside: %1").arg(stored);
    return stored;
}

QString TaskAutomation::addQuickTask(const QString &line)
{
    const QString stored = addQuickLine(m_activeTasks.dayRepository(), m_activeTasks.taskRepository(), m_calendar,
                                        m_activeTasks.clock()(), line);
    qCInfo(lcServices).noquote() << QStringLiteral("Added a task from outside: %1").arg(stored);
    return stored;
}

QJsonObject TaskAutomation::status() const
{
    const QDateTime now = m_activeTasks.clock()();
    return TaskSnapshot::status(m_activeTasks.queue(), m_calendar.date(now), now);
}

QJsonArray TaskAutomation::tasks(const QString &day) const
{
    const QDateTime now = m_activeTasks.clock()();
    const auto date = AutomationArguments::day(day);
    Day *found = m_activeTasks.dayRepository().day(date ? m_calendar.startOfDay(*date) : now);
    return TaskSnapshot::dayTasks(found ? found->tasks() : QList<Task *>(), now);
}

QString TaskAutomation::complete(const QString &taskId)
{
    Task *task = nullptr;
    if (const auto id = AutomationArguments::taskId(taskId)) {
        task = m_activeTasks.context().existingObject<Task>(*id);
        if (!task || task->completed() || task->archived())
            //: A script asked to complete a task that does not exist or is not open; %1 is the id
            //% "No open task has the id %1."
            throw AutomationError(AutomationError::Kind::taskNotFound,
                                  qtTrId("automation.error.taskNotFound").arg(id->toString(QUuid::WithoutBraces)));
    } else {
        task = taskInHand();
    }
    const QString title = task->title();
    TaskCompletionFlow::complete(task->id(), m_activeTasks, m_sounds, m_presenter, false);
    // The flow logs a failed save and leaves the change pending.
    if (!task->completed() || m_activeTasks.context().hasChanges())
        throw StoreError(QStringLiteral("Tarnwell"), 1, QStringLiteral("the completion could not be saved"));
    return title;
}

QString TaskAutomation::start()
{
    Task *task = taskInHand();
    m_activeTasks.startTimer(task);
    return task->title();
}

QString TaskAutomation::pause()
{
    Task *task = taskInHand();
    m_activeTasks.pauseTimer(task);
    return task->title();
}

QString TaskAutomation::toggle()
{
    Task *task = taskInHand();
    m_activeTasks.toggleTimer(task);
    return task->title();
}

QByteArray TaskAutomation::exportData(const QString &format, const QString &from, const QString &to)
{
    const auto kind = AutomationArguments::exportFormat(format);
    const TaskExchange::Range range{AutomationArguments::day(from), AutomationArguments::day(to)};
    AutomationArguments::dayRange(range.from, range.to);
    DayRepository &days = m_activeTasks.dayRepository();
    switch (kind) {
    case AutomationArguments::ExportFormat::json:
        return TaskExchange::exportJson(m_activeTasks.context(), days, range, m_activeTasks.clock()());
    case AutomationArguments::ExportFormat::csv:
        return TaskExchange::exportCsv(days, range);
    case AutomationArguments::ExportFormat::ics:
        if (!m_calendarWriter)
            throw ArgumentError(qtTrId("error.argument.format").arg(format));
        return m_calendarWriter(TaskExchange::daysIn(days, range), m_calendar);
    }
    return {};
}

TaskExchange::ImportSummary TaskAutomation::importData(const QByteArray &document)
{
    if (document.size() > AutomationArguments::Limits::documentBytes)
        //: An import file is larger than we accept; %1 is the limit in megabytes
        //% "The file is too large to import (at most %1 MB)."
        throw ImportError(
            qtTrId("error.import.tooLarge").arg(AutomationArguments::Limits::documentBytes / (1024 * 1024)));
    const TaskExchange::Document parsed = TaskExchange::read(document);
    const auto summary = TaskExchange::apply(parsed, m_activeTasks.context(), m_activeTasks.dayRepository());
    m_activeTasks.refresh();
    qCInfo(lcServices).noquote() << QStringLiteral("Imported %1 days, %2 tasks and %3 routines")
                                        .arg(summary.days)
                                        .arg(summary.tasks)
                                        .arg(summary.routines);
    return summary;
}

} // namespace tarnwell
