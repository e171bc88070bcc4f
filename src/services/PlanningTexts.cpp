#include "PlanningTexts.h"

#include <QCoreApplication>

namespace tarnwell::PlanningTexts {

QString quickAddTitleRequired()
{
    //: Quick add: the typed line holds no title once its duration, day and urgent marks are taken off
    //% "Type a title for the task."
    return qtTrId("quickAdd.error.titleRequired");
}

QString dayPlanPlanned(const QString &duration)
{
    //: Day plan footer: planned work left; %1 = the total as hours and minutes (as 1h 41m)
    //% "%1 planned"
    return qtTrId("dayPlan.planned").arg(duration);
}

QString dayPlanFinishPrefix()
{
    //: Day plan footer: the word before the finish time (as in Done 21:53)
    //% "Done"
    return qtTrId("dayPlan.finishPrefix");
}

QString dayPlanWorkdayEnds(const QString &time)
{
    //: Day plan footer: the workday end while it lies ahead; %1 = a time of day (as 18:00)
    //% "Workday ends %1"
    return qtTrId("dayPlan.workdayEnds").arg(time);
}

QString dayPlanWorkdayEnded(const QString &time)
{
    //: Day plan footer: the workday end once it has passed; %1 = a time of day (as 18:00)
    //% "Workday ended %1"
    return qtTrId("dayPlan.workdayEnded").arg(time);
}

QString dayPlanWorkday(const QString &time)
{
    //: Day plan footer: the workday end in the summary line; %1 = a time of day (as 18:00)
    //% "Workday %1"
    return qtTrId("dayPlan.workday").arg(time);
}

QString dayPlanSummary(const QString &line)
{
    //: Day plan footer: accessibility text of the summary line; %1 = the line's parts, comma separated
    //% "Day plan: %1"
    return qtTrId("dayPlan.summary").arg(line);
}

QString dayPlanOverflowCount(int count)
{
    //: Day plan footer: how many tasks do not fit the workday
    //% "%n task(s) past the workday"
    return qtTrId("dayPlan.overflowCount", count);
}

QString dayPlanUntimed(int count)
{
    //: Day plan footer: how many tasks have no duration and are left out of the total
    //% "%n without a duration"
    return qtTrId("dayPlan.untimed", count);
}

QString dayPlanMoveOverflow()
{
    //: Day plan footer: button that moves the tasks that do not fit the workday to tomorrow
    //% "Move what doesn't fit to tomorrow"
    return qtTrId("dayPlan.moveOverflow");
}

QString dayPlanMoveOverflowShort()
{
    //: Day plan footer: short form of the button that moves the tasks that do not fit to tomorrow
    //% "Move to tomorrow"
    return qtTrId("dayPlan.moveOverflow.short");
}

QString routineMenuLoad()
{
    //: Routine menu: heading of the section listing the routines to load into the day
    //% "Load routine"
    return qtTrId("routine.menu.load");
}

QString routineMenuSaveQueue()
{
    //: Routine menu: saves the day's queue as a new routine
    //% "Save queue as routine…"
    return qtTrId("routine.menu.saveQueue");
}

QString routineMenuManage()
{
    //: Routine menu: opens the routines settings
    //% "Manage routines…"
    return qtTrId("routine.menu.manage");
}

QString routineMenuNone()
{
    //: Routine menu: shown when no routines are saved yet
    //% "No routines yet"
    return qtTrId("routine.menu.none");
}

QString routineMenuTooltip()
{
    //: Routine menu: tooltip of the button that opens the menu
    //% "Routines"
    return qtTrId("routine.menu.tooltip");
}

QString routineNameField()
{
    //: Label of the field that asks for the name of a routine being saved
    //% "Routine name"
    return qtTrId("routine.nameField");
}

QString routineNameFieldPlaceholder()
{
    //: Placeholder of the routine name field
    //% "Morning routine"
    return qtTrId("routine.nameField.placeholder");
}

QString routineDefaultName()
{
    //: Name of a new routine made in the routines settings
    //% "New routine"
    return qtTrId("settings.routines.defaultName");
}

QString toastRoutineLoaded(int count)
{
    //: Toast: tasks a routine added to the day
    //% "Added %n task(s)"
    return qtTrId("toast.routineLoaded", count);
}

QString toastRoutineAlreadyLoaded(const QString &routineName)
{
    //: Toast: every task of the routine is already on this day; %1 = routine name
    //% "%1 is already on this day"
    return qtTrId("toast.routineAlreadyLoaded").arg(routineName);
}

QString toastRoutineSaved(const QString &routineName)
{
    //: Toast: the day's queue was saved as a routine; %1 = routine name
    //% "Saved routine %1"
    return qtTrId("toast.routineSaved").arg(routineName);
}

QString repeatMenu()
{
    //: Title of the menu that chooses on which weekdays a routine repeats
    //% "Repeat"
    return qtTrId("repeat.menu");
}

QString repeatOption(RoutineSchedule::Kind kind)
{
    switch (kind) {
    case RoutineSchedule::Kind::never:
        //: Repeat: not at all
        //% "Never"
        return qtTrId("repeat.option.never");
    case RoutineSchedule::Kind::everyDay:
        //: Repeat: every day
        //% "Every day"
        return qtTrId("repeat.option.everyDay");
    case RoutineSchedule::Kind::weekdays:
        //: Repeat: Monday to Friday
        //% "Weekdays"
        return qtTrId("repeat.option.weekdays");
    case RoutineSchedule::Kind::custom:
        //: Repeat: on chosen weekdays
        //% "Custom"
        return qtTrId("repeat.option.custom");
    }
    return {};
}

QString rolloverFromYesterday(int count)
{
    //: Rollover bar: the count of unfinished tasks carried over from yesterday
    //% "%n unfinished task(s) from yesterday"
    return qtTrId("rollover.banner.fromYesterday", count);
}

QString rolloverFromEarlier(int count)
{
    //: Rollover bar: the count of unfinished tasks carried over from the past week, the oldest before yesterday
    //% "%n unfinished task(s) from earlier days"
    return qtTrId("rollover.banner.fromEarlier", count);
}

QString rolloverRollForward()
{
    //: Move unfinished past work onto today
    //% "Move to today"
    return qtTrId("rollover.banner.rollForward");
}

QString rolloverArchive()
{
    //: Archive unfinished past work
    //% "Archive"
    return qtTrId("rollover.banner.archive");
}

QString rolloverDismiss()
{
    //: Hide the rollover bar for today
    //% "Hide for today"
    return qtTrId("rollover.banner.dismiss");
}

} // namespace tarnwell::PlanningTexts
