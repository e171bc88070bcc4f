// The routines window's model under the item-model checker: making, renaming
// and deleting routines, repeat rules as stored, task templates with their
// errors in place, and what deleting a routine leaves behind.
#include "ViewsFixture.h"
#include "services/PlanningTexts.h"
#include "views/RoutinesModel.h"

#include <QSignalSpy>
#include <QTest>

namespace {

struct Fixture : ViewsFixture
{
    RoutinesModel routinesModel{routines};
    RoutineItemsModel &items = routinesModel.items();
    QAbstractItemModelTester routinesTester{&routinesModel, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester itemsTester{&items, QAbstractItemModelTester::FailureReportingMode::QtTest};

    QVariant routineData(int row, int role) { return routinesModel.index(row).data(role); }
    QStringList storedTitles(const Routine *routine)
    {
        QStringList out;
        for (const RoutineItem *item : RoutineRepository::items(routine))
            out << item->title();
        return out;
    }
};

} // namespace

class RoutinesModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void createRenameAndDeleteFollowTheStoreAndThePopover()
    {
        Fixture f;
        QCOMPARE(f.routinesModel.count(), 0);
        QCOMPARE(f.routinesModel.currentIndex(), -1);
        QCOMPARE(f.routinesModel.create(), 0);
        QCOMPARE(f.routinesModel.create(), 1);
        QCOMPARE(f.routinesModel.currentIndex(), 1);
        QCOMPARE(f.routineData(1, RoutinesModel::NameRole).toString(), PlanningTexts::routineDefaultName());
        Routine *second = f.routines.routines().at(1);

        QSignalSpy resets(&f.routinesModel, &QAbstractItemModel::modelReset);
        QCOMPARE(f.routinesModel.rename(1, QStringLiteral("  Evening  ")), QString());
        QCOMPARE(second->name(), QStringLiteral("Evening"));
        QCOMPARE(f.routinesModel.currentName(), QStringLiteral("Evening"));
        QCOMPARE(f.model.routines().at(1).toMap().value(QStringLiteral("name")).toString(), QStringLiteral("Evening"));
        // A blank name is refused in place and nothing changes.
        QVERIFY(!f.routinesModel.rename(1, QStringLiteral(" \n ")).isEmpty());
        QCOMPARE(second->name(), QStringLiteral("Evening"));
        QCOMPARE(resets.size(), 0);

        // A routine saved from the popover shows here too.
        f.add(QStringLiteral("Inbox"), 10);
        f.model.saveQueueAsRoutine(QStringLiteral("Queue"));
        QCOMPARE(f.routinesModel.count(), 3);
        QCOMPARE(f.routineData(2, RoutinesModel::ItemCountRole).toInt(), 1);
        QCOMPARE(f.routinesModel.currentIndex(), 1);

        // Deleting the current routine makes the one in its place current.
        f.routinesModel.remove(1);
        QCOMPARE(f.routines.routines().size(), 2);
        QVERIFY(second->isDeleted());
        QCOMPARE(f.routinesModel.currentName(), QStringLiteral("Queue"));
        QCOMPARE(f.model.routines().size(), 2);
        QCOMPARE(resets.size(), 0);
    }

    void repeatRulesRoundTripThroughTheStore()
    {
        Fixture f;
        f.routinesModel.create();
        Routine *routine = f.routinesModel.currentRoutine();
        const auto check = [&](qint16 mask, RoutineSchedule::Kind choice) {
            QCOMPARE(routine->repeatWeekdays(), mask);
            QCOMPARE(f.routineData(0, RoutinesModel::RepeatMaskRole).toInt(), int(mask));
            QCOMPARE(f.routinesModel.repeatChoice(), int(choice));
        };
        f.routinesModel.setRepeatChoice(int(RoutineSchedule::Kind::everyDay));
        check(127, RoutineSchedule::Kind::everyDay);
        f.routinesModel.setRepeatChoice(int(RoutineSchedule::Kind::weekdays));
        check(62, RoutineSchedule::Kind::weekdays);
        QCOMPARE(f.routineData(0, RoutinesModel::RepeatLabelRole).toString(),
                 PlanningTexts::repeatOption(RoutineSchedule::Kind::weekdays));

        // Custom keeps the days until a toggle changes them, and stays chosen
        // even when the days add up to a named rule.
        f.routinesModel.setRepeatChoice(int(RoutineSchedule::Kind::custom));
        check(62, RoutineSchedule::Kind::custom);
        f.routinesModel.setWeekday(7, true);
        f.routinesModel.setWeekday(2, false);
        check(124, RoutineSchedule::Kind::custom);
        f.routinesModel.setWeekday(1, true);
        f.routinesModel.setWeekday(2, true);
        check(127, RoutineSchedule::Kind::custom);
        f.routinesModel.setWeekday(8, true);
        check(127, RoutineSchedule::Kind::custom);
        f.routinesModel.setRepeatChoice(int(RoutineSchedule::Kind::never));
        check(0, RoutineSchedule::Kind::never);
        f.routinesModel.setRepeatChoice(int(RoutineSchedule::Kind::custom));
        f.routinesModel.setWeekday(4, true);
        check(8, RoutineSchedule::Kind::custom);

        // A fresh window reads the stored days back.
        RoutinesModel reopened(f.routines);
        QCOMPARE(reopened.repeatChoice(), int(RoutineSchedule::Kind::custom));
        const QVariantList days = reopened.weekdays();
        QCOMPARE(days.size(), 7);
        QList<int> on;
        for (const QVariant &day : days) {
            const QVariantMap map = day.toMap();
            QVERIFY(!map.value(QStringLiteral("name")).toString().isEmpty());
            if (map.value(QStringLiteral("on")).toBool())
                on << map.value(QStringLiteral("weekday")).toInt();
        }
        QCOMPARE(on, QList<int>{4});
    }

    void weekdaysStartOnTheLocalesFirstDay()
    {
        QCOMPARE(RoutinesModel::weekdayOf(Qt::Sunday), 1);
        QCOMPARE(RoutinesModel::weekdayOf(Qt::Monday), 2);
        QCOMPARE(RoutinesModel::weekdayOf(Qt::Saturday), 7);
        QCOMPARE(RoutinesModel::weekOrder(Qt::Sunday), (QList<int>{1, 2, 3, 4, 5, 6, 7}));
        QCOMPARE(RoutinesModel::weekOrder(Qt::Monday), (QList<int>{2, 3, 4, 5, 6, 7, 1}));
        QCOMPARE(RoutinesModel::weekOrder(Qt::Saturday), (QList<int>{7, 1, 2, 3, 4, 5, 6}));
    }

    void itemsAreAddedEditedMovedAndRemovedWithErrorsInPlace()
    {
        Fixture f;
        f.routinesModel.create();
        Routine *routine = f.routinesModel.currentRoutine();
        QCOMPARE(f.items.add(QStringLiteral("Stretch"), QStringLiteral("10")), QString());
        QCOMPARE(f.items.add(QStringLiteral(" Read "), QStringLiteral("1h30")), QString());
        QCOMPARE(f.items.add(QStringLiteral("Plan"), QString()), QString());
        QCOMPARE(f.storedTitles(routine),
                 (QStringList{QStringLiteral("Stretch"), QStringLiteral("Read"), QStringLiteral("Plan")}));
        QCOMPARE(f.items.index(1).data(RoutineItemsModel::MinutesRole).toInt(), 90);
        QCOMPARE(f.items.index(2).data(RoutineItemsModel::MinutesRole).toInt(), -1);
        QCOMPARE(f.routineData(0, RoutinesModel::ItemCountRole).toInt(), 3);

        // Refusals: the task title rule, and minutes that are not a duration.
        QCOMPARE(f.items.add(QStringLiteral("  "), QString()), RepositoryError::titleEmpty().localizedDescription());
        QCOMPARE(f.items.add(QString(201, u'x'), QString()), RepositoryError::titleTooLong(200).localizedDescription());
        QVERIFY(!f.items.add(QStringLiteral("Walk"), QStringLiteral("soon")).isEmpty());
        QCOMPARE(f.items.update(0, QString(), QStringLiteral("5")),
                 RepositoryError::titleEmpty().localizedDescription());
        QCOMPARE(RoutineRepository::items(routine).size(), 3);
        QCOMPARE(RoutineRepository::items(routine).first()->durationMinutes(), 10);

        QCOMPARE(f.items.update(0, QStringLiteral("Stretch well"), QStringLiteral("15m")), QString());
        QCOMPARE(RoutineRepository::items(routine).first()->durationMinutes(), 15);
        QCOMPARE(f.items.update(0, QStringLiteral("Stretch well"), QString()), QString());
        QVERIFY(!RoutineRepository::items(routine).first()->durationMinutes());

        // Moves report one moved row, not a reset.
        QSignalSpy moves(&f.items, &QAbstractItemModel::rowsMoved);
        QSignalSpy resets(&f.items, &QAbstractItemModel::modelReset);
        QVERIFY(f.items.move(2, -1));
        QVERIFY(!f.items.move(0, -1));
        QVERIFY(!f.items.move(2, 1));
        QVERIFY(f.items.move(0, 1));
        QCOMPARE(f.storedTitles(routine),
                 (QStringList{QStringLiteral("Plan"), QStringLiteral("Stretch well"), QStringLiteral("Read")}));
        QCOMPARE(moves.size(), 2);
        QCOMPARE(f.items.index(0).data(RoutineItemsModel::TitleRole).toString(), QStringLiteral("Plan"));

        f.items.remove(1);
        QCOMPARE(f.storedTitles(routine), (QStringList{QStringLiteral("Plan"), QStringLiteral("Read")}));
        QCOMPARE(f.routineData(0, RoutinesModel::ItemCountRole).toInt(), 2);
        QCOMPARE(resets.size(), 0);

        // Another routine shows its own templates.
        f.routinesModel.create();
        QCOMPARE(f.items.count(), 0);
        f.routinesModel.setCurrentIndex(0);
        QCOMPARE(f.items.count(), 2);
    }

    void deletingARoutineLeavesItsTasksWithoutARepeat()
    {
        Fixture f;
        f.routinesModel.create();
        Routine *routine = f.routinesModel.currentRoutine();
        f.items.add(QStringLiteral("Stretch"), QStringLiteral("10"));
        f.routinesModel.setRepeatChoice(int(RoutineSchedule::Kind::weekdays));
        QCOMPARE(f.routineService.load(routine, f.day(0)), 1);
        Task *task = f.tasks.openTasks(f.day(0)).first();
        QCOMPARE(f.routineService.schedule(task), RoutineSchedule::weekdays());

        f.routinesModel.remove(0);
        QCOMPARE(f.routinesModel.count(), 0);
        QCOMPARE(f.items.count(), 0);
        QVERIFY(!task->isDeleted());
        QCOMPARE(f.titles(0), QStringList{QStringLiteral("Stretch")});
        QCOMPARE(task->durationMinutes(), 10);
        QCOMPARE(f.routineService.schedule(task), RoutineSchedule::never());
    }
};

QTEST_MAIN(RoutinesModelTest)
#include "tst_routines_model.moc"
