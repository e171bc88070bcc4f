<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name />
    <message id="onboarding.window.title">
        <source>Welcome to Tarnwell</source>
        <extracomment>Title of the first-run window</extracomment>
        <translation>Willkommen bei Tarnwell</translation>
    </message>
    <message id="onboarding.taskInHand.title">
        <source>One task in hand</source>
        <extracomment>First-run page heading about the task in hand</extracomment>
        <translation>Immer eine aktuelle Aufgabe</translation>
    </message>
    <message id="onboarding.taskInHand.body">
        <source>The first open task of today is the one you are working on. Start its timer and Tarnwell measures the time you really spend against what you planned.</source>
        <extracomment>First-run page text about the task in hand</extracomment>
        <translation>Die erste offene Aufgabe des Tages ist die, an der du gerade arbeitest. Starte ihren Timer, und Tarnwell vergleicht die tatsächlich aufgewendete Zeit mit deiner Planung.</translation>
    </message>
    <message id="onboarding.quickAdd.title">
        <source>Add a task in one line</source>
        <extracomment>First-run page heading about quick add</extracomment>
        <translation>Eine Aufgabe in einer Zeile</translation>
    </message>
    <message id="onboarding.quickAdd.body">
        <source>Type a title, then a middle dot or a tilde and the details: “Write report · 45m tomorrow !” plans 45 minutes tomorrow and puts it first.</source>
        <extracomment>First-run page text about the quick-add syntax; keep the example line as it is</extracomment>
        <translation>Gib einen Titel ein, dann einen Mittelpunkt oder eine Tilde und die Details: „Bericht schreiben · 45m morgen !“ plant 45 Minuten für morgen ein und setzt die Aufgabe an den Anfang.</translation>
    </message>
    <message id="onboarding.tray.title">
        <source>At home in the tray</source>
        <extracomment>First-run page heading about the tray</extracomment>
        <translation>Zu Hause in der Systemleiste</translation>
    </message>
    <message id="onboarding.tray.body">
        <source>Tarnwell has no main window. Its icon in the tray shows the task in hand and the time left; click it to see your day.</source>
        <extracomment>First-run page text about the status item in the tray</extracomment>
        <translation>Tarnwell hat kein Hauptfenster. Das Symbol in der Systemleiste zeigt die aktuelle Aufgabe und die verbleibende Zeit; klicke darauf, um deinen Tag zu sehen.</translation>
    </message>
    <message id="onboarding.back">
        <source>Back</source>
        <extracomment>Button that goes back one first-run page</extracomment>
        <translation>Zurück</translation>
    </message>
    <message id="onboarding.next">
        <source>Next</source>
        <extracomment>Button that shows the next first-run page</extracomment>
        <translation>Weiter</translation>
    </message>
    <message id="onboarding.finish">
        <source>Get started</source>
        <extracomment>Button that closes the first-run window</extracomment>
        <translation>Los geht’s</translation>
    </message>
    <message id="error.repository.titleEmpty">
        <source>A task needs a title.</source>
        <extracomment>Shown when a task title is empty</extracomment>
        <translation>Eine Aufgabe braucht einen Titel.</translation>
    </message>
    <message id="error.repository.titleTooLong" numerus="yes">
        <source>A title can have at most %n characters.</source>
        <extracomment>Shown when a task title exceeds the maximum character limit</extracomment>
        <translation>
            <numerusform>Ein Titel darf höchstens %n Zeichen lang sein.</numerusform>
            <numerusform>Ein Titel darf höchstens %n Zeichen lang sein.</numerusform>
        </translation>
    </message>
    <message id="error.repository.reorderMismatch">
        <source>The list changed while you were reordering it. Please try again.</source>
        <extracomment>Shown when reorderTasks receives an order list that does not match the day's task ids</extracomment>
        <translation>Die Liste hat sich geändert, während du sie umsortiert hast. Bitte versuche es noch einmal.</translation>
    </message>
    <message id="error.repository.dayNotFound">
        <source>That day could not be found.</source>
        <extracomment>Shown when a Day row cannot be located for a given date</extracomment>
        <translation>Dieser Tag wurde nicht gefunden.</translation>
    </message>
    <message id="menubar.menu.open">
        <source>Open Today</source>
        <extracomment>Status item menu: open the day's queue</extracomment>
        <translation>Heute öffnen</translation>
    </message>
    <message id="menubar.menu.quickAdd">
        <source>Quick Add…</source>
        <extracomment>Status item menu: open the quick-add window</extracomment>
        <translation>Schnell hinzufügen…</translation>
    </message>
    <message id="menubar.menu.complete">
        <source>Complete Task</source>
        <extracomment>Status item menu: mark the task in hand done</extracomment>
        <translation>Aufgabe abschließen</translation>
    </message>
    <message id="menubar.menu.settings">
        <source>Settings…</source>
        <extracomment>Status item menu: open the settings window</extracomment>
        <translation>Einstellungen…</translation>
    </message>
    <message id="menubar.menu.quit">
        <source>Quit Tarnwell</source>
        <extracomment>Status item menu: quit the program</extracomment>
        <translation>Tarnwell beenden</translation>
    </message>
    <message id="menubar.dayDone">
        <source>Done for today. That's plenty.</source>
        <extracomment>Menu bar label</extracomment>
        <translation>Fertig für heute. Das reicht völlig.</translation>
    </message>
    <message id="menubar.empty">
        <source>What's next?</source>
        <extracomment>Menu bar label</extracomment>
        <translation>Was kommt als Nächstes?</translation>
    </message>
    <message id="activeTask.status.ready">
        <source>Ready</source>
        <extracomment>Now card status label</extracomment>
        <translation>Bereit</translation>
    </message>
    <message id="activeTask.status.focusing">
        <source>Focusing</source>
        <extracomment>Now card status label</extracomment>
        <translation>Im Fokus</translation>
    </message>
    <message id="activeTask.status.paused">
        <source>Paused</source>
        <extracomment>Now card status label</extracomment>
        <translation>Pausiert</translation>
    </message>
    <message id="activeTask.timer.start">
        <source>Start</source>
        <extracomment>Timer play/pause action label</extracomment>
        <translation>Starten</translation>
    </message>
    <message id="activeTask.timer.resume">
        <source>Resume</source>
        <extracomment>Timer play/pause action label</extracomment>
        <translation>Fortsetzen</translation>
    </message>
    <message id="activeTask.timer.pause">
        <source>Pause</source>
        <extracomment>Timer play/pause action label</extracomment>
        <translation>Pausieren</translation>
    </message>
    <message id="activeTask.countdown.left">
        <source>left</source>
        <extracomment>Countdown on the now card, shown after the remaining time (as in "12:30 left")</extracomment>
        <translation>übrig</translation>
    </message>
    <message id="activeTask.countdown.endsAt">
        <source>ends at %1</source>
        <extracomment>Countdown on the now card: the wall-clock time at which the planned time runs out; %1 is that time</extracomment>
        <translation>endet um %1</translation>
    </message>
    <message id="activeTask.countdown.over">
        <source>over</source>
        <extracomment>Countdown on the now card, shown after the time spent beyond the plan (as in "+01:15 over")</extracomment>
        <translation>überzogen</translation>
    </message>
    <message id="completion.title">
        <source>Task done</source>
        <extracomment>Next-up screen title after a task is marked done</extracomment>
        <translation>Aufgabe erledigt</translation>
    </message>
    <message id="completion.focused">
        <source>Focused for %1</source>
        <extracomment>Next-up screen: focused time of the finished task; %1 is a duration such as 25:30 or 1:02:05</extracomment>
        <translation>%1 konzentriert gearbeitet</translation>
    </message>
    <message id="completion.nextUp">
        <source>Next up</source>
        <extracomment>Next-up screen: heading above the next task in the queue</extracomment>
        <translation>Als Nächstes</translation>
    </message>
    <message id="completion.queueEmpty">
        <source>Nothing else planned for today.</source>
        <extracomment>Next-up screen: shown when no task is left in today's queue</extracomment>
        <translation>Für heute ist nichts mehr geplant.</translation>
    </message>
    <message id="completion.start">
        <source>Start next</source>
        <extracomment>Next-up screen action: start the next task now</extracomment>
        <translation>Nächste starten</translation>
    </message>
    <message id="completion.skip" numerus="yes">
        <source>Skip %n-min break</source>
        <extracomment>Next-up screen action: skip the break of %n minutes and carry on</extracomment>
        <translation>
            <numerusform>%n-Minuten-Pause überspringen</numerusform>
            <numerusform>%n-Minuten-Pause überspringen</numerusform>
        </translation>
    </message>
    <message id="quickAdd.error.titleRequired">
        <source>Type a title for the task.</source>
        <extracomment>Quick add: the typed line holds no title once its duration, day and urgent marks are taken off</extracomment>
        <translation>Gib einen Titel für die Aufgabe ein.</translation>
    </message>
    <message id="dayPlan.planned">
        <source>%1 planned</source>
        <extracomment>Day plan footer: planned work left; %1 = the total as hours and minutes (as 1h 41m)</extracomment>
        <translation>%1 geplant</translation>
    </message>
    <message id="dayPlan.finishPrefix">
        <source>Done</source>
        <extracomment>Day plan footer: the word before the finish time (as in Done 21:53)</extracomment>
        <translation>Fertig um</translation>
    </message>
    <message id="dayPlan.workdayEnds">
        <source>Workday ends %1</source>
        <extracomment>Day plan footer: the workday end while it lies ahead; %1 = a time of day (as 18:00)</extracomment>
        <translation>Feierabend um %1</translation>
    </message>
    <message id="dayPlan.workdayEnded">
        <source>Workday ended %1</source>
        <extracomment>Day plan footer: the workday end once it has passed; %1 = a time of day (as 18:00)</extracomment>
        <translation>Feierabend war um %1</translation>
    </message>
    <message id="dayPlan.workday">
        <source>Workday %1</source>
        <extracomment>Day plan footer: the workday end in the summary line; %1 = a time of day (as 18:00)</extracomment>
        <translation>Feierabend %1</translation>
    </message>
    <message id="dayPlan.summary">
        <source>Day plan: %1</source>
        <extracomment>Day plan footer: accessibility text of the summary line; %1 = the line's parts, comma separated</extracomment>
        <translation>Tagesplan: %1</translation>
    </message>
    <message id="dayPlan.overflowCount" numerus="yes">
        <source>%n task(s) past the workday</source>
        <extracomment>Day plan footer: how many tasks do not fit the workday</extracomment>
        <translation>
            <numerusform>%n Aufgabe nach Feierabend</numerusform>
            <numerusform>%n Aufgaben nach Feierabend</numerusform>
        </translation>
    </message>
    <message id="dayPlan.untimed" numerus="yes">
        <source>%n without a duration</source>
        <extracomment>Day plan footer: how many tasks have no duration and are left out of the total</extracomment>
        <translation>
            <numerusform>%n ohne Dauer</numerusform>
            <numerusform>%n ohne Dauer</numerusform>
        </translation>
    </message>
    <message id="dayPlan.moveOverflow">
        <source>Move what doesn't fit to tomorrow</source>
        <extracomment>Day plan footer: button that moves the tasks that do not fit the workday to tomorrow</extracomment>
        <translation>Was nicht passt, auf morgen verschieben</translation>
    </message>
    <message id="dayPlan.moveOverflow.short">
        <source>Move to tomorrow</source>
        <extracomment>Day plan footer: short form of the button that moves the tasks that do not fit to tomorrow</extracomment>
        <translation>Auf morgen verschieben</translation>
    </message>
    <message id="routine.menu.load">
        <source>Load routine</source>
        <extracomment>Routine menu: heading of the section listing the routines to load into the day</extracomment>
        <translation>Routine laden</translation>
    </message>
    <message id="routine.menu.saveQueue">
        <source>Save queue as routine…</source>
        <extracomment>Routine menu: saves the day's queue as a new routine</extracomment>
        <translation>Aufgabenliste als Routine speichern…</translation>
    </message>
    <message id="routine.menu.manage">
        <source>Manage routines…</source>
        <extracomment>Routine menu: opens the routines settings</extracomment>
        <translation>Routinen verwalten…</translation>
    </message>
    <message id="routine.menu.none">
        <source>No routines yet</source>
        <extracomment>Routine menu: shown when no routines are saved yet</extracomment>
        <translation>Noch keine Routinen</translation>
    </message>
    <message id="routine.menu.tooltip">
        <source>Routines</source>
        <extracomment>Routine menu: tooltip of the button that opens the menu</extracomment>
        <translation>Routinen</translation>
    </message>
    <message id="routine.nameField">
        <source>Routine name</source>
        <extracomment>Label of the field that asks for the name of a routine being saved</extracomment>
        <translation>Name der Routine</translation>
    </message>
    <message id="routine.nameField.placeholder">
        <source>Morning routine</source>
        <extracomment>Placeholder of the routine name field</extracomment>
        <translation>Morgenroutine</translation>
    </message>
    <message id="settings.routines.defaultName">
        <source>New routine</source>
        <extracomment>Name of a new routine made in the routines settings</extracomment>
        <translation>Neue Routine</translation>
    </message>
    <message id="toast.routineLoaded" numerus="yes">
        <source>Added %n task(s)</source>
        <extracomment>Toast: tasks a routine added to the day</extracomment>
        <translation>
            <numerusform>%n Aufgabe hinzugefügt</numerusform>
            <numerusform>%n Aufgaben hinzugefügt</numerusform>
        </translation>
    </message>
    <message id="toast.routineAlreadyLoaded">
        <source>%1 is already on this day</source>
        <extracomment>Toast: every task of the routine is already on this day; %1 = routine name</extracomment>
        <translation>%1 ist an diesem Tag schon eingeplant</translation>
    </message>
    <message id="toast.routineSaved">
        <source>Saved routine %1</source>
        <extracomment>Toast: the day's queue was saved as a routine; %1 = routine name</extracomment>
        <translation>Routine %1 gespeichert</translation>
    </message>
    <message id="repeat.menu">
        <source>Repeat</source>
        <extracomment>Title of the menu that chooses on which weekdays a routine repeats</extracomment>
        <translation>Wiederholen</translation>
    </message>
    <message id="repeat.option.never">
        <source>Never</source>
        <extracomment>Repeat: not at all</extracomment>
        <translation>Nie</translation>
    </message>
    <message id="repeat.option.everyDay">
        <source>Every day</source>
        <extracomment>Repeat: every day</extracomment>
        <translation>Jeden Tag</translation>
    </message>
    <message id="repeat.option.weekdays">
        <source>Weekdays</source>
        <extracomment>Repeat: Monday to Friday</extracomment>
        <translation>Werktags</translation>
    </message>
    <message id="repeat.option.custom">
        <source>Custom</source>
        <extracomment>Repeat: on chosen weekdays</extracomment>
        <translation>Benutzerdefiniert</translation>
    </message>
    <message id="rollover.banner.fromYesterday" numerus="yes">
        <source>%n unfinished task(s) from yesterday</source>
        <extracomment>Rollover bar: the count of unfinished tasks carried over from yesterday</extracomment>
        <translation>
            <numerusform>%n unerledigte Aufgabe von gestern</numerusform>
            <numerusform>%n unerledigte Aufgaben von gestern</numerusform>
        </translation>
    </message>
    <message id="rollover.banner.fromEarlier" numerus="yes">
        <source>%n unfinished task(s) from earlier days</source>
        <extracomment>Rollover bar: the count of unfinished tasks carried over from the past week, the oldest before yesterday</extracomment>
        <translation>
            <numerusform>%n unerledigte Aufgabe aus früheren Tagen</numerusform>
            <numerusform>%n unerledigte Aufgaben aus früheren Tagen</numerusform>
        </translation>
    </message>
    <message id="rollover.banner.rollForward">
        <source>Move to today</source>
        <extracomment>Move unfinished past work onto today</extracomment>
        <translation>Auf heute verschieben</translation>
    </message>
    <message id="rollover.banner.archive">
        <source>Archive</source>
        <extracomment>Archive unfinished past work</extracomment>
        <translation>Archivieren</translation>
    </message>
    <message id="rollover.banner.dismiss">
        <source>Hide for today</source>
        <extracomment>Hide the rollover bar for today</extracomment>
        <translation>Für heute ausblenden</translation>
    </message>
    <message id="popover.window.title">
        <source>Today in Tarnwell</source>
        <extracomment>Title of the popover window (read by screen readers and window lists)</extracomment>
        <translation>Heute in Tarnwell</translation>
    </message>
    <message id="popover.day.previous">
        <source>Previous day</source>
        <extracomment>Popover: button that shows the day before</extracomment>
        <translation>Vorheriger Tag</translation>
    </message>
    <message id="popover.day.next">
        <source>Next day</source>
        <extracomment>Popover: button that shows the day after</extracomment>
        <translation>Nächster Tag</translation>
    </message>
    <message id="popover.card.done">
        <source>Done</source>
        <extracomment>Task card button that marks the task in hand done</extracomment>
        <translation>Erledigt</translation>
    </message>
    <message id="popover.list.empty">
        <source>Nothing planned. Add a task below.</source>
        <extracomment>Popover: the shown day has no tasks</extracomment>
        <translation>Nichts geplant. Füge unten eine Aufgabe hinzu.</translation>
    </message>
    <message id="popover.add.placeholder">
        <source>Add a task · 30m tomorrow !</source>
        <extracomment>Popover: placeholder of the field that adds a task to the shown day</extracomment>
        <translation>Aufgabe hinzufügen · 30m morgen !</translation>
    </message>
    <message id="quickAdd.chip.urgent">
        <source>Urgent</source>
        <extracomment>Quick-add chip: the typed task goes first in the queue</extracomment>
        <translation>Dringend</translation>
    </message>
    <message id="popover.cancel">
        <source>Cancel</source>
        <extracomment>Button that closes a small form without saving</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message id="popover.save">
        <source>Save</source>
        <extracomment>Button that saves a small form</extracomment>
        <translation>Speichern</translation>
    </message>
    <message id="quickAdd.window.title">
        <source>Quick add</source>
        <extracomment>Title of the quick-add window</extracomment>
        <translation>Schnell hinzufügen</translation>
    </message>
    <message id="quickAdd.field.placeholder">
        <source>Write report · 45m tomorrow !</source>
        <extracomment>Quick-add window: placeholder of the line that becomes a task</extracomment>
        <translation>Bericht schreiben · 45m morgen !</translation>
    </message>
    <message id="popover.row.done">
        <source>Done</source>
        <extracomment>Task row: tick that marks the task done (or open again)</extracomment>
        <translation>Erledigt</translation>
    </message>
    <message id="popover.row.rolledOver">
        <source>carried over</source>
        <extracomment>Task row: marks a task carried over from an earlier day</extracomment>
        <translation>verschoben</translation>
    </message>
    <message id="popover.row.due">
        <source>due %1</source>
        <extracomment>Task row: the task's due date; %1 = a short date</extracomment>
        <translation>fällig am %1</translation>
    </message>
    <message id="popover.row.actions">
        <source>Task actions</source>
        <extracomment>Task row: button that opens the task's actions</extracomment>
        <translation>Aufgabenaktionen</translation>
    </message>
    <message id="popover.row.startNow">
        <source>Start now</source>
        <extracomment>Task row action: make this the task in hand and start its timer</extracomment>
        <translation>Jetzt starten</translation>
    </message>
    <message id="popover.row.moveToTomorrow">
        <source>Move to tomorrow</source>
        <extracomment>Task row action: move the task to the next day</extracomment>
        <translation>Auf morgen verschieben</translation>
    </message>
    <message id="popover.row.moveUp">
        <source>Move up</source>
        <extracomment>Task row action: move the task one place up in the queue</extracomment>
        <translation>Nach oben verschieben</translation>
    </message>
    <message id="popover.row.moveDown">
        <source>Move down</source>
        <extracomment>Task row action: move the task one place down in the queue</extracomment>
        <translation>Nach unten verschieben</translation>
    </message>
    <message id="popover.row.edit">
        <source>Edit…</source>
        <extracomment>Task row action: open the task's editor</extracomment>
        <translation>Bearbeiten…</translation>
    </message>
    <message id="popover.row.delete">
        <source>Delete</source>
        <extracomment>Task row action: delete the task</extracomment>
        <translation>Löschen</translation>
    </message>
    <message id="popover.edit.dueDateInvalid">
        <source>Type the due date as YYYY-MM-DD.</source>
        <extracomment>Task editor: the typed due date cannot be read</extracomment>
        <translation>Gib das Fälligkeitsdatum im Format YYYY-MM-DD ein.</translation>
    </message>
    <message id="popover.edit.title">
        <source>Title</source>
        <extracomment>Task editor: placeholder of the title field</extracomment>
        <translation>Titel</translation>
    </message>
    <message id="popover.edit.notes">
        <source>Notes</source>
        <extracomment>Task editor: placeholder of the notes field</extracomment>
        <translation>Notizen</translation>
    </message>
    <message id="popover.edit.minutes">
        <source>Minutes</source>
        <extracomment>Task editor: placeholder of the planned minutes field</extracomment>
        <translation>Minuten</translation>
    </message>
    <message id="popover.edit.dueDate">
        <source>Due YYYY-MM-DD</source>
        <extracomment>Task editor: placeholder of the due date field (keep YYYY-MM-DD)</extracomment>
        <translation>Fällig am YYYY-MM-DD</translation>
    </message>
    <message id="popover.day.today">
        <source>Today</source>
        <extracomment>Name of the current day: the popover's day heading and the quick-add day chip</extracomment>
        <translation>Heute</translation>
    </message>
    <message id="popover.day.tomorrow">
        <source>Tomorrow</source>
        <extracomment>Name of the day after the current one: the popover's day heading and the quick-add day chip</extracomment>
        <translation>Morgen</translation>
    </message>
    <message id="popover.day.yesterday">
        <source>Yesterday</source>
        <extracomment>Name of the day before the current one: the popover's day heading</extracomment>
        <translation>Gestern</translation>
    </message>
    <message id="activeTask.extend." numerus="yes">
        <source>+%n min</source>
        <extracomment>Task card chip that adds minutes to the planned duration; %n = the minutes</extracomment>
        <translation>
            <numerusform>+%n Min.</numerusform>
            <numerusform>+%n Min.</numerusform>
        </translation>
    </message>
    <message id="activeTask.action.extend.tooltip" numerus="yes">
        <source>Add %n minute(s) to the plan</source>
        <extracomment>Tooltip of the task card's extend chip; %n = the minutes it adds</extracomment>
        <translation>
            <numerusform>%n Minute zur Planung hinzufügen</numerusform>
            <numerusform>%n Minuten zur Planung hinzufügen</numerusform>
        </translation>
    </message>
    <message id="popover.toast.undo">
        <source>Undo</source>
        <extracomment>Toast action that takes back the change the toast reports</extracomment>
        <translation>Rückgängig</translation>
    </message>
    <message id="popover.toast.movedToTomorrow">
        <source>Moved “%1” to tomorrow</source>
        <extracomment>Toast after a task was moved to the next day; %1 = the task's title</extracomment>
        <translation>„%1“ auf morgen verschoben</translation>
    </message>
    <message id="popover.toast.movedOverflow" numerus="yes">
        <source>Moved %n task(s) to tomorrow</source>
        <extracomment>Toast after the tasks that do not fit the workday were moved to the next day</extracomment>
        <translation>
            <numerusform>%n Aufgabe auf morgen verschoben</numerusform>
            <numerusform>%n Aufgaben auf morgen verschoben</numerusform>
        </translation>
    </message>
    <message id="popover.toast.deleted">
        <source>Deleted “%1”</source>
        <extracomment>Toast after a task was deleted; %1 = the task's title</extracomment>
        <translation>„%1“ gelöscht</translation>
    </message>
    <message id="settings.routines.title">
        <source>Routines</source>
        <extracomment>Routines window and settings tab: title</extracomment>
        <translation>Routinen</translation>
    </message>
    <message id="settings.routines.caption">
        <source>Saved lists of tasks to load into a day, or to add themselves on chosen weekdays.</source>
        <extracomment>Routines settings tab: caption under the title</extracomment>
        <translation>Gespeicherte Aufgabenlisten, die du in einen Tag lädst oder die sich an gewählten Wochentagen selbst eintragen.</translation>
    </message>
    <message id="settings.routines.new">
        <source>New routine</source>
        <extracomment>Routines settings tab: button that makes a new routine</extracomment>
        <translation>Neue Routine</translation>
    </message>
    <message id="settings.routines.empty">
        <source>No routines yet</source>
        <extracomment>Routines settings tab: shown when no routine is saved yet</extracomment>
        <translation>Noch keine Routinen</translation>
    </message>
    <message id="settings.routines.emptyCaption">
        <source>Make one with New routine, or save a day's queue from the popover's routine menu.</source>
        <extracomment>Routines settings tab: how to make a routine, under the empty message</extracomment>
        <translation>Lege eine mit „Neue Routine“ an oder speichere die Aufgabenliste eines Tages über das Routinenmenü im Popover.</translation>
    </message>
    <message id="settings.routines.name">
        <source>Name</source>
        <extracomment>Routines settings tab: label of the routine's name field</extracomment>
        <translation>Name</translation>
    </message>
    <message id="settings.routines.removeTask">
        <source>Remove task</source>
        <extracomment>Routines settings tab: removes a task template from the routine</extracomment>
        <translation>Aufgabe entfernen</translation>
    </message>
    <message id="settings.routines.addTask">
        <source>Add task</source>
        <extracomment>Routines settings tab: adds a task template to the routine</extracomment>
        <translation>Aufgabe hinzufügen</translation>
    </message>
    <message id="settings.routines.delete">
        <source>Delete routine</source>
        <extracomment>Routines settings tab: deletes the chosen routine</extracomment>
        <translation>Routine löschen</translation>
    </message>
    <message id="settings.routines.delete.confirm">
        <source>Delete “%1”?</source>
        <extracomment>Routines settings tab: title of the question before a routine is deleted; %1 = routine name</extracomment>
        <translation>„%1“ löschen?</translation>
    </message>
    <message id="settings.routines.delete.body">
        <source>The routine and its task templates are removed. Tasks already loaded into your days stay, but no longer repeat.</source>
        <extracomment>Routines settings tab: what deleting a routine removes and what it leaves alone</extracomment>
        <translation>Die Routine und ihre Aufgabenvorlagen werden entfernt. Bereits in deine Tage geladene Aufgaben bleiben, wiederholen sich aber nicht mehr.</translation>
    </message>
    <message id="settings.routines.nameRequired">
        <source>A routine needs a name.</source>
        <extracomment>Routines window: shown in place when a routine's name is left empty</extracomment>
        <translation>Eine Routine braucht einen Namen.</translation>
    </message>
    <message id="settings.routines.minutesInvalid">
        <source>Write the minutes as 45, 45m or 1h30.</source>
        <extracomment>Routines window: shown in place when a task template's minutes are not a duration</extracomment>
        <translation>Gib die Minuten als 45, 45m oder 1h30 ein.</translation>
    </message>
    <message id="onboarding.anywhere.title">
        <source>Add from anywhere</source>
        <extracomment>First-run page heading about adding a task from any application</extracomment>
        <translation>Von überall hinzufügen</translation>
    </message>
    <message id="onboarding.anywhere.body">
        <source>Give the command “tarnwell tarnwell://quickadd” a keyboard shortcut in your desktop's settings, and the quick-add window opens from any application.</source>
        <extracomment>First-run page text about adding a task from any application; keep the command as it is</extracomment>
        <translation>Gib dem Befehl „tarnwell tarnwell://quickadd“ in den Einstellungen deines Desktops ein Tastenkürzel, und das Schnellerfassungsfenster öffnet sich aus jeder Anwendung heraus.</translation>
    </message>
    <message id="popover.edit.duration">
        <source>Planned time, e.g. 1h 30m</source>
        <extracomment>Task editor: placeholder of the planned time field</extracomment>
        <translation>Geplante Zeit, z. B. 1h 30m</translation>
    </message>
    <message id="popover.edit.durationInvalid">
        <source>Type the planned time like 45, 45m, 1h 30m or 1.5h.</source>
        <extracomment>Task editor: the typed planned time cannot be read</extracomment>
        <translation>Gib die geplante Zeit wie 45, 45m, 1h 30m oder 1.5h ein.</translation>
    </message>
    <message id="popover.edit.repeatFailed">
        <source>The repeat rule could not be saved.</source>
        <extracomment>Task editor: the Repeat choice could not be saved</extracomment>
        <translation>Die Wiederholung konnte nicht gespeichert werden.</translation>
    </message>
    <message id="notification.untitled">
        <source>Your task</source>
        <extracomment>Notification title used when the task has no title</extracomment>
        <translation>Deine Aufgabe</translation>
    </message>
    <message id="notification.plusTen" numerus="yes">
        <source>+%n min</source>
        <extracomment>Notification action: extend duration by N minutes</extracomment>
        <translation>
            <numerusform>+%n Min.</numerusform>
            <numerusform>+%n Min.</numerusform>
        </translation>
    </message>
    <message id="notification.minutesDone" numerus="yes">
        <source>%n minute(s) done</source>
        <extracomment>Notification body: N minutes done</extracomment>
        <translation>
            <numerusform>%n Minute geschafft</numerusform>
            <numerusform>%n Minuten geschafft</numerusform>
        </translation>
    </message>
    <message id="notification.actInTray">
        <source>Mark it done or add time from the Tarnwell tray icon.</source>
        <extracomment>Second line of the time-is-up notification on desktops that show no buttons on notifications</extracomment>
        <translation>Über das Tarnwell-Symbol im Panel als erledigt markieren oder Zeit hinzufügen.</translation>
    </message>
    <message id="notification.done">
        <source>Done</source>
        <extracomment>Notification action: mark task done</extracomment>
        <translation>Erledigt</translation>
    </message>
    <message id="notification.endingSoon" numerus="yes">
        <source>%n minute(s) left</source>
        <extracomment>Notification body: N minutes left on the task</extracomment>
        <translation>
            <numerusform>Noch %n Minute</numerusform>
            <numerusform>Noch %n Minuten</numerusform>
        </translation>
    </message>
    <message id="activeTask.away.minutes" numerus="yes">
        <source>%n min</source>
        <extracomment>Length of an idle gap under an hour, in minutes</extracomment>
        <translation>
            <numerusform>%n Min.</numerusform>
            <numerusform>%n Min.</numerusform>
        </translation>
    </message>
    <message id="activeTask.away.hoursMinutes">
        <source>%1 h %2 min</source>
        <extracomment>Length of an idle gap of an hour or more: %1 hours, %2 minutes (two digits)</extracomment>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message id="activeTask.away.prompt">
        <source>You were away for %1 while the timer ran.</source>
        <extracomment>Idle gap notice, takes a formatted duration</extracomment>
        <translation>Du warst %1 weg, während der Timer lief.</translation>
    </message>
    <message id="activeTask.away.keep">
        <source>Keep</source>
        <extracomment>Leave the focused tally as measured</extracomment>
        <translation>Behalten</translation>
    </message>
    <message id="activeTask.away.discard">
        <source>Discard</source>
        <extracomment>Subtract away time from the tally</extracomment>
        <translation>Abziehen</translation>
    </message>
    <message id="activeTask.autoPaused.note">
        <source>The timer paused while you were away.</source>
        <extracomment>Explains a pause the app performed on the user's behalf</extracomment>
        <translation>Der Timer wurde angehalten, während du weg warst.</translation>
    </message>
    <message id="activeTask.autoPaused.resume">
        <source>Resume</source>
        <extracomment>Resume the auto-paused timer</extracomment>
        <translation>Fortsetzen</translation>
    </message>
    <message id="settings.hotkeys.togglePopover">
        <source>Open or close Tarnwell</source>
        <extracomment>Name of a global shortcut, shown in the desktop's shortcut settings and in ours</extracomment>
        <translation>Tarnwell öffnen oder schließen</translation>
    </message>
    <message id="settings.hotkeys.quickAdd">
        <source>Quick add a task</source>
        <extracomment>Name of a global shortcut, shown in the desktop's shortcut settings and in ours</extracomment>
        <translation>Schnell eine Aufgabe hinzufügen</translation>
    </message>
    <message id="settings.hotkeys.builtIn.complete">
        <source>Complete active task</source>
        <extracomment>Label of the fixed popover shortcut that completes the task in hand</extracomment>
        <translation>Aktive Aufgabe abschließen</translation>
    </message>
    <message id="settings.hotkeys.builtIn.addTask">
        <source>Add new task</source>
        <extracomment>Label of the fixed popover shortcut that puts the cursor in the add field</extracomment>
        <translation>Neue Aufgabe hinzufügen</translation>
    </message>
    <message id="settings.hotkeys.builtIn.dayPrev">
        <source>Previous day</source>
        <extracomment>Label of the fixed popover shortcut that shows the day before</extracomment>
        <translation>Vorheriger Tag</translation>
    </message>
    <message id="settings.hotkeys.builtIn.dayNext">
        <source>Next day</source>
        <extracomment>Label of the fixed popover shortcut that shows the day after</extracomment>
        <translation>Nächster Tag</translation>
    </message>
    <message id="settings.hotkeys.builtIn.today">
        <source>Go to today</source>
        <extracomment>Label of the fixed popover shortcut that goes back to today</extracomment>
        <translation>Zu heute springen</translation>
    </message>
    <message id="settings.hotkeys.builtIn.review">
        <source>Open the Review window</source>
        <extracomment>Label of the fixed popover shortcut that opens the review window</extracomment>
        <translation>Rückblick-Fenster öffnen</translation>
    </message>
    <message id="error.hotkey.conflict">
        <source>Both hot keys are set to %1. Choose a different combination for one of them.</source>
        <extracomment>Shown when two settings are bound to the same hotkey combination</extracomment>
        <translation>Beide Tastenkürzel sind auf %1 gesetzt. Wähle für eines davon eine andere Kombination.</translation>
    </message>
    <message id="error.hotkey.unparseable">
        <source>"%1" is not a key combination. Use modifiers and one letter, digit or named key, such as cmd+shift+j.</source>
        <extracomment>Shown when a hotkey string can't be parsed into a combination</extracomment>
        <translation>„%1“ ist keine Tastenkombination. Verwende Sondertasten und einen Buchstaben, eine Ziffer oder eine benannte Taste, zum Beispiel cmd+shift+j.</translation>
    </message>
    <message id="error.hotkey.takenBySystem">
        <source>%1 is already used by the desktop or another program, so it cannot be the hot key for “%2”. Choose another combination, or free it in the desktop's keyboard settings.</source>
        <extracomment>Shown when the desktop or another program already uses the key combination of a global hot key. %1 is the combination ("Super+Shift+J"), %2 what it was meant to do ("Quick add a task")</extracomment>
        <translation>%1 wird schon vom Desktop oder einem anderen Programm verwendet und kann daher nicht das Tastenkürzel für „%2“ sein. Wähle eine andere Kombination oder gib sie in den Tastatureinstellungen des Desktops frei.</translation>
    </message>
    <message id="hotkey.modifier.super">
        <source>Super+</source>
        <extracomment>The Super (logo, "Windows") key in a shown key combination, with its joining "+"</extracomment>
        <translation>Super+</translation>
    </message>
    <message id="hotkey.modifier.shift">
        <source>Shift+</source>
        <extracomment>The Shift key in a shown key combination, with its joining "+", as keyboards of the language label it</extracomment>
        <translation>Umschalt+</translation>
    </message>
    <message id="hotkey.modifier.alt">
        <source>Alt+</source>
        <extracomment>The Alt key in a shown key combination, with its joining "+"</extracomment>
        <translation>Alt+</translation>
    </message>
    <message id="hotkey.modifier.ctrl">
        <source>Ctrl+</source>
        <extracomment>The Control key in a shown key combination, with its joining "+", as keyboards of the language label it</extracomment>
        <translation>Strg+</translation>
    </message>
    <message id="hotkey.key.return">
        <source>Enter</source>
        <extracomment>The Return/Enter key in a shown key combination, as keyboards of the language label it</extracomment>
        <translation>Eingabe</translation>
    </message>
    <message id="hotkey.key.escape">
        <source>Esc</source>
        <extracomment>The Escape key in a shown key combination, as keyboards of the language label it</extracomment>
        <translation>Esc</translation>
    </message>
    <message id="hotkey.key.tab">
        <source>Tab</source>
        <extracomment>The Tab key in a shown key combination</extracomment>
        <translation>Tab</translation>
    </message>
    <message id="hotkey.key.space">
        <source>Space</source>
        <extracomment>The space bar in a shown key combination</extracomment>
        <translation>Leertaste</translation>
    </message>
    <message id="hotkey.key.delete">
        <source>Delete</source>
        <extracomment>The Delete key in a shown key combination, as keyboards of the language label it</extracomment>
        <translation>Entf</translation>
    </message>
    <message id="hotkey.kde.component">
        <source>Tarnwell</source>
        <extracomment>Name of the program's group in KDE's shortcut settings</extracomment>
        <translation>Tarnwell</translation>
    </message>
    <message id="agent.error.noDisplay">
        <source>tarnwell: no graphical display (DISPLAY and WAYLAND_DISPLAY are unset), so the tray agent cannot start. Commands such as “tarnwell status” work without one.</source>
        <extracomment>The tray agent was started where there is no graphical display (ssh, cron, a text console)</extracomment>
        <translation>tarnwell: keine grafische Anzeige (DISPLAY und WAYLAND_DISPLAY sind nicht gesetzt), daher kann das Tray-Programm nicht starten. Befehle wie „tarnwell status“ funktionieren auch ohne.</translation>
    </message>
    <message id="cli.summary">
        <source>Tarnwell: your day and its task in hand, in the tray and on the command line.</source>
        <extracomment>First line of `tarnwell --help`</extracomment>
        <translation>Tarnwell: Ihr Tag und die Aufgabe in Arbeit, im Tray und auf der Kommandozeile.</translation>
    </message>
    <message id="cli.launcherUsage">
        <source>Commands (each has --help):
  add       add a task to today
  status    the task in hand and its timer
  list      the tasks of a day
  done      complete the task in hand
  start     start the timer of the task in hand
  pause     pause it
  toggle    start or pause it
  export    write days, tasks and routines as JSON, CSV or iCalendar
  import    read a JSON export back
  backups   list the daily copies of your data
  restore   put a daily copy back

Without a command, starts the tray agent, or hands links to the one that runs.
Exit codes: 0 done, 1 failure, 2 usage error, 3 invalid input, 4 store error,
5 no agent running where one is needed, 6 no task in hand or no such task.</source>
        <extracomment>Second part of `tarnwell --help`: the subcommands. Keep the command names and the spacing.</extracomment>
        <translation>Befehle (jeder mit --help):
  add       eine Aufgabe für heute hinzufügen
  status    die Aufgabe in Arbeit und ihr Timer
  list      die Aufgaben eines Tages
  done      die Aufgabe in Arbeit abschließen
  start     den Timer der Aufgabe in Arbeit starten
  pause     ihn anhalten
  toggle    ihn starten oder anhalten
  export    Tage, Aufgaben und Routinen als JSON, CSV oder iCalendar schreiben
  import    einen JSON-Export wieder einlesen
  backups   die täglichen Kopien deiner Daten auflisten
  restore   eine tägliche Kopie zurückholen

Ohne Befehl startet das Tray-Programm oder übergibt Links an das laufende.
Exit-Codes: 0 erledigt, 1 Fehler, 2 Aufruffehler, 3 ungültige Eingabe, 4 Speicherfehler,
5 das nötige Programm läuft nicht, 6 keine Aufgabe in Arbeit oder keine solche Aufgabe.</translation>
    </message>
    <message id="cli.arg.link">
        <source>tarnwell: links to open (tarnwell://quickadd opens quick add)</source>
        <extracomment>`tarnwell --help`: the optional links to open</extracomment>
        <translation>tarnwell:-Links zum Öffnen (tarnwell://quickadd öffnet die Schnelleingabe)</translation>
    </message>
    <message id="cli.option.uiTest">
        <source>Start without the first-run window (automated tests).</source>
        <extracomment>`tarnwell --help`: the option that skips the first-run window</extracomment>
        <translation>Ohne das Fenster beim ersten Start starten (automatische Tests).</translation>
    </message>
    <message id="cli.option.json">
        <source>Print JSON instead of text.</source>
        <extracomment>Command line option --json</extracomment>
        <translation>JSON statt Text ausgeben.</translation>
    </message>
    <message id="cli.add.description">
        <source>Adds a task to today. Give one quick-add line ("Write report · 45m !", "Call Bob ~ 15m tomorrow"), or --title with --minutes and --urgent.</source>
        <extracomment>`tarnwell add --help`</extracomment>
        <translation>Fügt eine Aufgabe für heute hinzu. Eine Schnelleingabe-Zeile angeben ("Bericht schreiben · 45m !", "Bob anrufen ~ 15m morgen") oder --title mit --minutes und --urgent.</translation>
    </message>
    <message id="cli.add.arg.line">
        <source>The task as one quick-add line.</source>
        <extracomment>`tarnwell add --help`: the quick-add line argument</extracomment>
        <translation>Die Aufgabe als eine Schnelleingabe-Zeile.</translation>
    </message>
    <message id="cli.option.title">
        <source>The title, taken as it is (no quick-add grammar).</source>
        <extracomment>`tarnwell add --help`: --title</extracomment>
        <translation>Der Titel, unverändert übernommen (ohne Schnelleingabe-Syntax).</translation>
    </message>
    <message id="cli.option.minutes">
        <source>Planned minutes (1 to 9999; 0 means unplanned).</source>
        <extracomment>`tarnwell add --help`: --minutes</extracomment>
        <translation>Geplante Minuten (1 bis 9999; 0 bedeutet ungeplant).</translation>
    </message>
    <message id="cli.option.urgent">
        <source>Put the task at the top of the queue.</source>
        <extracomment>`tarnwell add --help`: --urgent</extracomment>
        <translation>Die Aufgabe an den Anfang der Liste setzen.</translation>
    </message>
    <message id="cli.status.description">
        <source>Shows the task in hand, its timer and countdown, and the rest of today's queue.</source>
        <extracomment>`tarnwell status --help`</extracomment>
        <translation>Zeigt die Aufgabe in Arbeit, ihren Timer und Countdown und den Rest der heutigen Liste.</translation>
    </message>
    <message id="cli.option.follow">
        <source>Keep running and print the status again whenever it changes (needs the running agent).</source>
        <extracomment>`tarnwell status --help`: --follow</extracomment>
        <translation>Weiterlaufen und den Status bei jeder Änderung erneut ausgeben (braucht das laufende Programm).</translation>
    </message>
    <message id="cli.list.description">
        <source>Lists the tasks of a day: open ones in queue order, then the finished ones.</source>
        <extracomment>`tarnwell list --help`</extracomment>
        <translation>Listet die Aufgaben eines Tages: offene in Listenreihenfolge, dann die erledigten.</translation>
    </message>
    <message id="cli.option.day">
        <source>The day as YYYY-MM-DD (default: today).</source>
        <extracomment>`tarnwell list --help`: --day</extracomment>
        <translation>Der Tag als JJJJ-MM-TT (Standard: heute).</translation>
    </message>
    <message id="cli.done.description">
        <source>Completes the task in hand with its focused time; the next task comes up. Needs the running agent.</source>
        <extracomment>`tarnwell done --help`</extracomment>
        <translation>Schließt die Aufgabe in Arbeit mit ihrer Fokuszeit ab; die nächste Aufgabe rückt nach. Braucht das laufende Programm.</translation>
    </message>
    <message id="cli.done.arg.id">
        <source>The id of another open task to complete instead.</source>
        <extracomment>`tarnwell done --help`: the optional task id</extracomment>
        <translation>Die ID einer anderen offenen Aufgabe, die stattdessen abgeschlossen wird.</translation>
    </message>
    <message id="cli.start.description">
        <source>Starts the focus timer of the task in hand. Needs the running agent.</source>
        <extracomment>`tarnwell start --help`</extracomment>
        <translation>Startet den Fokus-Timer der Aufgabe in Arbeit. Braucht das laufende Programm.</translation>
    </message>
    <message id="cli.pause.description">
        <source>Pauses the focus timer of the task in hand. Needs the running agent.</source>
        <extracomment>`tarnwell pause --help`</extracomment>
        <translation>Hält den Fokus-Timer der Aufgabe in Arbeit an. Braucht das laufende Programm.</translation>
    </message>
    <message id="cli.toggle.description">
        <source>Starts or pauses the focus timer of the task in hand. Needs the running agent.</source>
        <extracomment>`tarnwell toggle --help`</extracomment>
        <translation>Startet oder hält den Fokus-Timer der Aufgabe in Arbeit an. Braucht das laufende Programm.</translation>
    </message>
    <message id="cli.export.description">
        <source>Writes days, tasks and routines as JSON (for import), CSV (planned against actual minutes of finished tasks) or iCalendar (VTODO).</source>
        <extracomment>`tarnwell export --help`</extracomment>
        <translation>Schreibt Tage, Aufgaben und Routinen als JSON (zum Import), CSV (geplante gegen tatsächliche Minuten erledigter Aufgaben) oder iCalendar (VTODO).</translation>
    </message>
    <message id="cli.option.format">
        <source>json, csv or ics (default json).</source>
        <extracomment>`tarnwell export --help`: --format</extracomment>
        <translation>json, csv oder ics (Standard json).</translation>
    </message>
    <message id="cli.option.from">
        <source>First day, YYYY-MM-DD.</source>
        <extracomment>`tarnwell export --help`: --from</extracomment>
        <translation>Erster Tag, JJJJ-MM-TT.</translation>
    </message>
    <message id="cli.option.to">
        <source>Last day, YYYY-MM-DD.</source>
        <extracomment>`tarnwell export --help`: --to</extracomment>
        <translation>Letzter Tag, JJJJ-MM-TT.</translation>
    </message>
    <message id="cli.option.output">
        <source>Write to this file instead of standard output.</source>
        <extracomment>`tarnwell export --help`: --output</extracomment>
        <translation>In diese Datei statt auf die Standardausgabe schreiben.</translation>
    </message>
    <message id="cli.import.description">
        <source>Reads a JSON export back. Records the store already holds are skipped; a malformed file changes nothing.</source>
        <extracomment>`tarnwell import --help`</extracomment>
        <translation>Liest einen JSON-Export wieder ein. Bereits vorhandene Einträge werden übersprungen; eine fehlerhafte Datei ändert nichts.</translation>
    </message>
    <message id="cli.import.arg.file">
        <source>The JSON file written by “tarnwell export”.</source>
        <extracomment>`tarnwell import --help`: the file argument</extracomment>
        <translation>Die von „tarnwell export“ geschriebene JSON-Datei.</translation>
    </message>
    <message id="cli.error.usage">
        <source>%1
Try “tarnwell %2 --help”.</source>
        <extracomment>A command line usage error; %1 says what is wrong, %2 is the subcommand</extracomment>
        <translation>%1
„tarnwell %2 --help“ versuchen.</translation>
    </message>
    <message id="cli.error.lineOrTitle">
        <source>Give either one quick-add line or --title, not both and not neither.</source>
        <extracomment>Usage error of `tarnwell add`</extracomment>
        <translation>Entweder eine Schnelleingabe-Zeile oder --title angeben, nicht beides und nicht keines.</translation>
    </message>
    <message id="cli.error.unexpected">
        <source>Unexpected arguments: %1</source>
        <extracomment>Usage error: extra words on the command line; %1 lists them</extracomment>
        <translation>Unerwartete Argumente: %1</translation>
    </message>
    <message id="cli.error.notANumber">
        <source>“%1” is not a whole number of minutes.</source>
        <extracomment>Usage error: --minutes was not a whole number; %1 is what was given</extracomment>
        <translation>„%1“ ist keine ganze Zahl von Minuten.</translation>
    </message>
    <message id="cli.error.followNeedsAgent">
        <source>Tarnwell is not running, so there are no changes to follow. Start it with “tarnwell”.</source>
        <extracomment>`tarnwell status --follow` without a running agent</extracomment>
        <translation>Tarnwell läuft nicht, daher gibt es keine Änderungen zu verfolgen. Mit „tarnwell“ starten.</translation>
    </message>
    <message id="cli.error.drivingNeedsAgent">
        <source>Tarnwell is not running; the timer and the task in hand are driven through it. Start it with “tarnwell”.</source>
        <extracomment>done/start/pause/toggle without a running agent</extracomment>
        <translation>Tarnwell läuft nicht; Timer und Aufgabe in Arbeit werden darüber gesteuert. Mit „tarnwell“ starten.</translation>
    </message>
    <message id="cli.error.agentMissing">
        <source>The tray agent is missing (looked for %1).</source>
        <extracomment>The tray agent program could not be found; %1 is where it was looked for</extracomment>
        <translation>Das Tray-Programm fehlt (gesucht: %1).</translation>
    </message>
    <message id="cli.error.agentUnreachable">
        <source>The running Tarnwell did not answer: %1</source>
        <extracomment>The running agent did not answer over D-Bus; %1 is the bus's message</extracomment>
        <translation>Das laufende Tarnwell hat nicht geantwortet: %1</translation>
    </message>
    <message id="cli.error.cannotRead">
        <source>Cannot read %1: %2</source>
        <extracomment>A file could not be read; %1 is the file, %2 the reason</extracomment>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message id="cli.error.cannotWrite">
        <source>Cannot write %1: %2</source>
        <extracomment>A file could not be written; %1 is the file, %2 the reason</extracomment>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message id="cli.done.confirmation">
        <source>Completed “%1”.</source>
        <extracomment>After `tarnwell done`; %1 is the task's title</extracomment>
        <translation>„%1“ abgeschlossen.</translation>
    </message>
    <message id="cli.start.confirmation">
        <source>Focusing on “%1”.</source>
        <extracomment>After the timer was started from the command line; %1 is the task's title</extracomment>
        <translation>Fokus auf „%1“.</translation>
    </message>
    <message id="cli.pause.confirmation">
        <source>Paused “%1”.</source>
        <extracomment>After the timer was paused from the command line; %1 is the task's title</extracomment>
        <translation>„%1“ angehalten.</translation>
    </message>
    <message id="cli.import.confirmation">
        <source>Imported %1 days, %2 tasks and %3 routines (%4 already there).</source>
        <extracomment>After `tarnwell import`; %1 days, %2 tasks, %3 routines added, %4 records already there</extracomment>
        <translation>%1 Tage, %2 Aufgaben und %3 Routinen importiert (%4 schon vorhanden).</translation>
    </message>
    <message id="cli.status.empty">
        <source>Nothing in hand: today's queue is empty.</source>
        <extracomment>`tarnwell status` when today's queue is empty</extracomment>
        <translation>Keine Aufgabe in Arbeit: Die heutige Liste ist leer.</translation>
    </message>
    <message id="cli.status.focusing">
        <source>Focusing on “%1”: %2 focused</source>
        <extracomment>`tarnwell status` while the timer runs; %1 is the title, %2 the focused time (h:mm:ss)</extracomment>
        <translation>Fokus auf „%1“: %2 fokussiert</translation>
    </message>
    <message id="cli.status.paused">
        <source>Paused on “%1”: %2 focused</source>
        <extracomment>`tarnwell status` while the timer is paused; %1 is the title, %2 the focused time (h:mm:ss)</extracomment>
        <translation>„%1“ angehalten: %2 fokussiert</translation>
    </message>
    <message id="cli.status.ready">
        <source>Up now: “%1”</source>
        <extracomment>`tarnwell status` when the task in hand has not been started; %1 is the title</extracomment>
        <translation>Jetzt dran: „%1“</translation>
    </message>
    <message id="cli.status.remaining">
        <source>%1 left of %2</source>
        <extracomment>`tarnwell status`: the countdown; %1 the time left, %2 the planned time (h:mm:ss)</extracomment>
        <translation>%1 von %2 übrig</translation>
    </message>
    <message id="cli.status.overdue">
        <source>%1 over the planned %2</source>
        <extracomment>`tarnwell status`: the countdown has run out; %1 the time over, %2 the planned time (h:mm:ss)</extracomment>
        <translation>%1 über den geplanten %2</translation>
    </message>
    <message id="cli.status.next">
        <source>Next: “%1”</source>
        <extracomment>`tarnwell status`: the task after the task in hand; %1 is its title</extracomment>
        <translation>Als Nächstes: „%1“</translation>
    </message>
    <message id="cli.status.queue" numerus="yes">
        <source>%n open task(s) today</source>
        <extracomment>`tarnwell status`: the number of open tasks today</extracomment>
        <translation>
            <numerusform>%n offene Aufgabe heute</numerusform>
            <numerusform>%n offene Aufgaben heute</numerusform>
        </translation>
    </message>
    <message id="cli.list.empty">
        <source>No tasks on this day.</source>
        <extracomment>`tarnwell list` for a day without tasks</extracomment>
        <translation>An diesem Tag gibt es keine Aufgaben.</translation>
    </message>
    <message id="intent.addTask.title">
        <source>Add Task to Tarnwell</source>
        <extracomment>Name of the system action that adds a task (launchers, command line help)</extracomment>
        <translation>Aufgabe zu Tarnwell hinzufügen</translation>
    </message>
    <message id="intent.addTask.description">
        <source>Adds a task to the end of today's queue, or to the top when it is urgent.</source>
        <extracomment>Description of the Add Task action</extracomment>
        <translation>Fügt eine Aufgabe am Ende der heutigen Liste hinzu, oder ganz oben, wenn sie dringend ist.</translation>
    </message>
    <message id="intent.addTask.short">
        <source>Add Task</source>
        <extracomment>Short name of the Add Task action, for tight lists</extracomment>
        <translation>Aufgabe hinzufügen</translation>
    </message>
    <message id="intent.addTask.param.title">
        <source>Title</source>
        <extracomment>Name of the Add Task action's title parameter</extracomment>
        <translation>Titel</translation>
    </message>
    <message id="intent.addTask.param.duration">
        <source>Planned minutes</source>
        <extracomment>Name of the Add Task action's planned-minutes parameter</extracomment>
        <translation>Geplante Minuten</translation>
    </message>
    <message id="intent.addTask.param.urgent">
        <source>Urgent</source>
        <extracomment>Name of the Add Task action's urgent parameter</extracomment>
        <translation>Dringend</translation>
    </message>
    <message id="intent.addTask.confirmation">
        <source>Added “%1” to Tarnwell.</source>
        <extracomment>Confirmation dialog after the Add Task to Tarnwell intent runs; %1 is the task's title</extracomment>
        <translation>„%1“ wurde zu Tarnwell hinzugefügt.</translation>
    </message>
    <message id="error.argument.tooLong">
        <source>“%1” is too long: at most %2 characters.</source>
        <extracomment>A text handed in by a script or the command line is too long; %1 is the field, %2 the limit</extracomment>
        <translation>„%1“ ist zu lang: höchstens %2 Zeichen.</translation>
    </message>
    <message id="error.argument.nul">
        <source>“%1” contains a NUL character.</source>
        <extracomment>A text handed in by a script contains a NUL character; %1 is the field</extracomment>
        <translation>„%1“ enthält ein NUL-Zeichen.</translation>
    </message>
    <message id="error.argument.minutes">
        <source>Planned minutes must be at most %1.</source>
        <extracomment>Planned minutes handed in by a script are too many; %1 is the limit</extracomment>
        <translation>Geplante Minuten dürfen höchstens %1 sein.</translation>
    </message>
    <message id="error.argument.date">
        <source>“%1” is not a date of the form YYYY-MM-DD.</source>
        <extracomment>A day handed in by a script or the command line is not a date; %1 is what was given</extracomment>
        <translation>„%1“ ist kein Datum der Form JJJJ-MM-TT.</translation>
    </message>
    <message id="error.argument.taskId">
        <source>“%1” is not a task id (a UUID such as 0f8fad5b-d9cb-469f-a165-70867728950e).</source>
        <extracomment>A task id handed in by a script is not a UUID; %1 is what was given</extracomment>
        <translation>„%1“ ist keine Aufgaben-ID (eine UUID wie 0f8fad5b-d9cb-469f-a165-70867728950e).</translation>
    </message>
    <message id="error.argument.format">
        <source>Unknown format “%1”: use json, csv or ics.</source>
        <extracomment>An export format that does not exist was asked for; %1 is what was given</extracomment>
        <translation>Unbekanntes Format „%1“: json, csv oder ics verwenden.</translation>
    </message>
    <message id="error.argument.range">
        <source>The start date %1 comes after the end date %2.</source>
        <extracomment>An export range whose start comes after its end; %1 and %2 are the dates</extracomment>
        <translation>Das Anfangsdatum %1 liegt nach dem Enddatum %2.</translation>
    </message>
    <message id="automation.error.noTaskInHand">
        <source>There is no task in hand: today's queue is empty.</source>
        <extracomment>A script or the command line asked to drive the task in hand, but today's queue is empty</extracomment>
        <translation>Keine Aufgabe in Arbeit: Die heutige Liste ist leer.</translation>
    </message>
    <message id="automation.error.taskNotFound">
        <source>No open task has the id %1.</source>
        <extracomment>A script asked to complete a task that does not exist or is not open; %1 is the id</extracomment>
        <translation>Keine offene Aufgabe hat die ID %1.</translation>
    </message>
    <message id="error.import.tooLarge">
        <source>The file is too large to import (at most %1 MB).</source>
        <extracomment>An import file is larger than we accept; %1 is the limit in megabytes</extracomment>
        <translation>Die Datei ist zu groß für den Import (höchstens %1 MB).</translation>
    </message>
    <message id="error.import.field">
        <source>Line %1, field “%2”: %3</source>
        <extracomment>Import refused; %1 is the line of the file, %2 the field, %3 what is wrong with it</extracomment>
        <translation>Zeile %1, Feld „%2“: %3</translation>
    </message>
    <message id="error.import.invalidValue">
        <source>missing or not a valid value</source>
        <extracomment>Import refused: a field is missing or holds the wrong kind of value</extracomment>
        <translation>fehlt oder ist kein gültiger Wert</translation>
    </message>
    <message id="error.import.notJson">
        <source>Line %1: this is not valid JSON (%2).</source>
        <extracomment>Import refused: the file is not JSON; %1 is the line, %2 the parser's message</extracomment>
        <translation>Zeile %1: Das ist kein gültiges JSON (%2).</translation>
    </message>
    <message id="error.import.notExport">
        <source>This is not a Tarnwell export (expected “format”: “%1” and “version”: %2).</source>
        <extracomment>Import refused: the JSON is not one of our exports; %1 is the expected format name, %2 the version</extracomment>
        <translation>Das ist kein Tarnwell-Export (erwartet: „format“: „%1“ und „version“: %2).</translation>
    </message>
    <message id="error.import.duplicateId">
        <source>this id appears twice</source>
        <extracomment>Import refused: an id appears twice in the file</extracomment>
        <translation>diese ID kommt zweimal vor</translation>
    </message>
    <message id="error.import.duplicateDate">
        <source>this date appears twice</source>
        <extracomment>Import refused: two days of the file have the same date</extracomment>
        <translation>dieses Datum kommt zweimal vor</translation>
    </message>
    <message id="sync.task.untitled">
        <source>Untitled to-do</source>
        <extracomment>The title of a task that came from a to-do without a summary (written by another calendar program)</extracomment>
        <translation>Aufgabe ohne Titel</translation>
    </message>
    <message id="automation.error.notReady">
        <source>Tarnwell is still starting; try again in a moment.</source>
        <extracomment>A script called the agent while it is still starting</extracomment>
        <translation>Tarnwell startet noch; bitte gleich noch einmal versuchen.</translation>
    </message>
    <message id="cli.option.action">
        <source>Ask the running program for an action: quick-add, open-today or toggle-popover (for a desktop shortcut).</source>
        <extracomment>`tarnwell --help`: the option that asks the running program for one of its actions; keep the action names</extracomment>
        <translation>Das laufende Programm um eine Aktion bitten: quick-add, open-today oder toggle-popover (für ein Tastenkürzel des Desktops).</translation>
    </message>
    <message id="day.navigator.today">
        <source>Today</source>
        <extracomment>Widget header - the current day</extracomment>
        <translation>Heute</translation>
    </message>
    <message id="summary.zero">
        <source>No tasks completed yet</source>
        <extracomment>Widget summary when nothing is done yet</extracomment>
        <translation>Noch keine Aufgabe erledigt</translation>
    </message>
    <message id="summary.done" numerus="yes">
        <source>%n done</source>
        <extracomment>Plural - completed task count</extracomment>
        <translation>
            <numerusform>%n erledigt</numerusform>
            <numerusform>%n erledigt</numerusform>
        </translation>
    </message>
    <message id="duration.unit.minutes">
        <source>min</source>
        <extracomment>Short minutes unit, e.g. min</extracomment>
        <translation>Min.</translation>
    </message>
    <message id="widget.empty.notRunning">
        <source>Tarnwell is not running</source>
        <extracomment>Desktop widget and status bar when there is nothing current to show</extracomment>
        <translation>Tarnwell läuft nicht</translation>
    </message>
    <message id="widget.empty.nothingQueued">
        <source>Nothing left for today</source>
        <extracomment>Desktop widget and status bar when today has no open task</extracomment>
        <translation>Für heute ist nichts mehr offen</translation>
    </message>
    <message id="widget.upNext">
        <source>Up next</source>
        <extracomment>Desktop widget: heading of the tasks after the task in hand</extracomment>
        <translation>Als Nächstes</translation>
    </message>
    <message id="widget.action.done">
        <source>Done</source>
        <extracomment>Desktop widget: button that marks the task in hand done</extracomment>
        <translation>Erledigt</translation>
    </message>
    <message id="widget.rolledOver">
        <source>Carried over from an earlier day</source>
        <extracomment>Desktop widget: marks a task carried over from an earlier day (screen readers, tooltip)</extracomment>
        <translation>Von einem früheren Tag übernommen</translation>
    </message>
    <message id="widget.cli.summary">
        <source>Shows the task in hand and its countdown on the desktop or in a status bar.</source>
        <extracomment>tarnwell-widget --help: first line</extracomment>
        <translation>Zeigt die aktuelle Aufgabe und ihren Countdown auf dem Desktop oder in einer Statusleiste.</translation>
    </message>
    <message id="widget.cli.placement">
        <source>Without an option it opens a small window on the desktop. Drag it to move it, or start it with --position X,Y. In a tiling window manager, let windows of the class tarnwell-widget float. Add the command to your desktop's autostart to have it at every login.</source>
        <extracomment>tarnwell-widget --help: how to place the desktop window; keep the option names and the class name as they are</extracomment>
        <translation>Ohne Option öffnet sich ein kleines Fenster auf dem Desktop. Ziehen Sie es, um es zu verschieben, oder starten Sie es mit --position X,Y. In einem kachelnden Fenstermanager lassen Sie Fenster der Klasse tarnwell-widget schweben. Nehmen Sie den Befehl in den Autostart Ihres Desktops auf, um das Fenster bei jeder Anmeldung zu haben.</translation>
    </message>
    <message id="widget.cli.waybar">
        <source>Print one JSON line per change for a waybar custom module (return-type json).</source>
        <extracomment>tarnwell-widget --help: the --waybar option</extracomment>
        <translation>Bei jeder Änderung eine JSON-Zeile für ein eigenes waybar-Modul ausgeben (return-type json).</translation>
    </message>
    <message id="widget.cli.format">
        <source>Print one line per change from a template for polybar, i3blocks and others. Fields: {title} {time} {state} {percentage} {done} {total} {next} {summary} {planned} {day}.</source>
        <extracomment>tarnwell-widget --help: the --format option; keep the names in braces as they are</extracomment>
        <translation>Bei jeder Änderung eine Zeile nach einer Vorlage für polybar, i3blocks und andere ausgeben. Felder: {title} {time} {state} {percentage} {done} {total} {next} {summary} {planned} {day}.</translation>
    </message>
    <message id="widget.cli.seconds">
        <source>Count down in seconds in the status bar instead of whole minutes.</source>
        <extracomment>tarnwell-widget --help: the --seconds option</extracomment>
        <translation>In der Statusleiste sekundengenau statt in ganzen Minuten herunterzählen.</translation>
    </message>
    <message id="widget.cli.toggle">
        <source>Start or pause the timer of the task in hand, then exit.</source>
        <extracomment>tarnwell-widget --help: the --toggle option</extracomment>
        <translation>Den Timer der aktuellen Aufgabe starten oder anhalten, dann beenden.</translation>
    </message>
    <message id="widget.cli.done">
        <source>Mark the task in hand done, then exit.</source>
        <extracomment>tarnwell-widget --help: the --done option</extracomment>
        <translation>Die aktuelle Aufgabe als erledigt markieren, dann beenden.</translation>
    </message>
    <message id="widget.cli.position">
        <source>Place the desktop window with its top left corner at X,Y.</source>
        <extracomment>tarnwell-widget --help: the --position option</extracomment>
        <translation>Das Desktop-Fenster mit der linken oberen Ecke bei X,Y platzieren.</translation>
    </message>
    <message id="widget.cli.noTask">
        <source>There is no task in hand, or Tarnwell is not running.</source>
        <extracomment>tarnwell-widget --toggle or --done when there is no task to act on</extracomment>
        <translation>Es gibt keine aktuelle Aufgabe, oder Tarnwell läuft nicht.</translation>
    </message>
    <message id="widget.cli.commandFailed">
        <source>Could not pass the command to Tarnwell: %1</source>
        <extracomment>tarnwell-widget --toggle or --done could not leave its command; %1 = the reason</extracomment>
        <translation>Der Befehl konnte nicht an Tarnwell übergeben werden: %1</translation>
    </message>
    <message id="store.saveFailed.title">
        <source>Tarnwell cannot save</source>
        <extracomment>Notification title when the data file cannot be written (disk full, folder not writable)</extracomment>
        <translation>Tarnwell kann nicht speichern</translation>
    </message>
    <message id="store.saveFailed.body">
        <source>The disk is full or cannot be written. Your changes are kept and saved as soon as there is room again.</source>
        <extracomment>Notification text and tray tooltip line while saving fails; the changes are not lost</extracomment>
        <translation>Der Datenträger ist voll oder nicht beschreibbar. Deine Änderungen bleiben erhalten und werden gespeichert, sobald wieder Platz ist.</translation>
    </message>
    <message id="store.openFailed.title">
        <source>Tarnwell cannot open your data</source>
        <extracomment>Notification or dialog title when the data file cannot be opened at start; Tarnwell then closes</extracomment>
        <translation>Tarnwell kann deine Daten nicht öffnen</translation>
    </message>
    <message id="store.openFailed.body">
        <source>%1 could not be opened (%2). The file was left untouched. Tarnwell will close now.</source>
        <extracomment>Notification or dialog text when the data file cannot be opened. %1: the file's path, %2: the reason (English, from the database)</extracomment>
        <translation>%1 konnte nicht geöffnet werden (%2). Die Datei wurde nicht verändert. Tarnwell wird jetzt beendet.</translation>
    </message>
    <message id="cli.backups.description">
        <source>Lists the daily copies of your data, newest first: the day, the size and the file. Tarnwell keeps the last seven.</source>
        <extracomment>`tarnwell backups --help`</extracomment>
        <translation>Listet die täglichen Kopien deiner Daten auf, die neueste zuerst: Tag, Größe und Datei. Tarnwell behält die letzten sieben.</translation>
    </message>
    <message id="cli.restore.description">
        <source>Replaces your data with a daily copy. The data as it is now is copied aside first. Quit Tarnwell before.</source>
        <extracomment>`tarnwell restore --help`</extracomment>
        <translation>Ersetzt deine Daten durch eine tägliche Kopie. Die Daten, wie sie jetzt sind, werden vorher beiseitekopiert. Beende Tarnwell vorher.</translation>
    </message>
    <message id="cli.restore.argument">
        <source>A day (YYYY-MM-DD) that “tarnwell backups” lists, or the file of a copy</source>
        <extracomment>`tarnwell restore --help`: the argument</extracomment>
        <translation>Ein Tag (YYYY-MM-DD), den „tarnwell backups“ auflistet, oder die Datei einer Kopie</translation>
    </message>
    <message id="cli.backups.none">
        <source>No copies yet: Tarnwell makes one a day while it runs.</source>
        <extracomment>`tarnwell backups` when there is none yet</extracomment>
        <translation>Noch keine Kopien: Tarnwell legt täglich eine an, während es läuft.</translation>
    </message>
    <message id="cli.restore.running">
        <source>Tarnwell is running. Quit it first, so that it does not write over the restored data.</source>
        <extracomment>`tarnwell restore` while the tray program runs</extracomment>
        <translation>Tarnwell läuft. Beende es zuerst, damit es die zurückgeholten Daten nicht überschreibt.</translation>
    </message>
    <message id="cli.restore.noSuchBackup">
        <source>No copy for “%1”; “tarnwell backups” lists them.</source>
        <extracomment>`tarnwell restore` with a day or file that is not a copy. %1: what was given</extracomment>
        <translation>Keine Kopie für „%1“; „tarnwell backups“ listet sie auf.</translation>
    </message>
    <message id="cli.restore.done">
        <source>Restored %1. Your data as it was is kept in %2.</source>
        <extracomment>After `tarnwell restore`. %1: the copy restored, %2: where the data as it was now lies</extracomment>
        <translation>%1 zurückgeholt. Deine bisherigen Daten liegen in %2.</translation>
    </message>
    <message id="settings.hotkeys.recording">
        <source>Press the keys…</source>
        <extracomment>Settings, Hotkeys: shown in a hot-key recorder while it waits for keys</extracomment>
        <translation>Tasten drücken…</translation>
    </message>
    <message id="popover.menu.tooltip">
        <source>Routines, review and settings</source>
        <extracomment>Popover: tooltip of the menu button with the routines, the review and the settings</extracomment>
        <translation>Routinen, Rückblick und Einstellungen</translation>
    </message>
    <message id="popover.menu.review">
        <source>Review…</source>
        <extracomment>Popover menu: opens the review of estimates</extracomment>
        <translation>Rückblick…</translation>
    </message>
    <message id="popover.menu.settings">
        <source>Settings…</source>
        <extracomment>Popover menu: opens the settings window</extracomment>
        <translation>Einstellungen…</translation>
    </message>
    <message id="review.window.title">
        <source>Review of your estimates</source>
        <extracomment>Title of the review window (window lists, screen readers)</extracomment>
        <translation>Rückblick auf Ihre Schätzungen</translation>
    </message>
    <message id="review.previous">
        <source>Earlier</source>
        <extracomment>Review: button that shows the week or month before</extracomment>
        <translation>Früher</translation>
    </message>
    <message id="review.next">
        <source>Later</source>
        <extracomment>Review: button that shows the week or month after</extracomment>
        <translation>Später</translation>
    </message>
    <message id="review.week">
        <source>Week</source>
        <extracomment>Review: shows one week at a time</extracomment>
        <translation>Woche</translation>
    </message>
    <message id="review.month">
        <source>Month</source>
        <extracomment>Review: shows one month at a time</extracomment>
        <translation>Monat</translation>
    </message>
    <message id="review.chart">
        <source>Median planned and measured minutes per group</source>
        <extracomment>Review: name of the chart for screen readers</extracomment>
        <translation>Median der geplanten und gemessenen Minuten je Gruppe</translation>
    </message>
    <message id="review.legend.planned">
        <source>Planned (median)</source>
        <extracomment>Review: chart legend for the planned minutes' bar</extracomment>
        <translation>Geplant (Median)</translation>
    </message>
    <message id="review.legend.actual">
        <source>Measured (median)</source>
        <extracomment>Review: chart legend for the measured minutes' bar</extracomment>
        <translation>Gemessen (Median)</translation>
    </message>
    <message id="review.bucket.figures">
        <source>%1 tasks · planned %2 · measured %3 (medians)</source>
        <extracomment>Review: a group's figures; %1 = number of tasks, %2 = median planned ("25m"), %3 = median measured ("35m")</extracomment>
        <translation>%1 Aufgaben · geplant %2 · gemessen %3 (Mediane)</translation>
    </message>
    <message id="review.offenders">
        <source>Furthest over plan</source>
        <extracomment>Review: heading of the tasks that ran furthest past their plan</extracomment>
        <translation>Am weitesten über dem Plan</translation>
    </message>
    <message id="settings.window.title">
        <source>Tarnwell Settings</source>
        <extracomment>Title of the settings window (window lists, screen readers)</extracomment>
        <translation>Tarnwell-Einstellungen</translation>
    </message>
    <message id="settings.tab.general">
        <source>General</source>
        <extracomment>Settings tab: general settings</extracomment>
        <translation>Allgemein</translation>
    </message>
    <message id="settings.tab.reminders">
        <source>Reminders</source>
        <extracomment>Settings tab: notifications and sounds</extracomment>
        <translation>Erinnerungen</translation>
    </message>
    <message id="settings.tab.hotkeys">
        <source>Hotkeys</source>
        <extracomment>Settings tab: keyboard shortcuts</extracomment>
        <translation>Tastenkürzel</translation>
    </message>
    <message id="settings.tab.permissions">
        <source>Permissions</source>
        <extracomment>Settings tab: what works on this desktop</extracomment>
        <translation>Berechtigungen</translation>
    </message>
    <message id="settings.tab.about">
        <source>About</source>
        <extracomment>Settings tab: version, licence, data folder</extracomment>
        <translation>Über</translation>
    </message>
    <message id="settings.general.language">
        <source>Language</source>
        <extracomment>Settings, General: label of the language menu</extracomment>
        <translation>Sprache</translation>
    </message>
    <message id="settings.general.appearance">
        <source>Appearance</source>
        <extracomment>Settings, General: label of the light/dark menu</extracomment>
        <translation>Erscheinungsbild</translation>
    </message>
    <message id="settings.general.appearance.system">
        <source>Same as the desktop</source>
        <extracomment>Settings, General: appearance follows the desktop</extracomment>
        <translation>Wie der Desktop</translation>
    </message>
    <message id="settings.general.appearance.light">
        <source>Light</source>
        <extracomment>Settings, General: always the light palette</extracomment>
        <translation>Hell</translation>
    </message>
    <message id="settings.general.appearance.dark">
        <source>Dark</source>
        <extracomment>Settings, General: always the dark palette</extracomment>
        <translation>Dunkel</translation>
    </message>
    <message id="settings.general.launchAtLogin">
        <source>Start Tarnwell when I log in</source>
        <extracomment>Settings, General: switch that starts Tarnwell when the user logs in</extracomment>
        <translation>Tarnwell bei der Anmeldung starten</translation>
    </message>
    <message id="settings.general.day">
        <source>Your day</source>
        <extracomment>Settings, General: heading of the workday and day plan settings</extracomment>
        <translation>Ihr Tag</translation>
    </message>
    <message id="settings.general.workdayEnd.title">
        <source>End of the workday</source>
        <extracomment>Settings, General: switch for the end of the workday</extracomment>
        <translation>Ende des Arbeitstags</translation>
    </message>
    <message id="settings.general.workdayEnd.caption">
        <source>The day plan under the list warns when the queued work runs past this time.</source>
        <extracomment>Settings, General: what the workday end does</extracomment>
        <translation>Der Tagesplan unter der Liste warnt, wenn die geplante Arbeit über diese Uhrzeit hinausgeht.</translation>
    </message>
    <message id="settings.general.workdayEnd.time">
        <source>Workday ends at</source>
        <extracomment>Settings, General: label of the field with the workday end's time</extracomment>
        <translation>Arbeitstag endet um</translation>
    </message>
    <message id="settings.general.dayPlan.title">
        <source>The day plan</source>
        <extracomment>Settings, General: heading of the explanation of the day plan footer</extracomment>
        <translation>Der Tagesplan</translation>
    </message>
    <message id="settings.general.dayPlan.caption">
        <source>Under the list, the planned minutes still ahead add up to a finish time. With a workday end, the tasks that no longer fit are counted and can be moved to tomorrow in one go. Tasks without minutes are counted apart.</source>
        <extracomment>Settings, General: explanation of the day plan footer under the task list</extracomment>
        <translation>Unter der Liste ergeben die noch geplanten Minuten eine Uhrzeit, zu der Sie fertig sind. Mit einem Arbeitstagsende werden die Aufgaben gezählt, die nicht mehr passen, und lassen sich in einem Zug auf morgen verschieben. Aufgaben ohne Minuten werden getrennt gezählt.</translation>
    </message>
    <message id="settings.general.tray">
        <source>In the tray</source>
        <extracomment>Settings, General: heading of the tray settings</extracomment>
        <translation>In der Leiste</translation>
    </message>
    <message id="settings.general.trayTitle">
        <source>Title length in the tray</source>
        <extracomment>Settings, General: how many characters of the task's title the tray shows</extracomment>
        <translation>Titellänge in der Leiste</translation>
    </message>
    <message id="settings.general.trayTitle.none">
        <source>Countdown only</source>
        <extracomment>Settings, General: tray title length option that shows only the countdown</extracomment>
        <translation>Nur der Countdown</translation>
    </message>
    <message id="settings.general.trayTitle.chars">
        <source>%1 characters</source>
        <extracomment>Settings, General: tray title length option; %1 = a number of characters</extracomment>
        <translation>%1 Zeichen</translation>
    </message>
    <message id="settings.general.minimalIdle">
        <source>Only the icon while no task is in hand</source>
        <extracomment>Settings, General: switch that hides the tray's text while no task is in hand</extracomment>
        <translation>Nur das Symbol, solange keine Aufgabe läuft</translation>
    </message>
    <message id="settings.general.idle">
        <source>Ask about time away after</source>
        <extracomment>Settings, General: label of the idle threshold menu</extracomment>
        <translation>Nach Abwesenheit fragen nach</translation>
    </message>
    <message id="settings.general.idle.caption">
        <source>While the timer runs, a stretch without keyboard or mouse this long is offered to subtract from the measured time.</source>
        <extracomment>Settings, General: what the idle threshold does</extracomment>
        <translation>Bei laufendem Timer wird eine so lange Zeit ohne Tastatur und Maus angeboten, um sie von der gemessenen Zeit abzuziehen.</translation>
    </message>
    <message id="settings.general.idle.off">
        <source>Never</source>
        <extracomment>Settings, General: idle threshold option: never ask about time away</extracomment>
        <translation>Nie</translation>
    </message>
    <message id="settings.general.idle.minutes">
        <source>%1 minutes</source>
        <extracomment>Settings, General: idle threshold option; %1 = minutes</extracomment>
        <translation>%1 Minuten</translation>
    </message>
    <message id="settings.reminders.notifications">
        <source>Notifications</source>
        <extracomment>Settings, Reminders: switch for desktop notifications</extracomment>
        <translation>Benachrichtigungen</translation>
    </message>
    <message id="settings.reminders.notifications.caption">
        <source>When the planned time of the task in hand is up, with Done and more time as buttons.</source>
        <extracomment>Settings, Reminders: what the notifications are</extracomment>
        <translation>Wenn die geplante Zeit der aktuellen Aufgabe um ist, mit „Erledigt“ und „Mehr Zeit“ als Knöpfen.</translation>
    </message>
    <message id="settings.reminders.warning">
        <source>Warn before the end</source>
        <extracomment>Settings, Reminders: label of the menu for the warning before the planned end</extracomment>
        <translation>Vor dem Ende warnen</translation>
    </message>
    <message id="settings.reminders.warning.off">
        <source>No warning</source>
        <extracomment>Settings, Reminders: warning option: no warning before the planned end</extracomment>
        <translation>Keine Warnung</translation>
    </message>
    <message id="settings.reminders.warning.minutes">
        <source>%1 min before</source>
        <extracomment>Settings, Reminders: warning option; %1 = minutes before the planned end</extracomment>
        <translation>%1 Min. vorher</translation>
    </message>
    <message id="settings.reminders.overtime">
        <source>More time adds</source>
        <extracomment>Settings, Reminders: label of the menu with the minutes the "+N" button adds</extracomment>
        <translation>„Mehr Zeit“ gibt</translation>
    </message>
    <message id="settings.reminders.overtime.minutes">
        <source>%1 minutes</source>
        <extracomment>Settings, Reminders: option of the minutes "+N" adds; %1 = minutes</extracomment>
        <translation>%1 Minuten</translation>
    </message>
    <message id="settings.reminders.sound.title">
        <source>Sound</source>
        <extracomment>Settings, Reminders: heading of the sound settings</extracomment>
        <translation>Klang</translation>
    </message>
    <message id="settings.reminders.sound">
        <source>Play a chime at the warning and at the end</source>
        <extracomment>Settings, Reminders: switch for the chimes</extracomment>
        <translation>Bei der Warnung und am Ende einen Klang abspielen</translation>
    </message>
    <message id="settings.reminders.sound.caption">
        <source>The warning plays softer than the end.</source>
        <extracomment>Settings, Reminders: how loud the chimes are</extracomment>
        <translation>Die Warnung klingt leiser als das Ende.</translation>
    </message>
    <message id="settings.reminders.chime">
        <source>Chime</source>
        <extracomment>Settings, Reminders: label of the chime menu</extracomment>
        <translation>Klang</translation>
    </message>
    <message id="settings.reminders.preview">
        <source>Play the chime</source>
        <extracomment>Settings, Reminders: button that plays the chosen chime</extracomment>
        <translation>Klang abspielen</translation>
    </message>
    <message id="settings.hotkeys.caption">
        <source>These work everywhere. To change one, choose it and press the new keys, with Super, Ctrl or Alt.</source>
        <extracomment>Settings, Hotkeys: how to change a hot key</extracomment>
        <translation>Diese wirken überall. Zum Ändern eines Kürzels wählen Sie es aus und drücken die neuen Tasten, mit Super, Strg oder Alt.</translation>
    </message>
    <message id="settings.hotkeys.needsModifier">
        <source>Hold Super, Ctrl or Alt together with a letter, a digit, Space, Return, Tab, Delete or an arrow key.</source>
        <extracomment>Settings, Hotkeys: a pressed combination that cannot be a hot key</extracomment>
        <translation>Halten Sie Super, Strg oder Alt zusammen mit einem Buchstaben, einer Ziffer, Leertaste, Eingabe, Tab, Entf oder einer Pfeiltaste.</translation>
    </message>
    <message id="settings.hotkeys.default">
        <source>Default</source>
        <extracomment>Settings, Hotkeys: button that puts a hot key back to its first combination</extracomment>
        <translation>Standard</translation>
    </message>
    <message id="settings.hotkeys.backend.portal">
        <source>Global hot keys go through the desktop's shortcuts portal; it may ask you to confirm them.</source>
        <extracomment>Settings, Hotkeys: which way global hot keys reach the desktop</extracomment>
        <translation>Globale Tastenkürzel laufen über das Kürzel-Portal des Desktops; es fragt eventuell nach einer Bestätigung.</translation>
    </message>
    <message id="settings.hotkeys.backend.kglobalaccel">
        <source>Global hot keys go through KDE's shortcut service; they also show in System Settings.</source>
        <extracomment>Settings, Hotkeys: which way global hot keys reach the desktop</extracomment>
        <translation>Globale Tastenkürzel laufen über den Kürzeldienst von KDE; sie erscheinen auch in den Systemeinstellungen.</translation>
    </message>
    <message id="settings.hotkeys.backend.x11">
        <source>Global hot keys are taken from the X server directly.</source>
        <extracomment>Settings, Hotkeys: which way global hot keys reach the desktop</extracomment>
        <translation>Globale Tastenkürzel werden direkt vom X-Server abgefangen.</translation>
    </message>
    <message id="settings.hotkeys.backend.none">
        <source>This desktop lets no program set global hot keys. Add shortcuts in the desktop's keyboard settings that run these commands instead:</source>
        <extracomment>Settings, Hotkeys: no way to register global hot keys on this desktop</extracomment>
        <translation>Dieser Desktop lässt kein Programm globale Tastenkürzel setzen. Legen Sie stattdessen in den Tastatureinstellungen des Desktops Kürzel an, die diese Befehle ausführen:</translation>
    </message>
    <message id="settings.hotkeys.builtIn.title">
        <source>While the popover is open</source>
        <extracomment>Settings, Hotkeys: heading of the list of the popover's fixed shortcuts</extracomment>
        <translation>Solange das Fenster offen ist</translation>
    </message>
    <message id="settings.permissions.caption">
        <source>What Tarnwell can use on this desktop right now. Nothing here is required: without a facility, the rest keeps working.</source>
        <extracomment>Settings, Permissions: what the tab shows</extracomment>
        <translation>Was Tarnwell auf diesem Desktop gerade nutzen kann. Nichts davon ist Pflicht: Fehlt etwas, funktioniert der Rest weiter.</translation>
    </message>
    <message id="settings.permissions.working">
        <source>Working</source>
        <extracomment>Settings, Permissions: state of a facility that works</extracomment>
        <translation>Funktioniert</translation>
    </message>
    <message id="settings.permissions.limited">
        <source>In part</source>
        <extracomment>Settings, Permissions: state of a facility that works in part</extracomment>
        <translation>Teilweise</translation>
    </message>
    <message id="settings.permissions.missing">
        <source>Not available</source>
        <extracomment>Settings, Permissions: state of a facility this desktop lacks</extracomment>
        <translation>Nicht verfügbar</translation>
    </message>
    <message id="settings.permissions.refresh">
        <source>Check again</source>
        <extracomment>Settings, Permissions: button that looks at the desktop again</extracomment>
        <translation>Erneut prüfen</translation>
    </message>
    <message id="settings.about.version">
        <source>Version %1</source>
        <extracomment>Settings, About: the program's version; %1 = a version number</extracomment>
        <translation>Version %1</translation>
    </message>
    <message id="settings.about.licence">
        <source>© 2026 The Tarnwell team. Tarnwell is not yet published under a licence; all rights are reserved.</source>
        <extracomment>Settings, About: the licence</extracomment>
        <translation>© 2026 Das Tarnwell-Team. Tarnwell ist noch unter keiner Lizenz veröffentlicht; alle Rechte vorbehalten.</translation>
    </message>
    <message id="settings.about.data">
        <source>Your data</source>
        <extracomment>Settings, About: heading of the data folder</extracomment>
        <translation>Ihre Daten</translation>
    </message>
    <message id="settings.about.data.caption">
        <source>Everything Tarnwell keeps is in one file in this folder, on this computer only:</source>
        <extracomment>Settings, About: where the data is</extracomment>
        <translation>Alles, was Tarnwell speichert, liegt in einer Datei in diesem Ordner, nur auf diesem Rechner:</translation>
    </message>
    <message id="settings.about.openFolder">
        <source>Open folder</source>
        <extracomment>Settings, About: button that opens the data folder in the file manager</extracomment>
        <translation>Ordner öffnen</translation>
    </message>
    <message id="settings.about.export">
        <source>To keep a copy elsewhere, export everything with: %1</source>
        <extracomment>Settings, About: how to export; %1 = a command line</extracomment>
        <translation>Für eine Kopie an anderer Stelle exportieren Sie alles mit: %1</translation>
    </message>
    <message id="settings.about.logs">
        <source>Logs</source>
        <extracomment>Settings, About: heading of where the logs go</extracomment>
        <translation>Protokolle</translation>
    </message>
    <message id="settings.about.logs.caption">
        <source>Tarnwell writes what it does to the system journal (read it with journalctl --user -t tarnwell), or to its standard error when started from a terminal.</source>
        <extracomment>Settings, About: where the logs go; the command must stay as it is</extracomment>
        <translation>Tarnwell schreibt, was es tut, ins Systemjournal (lesbar mit journalctl --user -t tarnwell) oder in seine Standardfehlerausgabe, wenn es aus einem Terminal gestartet wurde.</translation>
    </message>
    <message id="menubar.menu.review">
        <source>Review…</source>
        <extracomment>Status item menu: open the review of estimates</extracomment>
        <translation>Rückblick…</translation>
    </message>
    <message id="review.bucket.upTo15">
        <source>tasks up to 15 minutes</source>
        <extracomment>Review: the group of tasks planned for 15 minutes or less (used inside sentences and as a heading)</extracomment>
        <translation>Aufgaben bis 15 Minuten</translation>
    </message>
    <message id="review.bucket.upTo30">
        <source>tasks of 16 to 30 minutes</source>
        <extracomment>Review: the group of tasks planned for 16 to 30 minutes (used inside sentences and as a heading)</extracomment>
        <translation>Aufgaben von 16 bis 30 Minuten</translation>
    </message>
    <message id="review.bucket.upTo45">
        <source>tasks of 31 to 45 minutes</source>
        <extracomment>Review: the group of tasks planned for 31 to 45 minutes (used inside sentences and as a heading)</extracomment>
        <translation>Aufgaben von 31 bis 45 Minuten</translation>
    </message>
    <message id="review.bucket.over45">
        <source>tasks over 45 minutes</source>
        <extracomment>Review: the group of tasks planned for more than 45 minutes (used inside sentences and as a heading)</extracomment>
        <translation>Aufgaben über 45 Minuten</translation>
    </message>
    <message id="review.verdict.none">
        <source>No timed tasks yet.</source>
        <extracomment>Review: verdict of a group of tasks without any completed, planned and timed task</extracomment>
        <translation>Noch keine gemessenen Aufgaben.</translation>
    </message>
    <message id="review.verdict.tooFew">
        <source>Too few timed tasks to judge yet: %1.</source>
        <extracomment>Review: verdict of a group with too few tasks to say anything; %1 = how many there are</extracomment>
        <translation>Noch zu wenige gemessene Aufgaben für ein Urteil: %1.</translation>
    </message>
    <message id="review.verdict.onTheMark">
        <source>Your plans for %1 hold well.</source>
        <extracomment>Review: verdict when the plans of a group of tasks hold; %1 = the group ("tasks up to 15 minutes")</extracomment>
        <translation>Ihre Pläne für %1 gehen gut auf.</translation>
    </message>
    <message id="review.verdict.under">
        <source>You underestimate %1 by %2 %.</source>
        <extracomment>Review: verdict when tasks take longer than planned; %1 = the group ("tasks of 16 to 30 minutes"), %2 = percent, a whole number</extracomment>
        <translation>Sie unterschätzen %1 um %2 %.</translation>
    </message>
    <message id="review.verdict.over">
        <source>You overestimate %1 by %2 %.</source>
        <extracomment>Review: verdict when tasks take less time than planned; %1 = the group ("tasks over 45 minutes"), %2 = percent, a whole number</extracomment>
        <translation>Sie überschätzen %1 um %2 %.</translation>
    </message>
    <message id="review.ratio">
        <source>×%1</source>
        <extracomment>Review: the median of measured time over planned time, as a multiple ("×1.4")</extracomment>
        <translation>×%1</translation>
    </message>
    <message id="review.overrun">
        <source>+%1</source>
        <extracomment>Review: how far a task ran past its plan; %1 = a duration ("25m")</extracomment>
        <translation>+%1</translation>
    </message>
    <message id="review.summary.empty">
        <source>No completed task with a plan and measured time in this period.</source>
        <extracomment>Review: under the period's title when it has no completed task with a plan and measured time</extracomment>
        <translation>In diesem Zeitraum wurde keine Aufgabe mit Plan und gemessener Zeit erledigt.</translation>
    </message>
    <message id="review.summary">
        <source>Completed tasks with a plan and measured time: %1</source>
        <extracomment>Review: under the period's title; %1 = how many completed tasks had a plan and measured time</extracomment>
        <translation>Erledigte Aufgaben mit Plan und gemessener Zeit: %1</translation>
    </message>
    <message id="review.unplanned">
        <source>Completed without a plan: %1</source>
        <extracomment>Review: completed tasks without a planned duration, counted apart; %1 = how many</extracomment>
        <translation>Ohne Plan erledigt: %1</translation>
    </message>
    <message id="review.unmeasured">
        <source>Ticked off without the timer: %1</source>
        <extracomment>Review: completed planned tasks whose timer never ran, left out of the figures; %1 = how many</extracomment>
        <translation>Ohne Timer abgehakt: %1</translation>
    </message>
    <message id="settings.general.language.system">
        <source>Same as the desktop</source>
        <extracomment>Settings, General: language option that follows the desktop's language</extracomment>
        <translation>Wie der Desktop</translation>
    </message>
    <message id="settings.general.workdayEnd.invalid">
        <source>Type a time of day such as 17:30.</source>
        <extracomment>Settings, General: the typed workday end is not a time of day</extracomment>
        <translation>Geben Sie eine Uhrzeit wie 17:30 ein.</translation>
    </message>
    <message id="settings.permissions.tray">
        <source>Tray icon</source>
        <extracomment>Settings, Permissions: the tray icon facility</extracomment>
        <translation>Symbol in der Leiste</translation>
    </message>
    <message id="settings.permissions.tray.working">
        <source>The panel shows Tarnwell's icon with the task in hand and its countdown.</source>
        <extracomment>Settings, Permissions: the panel shows our tray icon</extracomment>
        <translation>Die Leiste zeigt das Tarnwell-Symbol mit der aktuellen Aufgabe und ihrem Countdown.</translation>
    </message>
    <message id="settings.permissions.tray.missing">
        <source>No panel on this desktop takes status icons, so Tarnwell falls back on the older tray, which may show only the icon.</source>
        <extracomment>Settings, Permissions: no panel takes tray icons of the modern kind</extracomment>
        <translation>Keine Leiste dieses Desktops nimmt Statussymbole an; Tarnwell nutzt deshalb die ältere Systemleiste, die unter Umständen nur das Symbol zeigt.</translation>
    </message>
    <message id="settings.permissions.tray.fix">
        <source>On GNOME, switch on the AppIndicator extension (gnome-shell-extension-appindicator) and log in again.</source>
        <extracomment>Settings, Permissions: how to get a panel that shows tray icons</extracomment>
        <translation>Unter GNOME die Erweiterung AppIndicator (gnome-shell-extension-appindicator) einschalten und neu anmelden.</translation>
    </message>
    <message id="settings.permissions.notifications">
        <source>Notifications</source>
        <extracomment>Settings, Permissions: the desktop notifications facility</extracomment>
        <translation>Benachrichtigungen</translation>
    </message>
    <message id="settings.permissions.notifications.working">
        <source>The end of a plan is announced with Done and more-time buttons.</source>
        <extracomment>Settings, Permissions: notifications show with their buttons</extracomment>
        <translation>Das Ende eines Plans wird mit den Knöpfen „Erledigt“ und „Mehr Zeit“ gemeldet.</translation>
    </message>
    <message id="settings.permissions.notifications.noActions">
        <source>Notifications show, but this desktop leaves out their buttons: complete or extend from the tray instead.</source>
        <extracomment>Settings, Permissions: notifications show, but the server shows no buttons</extracomment>
        <translation>Benachrichtigungen erscheinen, aber dieser Desktop lässt ihre Knöpfe weg: erledigen oder verlängern Sie über die Leiste.</translation>
    </message>
    <message id="settings.permissions.notifications.missing">
        <source>No notification service runs, so the end of a plan is only heard (the chime) and seen in the tray.</source>
        <extracomment>Settings, Permissions: no notification server</extracomment>
        <translation>Es läuft kein Benachrichtigungsdienst; das Ende eines Plans ist nur zu hören (der Klang) und in der Leiste zu sehen.</translation>
    </message>
    <message id="settings.permissions.notifications.fix">
        <source>Start your desktop's notification service (on minimal desktops, for example dunst or mako).</source>
        <extracomment>Settings, Permissions: how to get notifications</extracomment>
        <translation>Starten Sie den Benachrichtigungsdienst Ihres Desktops (auf schlanken Desktops zum Beispiel dunst oder mako).</translation>
    </message>
    <message id="settings.permissions.idle">
        <source>Time away</source>
        <extracomment>Settings, Permissions: the idle time facility</extracomment>
        <translation>Abwesenheit</translation>
    </message>
    <message id="settings.permissions.idle.working">
        <source />
        <translation>Eine Zeit ohne Tastatur und Maus bei laufendem Timer wird bemerkt und zum Abziehen angeboten.</translation>
    </message>
    <message id="settings.permissions.idle.missing">
        <source />
        <translation>Dieser Desktop verrät Programmen nicht, wie lange Sie weg waren; Abwesenheit wird daher nicht zum Abziehen angeboten. Ruhezustand und Sperre halten den Timer weiterhin an.</translation>
    </message>
    <message id="settings.permissions.session">
        <source>Sleep and screen lock</source>
        <extracomment>Settings, Permissions: the sleep and lock facility</extracomment>
        <translation>Ruhezustand und Bildschirmsperre</translation>
    </message>
    <message id="settings.permissions.session.working">
        <source>The timer pauses when the computer sleeps or the screen locks, and resumes after a short break.</source>
        <extracomment>Settings, Permissions: sleep and lock pause the timer</extracomment>
        <translation>Der Timer hält an, wenn der Rechner schläft oder der Bildschirm gesperrt wird, und läuft nach einer kurzen Pause weiter.</translation>
    </message>
    <message id="settings.permissions.session.missing">
        <source>Sleep and screen lock are not reported (no logind), so the timer runs on through them.</source>
        <extracomment>Settings, Permissions: sleep and lock are not reported</extracomment>
        <translation>Ruhezustand und Sperre werden nicht gemeldet (kein logind); der Timer läuft dabei weiter.</translation>
    </message>
    <message id="settings.permissions.session.fix">
        <source>Pause the timer before you step away.</source>
        <extracomment>Settings, Permissions: what to do without sleep and lock reports</extracomment>
        <translation>Halten Sie den Timer an, bevor Sie weggehen.</translation>
    </message>
    <message id="settings.permissions.hotkeys">
        <source>Global hot keys</source>
        <extracomment>Settings, Permissions: the global hot keys facility</extracomment>
        <translation>Globale Tastenkürzel</translation>
    </message>
    <message id="settings.permissions.hotkeys.working">
        <source>The hot keys of the Hotkeys tab work in every program.</source>
        <extracomment>Settings, Permissions: global hot keys work</extracomment>
        <translation>Die Tastenkürzel aus dem Reiter „Tastenkürzel“ wirken in jedem Programm.</translation>
    </message>
    <message id="settings.permissions.hotkeys.missing">
        <source>This desktop lets no program set global hot keys.</source>
        <extracomment>Settings, Permissions: no global hot keys</extracomment>
        <translation>Dieser Desktop lässt kein Programm globale Tastenkürzel setzen.</translation>
    </message>
    <message id="settings.permissions.hotkeys.fix">
        <source>Add shortcuts in the desktop's keyboard settings that run the commands shown in the Hotkeys tab.</source>
        <extracomment>Settings, Permissions: how to get hot keys without a global hot-key service</extracomment>
        <translation>Legen Sie in den Tastatureinstellungen des Desktops Kürzel an, die die Befehle aus dem Reiter „Tastenkürzel“ ausführen.</translation>
    </message>
    <message id="settings.permissions.autostart">
        <source>Start at login</source>
        <extracomment>Settings, Permissions: the start at login facility</extracomment>
        <translation>Start bei der Anmeldung</translation>
    </message>
    <message id="settings.permissions.autostart.off">
        <source>Switched off: start Tarnwell yourself after logging in.</source>
        <extracomment>Settings, Permissions: start at login is switched off</extracomment>
        <translation>Ausgeschaltet: Starten Sie Tarnwell nach der Anmeldung selbst.</translation>
    </message>
    <message id="settings.permissions.autostart.fix">
        <source>Switch it on in the General tab.</source>
        <extracomment>Settings, Permissions: where start at login is switched on</extracomment>
        <translation>Schalten Sie es im Reiter „Allgemein“ ein.</translation>
    </message>
    <message id="settings.permissions.autostart.working">
        <source>Tarnwell starts when you log in (%1).</source>
        <extracomment>Settings, Permissions: the autostart entry is in place; %1 = its file</extracomment>
        <translation>Tarnwell startet bei der Anmeldung (%1).</translation>
    </message>
    <message id="settings.permissions.autostart.missing">
        <source>The autostart entry %1 could not be written.</source>
        <extracomment>Settings, Permissions: the autostart entry could not be written; %1 = its file</extracomment>
        <translation>Der Autostart-Eintrag %1 konnte nicht geschrieben werden.</translation>
    </message>
<message id="store.openFailed.close">
        <source>Close</source>
        <extracomment>The button of the dialog that says the data file cannot be opened</extracomment>
        <translation>Schließen</translation>
    </message>
    <message id="settings.tab.sync">
        <source>Sync</source>
        <extracomment>Settings tab: sync with a CalDAV server</extracomment>
        <translation>Synchronisierung</translation>
    </message>
    <message id="settings.sync.caption">
        <source>Keep your tasks in step with a CalDAV server you already use (Nextcloud, Radicale, Baïkal and others), and through it with your other devices.</source>
        <extracomment>Settings, Sync: what the tab is for</extracomment>
        <translation>Halten Sie Ihre Aufgaben mit einem CalDAV-Server abgeglichen, den Sie schon nutzen (Nextcloud, Radicale, Baïkal und andere), und über ihn mit Ihren anderen Geräten.</translation>
    </message>
    <message id="settings.sync.now">
        <source>Sync now</source>
        <extracomment>Settings, Sync: button that starts a pass at once</extracomment>
        <translation>Jetzt synchronisieren</translation>
    </message>
    <message id="settings.sync.turnOff">
        <source>Turn off sync…</source>
        <extracomment>Settings, Sync: button that turns sync off (asks what to do with the synced tasks)</extracomment>
        <translation>Synchronisierung ausschalten …</translation>
    </message>
    <message id="settings.sync.off.question">
        <source>What should happen to the tasks that are synced with the server? The server keeps its copies either way.</source>
        <extracomment>Settings, Sync: the question when sync is turned off</extracomment>
        <translation>Was soll mit den Aufgaben geschehen, die mit dem Server abgeglichen sind? Der Server behält seine Kopien in jedem Fall.</translation>
    </message>
    <message id="settings.sync.off.keep">
        <source>Keep them here</source>
        <extracomment>Settings, Sync: turn sync off and keep the synced tasks on this computer</extracomment>
        <translation>Hier behalten</translation>
    </message>
    <message id="settings.sync.off.remove">
        <source>Remove them from this computer</source>
        <extracomment>Settings, Sync: turn sync off and delete the synced tasks on this computer (not on the server)</extracomment>
        <translation>Von diesem Computer entfernen</translation>
    </message>
    <message id="settings.sync.off.cancel">
        <source>Cancel</source>
        <extracomment>Settings, Sync: keep sync on after all</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message id="settings.sync.account">
        <source>Account</source>
        <extracomment>Settings, Sync: heading of the account fields</extracomment>
        <translation>Konto</translation>
    </message>
    <message id="settings.sync.server">
        <source>Server address</source>
        <extracomment>Settings, Sync: label of the server address field</extracomment>
        <translation>Serveradresse</translation>
    </message>
    <message id="settings.sync.user">
        <source>User name</source>
        <extracomment>Settings, Sync: label of the user name field</extracomment>
        <translation>Benutzername</translation>
    </message>
    <message id="settings.sync.password">
        <source>Password</source>
        <extracomment>Settings, Sync: label of the password field</extracomment>
        <translation>Passwort</translation>
    </message>
    <message id="settings.sync.password.kept">
        <source>Kept in the keyring; type to change it</source>
        <extracomment>Settings, Sync: placeholder of the password field while sync is on (the keyring has it)</extracomment>
        <translation>Im Schlüsselbund; zum Ändern eintippen</translation>
    </message>
    <message id="settings.sync.find">
        <source>Find calendars</source>
        <extracomment>Settings, Sync: button that asks the server which calendars can hold tasks</extracomment>
        <translation>Kalender suchen</translation>
    </message>
    <message id="settings.sync.calendar">
        <source>Calendar for tasks</source>
        <extracomment>Settings, Sync: label of the choice of calendar</extracomment>
        <translation>Kalender für Aufgaben</translation>
    </message>
    <message id="settings.sync.save">
        <source>Save and sync</source>
        <extracomment>Settings, Sync: button that stores changed account details while sync is on</extracomment>
        <translation>Speichern und synchronisieren</translation>
    </message>
    <message id="settings.sync.turnOn">
        <source>Turn on sync</source>
        <extracomment>Settings, Sync: button that stores the password in the keyring and turns sync on</extracomment>
        <translation>Synchronisierung einschalten</translation>
    </message>
    <message id="cli.sync.description">
        <source>Asks the running Tarnwell to sync with the CalDAV server now, waits for the pass to end and prints its outcome.</source>
        <extracomment>`tarnwell sync --help`: what the command does</extracomment>
        <translation>Bittet das laufende Tarnwell, jetzt mit dem CalDAV-Server abzugleichen, wartet auf das Ende des Durchgangs und gibt sein Ergebnis aus.</translation>
    </message>
    <message id="cli.sync.statusOption">
        <source>Print the account, the state, the last sync and the last error instead.</source>
        <extracomment>`tarnwell sync --help`: the --status option</extracomment>
        <translation>Stattdessen Konto, Zustand, letzten Abgleich und letzten Fehler ausgeben.</translation>
    </message>
    <message id="cli.error.syncNeedsAgent">
        <source>Tarnwell is not running, and sync runs inside it. Start it with “tarnwell”.</source>
        <extracomment>`tarnwell sync` without a running agent</extracomment>
        <translation>Tarnwell läuft nicht, und die Synchronisierung läuft darin. Starten Sie es mit „tarnwell“.</translation>
    </message>
    <message id="cli.sync.done">
        <source>Synced: %1 in, %2 out, %3 removed.</source>
        <extracomment>After `tarnwell sync`. %1: tasks taken from the server, %2: tasks sent to it, %3: deletions carried over</extracomment>
        <translation>Synchronisiert: %1 herein, %2 hinaus, %3 entfernt.</translation>
    </message>
    <message id="cli.sync.account">
        <source>Server: %1 (as %2)</source>
        <extracomment>`tarnwell sync --status`. %1: the server address, %2: the user name</extracomment>
        <translation>Server: %1 (als %2)</translation>
    </message>
    <message id="cli.sync.collection">
        <source>Calendar: %1</source>
        <extracomment>`tarnwell sync --status`. %1: the address of the chosen calendar</extracomment>
        <translation>Kalender: %1</translation>
    </message>
    <message id="cli.sync.state.idle">
        <source>State: up to date</source>
        <extracomment>`tarnwell sync --status`: sync is on and the last pass went through</extracomment>
        <translation>Zustand: aktuell</translation>
    </message>
    <message id="cli.sync.state.syncing">
        <source>State: syncing</source>
        <extracomment>`tarnwell sync --status`: a pass is running now</extracomment>
        <translation>Zustand: wird synchronisiert</translation>
    </message>
    <message id="cli.sync.state.error">
        <source>State: the last sync failed</source>
        <extracomment>`tarnwell sync --status`: sync is on and the last pass failed</extracomment>
        <translation>Zustand: der letzte Abgleich ist fehlgeschlagen</translation>
    </message>
    <message id="cli.sync.state.unavailable">
        <source>State: sync is not available in this build</source>
        <extracomment>`tarnwell sync --status`: this build cannot sync</extracomment>
        <translation>Zustand: Synchronisierung ist in diesem Build nicht verfügbar</translation>
    </message>
    <message id="cli.sync.state.notRunning">
        <source>State: Tarnwell is not running</source>
        <extracomment>`tarnwell sync --status` without a running agent</extracomment>
        <translation>Zustand: Tarnwell läuft nicht</translation>
    </message>
    <message id="cli.sync.state.off">
        <source>State: off</source>
        <extracomment>`tarnwell sync --status`: no account, or sync turned off</extracomment>
        <translation>Zustand: aus</translation>
    </message>
    <message id="cli.sync.last.never">
        <source>Last sync: never</source>
        <extracomment>`tarnwell sync --status`: no pass ever went through</extracomment>
        <translation>Letzter Abgleich: nie</translation>
    </message>
    <message id="cli.sync.last">
        <source>Last sync: %1</source>
        <extracomment>`tarnwell sync --status`. %1: date and time of the last pass that went through</extracomment>
        <translation>Letzter Abgleich: %1</translation>
    </message>
    <message id="cli.sync.lastError">
        <source>Last error: %1</source>
        <extracomment>`tarnwell sync --status`. %1: what went wrong, as a sentence</extracomment>
        <translation>Letzter Fehler: %1</translation>
    </message>
    <message id="sync.problem.notAvailable">
        <source>Sync is not available in this build of Tarnwell.</source>
        <extracomment>Sync: this build of Tarnwell was made without the part that syncs</extracomment>
        <translation>Die Synchronisierung ist in diesem Build von Tarnwell nicht verfügbar.</translation>
    </message>
    <message id="sync.problem.off">
        <source>Sync is off. Set it up in Settings, Sync.</source>
        <extracomment>Sync: asked to sync while no account is set up or sync is turned off</extracomment>
        <translation>Die Synchronisierung ist aus. Richten Sie sie unter Einstellungen, Synchronisierung ein.</translation>
    </message>
    <message id="sync.problem.noSecretService">
        <source>No keyring is running on this desktop, so Tarnwell has nowhere safe to keep the password. Sync stays off.</source>
        <extracomment>Sync: the desktop has no keyring (Secret Service) to keep the password in</extracomment>
        <translation>Auf dieser Arbeitsumgebung läuft kein Schlüsselbund, also kann Tarnwell das Passwort nirgends sicher aufbewahren. Die Synchronisierung bleibt aus.</translation>
    </message>
    <message id="sync.problem.noPassword">
        <source>The keyring holds no password for this account. Enter it in Settings, Sync.</source>
        <extracomment>Sync: the keyring has no password for the account</extracomment>
        <translation>Der Schlüsselbund enthält kein Passwort für dieses Konto. Geben Sie es unter Einstellungen, Synchronisierung ein.</translation>
    </message>
    <message id="sync.problem.secretDenied">
        <source>The keyring did not give out the password (it may be locked).</source>
        <extracomment>Sync: the keyring stayed locked or refused to give out the password</extracomment>
        <translation>Der Schlüsselbund hat das Passwort nicht herausgegeben (vielleicht ist er gesperrt).</translation>
    </message>
    <message id="sync.problem.cancelled">
        <source>The sync was stopped before it finished.</source>
        <extracomment>Sync: the pass was stopped because Tarnwell quit or sync was turned off</extracomment>
        <translation>Der Abgleich wurde vor seinem Ende abgebrochen.</translation>
    </message>
    <message id="sync.problem.network">
        <source>The server cannot be reached. Tarnwell tries again later.</source>
        <extracomment>Sync: no answer from the server (down, offline, wrong name)</extracomment>
        <translation>Der Server ist nicht erreichbar. Tarnwell versucht es später noch einmal.</translation>
    </message>
    <message id="sync.problem.certificate">
        <source>The server's certificate is not trusted, so nothing was sent to it.</source>
        <extracomment>Sync: the server's TLS certificate is not trusted</extracomment>
        <translation>Dem Zertifikat des Servers wird nicht vertraut, daher wurde nichts an ihn gesendet.</translation>
    </message>
    <message id="sync.problem.unauthorized">
        <source>The server did not accept the user name or password.</source>
        <extracomment>Sync: the server refused the user name or password</extracomment>
        <translation>Der Server hat den Benutzernamen oder das Passwort nicht angenommen.</translation>
    </message>
    <message id="sync.problem.notCalDav">
        <source>This address answers, but not as a CalDAV server.</source>
        <extracomment>Sync: the address answers, but it is not a CalDAV server</extracomment>
        <translation>Diese Adresse antwortet, aber nicht als CalDAV-Server.</translation>
    </message>
    <message id="sync.problem.noTaskCollection">
        <source>The server has no calendar that can hold tasks.</source>
        <extracomment>Sync: a CalDAV server without any calendar that can hold tasks (VTODO)</extracomment>
        <translation>Der Server hat keinen Kalender, der Aufgaben aufnehmen kann.</translation>
    </message>
    <message id="sync.problem.server">
        <source>The server refused the sync. Tarnwell tries again later.</source>
        <extracomment>Sync: the server refused a request for another reason</extracomment>
        <translation>Der Server hat den Abgleich abgelehnt. Tarnwell versucht es später noch einmal.</translation>
    </message>
    <message id="sync.problem.malformed">
        <source>The server's answer could not be read. Tarnwell tries again later.</source>
        <extracomment>Sync: the server's answer could not be read</extracomment>
        <translation>Die Antwort des Servers war nicht lesbar. Tarnwell versucht es später noch einmal.</translation>
    </message>
    <message id="settings.sync.state.off">
        <source>Sync is off. Tasks stay on this computer only.</source>
        <extracomment>Settings, Sync: the state line while sync is off</extracomment>
        <translation>Die Synchronisierung ist aus. Aufgaben bleiben nur auf diesem Computer.</translation>
    </message>
    <message id="settings.sync.state.idle">
        <source>Sync is on. Changes go to the server a few seconds after you make them.</source>
        <extracomment>Settings, Sync: the state line while sync is on and the last pass went through</extracomment>
        <translation>Die Synchronisierung ist an. Änderungen gehen wenige Sekunden später an den Server.</translation>
    </message>
    <message id="settings.sync.state.syncing">
        <source>Syncing…</source>
        <extracomment>Settings, Sync: the state line while a pass runs</extracomment>
        <translation>Wird synchronisiert …</translation>
    </message>
    <message id="settings.sync.state.error">
        <source>Sync is on, but the last sync failed.</source>
        <extracomment>Settings, Sync: the state line when the last pass failed (the reason is shown under it)</extracomment>
        <translation>Die Synchronisierung ist an, aber der letzte Abgleich ist fehlgeschlagen.</translation>
    </message>
    <message id="settings.sync.last.never">
        <source>Not synced yet</source>
        <extracomment>Settings, Sync: no pass has gone through yet</extracomment>
        <translation>Noch nicht synchronisiert</translation>
    </message>
    <message id="settings.sync.last">
        <source>Last synced %1</source>
        <extracomment>Settings, Sync: %1 is the date and time of the last pass that went through</extracomment>
        <translation>Zuletzt synchronisiert: %1</translation>
    </message>
    <message id="settings.sync.password.caption">
        <source>Kept in the desktop's keyring (%1), never in Tarnwell's files.</source>
        <extracomment>Settings, Sync: under the password field. %1 names the keyring ("Secret Service", "KWallet")</extracomment>
        <translation>Im Schlüsselbund der Arbeitsumgebung (%1) gespeichert, nie in Tarnwells Dateien.</translation>
    </message>
    <message id="settings.sync.needAddress">
        <source>Enter the server's address and your user name first.</source>
        <extracomment>Settings, Sync: "Find calendars" without a usable address or user name</extracomment>
        <translation>Geben Sie zuerst die Adresse des Servers und Ihren Benutzernamen ein.</translation>
    </message>
    <message id="settings.sync.finding">
        <source>Looking for calendars…</source>
        <extracomment>Settings, Sync: while the server is asked for its calendars</extracomment>
        <translation>Kalender werden gesucht …</translation>
    </message>
    <message id="settings.sync.found" numerus="yes">
        <source>%n calendar(s) for tasks found. Choose one below.</source>
        <extracomment>Settings, Sync: after "Find calendars". %n: how many calendars hold tasks</extracomment>
        <translation>
            <numerusform>%n Kalender für Aufgaben gefunden. Wählen Sie unten einen aus.</numerusform>
            <numerusform>%n Kalender für Aufgaben gefunden. Wählen Sie unten einen aus.</numerusform>
        </translation>
    </message>
    <message id="settings.sync.needCalendar">
        <source>Find the server's calendars and choose one first.</source>
        <extracomment>Settings, Sync: "Turn on sync" before a calendar was chosen</extracomment>
        <translation>Suchen Sie zuerst die Kalender des Servers und wählen Sie einen aus.</translation>
    </message>
<message id="popover.search">
        <source>Search past tasks</source>
        <extracomment>Popover: button that opens the search over the titles of all tasks</extracomment>
        <translation>Frühere Aufgaben suchen</translation>
    </message>
    <message id="popover.menu.wrapUp">
        <source>Wrap up the day…</source>
        <extracomment>Popover menu: opens the end-of-day wrap-up</extracomment>
        <translation>Tagesabschluss…</translation>
    </message>
    <message id="popover.search.placeholder">
        <source>Find a task by its title</source>
        <extracomment>Popover: placeholder of the field that searches past tasks by title</extracomment>
        <translation>Aufgabe nach Titel suchen</translation>
    </message>
    <message id="settings.general.editHistory">
        <source>Edit past days</source>
        <extracomment>Settings, General: switch that lets the tasks of past days be changed</extracomment>
        <translation>Vergangene Tage bearbeiten</translation>
    </message>
    <message id="settings.general.editHistory.caption">
        <source>Correct the title, plan or measured time of a task on an earlier day, or tick it. Off, past days are only shown.</source>
        <extracomment>Settings, General: what editing past days allows</extracomment>
        <translation>Titel, Plan oder gemessene Zeit einer Aufgabe an einem früheren Tag korrigieren oder sie abhaken. Aus: Vergangene Tage werden nur angezeigt.</translation>
    </message>
    <message id="settings.reminders.volume">
        <source>Volume</source>
        <extracomment>Settings, Reminders: label of the chime volume menu</extracomment>
        <translation>Lautstärke</translation>
    </message>
    <message id="settings.reminders.volume.percent">
        <source>%1%</source>
        <extracomment>Settings, Reminders: volume option; %1 = percent of full volume</extracomment>
        <translation>%1 %</translation>
    </message>
    <message id="settings.reminders.chime.end">
        <source>Time is up</source>
        <extracomment>Settings, Reminders: label of the chime played when the planned time is up</extracomment>
        <translation>Zeit ist um</translation>
    </message>
    <message id="settings.reminders.chime.warning">
        <source>Warning</source>
        <extracomment>Settings, Reminders: label of the chime played at the warning before the end</extracomment>
        <translation>Vorwarnung</translation>
    </message>
    <message id="settings.reminders.chime.completion">
        <source>Task completed</source>
        <extracomment>Settings, Reminders: label of the chime played when a task is completed</extracomment>
        <translation>Aufgabe erledigt</translation>
    </message>
    <message id="settings.reminders.chime.of">
        <source>Chime: %1</source>
        <extracomment>Settings, Reminders: accessible name of a chime menu; %1 = the event</extracomment>
        <translation>Klang: %1</translation>
    </message>
    <message id="settings.reminders.preview.of">
        <source>Play the chime: %1</source>
        <extracomment>Settings, Reminders: button that plays a chime; %1 = the event</extracomment>
        <translation>Klang abspielen: %1</translation>
    </message>
    <message id="popover.row.focused">
        <source>focused %1</source>
        <extracomment>Task row: the focused time of a done task; %1 = as 25m</extracomment>
        <translation>%1 fokussiert</translation>
    </message>
    <message id="popover.edit.focused">
        <source>Focused time, e.g. 25m</source>
        <extracomment>Task editor: placeholder of the field that corrects a done task's focused time</extracomment>
        <translation>Fokussierte Zeit, z. B. 25m</translation>
    </message>
    <message id="wrapUp.window.title">
        <source>Wrap up the day</source>
        <extracomment>Title of the end-of-day wrap-up window (window lists, screen readers)</extracomment>
        <translation>Tagesabschluss</translation>
    </message>
    <message id="wrapUp.done.heading">
        <source>Done</source>
        <extracomment>Wrap-up: heading of the tasks completed today</extracomment>
        <translation>Erledigt</translation>
    </message>
    <message id="wrapUp.undo">
        <source>Undo</source>
        <extracomment>Wrap-up: takes the move to tomorrow back</extracomment>
        <translation>Rückgängig</translation>
    </message>
    <message id="wrapUp.doneForToday">
        <source>Done for today</source>
        <extracomment>Wrap-up: ends the day; the wrap-up is not offered again today</extracomment>
        <translation>Feierabend</translation>
    </message>
    <message id="wrapUp.moveRest">
        <source>Move the rest to tomorrow</source>
        <extracomment>Wrap-up: moves every open task of today to the head of tomorrow's queue</extracomment>
        <translation>Rest auf morgen verschieben</translation>
    </message>
    <message id="wrapUp.notification.title">
        <source>Your workday has ended</source>
        <extracomment>Notification at the workday end: its title</extracomment>
        <translation>Ihr Arbeitstag ist zu Ende</translation>
    </message>
    <message id="wrapUp.notification.body">
        <source>See what you got done and decide what happens to the rest.</source>
        <extracomment>Notification at the workday end: its text</extracomment>
        <translation>Sehen Sie, was Sie geschafft haben, und entscheiden Sie, was mit dem Rest geschieht.</translation>
    </message>
    <message id="wrapUp.notification.action">
        <source>Wrap up</source>
        <extracomment>Notification at the workday end: the button that opens the wrap-up</extracomment>
        <translation>Abschließen</translation>
    </message>
    <message id="menubar.tooltip.wrapUpPending">
        <source>Your workday has ended: wrap up the day from the menu.</source>
        <extracomment>Status item tooltip: the workday has ended and the wrap-up waits in the menu</extracomment>
        <translation>Ihr Arbeitstag ist zu Ende: Schließen Sie den Tag im Menü ab.</translation>
    </message>
    <message id="menubar.menu.wrapUp">
        <source>Wrap Up the Day…</source>
        <extracomment>Status item menu: open the end-of-day wrap-up</extracomment>
        <translation>Tagesabschluss…</translation>
    </message>
    <message id="menubar.menu.wrapUpPending">
        <source>Workday Ended: Wrap Up…</source>
        <extracomment>Status item menu: the wrap-up while it waits after the workday end</extracomment>
        <translation>Arbeitstag vorbei: Abschließen…</translation>
    </message>
    <message id="history.day.none">
        <source>Nothing was completed this day</source>
        <extracomment>Popover, a past day: nothing was completed that day</extracomment>
        <translation>An diesem Tag wurde nichts erledigt</translation>
    </message>
    <message id="history.day.summary" numerus="yes">
        <source>%n done · %1 focused</source>
        <extracomment>Popover, a past day: its completed tasks and their focused time; %1 = as 2h 5m</extracomment>
        <translation>
            <numerusform>%n erledigt · %1 fokussiert</numerusform>
            <numerusform>%n erledigt · %1 fokussiert</numerusform>
        </translation>
    </message>
    <message id="history.result.done">
        <source>done · %1</source>
        <extracomment>History search: a result's focused time, when the task was done; %1 = as 25m</extracomment>
        <translation>erledigt · %1</translation>
    </message>
    <message id="history.search.none">
        <source>No task matches.</source>
        <extracomment>History search: no task title contains the typed text</extracomment>
        <translation>Keine Aufgabe passt.</translation>
    </message>
    <message id="history.search.count" numerus="yes">
        <source>%n task(s) found</source>
        <extracomment>History search: how many tasks were found (at most 50, newest first)</extracomment>
        <translation>
            <numerusform>%n Aufgabe gefunden</numerusform>
            <numerusform>%n Aufgaben gefunden</numerusform>
        </translation>
    </message>
    <message id="history.edit.focusInvalid">
        <source>Type the focused time like 25, 25m or 1h 5m.</source>
        <extracomment>Task editor: the typed focused time cannot be read</extracomment>
        <translation>Geben Sie die fokussierte Zeit wie 25, 25m oder 1h 5m ein.</translation>
    </message>
    <message id="wrapUp.task.focusedOfPlanned">
        <source>%1 of %2</source>
        <extracomment>Wrap-up: a done task's focused time against its plan; %1 = focused, %2 = planned (as 1h 5m)</extracomment>
        <translation>%1 von %2</translation>
    </message>
    <message id="wrapUp.done.none">
        <source>Nothing done yet today</source>
        <extracomment>Wrap-up: nothing was completed today</extracomment>
        <translation>Heute noch nichts erledigt</translation>
    </message>
    <message id="wrapUp.done.count" numerus="yes">
        <source>%n task(s) done</source>
        <extracomment>Wrap-up: how many tasks were completed today</extracomment>
        <translation>
            <numerusform>%n Aufgabe erledigt</numerusform>
            <numerusform>%n Aufgaben erledigt</numerusform>
        </translation>
    </message>
    <message id="wrapUp.focused">
        <source>%1 focused</source>
        <extracomment>Wrap-up: the seconds of focus measured on today's done tasks; %1 = as 2h 35m</extracomment>
        <translation>%1 fokussiert</translation>
    </message>
    <message id="wrapUp.planned.none">
        <source>No planned task was timed today.</source>
        <extracomment>Wrap-up: no done task had both a plan and measured focus</extracomment>
        <translation>Heute wurde keine geplante Aufgabe gemessen.</translation>
    </message>
    <message id="wrapUp.planned">
        <source>Planned tasks: %1 for %2 planned</source>
        <extracomment>Wrap-up: focused time against the plan of the done tasks that had one; %1 = focused, %2 = planned</extracomment>
        <translation>Geplante Aufgaben: %1 für %2 Plan</translation>
    </message>
    <message id="wrapUp.accuracy.good">
        <source>Your estimates were on the mark (%1% off).</source>
        <extracomment>Wrap-up: the day's estimates were within 10 percent; %1 = the difference in percent</extracomment>
        <translation>Ihre Schätzungen lagen richtig (%1 % daneben).</translation>
    </message>
    <message id="wrapUp.accuracy.over">
        <source>Tasks took %1% longer than planned.</source>
        <extracomment>Wrap-up: the day's planned tasks took longer than planned; %1 = percent</extracomment>
        <translation>Aufgaben dauerten %1 % länger als geplant.</translation>
    </message>
    <message id="wrapUp.accuracy.under">
        <source>Tasks took %1% less time than planned.</source>
        <extracomment>Wrap-up: the day's planned tasks took less time than planned; %1 = percent</extracomment>
        <translation>Aufgaben dauerten %1 % kürzer als geplant.</translation>
    </message>
    <message id="wrapUp.left.none">
        <source>Nothing left for today.</source>
        <extracomment>Wrap-up: no open task is left today</extracomment>
        <translation>Für heute ist nichts mehr offen.</translation>
    </message>
    <message id="wrapUp.left.count" numerus="yes">
        <source>%n task(s) left</source>
        <extracomment>Wrap-up: how many tasks are still open today</extracomment>
        <translation>
            <numerusform>%n Aufgabe offen</numerusform>
            <numerusform>%n Aufgaben offen</numerusform>
        </translation>
    </message>
    <message id="wrapUp.left.planned">
        <source>%1 planned</source>
        <extracomment>Wrap-up: planned time of the open tasks, after the count; %1 = as 1h 15m</extracomment>
        <translation>%1 geplant</translation>
    </message>
    <message id="wrapUp.left.untimed" numerus="yes">
        <source>%n without a plan</source>
        <extracomment>Wrap-up: how many open tasks have no planned time, after the count</extracomment>
        <translation>
            <numerusform>%n ohne Plan</numerusform>
            <numerusform>%n ohne Plan</numerusform>
        </translation>
    </message>
    <message id="sync.keyring.defaultCollection">
        <source>Login</source>
        <extracomment>Name of the keyring Tarnwell makes when the desktop has none yet (as the desktop's own login keyring)</extracomment>
        <translation>Anmeldung</translation>
    </message>
</context>
</TS>
