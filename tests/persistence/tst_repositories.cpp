// Day and task repositories: queue rules, titles, moves with undo, days
// across daylight-saving changes. Runs once per time zone (see CMakeLists).
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "support/ManualClock.h"

#include <QTest>

using namespace tarnwell;

namespace {

struct Fixture
{
    ManualClock time{QDate(2026, 6, 10).startOfDay(QTimeZone::systemTimeZone()).addSecs(10 * 3600)};
    PersistenceController store{true};
    Calendar calendar;
    DayRepository days{store.viewContext(), calendar, time.clock()};
    TaskRepository tasks{store.viewContext(), calendar, time.clock(), days};

    Day *today() { return days.fetchOrCreateDay(time.now); }
    Task *add(const QString &title, bool urgent = false, Day *day = nullptr)
    {
        return tasks.createTask(title, std::nullopt, urgent, day ? day : today());
    }
    QStringList queue(Day *day)
    {
        QStringList titles;
        for (Task *t : tasks.openTasks(day))
            titles << t->title();
        return titles;
    }
    QList<int> indexes(Day *day)
    {
        QList<int> out;
        for (Task *t : tasks.openTasks(day))
            out << t->orderIndex();
        return out;
    }
};

QString repeat(const QString &piece, int times)
{
    QString out;
    for (int i = 0; i < times; ++i)
        out += piece;
    return out;
}

} // namespace

class RepositoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void titleRules_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("error"); // -1 = accepted
        QTest::addColumn<QString>("stored");
        const int empty = int(RepositoryError::Kind::titleEmpty);
        const int tooLong = int(RepositoryError::Kind::titleTooLong);
        const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467"); // one character
        const QString accented = QStringLiteral("e\u0301"); // one character
        const QString flag = QStringLiteral("\U0001F1F9\U0001F1F7"); // one character
        QTest::newRow("blanks") << QStringLiteral("   ") << empty << QString();
        QTest::newRow("newlines and tabs") << QStringLiteral("\n\t \n") << empty << QString();
        QTest::newRow("trimmed") << QStringLiteral("  Write report\n") << -1 << QStringLiteral("Write report");
        QTest::newRow("200 letters") << repeat(QStringLiteral("a"), 200) << -1 << repeat(QStringLiteral("a"), 200);
        QTest::newRow("201 letters") << repeat(QStringLiteral("a"), 201) << tooLong << QString();
        QTest::newRow("200 after trimming")
            << (QStringLiteral("   ") + repeat(QStringLiteral("b"), 200) + QStringLiteral("   ")) << -1
            << repeat(QStringLiteral("b"), 200);
        QTest::newRow("200 emoji families") << repeat(family, 200) << -1 << repeat(family, 200);
        QTest::newRow("201 emoji families") << repeat(family, 201) << tooLong << QString();
        QTest::newRow("200 combining accents") << repeat(accented, 200) << -1 << repeat(accented, 200);
        QTest::newRow("201 combining accents") << repeat(accented, 201) << tooLong << QString();
        QTest::newRow("200 flags") << repeat(flag, 200) << -1 << repeat(flag, 200);
    }
    void titleRules()
    {
        QFETCH(QString, title);
        QFETCH(int, error);
        QFETCH(QString, stored);
        Fixture f;
        Task *existing = f.add(QStringLiteral("existing"));
        try {
            Task *created = f.tasks.createTask(title, 25, false, f.today());
            QCOMPARE(error, -1);
            QCOMPARE(created->title(), stored);
            f.tasks.updateTask(existing, title, std::nullopt, std::nullopt, std::nullopt);
            QCOMPARE(existing->title(), stored);
        } catch (const RepositoryError &e) {
            QCOMPARE(int(e.kind()), error);
            if (e.kind() == RepositoryError::Kind::titleTooLong)
                QCOMPARE(e.limit(), 200);
            QCOMPARE(f.tasks.openTasks(f.today()).size(), 1); // nothing inserted
            QVERIFY(!f.store.viewContext().hasChanges());
        }
    }

    void urgentGoesFirstAndIndexesKeepTheirGaps()
    {
        Fixture f;
        Day *day = f.today();
        f.add(QStringLiteral("one"));
        Task *two = f.add(QStringLiteral("two"));
        QCOMPARE(f.indexes(day), (QList<int>{0, 1}));
        f.add(QStringLiteral("urgent"), true);
        QCOMPARE(f.queue(day), (QStringList{QStringLiteral("urgent"), QStringLiteral("one"), QStringLiteral("two")}));
        QCOMPARE(f.indexes(day), (QList<int>{0, 1, 2}));

        // Completing the middle task leaves a gap; the next task goes after the last open one.
        Task *one = f.tasks.openTasks(day)[1];
        f.tasks.complete(one, f.time.now, 60);
        Task *three = f.add(QStringLiteral("three"));
        QCOMPARE(three->orderIndex(), two->orderIndex() + 1);
        QCOMPARE(three->orderIndex(), 3);
        QCOMPARE(one->orderIndex(), 1); // completed tasks keep their index
    }

    void completeReopenAndCorrect()
    {
        Fixture f;
        Day *day = f.today();
        Task *a = f.add(QStringLiteral("a"));
        f.add(QStringLiteral("b"));
        f.add(QStringLiteral("c"));
        a->setActiveStartedAt(f.time.now);
        f.time.advance(5000);
        f.tasks.complete(a, f.time.now, 1530);
        QVERIFY(a->completed());
        QCOMPARE(a->completedAt(), std::optional<QDateTime>(f.time.now));
        QCOMPARE(a->actualSecondsFocused(), std::optional<qint32>(1530));
        QVERIFY(!a->activeStartedAt());
        QCOMPARE(a->updatedAt(), f.time.now);

        f.tasks.reopen(a);
        QVERIFY(!a->completed() && !a->completedAt());
        QCOMPARE(f.queue(day), (QStringList{QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("a")}));
        QCOMPARE(f.indexes(day), (QList<int>{0, 1, 2}));
        const QDateTime stamped = a->updatedAt();
        f.time.advance(1000);
        f.tasks.reopen(a); // not completed: nothing happens
        QCOMPARE(a->updatedAt(), stamped);

        f.tasks.setActualFocus(a, 42);
        QCOMPARE(a->actualSecondsFocused(), std::optional<qint32>(42));
        QVERIFY(a->actualEditedManually());
        f.tasks.complete(a, f.time.now, 50);
        QVERIFY(a->actualEditedManually()); // never reset
        QVERIFY(!f.store.viewContext().hasChanges());
    }

    void movesBetweenDaysAndUndo()
    {
        Fixture f;
        Day *today = f.today();
        f.add(QStringLiteral("a"));
        Task *b = f.add(QStringLiteral("b"));
        f.add(QStringLiteral("c"));
        b->setActualSecondsFocused(300);
        b->setActiveStartedAt(f.time.now);
        const auto before = f.tasks.placement(b);
        QCOMPARE(before.rank, 1);
        QCOMPARE(before.dayDate, f.calendar.startOfDay(f.time.now));

        QVERIFY(!f.days.day(f.calendar.startOfDayAdding(f.time.now, 1)));
        Task *waiting = f.add(QStringLiteral("waiting"), false,
                              f.days.fetchOrCreateDay(f.calendar.startOfDayAdding(f.time.now, 1)));
        f.tasks.moveToNextDay(b);
        Day *tomorrow = b->day();
        QCOMPARE(tomorrow->date(), f.calendar.startOfDayAdding(f.time.now, 1));
        QCOMPARE(f.queue(tomorrow), (QStringList{QStringLiteral("b"), QStringLiteral("waiting")}));
        QCOMPARE(waiting->orderIndex(), 1);
        QVERIFY(!b->activeStartedAt() && !b->actualSecondsFocused());
        QCOMPARE(f.queue(today), (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
        QCOMPARE(f.indexes(today), (QList<int>{0, 2})); // the day left behind is not renumbered

        f.tasks.restore(b, before);
        QCOMPARE(f.tasks.placement(b), before);
        QCOMPARE(f.queue(today), (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QCOMPARE(f.queue(tomorrow), QStringList{QStringLiteral("waiting")});

        f.tasks.moveToPreviousDay(b);
        QCOMPARE(b->day()->date(), f.calendar.startOfDayAdding(f.time.now, -1));
        QCOMPARE(f.tasks.placement(b).rank, 0);

        // A completed task keeps its measured seconds when moved.
        Task *done = f.add(QStringLiteral("done"));
        f.tasks.complete(done, f.time.now, 99);
        f.tasks.moveToNextDay(done);
        QCOMPARE(done->actualSecondsFocused(), std::optional<qint32>(99));
    }

    void moveAllOpenTasksToTheNextDay()
    {
        Fixture f;
        Day *today = f.today();
        Day *tomorrow = f.days.fetchOrCreateDay(f.calendar.startOfDayAdding(f.time.now, 1));
        f.add(QStringLiteral("x"), false, tomorrow);
        f.add(QStringLiteral("a"));
        Task *b = f.add(QStringLiteral("b"));
        Task *finished = f.add(QStringLiteral("finished"));
        f.tasks.complete(finished, f.time.now, 10);
        b->setActualSecondsFocused(120);
        int saves = 0;
        connect(&f.store.viewContext(), &StoreContext::didSave, this, [&] { ++saves; });
        f.tasks.moveOpenTasksToNextDay(today);
        QCOMPARE(saves, 1);
        QCOMPARE(f.queue(tomorrow), (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("x")}));
        QCOMPARE(f.indexes(tomorrow), (QList<int>{0, 1, 2}));
        QVERIFY(!b->actualSecondsFocused());
        QCOMPARE(finished->day(), today);
    }

    void reorderMustMatchTheOpenQueue_data()
    {
        QTest::addColumn<QList<int>>("order"); // positions into [a, b, c]; 9 = a foreign id
        QTest::addColumn<bool>("accepted");
        QTest::newRow("permutation") << QList<int>{2, 0, 1} << true;
        QTest::newRow("duplicate with equal count") << QList<int>{0, 0, 2} << false;
        QTest::newRow("missing one") << QList<int>{0, 1} << false;
        QTest::newRow("extra duplicate") << QList<int>{0, 1, 2, 2} << false;
        QTest::newRow("foreign id") << QList<int>{0, 1, 9} << false;
        QTest::newRow("completed task's id") << QList<int>{0, 1, 2, 3} << false;
    }
    void reorderMustMatchTheOpenQueue()
    {
        QFETCH(QList<int>, order);
        QFETCH(bool, accepted);
        Fixture f;
        Day *day = f.today();
        QList<Task *> all{f.add(QStringLiteral("a")), f.add(QStringLiteral("b")), f.add(QStringLiteral("c")),
                          f.add(QStringLiteral("done"))};
        f.tasks.complete(all[3], f.time.now, 0);
        QList<QUuid> ids;
        for (int i : order)
            ids << (i == 9 ? QUuid::createUuid() : all[i]->id());
        const QStringList before = f.queue(day);
        if (!accepted) {
            QVERIFY_THROWS_EXCEPTION(RepositoryError, f.tasks.reorderTasks(day, ids));
            QCOMPARE(f.queue(day), before);
            QVERIFY(!f.store.viewContext().hasChanges());
            return;
        }
        f.tasks.reorderTasks(day, ids);
        QCOMPARE(f.queue(day), (QStringList{QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
        QCOMPARE(f.indexes(day), (QList<int>{0, 1, 2}));
    }

    void moveUpAndDownStopAtTheEnds()
    {
        Fixture f;
        Day *day = f.today();
        Task *a = f.add(QStringLiteral("a"));
        f.add(QStringLiteral("b"));
        Task *c = f.add(QStringLiteral("c"));
        f.tasks.moveTask(a, TaskRepository::Direction::up);
        f.tasks.moveTask(c, TaskRepository::Direction::down);
        QCOMPARE(f.queue(day), (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        f.tasks.moveTask(c, TaskRepository::Direction::up);
        f.tasks.moveTask(a, TaskRepository::Direction::down);
        QCOMPARE(f.queue(day), (QStringList{QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
        QCOMPARE(f.indexes(day), (QList<int>{0, 1, 2}));
    }

    void deleteEmptyFutureDaysKeepsTodayAndThePast()
    {
        Fixture f;
        Day *yesterday = f.days.fetchOrCreateDay(f.calendar.startOfDayAdding(f.time.now, -1));
        Day *today = f.today();
        Day *tomorrow = f.days.fetchOrCreateDay(f.calendar.startOfDayAdding(f.time.now, 1));
        Day *later = f.days.fetchOrCreateDay(f.calendar.startOfDayAdding(f.time.now, 3));
        f.add(QStringLiteral("planned"), false, later);
        f.days.deleteEmptyFutureDays();
        QVERIFY(!yesterday->isDeleted());
        QVERIFY(!today->isDeleted());
        QVERIFY(tomorrow->isDeleted());
        QVERIFY(!later->isDeleted());
        QVERIFY(!f.store.viewContext().hasChanges());
        QCOMPARE(f.days.days(f.time.now, -1, 3), (QList<Day *>{yesterday, today, later}));
    }

    void oneDayPerDateAcrossDaylightSavingChanges()
    {
        // Walk every half hour across both of this zone's transitions of 2026.
        const QTimeZone zone = QTimeZone::systemTimeZone();
        const auto transitions = zone.transitions(QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC),
                                                  QDateTime(QDate(2026, 12, 31), QTime(0, 0), Qt::UTC));
        QVERIFY2(transitions.size() >= 2, "run this suite in zones with daylight-saving time");
        Fixture f;
        for (const auto &transition : transitions) {
            const QDateTime from = transition.atUtc.addDays(-2);
            QHash<QDate, Day *> seen;
            for (QDateTime t = from; t < transition.atUtc.addDays(2); t = t.addSecs(1800)) {
                Day *day = f.days.fetchOrCreateDay(t);
                const QDate local = t.toTimeZone(zone).date();
                QCOMPARE(day->date(), local.startOfDay(zone).toUTC());
                if (seen.contains(local))
                    QCOMPARE(day, seen.value(local));
                seen.insert(local, day);
                QCOMPARE(f.days.day(t), day);
            }
            f.store.viewContext().save();
            // Calendar steps land on the next local midnight, not 24 hours later.
            const QDate dstDate = transition.atUtc.toTimeZone(zone).date();
            Task *task = f.add(QStringLiteral("walker"), false, f.days.fetchOrCreateDay(dstDate.startOfDay(zone)));
            f.tasks.moveToNextDay(task);
            QCOMPARE(task->day()->date().toTimeZone(zone).date(), dstDate.addDays(1));
            QCOMPARE(task->day()->date().toTimeZone(zone).time(), dstDate.addDays(1).startOfDay(zone).time());
            f.tasks.moveToPreviousDay(task);
            f.tasks.moveToPreviousDay(task);
            QCOMPARE(task->day()->date().toTimeZone(zone).date(), dstDate.addDays(-1));
            QCOMPARE(f.days.days(dstDate.startOfDay(zone), -1, 1).size(), 3);
        }
    }
};

QTEST_GUILESS_MAIN(RepositoryTest)
#include "tst_repositories.moc"
