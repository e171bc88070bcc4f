// The popover's model: its list under the item-model checker, the task in
// hand, row actions with undo, the next-up screen, the day plan, the
// rollover bar, routines, the editor (errors, planned time, repeat) and the
// language of dates.
#include "ViewsFixture.h"
#include "views/TaskEditor.h"
#include "services/DurationParser.h"
#include "services/FocusTexts.h"
#include "services/PlanningTexts.h"

#include <QSignalSpy>
#include <QTest>

class PopoverModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listFollowsTheDayWithFineGrainedUpdates()
    {
        ViewsFixture f;
        TaskListModel &list = f.model.tasks();
        Task *a = f.add(QStringLiteral("A"), 25);
        Task *b = f.add(QStringLiteral("B"));
        Task *c = f.add(QStringLiteral("C"));
        QCOMPARE(f.shownTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
        QVERIFY(list.index(0).data(TaskListModel::IsTaskInHandRole).toBool());
        QVERIFY(!list.index(1).data(TaskListModel::IsTaskInHandRole).toBool());

        // An edit reports its row; the running timer does not touch the list.
        QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
        QSignalSpy changes(&list, &QAbstractItemModel::dataChanged);
        QCOMPARE(
            f.model.editor().save(f.idOf(b), QStringLiteral("B2"), QStringLiteral("note"), QStringLiteral("15"), {}),
            QString());
        QCOMPARE(resets.size(), 0);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first().at(0).toModelIndex().row(), 1);
        QCOMPARE(list.index(1).data(TaskListModel::NotesRole).toString(), QStringLiteral("note"));
        QCOMPARE(list.index(1).data(TaskListModel::DurationMinutesRole).toInt(), 15);
        f.service.startTimer(a);
        changes.clear();
        f.tick(5);
        QCOMPARE(resets.size(), 0);
        QCOMPARE(changes.size(), 0);

        // Completing, reordering and moving away arrive as rows that move,
        // leave or come back (a view slides them), never as a new list.
        QSignalSpy moves(&list, &QAbstractItemModel::rowsMoved);
        QSignalSpy removals(&list, &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserts(&list, &QAbstractItemModel::rowsInserted);
        f.model.completeTask(f.idOf(c));
        QCOMPARE(f.shownTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("B2"), QStringLiteral("C")}));
        QCOMPARE(list.openCount(), 2);
        QVERIFY(list.index(2).data(TaskListModel::CompletedRole).toBool());
        QCOMPARE(f.model.reorder({f.idOf(b), f.idOf(a)}), QString());
        QCOMPARE(f.shownTitles(), (QStringList{QStringLiteral("B2"), QStringLiteral("A"), QStringLiteral("C")}));
        QVERIFY(!f.model.reorder({f.idOf(b)}).isEmpty()); // not the whole queue
        QCOMPARE(f.model.moveToPosition(f.idOf(a), 0), QString()); // a drop at the top
        QCOMPARE(f.shownTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("B2"), QStringLiteral("C")}));
        f.model.moveToTomorrow(f.idOf(b));
        QCOMPARE(f.shownTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("C")}));
        f.model.reopenTask(f.idOf(c));
        QCOMPARE(list.openCount(), 2);
        QCOMPARE(resets.size(), 0);
        QCOMPARE(removals.size(), 1); // moved to tomorrow
        QVERIFY(moves.size() >= 2);
        f.add(QStringLiteral("D"));
        QCOMPARE(inserts.size(), 1);
        QCOMPARE(f.shownTitles(), (QStringList{QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("D")}));

        // Another day: its own tasks, no task in hand, no card.
        f.model.nextDay();
        QVERIFY(!f.model.isToday());
        QCOMPARE(resets.size(), 1);
        QCOMPARE(f.shownTitles(), QStringList{QStringLiteral("B2")});
        QVERIFY(!list.index(0).data(TaskListModel::IsTaskInHandRole).toBool());
        QVERIFY(!f.model.hasTaskInHand());
        f.model.today();
        QVERIFY(f.model.hasTaskInHand());
    }

    void startNowBringsATaskToTheHeadAndRunsIt()
    {
        ViewsFixture f;
        Task *a = f.add(QStringLiteral("A"), 25);
        f.add(QStringLiteral("B"));
        Task *c = f.add(QStringLiteral("C"), 10);
        f.service.startTimer(a);
        f.time.advance(90 * 1000);
        f.service.pauseTimer(a);

        QVERIFY(f.model.startNow(f.idOf(c)));
        QCOMPARE(f.titles(0), (QStringList{QStringLiteral("C"), QStringLiteral("A"), QStringLiteral("B")}));
        QCOMPARE(f.service.activeTask(), c);
        QVERIFY(c->activeStartedAt());
        QVERIFY(!a->activeStartedAt());
        QCOMPARE(a->actualSecondsFocused().value_or(0), 0); // leaving unfinished work drops its tally
        QCOMPARE(f.model.cardTitle(), QStringLiteral("C"));
        QVERIFY(f.model.timerRunning());
        QCOMPARE(f.model.cardStatus(), FocusTexts::status(FocusTime::TimerState::focusing));
        QCOMPARE(f.model.countdownText(), QStringLiteral("10:00"));
        QCOMPARE(f.model.countdownCaption(), FocusTexts::countdownLeft());

        // The card follows the clock; overtime shows as over; extend adds the preset.
        f.tick(11 * 60);
        QCOMPARE(f.model.countdownText(), QStringLiteral("+01:00"));
        QCOMPARE(f.model.countdownCaption(), FocusTexts::countdownOver());
        QCOMPARE(f.model.progress(), 1.0);
        f.model.extendTaskInHand();
        QCOMPARE(c->durationMinutes(), 20);
        f.model.toggleTimer();
        QVERIFY(!c->activeStartedAt());
        QCOMPARE(f.model.timerLabel(), FocusTexts::timerAction(FocusTime::TimerState::paused));

        // Only today's open tasks can be started.
        Task *later = f.add(QStringLiteral("Later"), std::nullopt, 1);
        QVERIFY(!f.model.startNow(f.idOf(later)));
    }

    void moveToTomorrowUndoesToItsPlace()
    {
        ViewsFixture f;
        f.add(QStringLiteral("A"));
        Task *b = f.add(QStringLiteral("B"));
        f.add(QStringLiteral("C"));
        f.add(QStringLiteral("X"), std::nullopt, 1);

        f.model.moveToTomorrow(f.idOf(b));
        QCOMPARE(f.titles(0), (QStringList{QStringLiteral("A"), QStringLiteral("C")}));
        QCOMPARE(f.titles(1), (QStringList{QStringLiteral("B"), QStringLiteral("X")}));
        QVERIFY(f.model.toastVisible());
        QVERIFY(f.model.toastCanUndo());
        f.model.undoToast();
        QCOMPARE(f.titles(0), (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
        QCOMPARE(f.titles(1), QStringList{QStringLiteral("X")});
        QVERIFY(!f.model.toastVisible());

        // Toasts leave by themselves.
        f.model.moveToTomorrow(f.idOf(b));
        QVERIFY(f.model.toastVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!f.model.toastVisible(), PopoverModel::Constants::toastMilliseconds + 2000);
    }

    void completingFromTheCardShowsWhatIsNext()
    {
        ViewsFixture f;
        f.settings.setSkipBreakPresetMinutes(7);
        Task *a = f.add(QStringLiteral("A"), 25);
        Task *b = f.add(QStringLiteral("B"), 45);
        f.service.startTimer(a);
        f.tick(125);

        f.model.completeTaskInHand();
        QVERIFY(a->completed());
        QVERIFY(f.model.nextUpVisible());
        QVERIFY(f.model.nextUpHasTask());
        QCOMPARE(f.model.nextUpTaskTitle(), QStringLiteral("B"));
        QCOMPARE(f.model.nextUpTaskDuration(), QStringLiteral("45m"));
        QCOMPARE(f.model.nextUpFocused(), FocusTexts::completionFocused(QStringLiteral("02:05")));
        QCOMPARE(f.model.nextUpSkipLabel(), FocusTexts::completionSkip(7));
        QCOMPARE(f.model.cardTitle(), QStringLiteral("B"));
        QVERIFY(!b->activeStartedAt()); // up next, not yet running

        f.model.startNextUp();
        QVERIFY(!f.model.nextUpVisible());
        QVERIFY(b->activeStartedAt());

        // The last task: the queue is empty, skip just closes.
        f.model.completeTask(f.idOf(b));
        QVERIFY(f.model.nextUpVisible());
        QVERIFY(!f.model.nextUpHasTask());
        QVERIFY(!f.model.hasTaskInHand());
        f.model.skipNextUp();
        QVERIFY(!f.model.nextUpVisible());
    }

    void overflowMovesToTomorrowInOrder()
    {
        ViewsFixture f;
        f.settings.setWorkdayEndMinutes(12 * 60); // now is 10:00
        Task *a = f.add(QStringLiteral("A"), 30);
        f.add(QStringLiteral("B"), 60);
        f.add(QStringLiteral("C"), 60);
        f.add(QStringLiteral("D"));
        f.add(QStringLiteral("E"), 30);
        f.add(QStringLiteral("X"), std::nullopt, 1);
        f.countdown.evaluate(a);

        QCOMPARE(f.model.overflowCount(), 3);
        QCOMPARE(f.model.footerOverflow(), PlanningTexts::dayPlanOverflowCount(3));
        QCOMPARE(f.model.footerUntimed(), PlanningTexts::dayPlanUntimed(1));
        QVERIFY(f.model.footerSummary().contains(QStringLiteral("3h")));

        f.model.moveOverflowToTomorrow();
        QCOMPARE(f.titles(0), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
        QCOMPARE(f.titles(1),
                 (QStringList{QStringLiteral("C"), QStringLiteral("D"), QStringLiteral("E"), QStringLiteral("X")}));
        QCOMPARE(f.model.overflowCount(), 0);
        QVERIFY(f.model.footerOverflow().isEmpty());

        f.model.undoToast();
        QCOMPARE(f.titles(0),
                 (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D"),
                              QStringLiteral("E")}));
        QCOMPARE(f.titles(1), QStringList{QStringLiteral("X")});

        // Another day never overflows and shows no workday end.
        f.model.nextDay();
        QCOMPARE(f.model.overflowCount(), 0);
        QVERIFY(f.model.footerWorkdayEnd().isEmpty());
    }

    void rolloverBarActions()
    {
        ViewsFixture f;
        f.add(QStringLiteral("Old"), std::nullopt, -3);
        f.add(QStringLiteral("Y1"), std::nullopt, -1);
        f.add(QStringLiteral("Y2"), std::nullopt, -1);
        f.add(QStringLiteral("Today"));
        f.model.refresh();
        QVERIFY(f.model.rolloverVisible());
        QCOMPARE(f.model.rolloverText(), PlanningTexts::rolloverFromEarlier(3));
        f.model.nextDay();
        QVERIFY(!f.model.rolloverVisible()); // today only
        f.model.today();

        f.model.rollForward();
        QVERIFY(!f.model.rolloverVisible());
        QCOMPARE(
            f.titles(0),
            (QStringList{QStringLiteral("Today"), QStringLiteral("Old"), QStringLiteral("Y1"), QStringLiteral("Y2")}));
        QCOMPARE(f.shownTitles().size(), 4);

        Task *y = f.add(QStringLiteral("Y3"), std::nullopt, -1);
        f.model.refresh();
        QCOMPARE(f.model.rolloverText(), PlanningTexts::rolloverFromYesterday(1));
        f.model.archiveRollover();
        QVERIFY(y->archived());
        QVERIFY(!f.model.rolloverVisible());

        f.add(QStringLiteral("Y4"), std::nullopt, -1);
        f.model.refresh();
        QVERIFY(f.model.rolloverVisible());
        f.model.dismissRollover();
        QVERIFY(!f.model.rolloverVisible());
        f.model.refresh();
        QVERIFY(!f.model.rolloverVisible());
    }

    void routinesLoadAndSaveWithToasts()
    {
        ViewsFixture f;
        Routine *morning = f.routines.createRoutine(
            QStringLiteral("Morning"),
            {{QStringLiteral("Stretch"), 10, std::nullopt}, {QStringLiteral("Inbox"), 15, std::nullopt}});
        f.model.refresh();
        QCOMPARE(f.model.routines().size(), 1);
        QCOMPARE(f.model.routines().first().toMap().value(QStringLiteral("name")).toString(),
                 QStringLiteral("Morning"));

        const QString id = morning->id().toString(QUuid::WithoutBraces);
        f.model.loadRoutine(id);
        QCOMPARE(f.titles(0), (QStringList{QStringLiteral("Stretch"), QStringLiteral("Inbox")}));
        QCOMPARE(f.model.cardTitle(), QStringLiteral("Stretch"));
        QCOMPARE(f.model.toastText(), PlanningTexts::toastRoutineLoaded(2));
        f.model.loadRoutine(id);
        QCOMPARE(f.titles(0).size(), 2);
        f.model.dismissToast();
        QCOMPARE(f.model.toastText(), PlanningTexts::toastRoutineAlreadyLoaded(QStringLiteral("Morning")));
        QVERIFY(!f.model.toastCanUndo());
        f.model.dismissToast();

        f.model.saveQueueAsRoutine(QStringLiteral("  Copy "));
        QCOMPARE(f.model.toastText(), PlanningTexts::toastRoutineSaved(QStringLiteral("Copy")));
        QCOMPARE(f.model.routines().size(), 2);
        Routine *copy = f.routines.routines().last();
        QCOMPARE(RoutineRepository::items(copy).size(), 2);
    }

    void editAndDeleteReportInPlace()
    {
        ViewsFixture f;
        Task *t = f.add(QStringLiteral("Draft"), 30);
        QCOMPARE(f.model.editor().save(f.idOf(t), QStringLiteral("   "), {}, QStringLiteral("30"), {}),
                 RepositoryError::titleEmpty().localizedDescription());
        QCOMPARE(f.model.editor().save(f.idOf(t), QString(201, u'y'), {}, QStringLiteral("30"), {}),
                 RepositoryError::titleTooLong(200).localizedDescription());
        QCOMPARE(t->title(), QStringLiteral("Draft"));

        const QDateTime due = f.calendar.startOfDayAdding(f.time.now, 2);
        QCOMPARE(f.model.editor().save(f.idOf(t), QStringLiteral(" Final "), QStringLiteral("  "), QString(), due),
                 QString());
        QCOMPARE(t->title(), QStringLiteral("Final"));
        QVERIFY(!t->notes());
        QVERIFY(!t->durationMinutes());
        QCOMPARE(t->dueDate(), due);

        f.model.deleteTask(f.idOf(t));
        QVERIFY(t->isDeleted());
        QVERIFY(f.shownTitles().isEmpty());
        QVERIFY(!f.model.hasTaskInHand());
    }

    void editorReadsPlannedTimeAsQuickAddDoesAndSetsTheRepeat()
    {
        ViewsFixture f;
        TaskEditor &editor = f.model.editor();
        Task *t = f.add(QStringLiteral("Stand-up"), 15);
        const QString id = f.idOf(t);
        for (const auto &[typed, minutes] : {std::pair{"1h 30m", 90}, {"1.5h", 90}, {"45", 45}, {"2 saat", 120}}) {
            QCOMPARE(editor.save(id, t->title(), {}, QString::fromUtf8(typed), {}), QString());
            QCOMPARE(t->durationMinutes(), minutes);
            QCOMPARE(DurationParser::parse(editor.durationText(minutes)), minutes);
        }
        QVERIFY(!editor.save(id, QStringLiteral("Renamed"), {}, QStringLiteral("soon"), {}).isEmpty());
        QCOMPARE(t->title(), QStringLiteral("Stand-up")); // nothing saved
        QCOMPARE(t->durationMinutes(), 120);

        // A task of its own repeats by becoming a routine of one; today is
        // not given a second copy, tomorrow is given one.
        QCOMPARE(editor.repeatChoice(id), int(TaskEditor::never));
        QCOMPARE(editor.setRepeat(id, TaskEditor::everyDay), QString());
        QCOMPARE(editor.repeatChoice(id), int(TaskEditor::everyDay));
        QCOMPARE(f.routines.routines().size(), 1);
        QCOMPARE(f.routineService.applyDueRoutines(), 0);
        QCOMPARE(f.titles(0), QStringList{QStringLiteral("Stand-up")});
        f.time.advance(24 * 3600 * 1000);
        QCOMPARE(f.routineService.applyDueRoutines(), 1);
        QCOMPARE(f.titles(0), QStringList{QStringLiteral("Stand-up")});

        // Back to never keeps the routine but stops it repeating.
        QCOMPARE(editor.setRepeat(id, TaskEditor::never), QString());
        QCOMPARE(editor.repeatChoice(id), int(TaskEditor::never));
        QCOMPARE(f.routines.routines().size(), 1);
    }

    void datesFollowTheChosenLanguage()
    {
        ViewsFixture f;
        f.settings.setWorkdayEndMinutes(17 * 60 + 30);
        f.add(QStringLiteral("Plan"), 30);
        f.model.nextDay();
        f.model.nextDay(); // Friday 12 June 2026
        QCOMPARE(f.model.dayTitle(), QStringLiteral("Friday"));
        QVERIFY2(f.model.dayDate().contains(QStringLiteral("June")), qPrintable(f.model.dayDate()));
        QVERIFY(f.translations.install(QStringLiteral("de")));
        f.model.retranslate();
        QCOMPARE(f.model.dayTitle(), QStringLiteral("Freitag"));
        QVERIFY2(f.model.dayDate().contains(QStringLiteral("Juni")), qPrintable(f.model.dayDate()));
        QVERIFY(f.translations.install(QStringLiteral("tr")));
        f.model.retranslate();
        QCOMPARE(f.model.dayTitle(), QStringLiteral("Cuma"));
        f.model.today();
        // The workday's end is shown, in the language's own time format.
        QVERIFY2(f.model.footerWorkdayEnd().contains(QStringLiteral("17:30")), qPrintable(f.model.footerWorkdayEnd()));
        QVERIFY(f.translations.install(QStringLiteral("en")));
    }
};

QTEST_GUILESS_MAIN(PopoverModelTest)
#include "tst_popover_model.moc"
