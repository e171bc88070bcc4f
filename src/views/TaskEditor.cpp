#include "TaskEditor.h"

#include "kit/Logging.h"
#include "persistence/RepositoryError.h"
#include "persistence/Routine.h"
#include "persistence/RoutineItem.h"
#include "persistence/StoreError.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"
#include "services/ActiveTaskService.h"
#include "services/DurationParser.h"
#include "services/PlanningTexts.h"
#include "services/RoutineService.h"
#include "services/TaskHistory.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

TaskEditor::TaskEditor(ActiveTaskService &activeTasks, RoutineService &routines, QObject *parent)
    : QObject(parent)
    , m_activeTasks(activeTasks)
    , m_routines(routines)
{
}

Task *TaskEditor::task(const QString &id) const
{
    const QUuid uuid = QUuid::fromString(id);
    return uuid.isNull() ? nullptr : m_activeTasks.context().existingObject<Task>(uuid);
}

QString TaskEditor::save(const QString &id, const QString &title, const QString &notes, const QString &duration,
                         const QDateTime &dueDate)
{
    Task *t = task(id);
    if (!t ||
        !TaskHistory::editable(*t, m_activeTasks.dayRepository().today(),
                               m_activeTasks.settingsStore().editHistoryEnabled()))
        return {};
    std::optional<qint64> minutes;
    if (!duration.trimmed().isEmpty()) {
        const std::optional<int> parsed = DurationParser::parse(duration.trimmed());
        if (!parsed)
            //: Task editor: the typed planned time cannot be read
            //% "Type the planned time like 45, 45m, 1h 30m or 1.5h."
            return qtTrId("popover.edit.durationInvalid");
        minutes = *parsed;
    }
    return save(t, title, notes, minutes, dueDate);
}

QString TaskEditor::save(Task *t, const QString &title, const QString &notes, std::optional<qint64> minutes,
                         const QDateTime &dueDate)
{
    const QString trimmedNotes = notes.trimmed();
    try {
        m_activeTasks.taskRepository().updateTask(
            t, title, trimmedNotes.isEmpty() ? std::nullopt : std::optional<QString>(trimmedNotes), minutes,
            dueDate.isValid() ? std::optional<QDateTime>(dueDate) : std::nullopt);
    } catch (const RepositoryError &error) {
        return error.localizedDescription();
    } catch (const StoreError &error) {
        return error.description();
    }
    return {};
}

QString TaskEditor::durationText(int minutes) const
{
    if (minutes < 1)
        return {};
    const int hours = minutes / 60;
    const int rest = minutes % 60;
    if (hours == 0)
        return QStringLiteral("%1m").arg(rest);
    return rest == 0 ? QStringLiteral("%1h").arg(hours) : QStringLiteral("%1h %2m").arg(hours).arg(rest);
}

QStringList TaskEditor::repeatOptions() const
{
    return {PlanningTexts::repeatOption(RoutineSchedule::Kind::never),
            PlanningTexts::repeatOption(RoutineSchedule::Kind::everyDay),
            PlanningTexts::repeatOption(RoutineSchedule::Kind::weekdays),
            PlanningTexts::repeatOption(RoutineSchedule::Kind::custom)};
}

int TaskEditor::repeatChoice(const QString &id) const
{
    const Task *t = task(id);
    return t ? int(m_routines.schedule(t).kind()) : never;
}

QString TaskEditor::setRepeat(const QString &id, int choice)
{
    Task *t = task(id);
    if (!t || choice == repeatChoice(id))
        return {};
    RoutineSchedule schedule;
    switch (choice) {
    case never:
        schedule = RoutineSchedule::never();
        break;
    case everyDay:
        schedule = RoutineSchedule::everyDay();
        break;
    case weekdays:
        schedule = RoutineSchedule::weekdays();
        break;
    default:
        return {}; // chosen weekdays are set in the routines window
    }
    try {
        if (choice != never && m_routines.schedule(t).kind() == RoutineSchedule::Kind::never && !t->routineItemID()) {
            // A task of its own: it becomes a routine of one, and this task is
            // that routine's today, so loading it today adds nothing twice.
            Routine *routine = m_routines.saveQueue({t}, t->title());
            const QList<RoutineItem *> items = routine->items();
            if (items.isEmpty())
                return {};
            t->setRoutineItemID(items.first()->id());
        }
    } catch (const RepositoryError &error) {
        return error.localizedDescription();
    } catch (const StoreError &error) {
        return error.description();
    }
    if (!m_routines.changeRepeat(t, schedule))
        //: Task editor: the Repeat choice could not be saved
        //% "The repeat rule could not be saved."
        return qtTrId("popover.edit.repeatFailed");
    return {};
}

} // namespace tarnwell
