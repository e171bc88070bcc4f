// The stored model: one description per entity, matching schema/*.sql.
#include "AppSettings.h"
#include "Day.h"
#include "Routine.h"
#include "RoutineItem.h"
#include "Task.h"

namespace tarnwell {

using T = AttributeType;

const EntityDescription &Task::description()
{
    static const EntityDescription entity{
        "Task",
        "tasks",
        {
            {"id", "id", T::Uuid, false},
            {"title", "title", T::String, false},
            {"notes", "notes", T::String, true},
            {"durationMinutes", "duration_minutes", T::Int32, true},
            {"urgent", "urgent", T::Bool, false},
            {"orderIndex", "order_index", T::Int32, false},
            {"completed", "completed", T::Bool, false},
            {"completedAt", "completed_at", T::Date, true},
            {"archived", "archived", T::Bool, false},
            {"actualSecondsFocused", "actual_seconds_focused", T::Int32, true},
            {"activeStartedAt", "active_started_at", T::Date, true},
            {"actualEditedManually", "actual_edited_manually", T::Bool, false},
            {"awaySecondsDiscarded", "away_seconds_discarded", T::Int32, true},
            {"dueDate", "due_date", T::Date, true},
            {"rolledFromDate", "rolled_from_date", T::Date, true},
            {"routineItemID", "routine_item_id", T::Uuid, true},
            {"createdAt", "created_at", T::Date, false},
            {"updatedAt", "updated_at", T::Date, false},
            {"day", "day_id", T::Reference, true, &Day::description},
        },
        {},
        []() -> ManagedObject * { return new Task; },
    };
    return entity;
}

const EntityDescription &Day::description()
{
    static const EntityDescription entity{
        "Day",
        "days",
        {
            {"id", "id", T::Uuid, false},
            {"date", "date", T::Date, false},
            {"createdAt", "created_at", T::Date, true},
        },
        {{"tasks", &Task::description, Task::DayReference, true}},
        []() -> ManagedObject * { return new Day; },
    };
    return entity;
}

const EntityDescription &Routine::description()
{
    static const EntityDescription entity{
        "Routine",
        "routines",
        {
            {"id", "id", T::Uuid, false},
            {"name", "name", T::String, false},
            {"orderIndex", "order_index", T::Int32, false},
            {"repeatWeekdays", "repeat_weekdays", T::Int16, false},
            {"lastAppliedDate", "last_applied_date", T::Date, true},
            {"createdAt", "created_at", T::Date, true},
            {"updatedAt", "updated_at", T::Date, true},
        },
        {{"items", &RoutineItem::description, RoutineItem::RoutineReference, true}},
        []() -> ManagedObject * { return new Routine; },
    };
    return entity;
}

const EntityDescription &RoutineItem::description()
{
    static const EntityDescription entity{
        "RoutineItem",
        "routine_items",
        {
            {"id", "id", T::Uuid, false},
            {"title", "title", T::String, false},
            {"notes", "notes", T::String, true},
            {"durationMinutes", "duration_minutes", T::Int32, true},
            {"orderIndex", "order_index", T::Int32, false},
            {"routine", "routine_id", T::Reference, true, &Routine::description},
        },
        {},
        []() -> ManagedObject * { return new RoutineItem; },
    };
    return entity;
}

const EntityDescription &AppSettings::description()
{
    static const EntityDescription entity{
        "AppSettings",
        "app_settings",
        {
            {"id", "id", T::Uuid, false},
            {"workdayEndMinutes", "workday_end_minutes", T::Int32, false},
            {"idleThresholdMinutes", "idle_threshold_minutes", T::Int32, false},
            {"minimalIdleMode", "minimal_idle_mode", T::Bool, false},
            {"preEndWarningMinutes", "pre_end_warning_minutes", T::Int32, false},
            {"overtimePresetMinutes", "overtime_preset_minutes", T::Int32, false},
            {"skipBreakPresetMinutes", "skip_break_preset_minutes", T::Int32, false},
            {"notificationsEnabled", "notifications_enabled", T::Bool, false},
            {"soundEnabled", "sound_enabled", T::Bool, false},
            {"chimeSoundName", "chime_sound_name", T::String, false},
            {"hotkeyTogglePopover", "hotkey_toggle_popover", T::String, false},
            {"hotkeyQuickAdd", "hotkey_quick_add", T::String, false},
            {"menuBarMaxChars", "menu_bar_max_chars", T::Int32, false},
            {"sortMode", "sort_mode", T::String, false},
            {"theme", "theme", T::String, true},
            {"language", "language", T::String, false},
            {"loginItemEnabled", "login_item_enabled", T::Bool, false},
            {"onboardingCompleted", "onboarding_completed", T::Bool, false},
            {"editHistoryEnabled", "edit_history_enabled", T::Bool, false},
            {"warningChimeName", "warning_chime_name", T::String, true},
            {"completionChimeName", "completion_chime_name", T::String, true},
            {"chimeVolumePercent", "chime_volume_percent", T::Int32, true},
        },
        {},
        []() -> ManagedObject * { return new AppSettings; },
    };
    return entity;
}

Task::Task()
    : ManagedObject(description())
{
}
Day::Day()
    : ManagedObject(description())
{
}
Routine::Routine()
    : ManagedObject(description())
{
}
RoutineItem::RoutineItem()
    : ManagedObject(description())
{
}
AppSettings::AppSettings()
    : ManagedObject(description())
{
}

Day *Task::day() const
{
    return static_cast<Day *>(referenced(DayReference));
}

void Task::setDay(Day *day)
{
    setReferenced(DayReference, day);
}

QList<Task *> Day::tasks() const
{
    QList<Task *> out;
    const auto members = related(Tasks);
    out.reserve(members.size());
    for (ManagedObject *m : members)
        out.append(static_cast<Task *>(m));
    return out;
}

Routine *RoutineItem::routine() const
{
    return static_cast<Routine *>(referenced(RoutineReference));
}

void RoutineItem::setRoutine(Routine *routine)
{
    setReferenced(RoutineReference, routine);
}

QList<RoutineItem *> Routine::items() const
{
    QList<RoutineItem *> out;
    const auto members = related(Items);
    out.reserve(members.size());
    for (ManagedObject *m : members)
        out.append(static_cast<RoutineItem *>(m));
    return out;
}

} // namespace tarnwell
