#include "CliTexts.h"

#include <QCoreApplication>

namespace tarnwell::cli::CliTexts {

QString summary()
{
    //: First line of `tarnwell --help`
    //% "Tarnwell: your day and its task in hand, in the tray and on the command line."
    return qtTrId("cli.summary");
}

QString launcherUsage()
{
    //: Second part of `tarnwell --help`: the subcommands. Keep the command names and the spacing.
    //% "Commands (each has --help):\n  add       add a task to today\n  status    the task in hand and its timer\n  list      the tasks of a day\n  done      complete the task in hand\n  start     start the timer of the task in hand\n  pause     pause it\n  toggle    start or pause it\n  export    write days, tasks and routines as JSON, CSV or iCalendar\n  import    read a JSON export back\n  backups   list the daily copies of your data\n  restore   put a daily copy back\n\nWithout a command, starts the tray agent, or hands links to the one that runs.\nExit codes: 0 done, 1 failure, 2 usage error, 3 invalid input, 4 store error,\n5 no agent running where one is needed, 6 no task in hand or no such task."
    return qtTrId("cli.launcherUsage");
}

QString linkArgument()
{
    //: `tarnwell --help`: the optional links to open
    //% "tarnwell: links to open (tarnwell://quickadd opens quick add)"
    return qtTrId("cli.arg.link");
}

QString uiTestOption()
{
    //: `tarnwell --help`: the option that skips the first-run window
    //% "Start without the first-run window (automated tests)."
    return qtTrId("cli.option.uiTest");
}

QString actionOption()
{
    //: `tarnwell --help`: the option that asks the running program for one of its actions; keep the action names
    //% "Ask the running program for an action: quick-add, open-today or toggle-popover (for a desktop shortcut)."
    return qtTrId("cli.option.action");
}

QString jsonOption()
{
    //: Command line option --json
    //% "Print JSON instead of text."
    return qtTrId("cli.option.json");
}

QString addDescription()
{
    //: `tarnwell add --help`
    //% "Adds a task to today. Give one quick-add line (\"Write report · 45m !\", \"Call Bob ~ 15m tomorrow\"), or --title with --minutes and --urgent."
    return qtTrId("cli.add.description");
}

QString addLineArgument()
{
    //: `tarnwell add --help`: the quick-add line argument
    //% "The task as one quick-add line."
    return qtTrId("cli.add.arg.line");
}

QString titleOption()
{
    //: `tarnwell add --help`: --title
    //% "The title, taken as it is (no quick-add grammar)."
    return qtTrId("cli.option.title");
}

QString minutesOption()
{
    //: `tarnwell add --help`: --minutes
    //% "Planned minutes (1 to 9999; 0 means unplanned)."
    return qtTrId("cli.option.minutes");
}

QString urgentOption()
{
    //: `tarnwell add --help`: --urgent
    //% "Put the task at the top of the queue."
    return qtTrId("cli.option.urgent");
}

QString statusDescription()
{
    //: `tarnwell status --help`
    //% "Shows the task in hand, its timer and countdown, and the rest of today's queue."
    return qtTrId("cli.status.description");
}

QString followOption()
{
    //: `tarnwell status --help`: --follow
    //% "Keep running and print the status again whenever it changes (needs the running agent)."
    return qtTrId("cli.option.follow");
}

QString listDescription()
{
    //: `tarnwell list --help`
    //% "Lists the tasks of a day: open ones in queue order, then the finished ones."
    return qtTrId("cli.list.description");
}

QString dayOption()
{
    //: `tarnwell list --help`: --day
    //% "The day as YYYY-MM-DD (default: today)."
    return qtTrId("cli.option.day");
}

QString doneDescription()
{
    //: `tarnwell done --help`
    //% "Completes the task in hand with its focused time; the next task comes up. Needs the running agent."
    return qtTrId("cli.done.description");
}

QString idArgument()
{
    //: `tarnwell done --help`: the optional task id
    //% "The id of another open task to complete instead."
    return qtTrId("cli.done.arg.id");
}

QString startDescription()
{
    //: `tarnwell start --help`
    //% "Starts the focus timer of the task in hand. Needs the running agent."
    return qtTrId("cli.start.description");
}

QString pauseDescription()
{
    //: `tarnwell pause --help`
    //% "Pauses the focus timer of the task in hand. Needs the running agent."
    return qtTrId("cli.pause.description");
}

QString toggleDescription()
{
    //: `tarnwell toggle --help`
    //% "Starts or pauses the focus timer of the task in hand. Needs the running agent."
    return qtTrId("cli.toggle.description");
}

QString exportDescription()
{
    //: `tarnwell export --help`
    //% "Writes days, tasks and routines as JSON (for import), CSV (planned against actual minutes of finished tasks) or iCalendar (VTODO)."
    return qtTrId("cli.export.description");
}

QString formatOption()
{
    //: `tarnwell export --help`: --format
    //% "json, csv or ics (default json)."
    return qtTrId("cli.option.format");
}

QString fromOption()
{
    //: `tarnwell export --help`: --from
    //% "First day, YYYY-MM-DD."
    return qtTrId("cli.option.from");
}

QString toOption()
{
    //: `tarnwell export --help`: --to
    //% "Last day, YYYY-MM-DD."
    return qtTrId("cli.option.to");
}

QString outputOption()
{
    //: `tarnwell export --help`: --output
    //% "Write to this file instead of standard output."
    return qtTrId("cli.option.output");
}

QString backupsDescription()
{
    //: `tarnwell backups --help`
    //% "Lists the daily copies of your data, newest first: the day, the size and the file. Tarnwell keeps the last seven."
    return qtTrId("cli.backups.description");
}

QString restoreDescription()
{
    //: `tarnwell restore --help`
    //% "Replaces your data with a daily copy. The data as it is now is copied aside first. Quit Tarnwell before."
    return qtTrId("cli.restore.description");
}

QString restoreArgument()
{
    //: `tarnwell restore --help`: the argument
    //% "A day (YYYY-MM-DD) that “tarnwell backups” lists, or the file of a copy"
    return qtTrId("cli.restore.argument");
}

QString noBackups()
{
    //: `tarnwell backups` when there is none yet
    //% "No copies yet: Tarnwell makes one a day while it runs."
    return qtTrId("cli.backups.none");
}

QString restoreWhileRunning()
{
    //: `tarnwell restore` while the tray program runs
    //% "Tarnwell is running. Quit it first, so that it does not write over the restored data."
    return qtTrId("cli.restore.running");
}

QString syncDescription()
{
    //: `tarnwell sync --help`: what the command does
    //% "Asks the running Tarnwell to sync with the CalDAV server now, waits for the pass to end and prints its outcome."
    return qtTrId("cli.sync.description");
}

QString syncStatusOption()
{
    //: `tarnwell sync --help`: the --status option
    //% "Print the account, the state, the last sync and the last error instead."
    return qtTrId("cli.sync.statusOption");
}

QString syncNeedsAgent()
{
    //: `tarnwell sync` without a running agent
    //% "Tarnwell is not running, and sync runs inside it. Start it with “tarnwell”."
    return qtTrId("cli.error.syncNeedsAgent");
}

QString synced(int pulled, int pushed, int removed)
{
    //: After `tarnwell sync`. %1: tasks taken from the server, %2: tasks sent to it, %3: deletions carried over
    //% "Synced: %1 in, %2 out, %3 removed."
    return qtTrId("cli.sync.done").arg(pulled).arg(pushed).arg(removed);
}

QString syncAccount(const QString &server, const QString &user)
{
    //: `tarnwell sync --status`. %1: the server address, %2: the user name
    //% "Server: %1 (as %2)"
    return qtTrId("cli.sync.account").arg(server, user);
}

QString syncCollection(const QString &collection)
{
    //: `tarnwell sync --status`. %1: the address of the chosen calendar
    //% "Calendar: %1"
    return qtTrId("cli.sync.collection").arg(collection);
}

QString syncState(const QString &state)
{
    if (state == QLatin1String("idle"))
        //: `tarnwell sync --status`: sync is on and the last pass went through
        //% "State: up to date"
        return qtTrId("cli.sync.state.idle");
    if (state == QLatin1String("syncing"))
        //: `tarnwell sync --status`: a pass is running now
        //% "State: syncing"
        return qtTrId("cli.sync.state.syncing");
    if (state == QLatin1String("error"))
        //: `tarnwell sync --status`: sync is on and the last pass failed
        //% "State: the last sync failed"
        return qtTrId("cli.sync.state.error");
    if (state == QLatin1String("unavailable"))
        //: `tarnwell sync --status`: this build cannot sync
        //% "State: sync is not available in this build"
        return qtTrId("cli.sync.state.unavailable");
    if (state == QLatin1String("notRunning"))
        //: `tarnwell sync --status` without a running agent
        //% "State: Tarnwell is not running"
        return qtTrId("cli.sync.state.notRunning");
    //: `tarnwell sync --status`: no account, or sync turned off
    //% "State: off"
    return qtTrId("cli.sync.state.off");
}

QString syncLast(const QString &when)
{
    if (when.isEmpty())
        //: `tarnwell sync --status`: no pass ever went through
        //% "Last sync: never"
        return qtTrId("cli.sync.last.never");
    //: `tarnwell sync --status`. %1: date and time of the last pass that went through
    //% "Last sync: %1"
    return qtTrId("cli.sync.last").arg(when);
}

QString syncLastError(const QString &text)
{
    //: `tarnwell sync --status`. %1: what went wrong, as a sentence
    //% "Last error: %1"
    return qtTrId("cli.sync.lastError").arg(text);
}

QString noSuchBackup(const QString &given)
{
    //: `tarnwell restore` with a day or file that is not a copy. %1: what was given
    //% "No copy for “%1”; “tarnwell backups” lists them."
    return qtTrId("cli.restore.noSuchBackup").arg(given);
}

QString restored(const QString &backup, const QString &aside)
{
    //: After `tarnwell restore`. %1: the copy restored, %2: where the data as it was now lies
    //% "Restored %1. Your data as it was is kept in %2."
    return qtTrId("cli.restore.done").arg(backup, aside);
}

QString importDescription()
{
    //: `tarnwell import --help`
    //% "Reads a JSON export back. Records the store already holds are skipped; a malformed file changes nothing."
    return qtTrId("cli.import.description");
}

QString fileArgument()
{
    //: `tarnwell import --help`: the file argument
    //% "The JSON file written by “tarnwell export”."
    return qtTrId("cli.import.arg.file");
}

QString usageError(const QString &problem, const QString &subcommand)
{
    //: A command line usage error; %1 says what is wrong, %2 is the subcommand
    //% "%1\nTry “tarnwell %2 --help”."
    return qtTrId("cli.error.usage").arg(problem, subcommand);
}

QString lineOrTitle()
{
    //: Usage error of `tarnwell add`
    //% "Give either one quick-add line or --title, not both and not neither."
    return qtTrId("cli.error.lineOrTitle");
}

QString unexpectedArguments(const QString &arguments)
{
    //: Usage error: extra words on the command line; %1 lists them
    //% "Unexpected arguments: %1"
    return qtTrId("cli.error.unexpected").arg(arguments);
}

QString notANumber(const QString &value)
{
    //: Usage error: --minutes was not a whole number; %1 is what was given
    //% "“%1” is not a whole number of minutes."
    return qtTrId("cli.error.notANumber").arg(value);
}

QString followNeedsAgent()
{
    //: `tarnwell status --follow` without a running agent
    //% "Tarnwell is not running, so there are no changes to follow. Start it with “tarnwell”."
    return qtTrId("cli.error.followNeedsAgent");
}

QString drivingNeedsAgent()
{
    //: done/start/pause/toggle without a running agent
    //% "Tarnwell is not running; the timer and the task in hand are driven through it. Start it with “tarnwell”."
    return qtTrId("cli.error.drivingNeedsAgent");
}

QString agentMissing(const QString &path)
{
    //: The tray agent program could not be found; %1 is where it was looked for
    //% "The tray agent is missing (looked for %1)."
    return qtTrId("cli.error.agentMissing").arg(path);
}

QString agentUnreachable(const QString &detail)
{
    //: The running agent did not answer over D-Bus; %1 is the bus's message
    //% "The running Tarnwell did not answer: %1"
    return qtTrId("cli.error.agentUnreachable").arg(detail);
}

QString cannotRead(const QString &path, const QString &detail)
{
    //: A file could not be read; %1 is the file, %2 the reason
    //% "Cannot read %1: %2"
    return qtTrId("cli.error.cannotRead").arg(path, detail);
}

QString cannotWrite(const QString &path, const QString &detail)
{
    //: A file could not be written; %1 is the file, %2 the reason
    //% "Cannot write %1: %2"
    return qtTrId("cli.error.cannotWrite").arg(path, detail);
}

QString completed(const QString &title)
{
    //: After `tarnwell done`; %1 is the task's title
    //% "Completed “%1”."
    return qtTrId("cli.done.confirmation").arg(title);
}

QString started(const QString &title)
{
    //: After the timer was started from the command line; %1 is the task's title
    //% "Focusing on “%1”."
    return qtTrId("cli.start.confirmation").arg(title);
}

QString paused(const QString &title)
{
    //: After the timer was paused from the command line; %1 is the task's title
    //% "Paused “%1”."
    return qtTrId("cli.pause.confirmation").arg(title);
}

QString imported(int days, int tasks, int routines, int skipped)
{
    //: After `tarnwell import`; %1 days, %2 tasks, %3 routines added, %4 records already there
    //% "Imported %1 days, %2 tasks and %3 routines (%4 already there)."
    return qtTrId("cli.import.confirmation").arg(days).arg(tasks).arg(routines).arg(skipped);
}

QString statusEmpty()
{
    //: `tarnwell status` when today's queue is empty
    //% "Nothing in hand: today's queue is empty."
    return qtTrId("cli.status.empty");
}

QString statusFocusing(const QString &title, const QString &focused)
{
    //: `tarnwell status` while the timer runs; %1 is the title, %2 the focused time (h:mm:ss)
    //% "Focusing on “%1”: %2 focused"
    return qtTrId("cli.status.focusing").arg(title, focused);
}

QString statusPaused(const QString &title, const QString &focused)
{
    //: `tarnwell status` while the timer is paused; %1 is the title, %2 the focused time (h:mm:ss)
    //% "Paused on “%1”: %2 focused"
    return qtTrId("cli.status.paused").arg(title, focused);
}

QString statusReady(const QString &title)
{
    //: `tarnwell status` when the task in hand has not been started; %1 is the title
    //% "Up now: “%1”"
    return qtTrId("cli.status.ready").arg(title);
}

QString statusRemaining(const QString &remaining, const QString &planned)
{
    //: `tarnwell status`: the countdown; %1 the time left, %2 the planned time (h:mm:ss)
    //% "%1 left of %2"
    return qtTrId("cli.status.remaining").arg(remaining, planned);
}

QString statusOverdue(const QString &over, const QString &planned)
{
    //: `tarnwell status`: the countdown has run out; %1 the time over, %2 the planned time (h:mm:ss)
    //% "%1 over the planned %2"
    return qtTrId("cli.status.overdue").arg(over, planned);
}

QString statusNext(const QString &title)
{
    //: `tarnwell status`: the task after the task in hand; %1 is its title
    //% "Next: “%1”"
    return qtTrId("cli.status.next").arg(title);
}

QString statusQueue(int count)
{
    //: `tarnwell status`: the number of open tasks today
    //% "%n open task(s) today"
    return qtTrId("cli.status.queue", count);
}

QString listEmpty()
{
    //: `tarnwell list` for a day without tasks
    //% "No tasks on this day."
    return qtTrId("cli.list.empty");
}

} // namespace tarnwell::cli::CliTexts
