#include "FocusTexts.h"

#include <QCoreApplication>

namespace tarnwell::FocusTexts {

QString status(FocusTime::TimerState state)
{
    switch (state) {
    case FocusTime::TimerState::ready:
        //: Now card status label
        //% "Ready"
        return qtTrId("activeTask.status.ready");
    case FocusTime::TimerState::focusing:
        //: Now card status label
        //% "Focusing"
        return qtTrId("activeTask.status.focusing");
    case FocusTime::TimerState::paused:
        //: Now card status label
        //% "Paused"
        return qtTrId("activeTask.status.paused");
    }
    return {};
}

QString timerAction(FocusTime::TimerState state)
{
    switch (state) {
    case FocusTime::TimerState::ready:
        //: Timer play/pause action label
        //% "Start"
        return qtTrId("activeTask.timer.start");
    case FocusTime::TimerState::paused:
        //: Timer play/pause action label
        //% "Resume"
        return qtTrId("activeTask.timer.resume");
    case FocusTime::TimerState::focusing:
        //: Timer play/pause action label
        //% "Pause"
        return qtTrId("activeTask.timer.pause");
    }
    return {};
}

QString countdownLeft()
{
    //: Countdown on the now card, shown after the remaining time (as in "12:30 left")
    //% "left"
    return qtTrId("activeTask.countdown.left");
}

QString countdownEndsAt(const QString &time)
{
    //: Countdown on the now card: the wall-clock time at which the planned time runs out; %1 is that time
    //% "ends at %1"
    return qtTrId("activeTask.countdown.endsAt").arg(time);
}

QString countdownOver()
{
    //: Countdown on the now card, shown after the time spent beyond the plan (as in "+01:15 over")
    //% "over"
    return qtTrId("activeTask.countdown.over");
}

QString completionTitle()
{
    //: Next-up screen title after a task is marked done
    //% "Task done"
    return qtTrId("completion.title");
}

QString completionFocused(const QString &duration)
{
    //: Next-up screen: focused time of the finished task; %1 is a duration such as 25:30 or 1:02:05
    //% "Focused for %1"
    return qtTrId("completion.focused").arg(duration);
}

QString completionNextUp()
{
    //: Next-up screen: heading above the next task in the queue
    //% "Next up"
    return qtTrId("completion.nextUp");
}

QString completionQueueEmpty()
{
    //: Next-up screen: shown when no task is left in today's queue
    //% "Nothing else planned for today."
    return qtTrId("completion.queueEmpty");
}

QString completionStart()
{
    //: Next-up screen action: start the next task now
    //% "Start next"
    return qtTrId("completion.start");
}

QString completionSkip(int breakMinutes)
{
    //: Next-up screen action: skip the break of %n minutes and carry on
    //% "Skip %n-min break"
    return qtTrId("completion.skip", breakMinutes);
}

} // namespace tarnwell::FocusTexts
