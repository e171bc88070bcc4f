// The store context: identity, saving, change notices, merging, migration.
#include "persistence/AppSettings.h"
#include "persistence/Day.h"
#include "persistence/LogCheckpointer.h"
#include "persistence/PersistenceController.h"
#include "persistence/StoreMigrator.h"
#include "persistence/Task.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

QDateTime at(int day, int hour = 9, int minute = 0, int msec = 0)
{
    return QDateTime(QDate(2026, 3, day), QTime(hour, minute, 0, msec), Qt::UTC);
}

Task *makeTask(StoreContext &context, Day *day, const QString &title, int order = 0)
{
    Task *task = context.insertNew<Task>();
    task->setTitle(title);
    task->setOrderIndex(order);
    task->setCreatedAt(at(1));
    task->setUpdatedAt(at(1));
    task->setDay(day);
    return task;
}

Day *makeDay(StoreContext &context, const QDateTime &date)
{
    Day *day = context.insertNew<Day>();
    day->setDate(date);
    return day;
}

// A second, independent connection to the same file: "somebody else".
struct OtherConnection
{
    explicit OtherConnection(const QString &path)
        : name(QStringLiteral("other-%1").arg(QUuid::createUuid().toString()))
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.open();
        QSqlQuery(db).exec(QStringLiteral("PRAGMA foreign_keys = ON"));
    }
    ~OtherConnection()
    {
        QSqlDatabase::database(name).close();
        QSqlDatabase::removeDatabase(name);
    }
    bool exec(const QString &sql)
    {
        QSqlQuery query(QSqlDatabase::database(name));
        return query.exec(sql);
    }
    QVariant scalar(const QString &sql)
    {
        QSqlQuery query(QSqlDatabase::database(name));
        if (!query.exec(sql) || !query.next())
            return {};
        return query.value(0);
    }
    QString name;
};

// The schema's steps as this build ships them, oldest first.
QStringList schemaSteps()
{
    QStringList steps;
    QDir dir(QStringLiteral(":/persistence/schema"));
    for (const QString &name : dir.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name)) {
        QFile f(dir.filePath(name));
        if (!f.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(name));
        steps << QString::fromUtf8(f.readAll());
    }
    return steps;
}

} // namespace

class StoreTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }

private Q_SLOTS:
    void inMemoryStoresAreEmptyAndLeaveNoFile()
    {
        {
            PersistenceController first(true);
            makeTask(first.viewContext(), makeDay(first.viewContext(), at(2)), QStringLiteral("only in memory"));
            first.viewContext().save();
            PersistenceController second(true);
            FetchRequest all;
            QVERIFY(second.viewContext().fetch<Task>(all).isEmpty());
            QCOMPARE(first.viewContext().fetch<Task>(all).size(), 1);
        }
        QVERIFY(!QFile::exists(PersistenceController::defaultStorePath()));
    }

    void valuesSurviveARestartWithOneObjectPerRow()
    {
        const QString file = path(QStringLiteral("restart.sqlite"));
        QUuid taskId;
        const QUuid routineItem = QUuid::createUuid();
        {
            PersistenceController store(file);
            auto &context = store.viewContext();
            Day *day = makeDay(context, at(3, 5));
            Task *task = makeTask(context, day, QStringLiteral("Écrire — ✍️"), 7);
            task->setNotes(QStringLiteral("notes"));
            task->setDurationMinutes(45);
            task->setUrgent(true);
            task->setActiveStartedAt(at(3, 10, 0, 900));
            task->setActualSecondsFocused(-5);
            task->setRoutineItemID(routineItem);
            taskId = task->id();
            context.save();
            QVERIFY(!context.hasChanges());
        }
        PersistenceController reopened(file);
        auto &context = reopened.viewContext();
        Task *task = context.existingObject<Task>(taskId);
        QVERIFY(task);
        QCOMPARE(task->title(), QStringLiteral("Écrire — ✍️"));
        QCOMPARE(task->notes(), std::optional<QString>(QStringLiteral("notes")));
        QCOMPARE(task->durationMinutes(), std::optional<qint32>(45));
        QVERIFY(task->urgent());
        QCOMPARE(task->orderIndex(), 7);
        QCOMPARE(task->activeStartedAt(), std::optional<QDateTime>(at(3, 10, 0, 900)));
        QCOMPARE(task->actualSecondsFocused(), std::optional<qint32>(-5));
        QCOMPARE(task->routineItemID(), std::optional<QUuid>(routineItem));
        QVERIFY(!task->completedAt().has_value());
        QVERIFY(!task->dueDate().has_value());
        QVERIFY(task->day());
        QCOMPARE(task->day()->date(), at(3, 5));
        // Identity: every road to the row yields the same object.
        QCOMPARE(task->day()->tasks(), QList<Task *>{task});
        FetchRequest byTitle;
        byTitle.where = QStringLiteral("title = ?");
        byTitle.bindings = {task->title()};
        QCOMPARE(context.fetch<Task>(byTitle), QList<Task *>{task});
    }

    // A day's tasks made together sit together on disk: reading today stays a
    // few pages however much history lies before it.
    void rowsAreWrittenInTheOrderTheyWereMade()
    {
        const QString file = path(QStringLiteral("order.sqlite"));
        PersistenceController store(file);
        auto &context = store.viewContext();
        Day *day = makeDay(context, at(4));
        for (int i = 0; i < 64; ++i)
            makeTask(context, day, QString::number(i), i);
        context.save();
        OtherConnection other(file);
        QSqlQuery query(QSqlDatabase::database(other.name));
        QVERIFY(query.exec(QStringLiteral("SELECT title FROM tasks ORDER BY rowid")));
        for (int i = 0; i < 64; ++i) {
            QVERIFY(query.next());
            QCOMPARE(query.value(0).toString(), QString::number(i));
        }
    }

    void fetchSeesUnsavedChanges()
    {
        PersistenceController store(true);
        auto &context = store.viewContext();
        Day *day = makeDay(context, at(4));
        Task *a = makeTask(context, day, QStringLiteral("a"), 0);
        Task *b = makeTask(context, day, QStringLiteral("b"), 1);
        Task *c = makeTask(context, day, QStringLiteral("c"), 2);
        context.save();

        FetchRequest open;
        open.where = QStringLiteral("completed = 0");
        open.matches = [](const ManagedObject &o) { return !static_cast<const Task &>(o).completed(); };
        open.orderBy = QStringLiteral("order_index");
        open.lessThan = [](const ManagedObject *x, const ManagedObject *y) {
            return static_cast<const Task *>(x)->orderIndex() < static_cast<const Task *>(y)->orderIndex();
        };
        open.limit = 2;

        a->setCompleted(true); // stored as open, open no more
        c->setOrderIndex(-1); // moves to the front in memory
        Task *d = makeTask(context, day, QStringLiteral("d"), -2); // inserted, first of all
        QCOMPARE(context.fetch<Task>(open), (QList<Task *>{d, c}));
        context.deleteObject(d);
        QCOMPARE(context.fetch<Task>(open), (QList<Task *>{c, b}));
        QVERIFY(d->isDeleted());
        QCOMPARE(d->title(), QStringLiteral("d")); // a deleted object still reads
    }

    void changeNoticeIsCoalescedAndSkipsInsertThenDelete()
    {
        PersistenceController store(true);
        auto &context = store.viewContext();
        QList<ChangeSet> notices;
        connect(&context, &StoreContext::objectsDidChange, this,
                [&](const ChangeSet &changes) { notices.append(changes); });
        Day *day = makeDay(context, at(5));
        Task *kept = makeTask(context, day, QStringLiteral("kept"));
        Task *gone = makeTask(context, day, QStringLiteral("gone"));
        context.deleteObject(gone);
        QTRY_COMPARE(notices.size(), 1);
        QCOMPARE(notices[0].inserted, (QList<ManagedObject *>{day, kept}));
        QVERIFY(notices[0].deleted.isEmpty());

        context.save();
        kept->setTitle(QStringLiteral("renamed"));
        kept->setNotes(QStringLiteral("twice"));
        context.save(); // a save delivers pending notices first
        QCOMPARE(notices.size(), 2);
        QCOMPARE(notices[1].updated, QList<ManagedObject *>{kept});
        QCoreApplication::processEvents();
        QCOMPARE(notices.size(), 2);
    }

    void cascadeDeleteRemovesTheDaysTasks()
    {
        PersistenceController store(path(QStringLiteral("cascade.sqlite")));
        auto &context = store.viewContext();
        Day *day = makeDay(context, at(6));
        Task *task = makeTask(context, day, QStringLiteral("t"));
        context.save();
        context.deleteObject(day);
        QVERIFY(task->isDeleted());
        context.save();
        OtherConnection other(store.storePath());
        QCOMPARE(other.scalar(QStringLiteral("SELECT count(*) FROM tasks")).toInt(), 0);
    }

    void failedSaveKeepsChangesAndReportsTheError()
    {
        PersistenceController store(path(QStringLiteral("readonly.sqlite")));
        auto &context = store.viewContext();
        Task *task = makeTask(context, makeDay(context, at(7)), QStringLiteral("first"));
        context.save();

        QSqlQuery(context.database()).exec(QStringLiteral("PRAGMA query_only = ON"));
        task->setTitle(QStringLiteral("changed"));
        // NOLINTNEXTLINE(clang-analyzer-deadcode.DeadStores): read after the expected throw, which the analyzer does not follow
        Task *added = makeTask(context, task->day(), QStringLiteral("added"), 1);
        QVERIFY_THROWS_EXCEPTION(StoreError, context.save());
        QVERIFY(context.hasChanges());
        QCOMPARE(task->title(), QStringLiteral("changed"));
        QVERIFY(added->isInserted());

        QTest::ignoreMessage(
            QtCriticalMsg,
            QRegularExpression(QStringLiteral("^Core Data save failed: SQLite \\(\\d+\\) - .*readonly.*")));
        store.save(); // logs, does not throw
        QVERIFY(context.hasChanges());

        QSqlQuery(context.database()).exec(QStringLiteral("PRAGMA query_only = OFF"));
        context.save();
        OtherConnection other(store.storePath());
        QCOMPARE(other.scalar(QStringLiteral("SELECT count(*) FROM tasks")).toInt(), 2);
        QCOMPARE(other.scalar(QStringLiteral("SELECT title FROM tasks WHERE order_index = 0")).toString(),
                 QStringLiteral("changed"));
    }

    void inMemoryValuesWinPropertyByProperty()
    {
        PersistenceController store(path(QStringLiteral("merge.sqlite")));
        auto &context = store.viewContext();
        Task *task = makeTask(context, makeDay(context, at(8)), QStringLiteral("mine"));
        context.save();

        OtherConnection other(store.storePath());
        const QString id = task->id().toString(QUuid::WithoutBraces);
        QVERIFY(other.exec(
            QStringLiteral("UPDATE tasks SET title = 'theirs', notes = 'their notes' WHERE id = '%1'").arg(id)));
        task->setTitle(QStringLiteral("mine again"));
        context.save();
        context.refreshObject(task);
        QCOMPARE(task->title(), QStringLiteral("mine again"));
        QCOMPARE(task->notes(), std::optional<QString>(QStringLiteral("their notes")));
        QCOMPARE(other.scalar(QStringLiteral("SELECT title FROM tasks")).toString(), QStringLiteral("mine again"));
    }

    void vanishedRowsReadAsDeleted()
    {
        const QString file = path(QStringLiteral("vanish.sqlite"));
        QUuid taskId;
        {
            PersistenceController store(file);
            auto &context = store.viewContext();
            taskId = makeTask(context, makeDay(context, at(9)), QStringLiteral("t"))->id();
            context.save();
        }
        PersistenceController store(file);
        auto &context = store.viewContext();
        Task *task = context.existingObject<Task>(taskId);
        QVERIFY(task && !task->isDeleted());
        OtherConnection other(file);
        QVERIFY(other.exec(QStringLiteral("DELETE FROM days")));
        // The day's row and, by cascade, the task's are gone.
        QCOMPARE(task->day(), nullptr);
        QVERIFY(task->isDeleted());
        QCOMPARE(task->title(), QStringLiteral("t"));
        QVERIFY(!context.hasChanges());
        context.save();
    }

    // The checkpointer's thread copies the log into the store file while
    // the store stays open and goes on writing: a copy of the file alone
    // (no log beside it) then holds the rows. A store it cannot open is
    // reported, not crashed on.
    void logIsCopiedIntoTheFileOffTheMainThread()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        PersistenceController store(path);
        StoreContext &context = store.viewContext();
        QVERIFY(QSqlQuery(context.database()).exec(QStringLiteral("PRAGMA wal_autocheckpoint = 0")));
        const auto rowsInFileAlone = [&dir, &path] {
            const QString copy = dir.filePath(QStringLiteral("copy.sqlite"));
            QFile::remove(copy);
            QFile::copy(path, copy);
            OtherConnection reader(copy);
            return reader.scalar(QStringLiteral("SELECT count(*) FROM tasks")).toInt();
        };

        // What the checkpointer reported, summed until it did something.
        const auto outcome = [](LogCheckpointer &checkpointer) {
            LogCheckpointer::Report sum;
            [[maybe_unused]] const bool settled = QTest::qWaitFor([&] {
                const LogCheckpointer::Report report = checkpointer.takeReport();
                sum.done += report.done;
                sum.error += report.error;
                return sum.done > 0 || !sum.error.isEmpty();
            });
            return sum;
        };

        LogCheckpointer checkpointer(path);
        for (int round = 1; round <= 2; ++round) {
            Day *day = makeDay(context, at(round));
            for (int i = 0; i < 50; ++i)
                makeTask(context, day, QStringLiteral("Task %1").arg(i), i);
            context.save();
            QCOMPARE(rowsInFileAlone(), (round - 1) * 50);
            checkpointer.request();
            const LogCheckpointer::Report report = outcome(checkpointer);
            QVERIFY2(report.error.isEmpty(), qPrintable(report.error));
            QCOMPARE(report.done, 1);
            QCOMPARE(rowsInFileAlone(), round * 50);
        }

        LogCheckpointer nowhere(dir.filePath(QStringLiteral("missing/Tarnwell.sqlite")));
        nowhere.request();
        QVERIFY(outcome(nowhere).error.contains(QLatin1String("opening the store")));
    }

    void migrationCopiesAsideAndAppliesAllOrNothing()
    {
        const QString file = path(QStringLiteral("migrate.sqlite"));
        const QStringList steps = schemaSteps();
        // NOLINTNEXTLINE(clang-analyzer-deadcode.DeadStores): read after the expected throw, which the analyzer does not follow
        const int current = int(steps.size());
        {
            PersistenceController store(file);
            auto &context = store.viewContext();
            makeTask(context, makeDay(context, at(10)), QStringLiteral("before"));
            context.save();
        }

        // A step that fails half-way leaves the store exactly as it was.
        {
            auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("direct"));
            db.setDatabaseName(file);
            QVERIFY(db.open());
            const StoreMigrator broken(
                steps +
                QStringList{QStringLiteral("ALTER TABLE tasks ADD COLUMN color TEXT;\nSELECT * FROM no_such_table;")});
            QVERIFY_THROWS_EXCEPTION(StoreError, broken.migrate(db, file));
            QCOMPARE(StoreMigrator::userVersion(db), current);
            QSqlQuery columns(db);
            QVERIFY(
                columns.exec(QStringLiteral("SELECT count(*) FROM pragma_table_info('tasks') WHERE name = 'color'")));
            QVERIFY(columns.next());
            QCOMPARE(columns.value(0).toInt(), 0);
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("direct"));

        // An additive step: the data stays, the old file is copied aside first.
        const StoreMigrator next(
            steps +
            QStringList{QStringLiteral(
                "ALTER TABLE tasks ADD COLUMN color TEXT;\nCREATE INDEX tasks_by_color ON tasks(color);")});
        {
            PersistenceController store(file, next);
            FetchRequest all;
            const auto tasks = store.viewContext().fetch<Task>(all);
            QCOMPARE(tasks.size(), 1);
            QCOMPARE(tasks.first()->title(), QStringLiteral("before"));
            QSqlDatabase db = store.viewContext().database();
            QCOMPARE(StoreMigrator::userVersion(db), current + 1);
        }
        const QString backup = QStringLiteral("%1.v%2.bak").arg(file).arg(current);
        QVERIFY(QFile::exists(backup));
        {
            OtherConnection copy(backup);
            QCOMPARE(copy.scalar(QStringLiteral("PRAGMA user_version")).toInt(), current);
            QCOMPARE(copy.scalar(QStringLiteral("SELECT title FROM tasks")).toString(), QStringLiteral("before"));
        }
        // A newer store is refused by this build: see tst_crash_safety.
    }

    // A store of version 2 takes the sync tables and keeps its data; deleting
    // a synced task, directly or with its day, leaves a tombstone for the
    // server, and an unsynced one leaves none.
    void syncStateMigratesAndTombstonesDeletedTasks()
    {
        const QString file = path(QStringLiteral("v2.sqlite"));
        const QStringList steps = schemaSteps();
        QVERIFY(steps.size() >= 3);
        QUuid synced, plain, withDay;
        {
            PersistenceController v2(file, StoreMigrator(steps.mid(0, 2)));
            auto &context = v2.viewContext();
            Day *day = makeDay(context, at(10));
            synced = makeTask(context, day, QStringLiteral("synced"))->id();
            plain = makeTask(context, day, QStringLiteral("plain"))->id();
            withDay = makeTask(context, makeDay(context, at(11)), QStringLiteral("on another day"))->id();
            context.save();
        }
        PersistenceController store(file);
        auto &context = store.viewContext();
        QSqlDatabase db = context.database();
        QCOMPARE(StoreMigrator::userVersion(db), int(steps.size()));
        QCOMPARE(context.fetch<Task>(FetchRequest{}).size(), 3);
        QSqlQuery q(db);
        for (const QUuid &id : {synced, withDay})
            QVERIFY(
                q.exec(QStringLiteral("INSERT INTO sync_items(task_id, href, etag, base) VALUES ('%1', '/c/%1.ics', "
                                      "'\"e1\"', 'BEGIN:VCALENDAR')")
                           .arg(id.toString(QUuid::WithoutBraces))));
        context.deleteObject(context.existingObject<Task>(synced));
        context.deleteObject(context.existingObject<Task>(plain));
        Task *other = context.existingObject<Task>(withDay);
        context.deleteObject(other->day());
        context.save();
        QVERIFY(q.exec(QStringLiteral("SELECT href, etag FROM sync_tombstones ORDER BY href")));
        QStringList tombstones;
        while (q.next())
            tombstones << q.value(0).toString() + u' ' + q.value(1).toString();
        QStringList expected;
        for (const QUuid &id : {synced, withDay})
            expected << QStringLiteral("/c/%1.ics \"e1\"").arg(id.toString(QUuid::WithoutBraces));
        expected.sort();
        QCOMPARE(tombstones, expected);
        QVERIFY(q.exec(QStringLiteral("SELECT count(*) FROM sync_items")) && q.next());
        QCOMPARE(q.value(0).toInt(), 0);
    }
};

QTEST_GUILESS_MAIN(StoreTest)
#include "tst_store.moc"
