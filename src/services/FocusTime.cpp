#include "FocusTime.h"

#include "kit/Clock.h"

#include <algorithm>

namespace tarnwell::FocusTime {

qint64 elapsedSeconds(const Task &task, const QDateTime &now)
{
    const auto started = task.activeStartedAt();
    if (!started)
        return 0;
    // An instant we cannot measure from is a broken clock, not a user error.
    if (!now.isValid() || !started->isValid())
        qFatal("Focus timer: cannot measure from %s to %s", qPrintable(started->toString(Qt::ISODateWithMs)),
               qPrintable(now.toString(Qt::ISODateWithMs)));
    return std::max<qint64>(0, wholeSecondsBetween(*started, now));
}

qint64 focusedSeconds(const Task &task, const QDateTime &now)
{
    return qint64(task.actualSecondsFocused().value_or(0)) + elapsedSeconds(task, now);
}

} // namespace tarnwell::FocusTime
