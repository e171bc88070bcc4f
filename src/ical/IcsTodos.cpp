#include "IcsWriter.h"

#include "persistence/Day.h"
#include "persistence/Task.h"

namespace tarnwell::IcsWriter {

QList<Todo> todos(const QList<Day *> &days, const Calendar &calendar)
{
    QList<Todo> out;
    for (const Day *day : days) {
        const QDate date = calendar.date(day->date());
        for (const Task *task : day->tasks()) {
            Todo todo;
            todo.uid = task->id().toString(QUuid::WithoutBraces);
            todo.day = date;
            todo.title = task->title();
            todo.notes = task->notes().value_or(QString());
            todo.createdAt = task->createdAt();
            todo.updatedAt = task->updatedAt();
            todo.urgent = task->urgent();
            todo.completed = task->completed();
            todo.completedAt = task->completedAt();
            todo.archived = task->archived();
            if (const auto minutes = task->durationMinutes())
                todo.plannedMinutes = *minutes;
            if (const auto seconds = task->actualSecondsFocused())
                todo.focusedSeconds = *seconds;
            out.append(std::move(todo));
        }
    }
    return out;
}

} // namespace tarnwell::IcsWriter
