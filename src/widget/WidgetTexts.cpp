#include "WidgetTexts.h"

#include <QCoreApplication>

#include <algorithm>
#include <climits>

namespace tarnwell::WidgetTexts {

QString today()
{
    //: Widget header - the current day
    //% "Today"
    return qtTrId("day.navigator.today");
}

QString summaryZero()
{
    //: Widget summary when nothing is done yet
    //% "No tasks completed yet"
    return qtTrId("summary.zero");
}

QString summaryDone(qint64 count)
{
    //: Plural - completed task count
    //% "%n done"
    return qtTrId("summary.done", int(std::clamp<qint64>(count, 0, INT_MAX)));
}

QString minutesUnit()
{
    //: Short minutes unit, e.g. min
    //% "min"
    return qtTrId("duration.unit.minutes");
}

} // namespace tarnwell::WidgetTexts
