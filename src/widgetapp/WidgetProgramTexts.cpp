#include "WidgetProgramTexts.h"

#include <QCoreApplication>

namespace tarnwell::widgetapp::WidgetProgramTexts {

QString notRunning()
{
    //: Desktop widget and status bar when there is nothing current to show
    //% "Tarnwell is not running"
    return qtTrId("widget.empty.notRunning");
}

QString nothingQueued()
{
    //: Desktop widget and status bar when today has no open task
    //% "Nothing left for today"
    return qtTrId("widget.empty.nothingQueued");
}

QString upNext()
{
    //: Desktop widget: heading of the tasks after the task in hand
    //% "Up next"
    return qtTrId("widget.upNext");
}

QString done()
{
    //: Desktop widget: button that marks the task in hand done
    //% "Done"
    return qtTrId("widget.action.done");
}

QString rolledOver()
{
    //: Desktop widget: marks a task carried over from an earlier day (screen readers, tooltip)
    //% "Carried over from an earlier day"
    return qtTrId("widget.rolledOver");
}

QString summary()
{
    //: tarnwell-widget --help: first line
    //% "Shows the task in hand and its countdown on the desktop or in a status bar."
    return qtTrId("widget.cli.summary");
}

QString placement()
{
    //: tarnwell-widget --help: how to place the desktop window; keep the option names and the class name as they are
    //% "Without an option it opens a small window on the desktop. Drag it to move it, or start it with --position X,Y. In a tiling window manager, let windows of the class tarnwell-widget float. Add the command to your desktop's autostart to have it at every login."
    return qtTrId("widget.cli.placement");
}

QString waybarOption()
{
    //: tarnwell-widget --help: the --waybar option
    //% "Print one JSON line per change for a waybar custom module (return-type json)."
    return qtTrId("widget.cli.waybar");
}

QString formatOption()
{
    //: tarnwell-widget --help: the --format option; keep the names in braces as they are
    //% "Print one line per change from a template for polybar, i3blocks and others. Fields: {title} {time} {state} {percentage} {done} {total} {next} {summary} {planned} {day}."
    return qtTrId("widget.cli.format");
}

QString secondsOption()
{
    //: tarnwell-widget --help: the --seconds option
    //% "Count down in seconds in the status bar instead of whole minutes."
    return qtTrId("widget.cli.seconds");
}

QString toggleOption()
{
    //: tarnwell-widget --help: the --toggle option
    //% "Start or pause the timer of the task in hand, then exit."
    return qtTrId("widget.cli.toggle");
}

QString doneOption()
{
    //: tarnwell-widget --help: the --done option
    //% "Mark the task in hand done, then exit."
    return qtTrId("widget.cli.done");
}

QString positionOption()
{
    //: tarnwell-widget --help: the --position option
    //% "Place the desktop window with its top left corner at X,Y."
    return qtTrId("widget.cli.position");
}

QString noTaskInHand()
{
    //: tarnwell-widget --toggle or --done when there is no task to act on
    //% "There is no task in hand, or Tarnwell is not running."
    return qtTrId("widget.cli.noTask");
}

QString commandFailed(const QString &reason)
{
    //: tarnwell-widget --toggle or --done could not leave its command; %1 = the reason
    //% "Could not pass the command to Tarnwell: %1"
    return qtTrId("widget.cli.commandFailed").arg(reason);
}

} // namespace tarnwell::widgetapp::WidgetProgramTexts
