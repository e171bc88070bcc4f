// Past tasks: the search over titles (through the title index, and by reading
// titles for text too short for it) and the rule that keeps past days as
// they were unless editing the history is on.
#include "PlanningFixture.h"
#include "persistence/StoreMigrator.h"
#include "services/TaskHistory.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

struct Fixture : PlanningFixture
{
    TaskHistory history{store.viewContext(), calendar};

    Task *add(const QString &title, int dayOffset)
    {
        return tasks.createTask(title, 30, false,
                                days.fetchOrCreateDay(calendar.startOfDayAdding(time.now, dayOffset)));
    }
    QStringList titles(const QString &text, int limit = TaskHistory::Limits::results) const
    {
        QStringList out;
        const auto hits = history.search(text, limit);
        for (const TaskHistoryHit &hit : hits)
            out << hit.title;
        return out;
    }
};

} // namespace

class HistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchFindsAnyPartOfATitle()
    {
        Fixture f;
        f.add(QStringLiteral("Quarterly budget review"), -40);
        Task *old = f.add(QStringLiteral("Budget call with Ana"), -2);
        f.add(QStringLiteral("Write the \"budget\" memo"), -1);
        f.add(QStringLiteral("50% off_sale"), -3);
        f.add(QStringLiteral("Unrelated"), -1);
        f.tasks.complete(old, f.time.now.addDays(-2), 1500);

        // Anywhere in the title, any case, newest day first; a quote is only a character.
        QCOMPARE(f.titles(QStringLiteral("BUDGET")),
                 (QStringList{QStringLiteral("Write the \"budget\" memo"), QStringLiteral("Budget call with Ana"),
                              QStringLiteral("Quarterly budget review")}));
        QCOMPARE(f.titles(QStringLiteral("\"budget\"")), QStringList{QStringLiteral("Write the \"budget\" memo")});
        QCOMPARE(f.titles(QStringLiteral("dget ca")), QStringList{QStringLiteral("Budget call with Ana")});
        const TaskHistoryHit hit = f.history.search(QStringLiteral("with Ana")).first();
        QVERIFY(hit.completed);
        QCOMPARE(hit.focusedSeconds, qint64(1500));
        QCOMPARE(hit.day, f.calendar.date(f.time.now).addDays(-2));
        // Two characters are read from the titles; % and _ are plain characters there.
        QCOMPARE(f.titles(QStringLiteral("% ")), QStringList{QStringLiteral("50% off_sale")});
        QCOMPARE(f.titles(QStringLiteral("f_")), QStringList{QStringLiteral("50% off_sale")});
        QVERIFY(f.titles(QStringLiteral("t_")).isEmpty());
        QVERIFY(f.titles(QStringLiteral("   ")).isEmpty());
        // The newest tasks within the limit.
        QCOMPARE(f.titles(QStringLiteral("budget"), 1), QStringList{QStringLiteral("Write the \"budget\" memo")});

        // A renamed task is found by its new title only; a deleted one not at all.
        f.tasks.updateTask(old, QStringLiteral("Call with Ana"), std::nullopt, 30, std::nullopt);
        QCOMPARE(f.titles(QStringLiteral("Budget")).size(), 2);
        QCOMPARE(f.titles(QStringLiteral("Call with")), QStringList{QStringLiteral("Call with Ana")});
        f.store.viewContext().deleteObject(old);
        f.store.viewContext().save();
        QVERIFY(f.titles(QStringLiteral("Call with")).isEmpty());
    }

    // A store made before the title index: its tasks are found after the migration.
    void tasksOfAnOlderStoreAreFound()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("old.sqlite"));
        QStringList steps;
        QDir schema(QStringLiteral(":/persistence/schema"));
        for (const QString &name : schema.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name)) {
            QFile f(schema.filePath(name));
            QVERIFY(f.open(QIODevice::ReadOnly));
            if (!name.contains(QLatin1String("history_search")))
                steps << QString::fromUtf8(f.readAll());
        }
        Calendar calendar;
        ManualClock time;
        {
            PersistenceController old(file, StoreMigrator(steps));
            DayRepository days(old.viewContext(), calendar, time.clock());
            TaskRepository tasks(old.viewContext(), calendar, time.clock(), days);
            tasks.createTask(QStringLiteral("Renew the passport"), 20, false, days.fetchOrCreateDay(days.today()));
        }
        PersistenceController store(file);
        TaskHistory history(store.viewContext(), calendar);
        QCOMPARE(history.search(QStringLiteral("passport")).size(), 1);
    }

    void pastTasksChangeOnlyWhileEditingHistory()
    {
        Fixture f;
        const QDateTime today = f.days.today();
        Task *past = f.add(QStringLiteral("Yesterday"), -1);
        Task *now = f.add(QStringLiteral("Today"), 0);
        Task *later = f.add(QStringLiteral("Tomorrow"), 1);
        QVERIFY(!TaskHistory::editable(*past, today, false));
        QVERIFY(TaskHistory::editable(*past, today, true));
        QVERIFY(TaskHistory::editable(*now, today, false));
        QVERIFY(TaskHistory::editable(*later, today, false));
    }
};

QTEST_GUILESS_MAIN(HistoryTest)
#include "tst_history.moc"
