#include "ViewTexts.h"

#include <QCoreApplication>
#include <QLocale>

namespace tarnwell::ViewTexts {

QString today()
{
    //: Name of the current day: the popover's day heading and the quick-add day chip
    //% "Today"
    return qtTrId("popover.day.today");
}

QString tomorrow()
{
    //: Name of the day after the current one: the popover's day heading and the quick-add day chip
    //% "Tomorrow"
    return qtTrId("popover.day.tomorrow");
}

QString yesterday()
{
    //: Name of the day before the current one: the popover's day heading
    //% "Yesterday"
    return qtTrId("popover.day.yesterday");
}

QString dayTitle(QDate date, QDate today_)
{
    const qint64 offset = today_.daysTo(date);
    if (offset == 0)
        return today();
    if (offset == 1)
        return tomorrow();
    if (offset == -1)
        return yesterday();
    return QLocale().dayName(date.dayOfWeek());
}

QString dayDate(QDate date)
{
    return QLocale().toString(date, QLocale::LongFormat);
}

QString dayChip(int offset, QDate today_)
{
    if (offset == 0)
        return today();
    if (offset == 1)
        return tomorrow();
    return QLocale().dayName(today_.addDays(offset).dayOfWeek());
}

QString extendChip(int minutes)
{
    //: Task card chip that adds minutes to the planned duration; %n = the minutes
    //% "+%n min"
    return qtTrId("activeTask.extend.", minutes);
}

QString extendTooltip(int minutes)
{
    //: Tooltip of the task card's extend chip; %n = the minutes it adds
    //% "Add %n minute(s) to the plan"
    return qtTrId("activeTask.action.extend.tooltip", minutes);
}

QString undo()
{
    //: Toast action that takes back the change the toast reports
    //% "Undo"
    return qtTrId("popover.toast.undo");
}

QString movedToTomorrow(const QString &title)
{
    //: Toast after a task was moved to the next day; %1 = the task's title
    //% "Moved “%1” to tomorrow"
    return qtTrId("popover.toast.movedToTomorrow").arg(title);
}

QString movedOverflow(int count)
{
    //: Toast after the tasks that do not fit the workday were moved to the next day
    //% "Moved %n task(s) to tomorrow"
    return qtTrId("popover.toast.movedOverflow", count);
}

QString deleted(const QString &title)
{
    //: Toast after a task was deleted; %1 = the task's title
    //% "Deleted “%1”"
    return qtTrId("popover.toast.deleted").arg(title);
}

} // namespace tarnwell::ViewTexts
