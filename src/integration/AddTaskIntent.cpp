#include "AddTaskIntent.h"

#include "persistence/DayRepository.h"
#include "persistence/TaskRepository.h"

namespace tarnwell {

AddTaskIntentRunner::AddTaskIntentRunner(DayRepository &days, TaskRepository &tasks)
    : m_days(days)
    , m_tasks(tasks)
{
}

AddTaskIntentRunner::Outcome AddTaskIntentRunner::run(const QString &title, std::optional<int> durationMinutes,
                                                      bool urgent)
{
    // The title rules first: a refused title must not leave a new day behind.
    TaskRepository::validatedTitle(title);
    Day *day = m_days.fetchOrCreateDay(m_days.clock()());
    const std::optional<qint64> minutes = durationMinutes ? std::optional<qint64>(*durationMinutes) : std::nullopt;
    const Task *task = m_tasks.createTask(title, minutes, urgent, day);
    return Outcome{task->title()};
}

QString AddTaskIntent::perform(AddTaskIntentRunner &runner) const
{
    return confirmation(runner.run(title, durationMinutes, urgent).title);
}

QString AddTaskIntent::titleText()
{
    //: Name of the system action that adds a task (launchers, command line help)
    //% "Add Task to Tarnwell"
    return qtTrId("intent.addTask.title");
}

QString AddTaskIntent::descriptionText()
{
    //: Description of the Add Task action
    //% "Adds a task to the end of today's queue, or to the top when it is urgent."
    return qtTrId("intent.addTask.description");
}

QString AddTaskIntent::shortTitleText()
{
    //: Short name of the Add Task action, for tight lists
    //% "Add Task"
    return qtTrId("intent.addTask.short");
}

QString AddTaskIntent::titleParameterText()
{
    //: Name of the Add Task action's title parameter
    //% "Title"
    return qtTrId("intent.addTask.param.title");
}

QString AddTaskIntent::durationParameterText()
{
    //: Name of the Add Task action's planned-minutes parameter
    //% "Planned minutes"
    return qtTrId("intent.addTask.param.duration");
}

QString AddTaskIntent::urgentParameterText()
{
    //: Name of the Add Task action's urgent parameter
    //% "Urgent"
    return qtTrId("intent.addTask.param.urgent");
}

QString AddTaskIntent::confirmation(const QString &storedTitle)
{
    //: Confirmation dialog after the Add Task to Tarnwell intent runs; %1 is the task's title
    //% "Added “%1” to Tarnwell."
    return qtTrId("intent.addTask.confirmation").arg(storedTitle);
}

} // namespace tarnwell
